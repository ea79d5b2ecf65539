#ifndef OAVECTORINST_H
#define OAVECTORINST_H

#include "oa/oaInst.h"

namespace OpenAccess_4 {

class oaVectorInst;
class oaVectorInstBit;

// What all vector instances and instance bits of one base name have in common. It appears with the first of them and
// goes with the last, unless it was created explicitly.
class oaVectorInstDef : public oaBlockObject {
public:
  // Raises oacCannotDestroyVectorInstDefWithInsts.
  void destroy();
  // Over all bits, implicit ones included; 0 when there are none.
  oaUInt4 getMinIndex() const;
  oaUInt4 getMaxIndex() const;
  oaUInt4 getNumBits() const;
  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  oaBitOrder getBitOrder() const;
  oaBoolean isImplicit() const;
  void setBitOrder(oaBitOrder order);
  oaCollection<oaVectorInst, oaVectorInstDef> getVectorInsts() const;
  // Implicit ones included.
  oaCollection<oaVectorInstBit, oaVectorInstDef> getVectorInstBits() const;
  // Raises oacInvalidNameLength, oacInvalidHierInstName, oacInstNameOverlapsOtherInst.
  static oaVectorInstDef *create(const oaBlock *block, const oaScalarName &name, oaBitOrder order);
  static oaVectorInstDef *find(const oaBlock *block, const oaScalarName &name);
};

// Several placements of a master at one place and under one base name, numbered from start to stop. Each number is an
// implicit instance bit. Ranges of one base name must not overlap.
//
// In addition to what oaInst says, create() raises oacInstNameOverlapsOtherInst when the base name or a bit is in use,
// oacVectorInstNameMatchesAutoName when the base looks like an automatic name, and oacInvalidNameLength for more than a
// million bits. oaFig::copy() raises oacVectorInstNameMatchesAutoName, since a copy would get such a name.
class oaVectorInst : public oaInst {
public:
  using oaInst::getName;
  oaVectorInstDef *getDef() const;
  oaUInt4 getStart() const;
  oaUInt4 getStop() const;
  // The bit at that place, counted from 0 at the start. Raises oacInvalidBitIndexIntoInst.
  oaVectorInstBit *getBit(oaUInt4 bitIndex) const;
  void getName(oaVectorName &name) const;
  static oaVectorInst *create(oaBlock *block, oaDesign *master, const oaScalarName &baseName, oaUInt4 start,
                              oaUInt4 stop, const oaTransform &xform, const oaParamArray *params = NULL,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock,
                              oaPlacementStatus status = oacNonePlacementStatus);
  static oaVectorInst *create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                              const oaScalarName &viewName, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop,
                              const oaTransform &xform, const oaParamArray *params = NULL,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock,
                              oaPlacementStatus status = oacNonePlacementStatus);
  static oaVectorInst *find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 start, oaUInt4 stop);
};

// One instance of a base name: made explicitly, or implicitly as a bit of a vector instance. Implicit bits have the
// place and the master of their vector instance and cannot be changed or destroyed, nor made explicit: create() raises
// oacInstNameOverlapsOtherInst for them. Base names that look automatic, and copies, raise
// oacVectorInstBitNameMatchesAutoName.
class oaVectorInstBit : public oaBitInst {
public:
  using oaInst::getName;
  oaVectorInstDef *getDef() const;
  oaUInt4 getBitIndex() const;
  void getName(oaVectorBitName &name) const;
  static oaVectorInstBit *create(oaBlock *block, oaDesign *master, const oaScalarName &baseName, oaUInt4 bitIndex,
                                 const oaTransform &xform, const oaParamArray *params = NULL,
                                 oaBlockDomainVisibility view = oacInheritFromTopBlock,
                                 oaPlacementStatus status = oacNonePlacementStatus);
  static oaVectorInstBit *create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName, const oaScalarName &baseName, oaUInt4 bitIndex,
                                 const oaTransform &xform, const oaParamArray *params = NULL,
                                 oaBlockDomainVisibility view = oacInheritFromTopBlock,
                                 oaPlacementStatus status = oacNonePlacementStatus);
  static oaVectorInstBit *find(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &baseName, oaUInt4 bitIndex);
};

} // namespace OpenAccess_4

#endif
