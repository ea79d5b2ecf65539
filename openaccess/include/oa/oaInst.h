#ifndef OAINST_H
#define OAINST_H

#include "oa/oaConnectivityEnums.h"
#include "oa/oaRef.h"

namespace OpenAccess_4 {

class oaInstHeader;
class oaInstTerm;

// The placement of a design. The master need not exist. Destroying an instance destroys its instance terminals. An
// implicit bit of a vector instance can be read; what would change it raises oacCannotMoveImplicitInst,
// oacCannotSetMasterImplicitInst and so on. oaFig::copy() and oaFig::destroy() raise oacCannotCopyImplicitInst and
// oacCannotDestroyImplicitInst.
//
// The create functions of all classes raise oacInstNameExists for a name in use, oacInvalidHierInstName for one with
// "/", oacInstNameOverlapsOtherInst for a scalar name that has bits and for bits of a scalar name,
// oacCannotCreateRecursiveDesign when the given master contains the block's design, and, when parameters are given,
// oacPcellMasterNotBound or oacParamsSuppliedForNonPCellInstMaster.
class oaInst : public oaRef {
public:
  void getLibName(oaScalarName &libName) const;
  void getCellName(oaScalarName &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getLibName(const oaNameSpace &ns, oaString &libName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;
  void getViewName(const oaNameSpace &ns, oaString &viewName) const;
  oaInstHeader *getHeader() const;
  void getName(oaSimpleName &name) const;
  void getName(const oaNameSpace &ns, oaString &name) const;
  // Parameters given to this instance; empty for ordinary masters.
  void getParams(oaParamArray &params) const;
  oaBoolean findParam(const oaString &name, oaParam &param) const;
  void setParams(const oaParamArray &params);
  oaUInt4 getNumBits() const;
  oaPlacementStatus getPlacementStatus() const;
  oaUInt4 getPriority() const;
  oaBoolean isImplicit() const;
  // Connected by positions rather than by names.
  oaBoolean usesTermPositions() const;
  void setMaster(const oaDesign *master);
  void setMaster(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
  void setPlacementStatus(oaPlacementStatus status);
  void setPriority(oaUInt4 priority);
  oaCollection<oaInstTerm, oaInst> getInstTerms(oaUInt4 filterFlags = oacInstTermIterNotImplicit) const;
  // Of every class, implicit bits included. NULL when there is none.
  static oaInst *find(const oaBlock *block, const oaSimpleName &name);
};

class oaBitInst : public oaInst {};

class oaScalarInst : public oaBitInst {
public:
  using oaInst::getName;
  void getName(oaScalarName &name) const;
  void setName(const oaScalarName &name);
  static oaScalarInst *create(oaBlock *block, oaDesign *master, const oaScalarName &name, const oaTransform &xform,
                              const oaParamArray *params = NULL, oaBlockDomainVisibility view = oacInheritFromTopBlock,
                              oaPlacementStatus status = oacNonePlacementStatus);
  // Without a name: I__ and a number.
  static oaScalarInst *create(oaBlock *block, oaDesign *master, const oaTransform &xform,
                              const oaParamArray *params = NULL, oaBlockDomainVisibility view = oacInheritFromTopBlock,
                              oaPlacementStatus status = oacNonePlacementStatus);
  // By the master's names: nothing is opened, and the master need not exist.
  static oaScalarInst *create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                              const oaScalarName &viewName, const oaScalarName &name, const oaTransform &xform,
                              const oaParamArray *params = NULL, oaBlockDomainVisibility view = oacInheritFromTopBlock,
                              oaPlacementStatus status = oacNonePlacementStatus);
  static oaScalarInst *create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                              const oaScalarName &viewName, const oaTransform &xform, const oaParamArray *params = NULL,
                              oaBlockDomainVisibility view = oacInheritFromTopBlock,
                              oaPlacementStatus status = oacNonePlacementStatus);
  static oaScalarInst *find(const oaBlock *block, const oaScalarName &name);
  static oaBoolean isValidName(const oaBlock *block, const oaScalarName &name);
};

// A matrix of placements under one name and with one set of terminals. Element (row, column) lies at the origin plus
// column times dX and row times dY, measured along the axes of the placing block; all elements have the orientation of
// the instance. Row 0, column 0 is at the origin. Zero rows or columns raise oacInvalidArrayInstRows,
// oacInvalidArrayInstCols.
class oaArrayInst : public oaBitInst {
public:
  using oaFig::getBBox;
  using oaInst::getName;
  using oaRef::getTransform;
  oaOffset getDX() const;
  oaOffset getDY() const;
  oaUInt4 getNumRows() const;
  oaUInt4 getNumCols() const;
  void getName(oaScalarName &name) const;
  void getBBox(oaUInt4 row, oaUInt4 col, oaBox &bBox) const;
  void getTransform(oaUInt4 row, oaUInt4 col, oaTransform &xform) const;
  void setDX(oaOffset dX);
  void setDY(oaOffset dY);
  void setNumRows(oaUInt4 numRows);
  void setNumCols(oaUInt4 numCols);
  void setName(const oaScalarName &name);
  static oaArrayInst *create(oaBlock *block, oaDesign *master, const oaScalarName &name, const oaTransform &xform,
                             oaOffset dX, oaOffset dY, oaUInt4 numRows, oaUInt4 numCols,
                             const oaParamArray *params = NULL, oaPlacementStatus status = oacNonePlacementStatus);
  static oaArrayInst *create(oaBlock *block, oaDesign *master, const oaTransform &xform, oaOffset dX, oaOffset dY,
                             oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params = NULL,
                             oaPlacementStatus status = oacNonePlacementStatus);
  static oaArrayInst *create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                             const oaScalarName &viewName, const oaScalarName &name, const oaTransform &xform,
                             oaOffset dX, oaOffset dY, oaUInt4 numRows, oaUInt4 numCols,
                             const oaParamArray *params = NULL, oaPlacementStatus status = oacNonePlacementStatus);
  static oaArrayInst *create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                             const oaScalarName &viewName, const oaTransform &xform, oaOffset dX, oaOffset dY,
                             oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params = NULL,
                             oaPlacementStatus status = oacNonePlacementStatus);
  static oaArrayInst *find(const oaBlock *block, const oaScalarName &name);
  static oaBoolean isValidName(oaBlock *block, const oaScalarName &name);
};

} // namespace OpenAccess_4

#endif
