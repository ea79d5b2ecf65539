#include "oa/oaBusNet.h"

#include "bitsdef.h"
#include "oa/oaBlock.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaBitOrder, raiseBase, oacInvalidEnumValue, "bit order", "none", "ascending", "descending")

using namespace kit;

namespace {

BitsDef defAt(const oaBusNetDef *def) {
  const DesignRow at = designRow(def, kBusNetDefTable);
  return {netFamily(at.design), at.row};
}

oaName bitName(const oaScalarName &base, oaUInt4 index) { return oaName(oaVectorBitName(base, index)); }

template <typename NetType> NetType *findNet(const oaBlock *block, const oaName &name) {
  return static_cast<NetType *>(oaNet::find(block, name));
}

MemberTable::Member memberOf(const oaBundleNet *bundle, oaUInt4 index) {
  const DesignRow at = netRow(bundle);
  return checkedMember(netFamily(at.design), at.row, index);
}

oaBusNetDef *defOf(const oaNet *net) {
  const DesignRow at = netRow(net);
  return objectAt<oaBusNetDef>(at.design.busNetDefs, netNames(at.design).def(at.row));
}

BitsTable::Range rangeOf(const oaNet *net) {
  const DesignRow at = netRow(net);
  return netNames(at.design).range(at.row);
}

oaName nameOf(const oaNet *net) {
  oaName name;
  net->getName(name);
  return name;
}

} // namespace

void oaBusNetDef::destroy() { defAt(this).destroy(oacCannotDestroyBusNetDefWithNets); }
oaUInt4 oaBusNetDef::getMinIndex() const { return defAt(this).extent().least; }
oaUInt4 oaBusNetDef::getMaxIndex() const { return defAt(this).extent().greatest; }
oaUInt4 oaBusNetDef::getNumBits() const { return defAt(this).extent().count; }
void oaBusNetDef::getName(oaScalarName &name) const { defAt(this).getName(name); }
void oaBusNetDef::getName(const oaNameSpace &ns, oaString &name) const { defAt(this).getName(ns, name); }
oaBitOrder oaBusNetDef::getBitOrder() const { return defAt(this).bitOrder(); }
oaBoolean oaBusNetDef::isImplicit() const { return defAt(this).isImplicit(); }
void oaBusNetDef::setBitOrder(oaBitOrder order) { defAt(this).setBitOrder(order); }

oaCollection<oaBusNet, oaBusNetDef> oaBusNetDef::getBusNets() const {
  static const ObjectsOfDefKind kind(netFamily, oacBusNetType);
  return membersOf<oaCollection<oaBusNet, oaBusNetDef>>(kind, this, kBusNetDefTable);
}

oaCollection<oaBusNetBit, oaBusNetDef> oaBusNetDef::getBusNetBits() const {
  static const ObjectsOfDefKind kind(netFamily, oacBusNetBitType);
  return membersOf<oaCollection<oaBusNetBit, oaBusNetDef>>(kind, this, kBusNetDefTable);
}

oaBusNetDef *oaBusNetDef::create(const oaBlock *block, const oaScalarName &name, oaBitOrder order) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaBusNetDef>(design.busNetDefs, netNames(design).createDef(name, order));
}

oaBusNetDef *oaBusNetDef::find(const oaBlock *block, const oaScalarName &name) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaBusNetDef>(design.busNetDefs, netNames(design).findDef(nativeText(name)));
}

oaBusNetDef *oaBusNet::getDef() const { return defOf(this); }
oaUInt4 oaBusNet::getStart() const { return rangeOf(this).start; }
oaUInt4 oaBusNet::getStop() const { return rangeOf(this).stop; }
oaUInt4 oaBusNet::getStep() const { return rangeOf(this).step; }
void oaBusNet::getName(oaVectorName &name) const { name = *nameOf(this).getVector(); }

oaBusNet *oaBusNet::create(oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop, oaUInt4 step,
                           oaSigType sigType, oaBoolean isGlobal, oaBlockDomainVisibility view) {
  return create(block, oaVectorName(baseName, start, stop, step), sigType, isGlobal, view);
}

