#include "oa/oaBusTerm.h"

#include "bitsdef.h"
#include "oa/oaBlock.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

BitsDef defAt(const oaBusTermDef *def) {
  const DesignRow at = designRow(def, kBusTermDefTable);
  return {termFamily(at.design), at.row};
}

oaName bitName(const oaScalarName &base, oaUInt4 index) { return oaName(oaVectorBitName(base, index)); }

template <typename TermType> TermType *findTerm(const oaBlock *block, const oaName &name) {
  return static_cast<TermType *>(oaTerm::find(block, name));
}

MemberTable::Member memberOf(const oaBundleTerm *bundle, oaUInt4 index) {
  const DesignRow at = termRow(bundle);
  return checkedMember(termFamily(at.design), at.row, index);
}

oaBusTermDef *defOf(const oaTerm *term) {
  const DesignRow at = termRow(term);
  return objectAt<oaBusTermDef>(at.design.busTermDefs, termNames(at.design).def(at.row));
}

BitsTable::Range rangeOf(const oaTerm *term) {
  const DesignRow at = termRow(term);
  return termNames(at.design).range(at.row);
}

oaName nameOf(const oaTerm *term) {
  oaName name;
  term->getName(name);
  return name;
}

} // namespace

void oaBusTermDef::destroy() { defAt(this).destroy(oacCannotDestroyBusTermDefWithTerms); }
oaUInt4 oaBusTermDef::getMinIndex() const { return defAt(this).extent().least; }
oaUInt4 oaBusTermDef::getMaxIndex() const { return defAt(this).extent().greatest; }
oaUInt4 oaBusTermDef::getNumBits() const { return defAt(this).extent().count; }
void oaBusTermDef::getName(oaScalarName &name) const { defAt(this).getName(name); }
void oaBusTermDef::getName(const oaNameSpace &ns, oaString &name) const { defAt(this).getName(ns, name); }
oaBitOrder oaBusTermDef::getBitOrder() const { return defAt(this).bitOrder(); }
oaBoolean oaBusTermDef::isImplicit() const { return defAt(this).isImplicit(); }
void oaBusTermDef::setBitOrder(oaBitOrder order) { defAt(this).setBitOrder(order); }

oaCollection<oaBusTerm, oaBusTermDef> oaBusTermDef::getBusTerms() const {
  static const ObjectsOfDefKind kind(termFamily, oacBusTermType);
  return membersOf<oaCollection<oaBusTerm, oaBusTermDef>>(kind, this, kBusTermDefTable);
}

oaCollection<oaBusTermBit, oaBusTermDef> oaBusTermDef::getBusTermBits() const {
  static const ObjectsOfDefKind kind(termFamily, oacBusTermBitType);
  return membersOf<oaCollection<oaBusTermBit, oaBusTermDef>>(kind, this, kBusTermDefTable);
}

oaBusTermDef *oaBusTermDef::create(const oaBlock *block, const oaScalarName &name, oaBitOrder order) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaBusTermDef>(design.busTermDefs, termNames(design).createDef(name, order));
}

oaBusTermDef *oaBusTermDef::find(const oaBlock *block, const oaScalarName &name) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaBusTermDef>(design.busTermDefs, termNames(design).findDef(nativeText(name)));
}

oaBusTermDef *oaBusTerm::getDef() const { return defOf(this); }
oaUInt4 oaBusTerm::getStart() const { return rangeOf(this).start; }
oaUInt4 oaBusTerm::getStop() const { return rangeOf(this).stop; }
oaUInt4 oaBusTerm::getStep() const { return rangeOf(this).step; }
void oaBusTerm::getName(oaVectorName &name) const { name = *nameOf(this).getVector(); }

oaBusTerm *oaBusTerm::create(oaNet *net, const oaScalarName &name, oaUInt4 start, oaUInt4 stop, oaUInt4 step,
                             oaTermType termType, oaBlockDomainVisibility view) {
  return create(net, oaVectorName(name, start, stop, step), termType, view);
}

