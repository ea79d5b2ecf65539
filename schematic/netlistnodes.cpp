#include "netlistnodes.h"

using namespace oa;

void NetlistNodes::addBlock(oaBlock *block) {
  oaIter<oaNet> nets(block->getNets());
  while (oaNet *net = nets.getNext()) {
    const Bits bits = bitsOf(net);
    if (net->isGlobal()) {
      setExternal(bits);
    }
  }
  oaIter<oaTerm> terms(block->getTerms());
  while (oaTerm *term = terms.getNext()) {
    setExternal(bitsOf(term->getNet()));
  }
}

NetlistNodes::Bits NetlistNodes::bitsOf(oaNet *net) {
  if (!net) {
    return {0, 0};
  }
  const auto known = bitsByNet_.find(net);
  if (known != bitsByNet_.end()) {
    return known->second;
  }
  const oaType type = net->getType();
  if (type != oacBundleNetType && type != oacBusNetType) {
    nodeOfBit(static_cast<oaBitNet *>(net));
    return bitsByNet_.find(net)->second;
  }
  const std::vector<int> nodes = type == oacBundleNetType ? nodesOfBundle(static_cast<oaBundleNet *>(net))
                                                          : nodesOfBus(static_cast<oaBusNet *>(net));
  const Bits bits = {bitNodes_.size(), nodes.size()};
  bitNodes_.insert(bitNodes_.end(), nodes.begin(), nodes.end());
  return bitsByNet_.emplace(net, bits).first->second;
}

std::vector<int> NetlistNodes::nodesOfBus(oaBusNet *net) {
  const oaUInt4 count = net->getNumBits();
  std::vector<int> nodes;
  nodes.reserve(count);
  for (oaUInt4 i = 0; i < count; ++i) {
    nodes.push_back(nodeOfBit(net->getBit(i)));
  }
  return nodes;
}

// Member by member: to ask a bundle for each of its bits would walk over the members again and again.
std::vector<int> NetlistNodes::nodesOfBundle(oaBundleNet *net) {
  std::vector<int> nodes;
  nodes.reserve(net->getNumBits());
  const oaUInt4 members = net->getNumMembers();
  for (oaUInt4 i = 0; i < members; ++i) {
    const Bits member = bitsOf(net->getMember(i));
    for (oaUInt4 repeat = net->getRepeat(i); repeat > 0; --repeat) {
      for (size_t bit = 0; bit < member.count; ++bit) {
        nodes.push_back(nodeOf(member, bit));
      }
    }
  }
  return nodes;
}

// A net of one bit is its own bit, so this serves nets and bits of nets alike.
int NetlistNodes::nodeOfBit(oaBitNet *bit) {
  const auto known = bitsByNet_.find(bit);
  if (known != bitsByNet_.end()) {
    return bitNodes_[known->second.first];
  }
  oaBitNet *preferred = bit->getPreferredEquivalent();
  int node = 0;
  if (preferred && preferred != bit) {
    node = nodeOfBit(preferred);
  } else {
    node = int(nodes_.size());
    nodes_.push_back({bit, false});
  }
  bitsByNet_.emplace(bit, Bits{bitNodes_.size(), 1});
  bitNodes_.push_back(node);
  return node;
}

int NetlistNodes::addUnnamed() {
  nodes_.push_back({nullptr, false});
  return int(nodes_.size()) - 1;
}

void NetlistNodes::setExternal(const Bits &bits) {
  for (size_t i = 0; i < bits.count; ++i) {
    nodes_[size_t(nodeOf(bits, i))].isExternal = true;
  }
}
