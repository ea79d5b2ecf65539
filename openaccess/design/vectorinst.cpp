#include "oa/oaVectorInst.h"

#include "bitsdef.h"
#include "instaccess.h"
#include "oa/oaBlock.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

BitsDef defAt(const oaVectorInstDef *def) {
  const DesignRow at = designRow(def, kVectorInstDefTable);
  return {instFamily(at.design), at.row};
}

oaVectorInstDef *defOf(const oaInst *inst) {
  const DesignRow at = instRow(inst);
  return objectAt<oaVectorInstDef>(at.design.vectorInstDefs, instNames(at.design).def(at.row));
}

BitsTable::Range rangeOf(const oaInst *inst) {
  const DesignRow at = instRow(inst);
  return instNames(at.design).range(at.row);
}

// Every bit belongs to one instance: none of a new range may exist.
void checkRange(DesignDatabase &design, const oaVectorName &name) {
  const MultiBit names = instNames(design);
  names.check(oaName(name));
  if (names.find(oaName(name)) != kNoRow) {
    refuse(design, oacInstNameExists, "instance " + nativeText(name) + " exists already");
  }
  oaScalarName baseName;
  name.getBaseName(baseName);
  const std::string base = nativeText(baseName);
  if (names.findDef(base) == kNoRow) {
    return;
  }
  for (oaUInt4 bit = 0; bit < name.getNumBits(); ++bit) {
    const Row known = names.byName().find(MultiBit::bitKey(base, name.getBitIndex(bit)));
    if (known != kNoRow) {
      refuse(design, oacInstNameOverlapsOtherInst,
             "instance " + nativeText(name) + ": " + names.describe(known) + " exists already");
    }
  }
}

void checkBit(DesignDatabase &design, const oaVectorBitName &name) {
  BitsFamily family = instFamily(design);
  family.autoNameId = oacVectorInstBitNameMatchesAutoName;
  const MultiBit names(family);
  names.check(oaName(name));
  const Row known = names.find(oaName(name));
  if (known != kNoRow) {
    const bool isOfVector = names.isImplicit(known);
    refuse(design, isOfVector ? oacInstNameOverlapsOtherInst : oacInstNameExists,
           "instance " + nativeText(name) + (isOfVector ? " is a bit of a vector instance" : " exists already"));
  }
}

template <typename Check> bool passes(Check check) {
  try {
    check();
  } catch (const oaException &) {
    return false;
  }
  return true;
}

// A checked name comes into being, with all that it implies, at one place.
template <typename InstType>
InstType *addNamed(DesignDatabase &design, const NewInst &inst, const oaName &name, const oaParamArray *params) {
  const NewInst parametric = withParams(design, inst, params);
  std::vector<Row> made;
  const Row row = instNames(design).make(name, made);
  placeInsts(design, parametric, made);
  return objectAt<InstType>(design.insts, row);
}

oaVectorInst *addVector(DesignDatabase &design, const NewInst &inst, const oaVectorName &name,
                        const oaParamArray *params) {
  checkRange(design, name);
  return addNamed<oaVectorInst>(design, inst, oaName(name), params);
}

oaVectorInstBit *addBit(DesignDatabase &design, const NewInst &inst, const oaVectorBitName &name,
                        const oaParamArray *params) {
  checkBit(design, name);
  return addNamed<oaVectorInstBit>(design, inst, oaName(name), params);
}

} // namespace

void oaVectorInstDef::destroy() { defAt(this).destroy(oacCannotDestroyVectorInstDefWithInsts); }
oaUInt4 oaVectorInstDef::getMinIndex() const { return defAt(this).extent().least; }
oaUInt4 oaVectorInstDef::getMaxIndex() const { return defAt(this).extent().greatest; }
oaUInt4 oaVectorInstDef::getNumBits() const { return defAt(this).extent().count; }
void oaVectorInstDef::getName(oaScalarName &name) const { defAt(this).getName(name); }
void oaVectorInstDef::getName(const oaNameSpace &ns, oaString &name) const { defAt(this).getName(ns, name); }
oaBitOrder oaVectorInstDef::getBitOrder() const { return defAt(this).bitOrder(); }
oaBoolean oaVectorInstDef::isImplicit() const { return defAt(this).isImplicit(); }
void oaVectorInstDef::setBitOrder(oaBitOrder order) { defAt(this).setBitOrder(order); }

oaCollection<oaVectorInst, oaVectorInstDef> oaVectorInstDef::getVectorInsts() const {
  static const ObjectsOfDefKind kind(instFamily, oacVectorInstType);
  return membersOf<oaCollection<oaVectorInst, oaVectorInstDef>>(kind, this, kVectorInstDefTable);
}