oaBusTerm *oaBusTerm::create(oaNet *net, const oaVectorName &name, oaTermType termType, oaBlockDomainVisibility view) {
  return static_cast<oaBusTerm *>(oaTerm::create(net, oaName(name), termType, view));
}

oaBusTerm *oaBusTerm::create(oaNet *net, const oaVectorBitName &name, oaTermType termType,
                             oaBlockDomainVisibility view) {
  oaScalarName base;
  name.getBaseName(base);
  return create(net, base, name.getIndex(), name.getIndex(), 1, termType, view);
}

oaBusTerm *oaBusTerm::find(const oaBlock *block, const oaScalarName &name, oaUInt4 start, oaUInt4 stop, oaUInt4 step) {
  return findTerm<oaBusTerm>(block, oaName(oaVectorName(name, start, stop, step)));
}

oaBoolean oaBusTerm::isValidName(const oaBlock *block, const oaNet *net, const oaScalarName &name, oaUInt4 start,
                                 oaUInt4 stop, oaUInt4 step) {
  return block == net->getBlock() && oaTerm::isValidName(net, oaName(oaVectorName(name, start, stop, step)));
}

oaBusTermDef *oaBusTermBit::getDef() const { return defOf(this); }
oaUInt4 oaBusTermBit::getBitIndex() const { return rangeOf(this).start; }
void oaBusTermBit::getName(oaVectorBitName &name) const { name = *nameOf(this).getVectorBit(); }

oaBusTermBit *oaBusTermBit::create(oaBitNet *net, const oaScalarName &baseName, oaUInt4 bitIndex, oaTermType termType,
                                   oaBlockDomainVisibility view) {
  return static_cast<oaBusTermBit *>(oaTerm::create(net, bitName(baseName, bitIndex), termType, view));
}

oaBusTermBit *oaBusTermBit::create(oaBitNet *net, const oaVectorBitName &name, oaTermType termType,
                                   oaBlockDomainVisibility view) {
  return static_cast<oaBusTermBit *>(oaTerm::create(net, oaName(name), termType, view));
}

oaBusTermBit *oaBusTermBit::find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex) {
  return findTerm<oaBusTermBit>(block, bitName(baseName, bitIndex));
}

oaBoolean oaBusTermBit::isValidName(const oaBitNet *net, const oaScalarName &baseName, oaUInt4 bitIndex) {
  return oaTerm::isValidName(net, bitName(baseName, bitIndex));
}

oaUInt4 oaBundleTerm::getNumMembers() const {
  const DesignRow at = termRow(this);
  return termNames(at.design).memberCount(at.row);
}

oaTerm *oaBundleTerm::getMember(oaUInt4 index) const {
  return objectAt<oaTerm>(termRow(this).design.terms, memberOf(this, index).object);
}

void oaBundleTerm::getName(oaBundleName &name) const { name = *nameOf(this).getBundle(); }

oaCollection<oaTerm, oaBundleTerm> oaBundleTerm::getMembers() const {
  static const MembersOfBundleKind kind(termFamily);
  return membersOf<oaCollection<oaTerm, oaBundleTerm>>(kind, this, kTermTable);
}

oaBundleTerm *oaBundleTerm::create(oaNet *net, const oaBundleName &name, oaTermType termType,
                                   oaBlockDomainVisibility view) {
  return static_cast<oaBundleTerm *>(oaTerm::create(net, oaName(name), termType, view));
}

oaBundleTerm *oaBundleTerm::find(const oaBlock *block, const oaBundleName &name) {
  return findTerm<oaBundleTerm>(block, oaName(name));
}

oaBoolean oaBundleTerm::isValidName(oaBlock *block, oaNet *net, const oaBundleName &name) {
  return block == net->getBlock() && oaTerm::isValidName(net, oaName(name));
}

oaCollection<oaBusTermDef, oaBlock> oaBlock::getBusTermDefs() const {
  return wholeTable<oaCollection<oaBusTermDef, oaBlock>>(designOfBlock(this).busTermDefs);
}

} // namespace OpenAccess_4
