#ifndef NETLISTNODES_H
#define NETLISTNODES_H

#include <unordered_map>
#include <vector>

#include <oa/oaDesignDB.h>

// The nodes of a netlist, numbered from 0 in the order in which they are added. A node is a bit net with all its
// equivalents, whatever buses and bundles it is a bit of, or an unnamed node that only one terminal is connected to.
class NetlistNodes {
public:
  struct Node {
    // The net that gives the node its name; null for an unnamed node.
    oa::oaBitNet *net;
    bool isExternal;
  };
  // The bits of a net in written order, repeats included; nodeOf() gives their nodes.
  struct Bits {
    size_t first;
    size_t count;
  };

  // All explicit nets of the block in their order, and which of their bits have a terminal or are global. May raise
  // oaException; what was added before stays.
  void addBlock(oa::oaBlock *block);
  // The bits of a net, which is added if it is new. No bits for a null pointer.
  Bits bitsOf(oa::oaNet *net);
  int nodeOf(const Bits &bits, size_t bit) const { return bitNodes_[bits.first + bit]; }
  int addUnnamed();

  const std::vector<Node> &nodes() const { return nodes_; }

private:
  int nodeOfBit(oa::oaBitNet *bit);
  std::vector<int> nodesOfBus(oa::oaBusNet *net);
  std::vector<int> nodesOfBundle(oa::oaBundleNet *net);
  void setExternal(const Bits &bits);

  std::vector<Node> nodes_;
  // Node numbers of the bits of all nets that were asked for.
  std::vector<int> bitNodes_;
  std::unordered_map<const oa::oaNet *, Bits> bitsByNet_;
};

#endif
