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
  const oaUInt4 count = net->getNumBits();
  std::vector<int> nodes;
  nodes.reserve(count);
  for (oaUInt4 i = 0; i < count; ++i) {
    nodes.push_back(nodeOfBit(net->getBit(i)));
  }
  const Bits bits = {bitNodes_.size(), nodes.size()};
  bitNodes_.insert(bitNodes_.end(), nodes.begin(), nodes.end());
  return bitsByNet_.emplace(net, bits).first->second;
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