oaBusNet *oaBusNet::create(oaBlock *block, const oaVectorName &name, oaSigType sigType, oaBoolean isGlobal,
                           oaBlockDomainVisibility view) {
  return static_cast<oaBusNet *>(oaNet::create(block, oaName(name), sigType, isGlobal, view));
}

oaBusNet *oaBusNet::create(oaBlock *block, const oaVectorBitName &name, oaSigType sigType, oaBoolean isGlobal,
                           oaBlockDomainVisibility view) {
  oaScalarName base;
  name.getBaseName(base);
  return create(block, base, name.getIndex(), name.getIndex(), 1, sigType, isGlobal, view);
}

oaBusNet *oaBusNet::find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop,
                         oaUInt4 step) {
  return findNet<oaBusNet>(block, oaName(oaVectorName(baseName, start, stop, step)));
}

oaBoolean oaBusNet::isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop,
                                oaUInt4 step) {
  return oaNet::isValidName(block, oaName(oaVectorName(baseName, start, stop, step)));
}

oaBusNetDef *oaBusNetBit::getDef() const { return defOf(this); }
oaUInt4 oaBusNetBit::getBitIndex() const { return rangeOf(this).start; }
void oaBusNetBit::getName(oaVectorBitName &name) const { name = *nameOf(this).getVectorBit(); }

oaBusNetBit *oaBusNetBit::create(oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex, oaSigType sigType,
                                 oaBoolean isGlobal, oaBlockDomainVisibility view) {
  return static_cast<oaBusNetBit *>(oaNet::create(block, bitName(baseName, bitIndex), sigType, isGlobal, view));
}

oaBusNetBit *oaBusNetBit::create(oaBlock *block, const oaVectorBitName &name, oaSigType sigType, oaBoolean isGlobal,
                                 oaBlockDomainVisibility view) {
  return static_cast<oaBusNetBit *>(oaNet::create(block, oaName(name), sigType, isGlobal, view));
}

oaBusNetBit *oaBusNetBit::find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex) {
  return findNet<oaBusNetBit>(block, bitName(baseName, bitIndex));
}

oaBoolean oaBusNetBit::isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex) {
  return oaNet::isValidName(block, bitName(baseName, bitIndex));
}

oaUInt4 oaBundleNet::getNumMembers() const {
  const DesignRow at = netRow(this);
  return netNames(at.design).memberCount(at.row);
}

oaUInt4 oaBundleNet::getRepeat(oaUInt4 index) const { return memberOf(this, index).repeat; }

oaNet *oaBundleNet::getMember(oaUInt4 index) const {
  return objectAt<oaNet>(netRow(this).design.nets, memberOf(this, index).object);
}

void oaBundleNet::getName(oaBundleName &name) const { name = *nameOf(this).getBundle(); }

oaCollection<oaNet, oaBundleNet> oaBundleNet::getMembers() const {
  static const MembersOfBundleKind kind(netFamily);
  return membersOf<oaCollection<oaNet, oaBundleNet>>(kind, this, kNetTable);
}

oaBundleNet *oaBundleNet::create(oaBlock *block, const oaBundleName &name, oaSigType sigType, oaBoolean isGlobal,
                                 oaBlockDomainVisibility view) {
  return static_cast<oaBundleNet *>(oaNet::create(block, oaName(name), sigType, isGlobal, view));
}

oaBundleNet *oaBundleNet::find(const oaBlock *block, const oaBundleName &name) {
  return findNet<oaBundleNet>(block, oaName(name));
}

oaBoolean oaBundleNet::isValidName(oaBlock *block, const oaBundleName &name) {
  return oaNet::isValidName(block, oaName(name));
}

oaCollection<oaBusNetDef, oaBlock> oaBlock::getBusNetDefs() const {
  return wholeTable<oaCollection<oaBusNetDef, oaBlock>>(designOfBlock(this).busNetDefs);
}

} // namespace OpenAccess_4