oaCollection<oaVectorInstBit, oaVectorInstDef> oaVectorInstDef::getVectorInstBits() const {
  static const ObjectsOfDefKind kind(instFamily, oacVectorInstBitType);
  return membersOf<oaCollection<oaVectorInstBit, oaVectorInstDef>>(kind, this, kVectorInstDefTable);
}

oaVectorInstDef *oaVectorInstDef::create(const oaBlock *block, const oaScalarName &name, oaBitOrder order) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaVectorInstDef>(design.vectorInstDefs, instNames(design).createDef(name, order));
}

oaVectorInstDef *oaVectorInstDef::find(const oaBlock *block, const oaScalarName &name) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaVectorInstDef>(design.vectorInstDefs, instNames(design).findDef(nativeText(name)));
}

oaVectorInstDef *oaVectorInst::getDef() const { return defOf(this); }
oaUInt4 oaVectorInst::getStart() const { return rangeOf(this).start; }
oaUInt4 oaVectorInst::getStop() const { return rangeOf(this).stop; }
void oaVectorInst::getName(oaVectorName &name) const { name = *instNameOf(this).getVector(); }

oaVectorInstBit *oaVectorInst::getBit(oaUInt4 bitIndex) const {
  const DesignRow at = instRow(this);
  const MultiBit names = instNames(at.design);
  const Row bit = names.bit(at.row, bitIndex);
  if (bit == kNoRow) {
    refuse(at.design, oacInvalidBitIndexIntoInst,
           names.describe(at.row) + " has " + std::to_string(names.numBits(at.row)) + " bits, bit " +
               std::to_string(bitIndex) + " was asked for");
  }
  return objectAt<oaVectorInstBit>(at.design.insts, bit);
}

oaVectorInst *oaVectorInst::create(oaBlock *block, oaDesign *master, const oaScalarName &baseName, oaUInt4 start,
                                   oaUInt4 stop, const oaTransform &xform, const oaParamArray *params,
                                   oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  return addVector(design, newInst(design, master, xform, view, status), oaVectorName(baseName, start, stop), params);
}

oaVectorInst *oaVectorInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                   const oaScalarName &viewName, const oaScalarName &baseName, oaUInt4 start,
                                   oaUInt4 stop, const oaTransform &xform, const oaParamArray *params,
                                   oaBlockDomainVisibility view, oaPlacementStatus status) {
  return addVector(designOfBlock(block), newInst(libName, cellName, viewName, xform, view, status),
                   oaVectorName(baseName, start, stop), params);
}

oaVectorInst *oaVectorInst::find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop) {
  return static_cast<oaVectorInst *>(
      findInst(designOfBlock(block), oaVectorName(baseName, start, stop), oacVectorInstType));
}

oaBoolean oaVectorInst::isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop) {
  return passes([&] { checkRange(designOfBlock(block), oaVectorName(baseName, start, stop)); });
}

oaVectorInstDef *oaVectorInstBit::getDef() const { return defOf(this); }
oaUInt4 oaVectorInstBit::getBitIndex() const { return rangeOf(this).start; }
void oaVectorInstBit::getName(oaVectorBitName &name) const { name = *instNameOf(this).getVectorBit(); }

oaVectorInstBit *oaVectorInstBit::create(oaBlock *block, oaDesign *master, const oaScalarName &baseName,
                                         oaUInt4 bitIndex, const oaTransform &xform, const oaParamArray *params,
                                         oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  return addBit(design, newInst(design, master, xform, view, status), oaVectorBitName(baseName, bitIndex), params);
}

oaVectorInstBit *oaVectorInstBit::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                         const oaScalarName &viewName, const oaScalarName &baseName, oaUInt4 bitIndex,
                                         const oaTransform &xform, const oaParamArray *params,
                                         oaBlockDomainVisibility view, oaPlacementStatus status) {
  return addBit(designOfBlock(block), newInst(libName, cellName, viewName, xform, view, status),
                oaVectorBitName(baseName, bitIndex), params);
}

oaVectorInstBit *oaVectorInstBit::find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex) {
  return static_cast<oaVectorInstBit *>(
      findInst(designOfBlock(block), oaVectorBitName(baseName, bitIndex), oacVectorInstBitType));
}

oaBoolean oaVectorInstBit::isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex) {
  return passes([&] { checkBit(designOfBlock(block), oaVectorBitName(baseName, bitIndex)); });
}

oaCollection<oaVectorInstDef, oaBlock> oaBlock::getVectorInstDefs() const {
  return wholeTable<oaCollection<oaVectorInstDef, oaBlock>>(designOfBlock(this).vectorInstDefs);
}

} // namespace OpenAccess_4
