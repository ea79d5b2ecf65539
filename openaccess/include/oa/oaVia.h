#ifndef OAVIA_H
#define OAVIA_H

#include "oa/oaRef.h"

namespace OpenAccess_4 {

class oaCustomViaDef;
class oaCustomViaHeader;
class oaStdViaDef;
class oaStdViaHeader;
class oaViaDef;
class oaViaHeader;
class oaViaParam;

// The placement of a via definition's master. Definitions are found by name in the design's technology whenever they
// are needed, so a via keeps its name when its definition goes, and follows a definition that changes.
//
// The via's purpose is an attribute of the via alone: rectangles in the master of a standard via are on "drawing".
class oaVia : public oaRef {
public:
  oaViaHeader *getHeader() const;
  // NULL while the definition is not found in the design's technology.
  oaViaDef *getViaDef() const;
  void getViaDefName(oaString &name) const;
  // Drawing unless it was set.
  oaPurposeNum getPurposeNum() const;
  // Raises oacInvalidPurposeNumber for the purposes that stand for any and none.
  void setPurposeNum(oaPurposeNum purposeNum);
};

class oaStdVia : public oaVia {
public:
  oaStdViaHeader *getHeader() const;
  // Effective values: those that come from the definition are flagged as default. While the definition is not found,
  // they are those of a new oaViaParam.
  void getViaParams(oaViaParam &params) const;
  // In place of all that were given before; values that are flagged as default come from the definition.
  void setViaParams(const oaViaParam &params);
  // Raises oacViaDefNotInTechAssociatedWithDesign, and oacStdViaDefSameNameAsCustomViaDef when the block has custom
  // vias of a definition of that name.
  static oaStdVia *create(oaBlock *block, const oaStdViaDef *viaDef, const oaTransform &xform,
                          const oaViaParam *params = NULL);
};

class oaCustomVia : public oaVia {
public:
  void getLibName(oaScalarName &libName) const;
  void getCellName(oaScalarName &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getLibName(const oaNameSpace &ns, oaString &libName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;
  void getViewName(const oaNameSpace &ns, oaString &viewName) const;
  oaCustomViaHeader *getHeader() const;
  // Parameters that were given: none for ordinary masters.
  void getParams(oaParamArray &params) const;
  // As create().
  void setParams(const oaParamArray &params);
  // Opens nothing, unless there are parameters: those raise oacParamsSuppliedForNonPCellViaMaster for a master that is
  // not parametric and oacPcellMasterNotBound for one that cannot be opened. Further as oaStdVia::create(), with
  // oacCustomViaDefSameNameAsStdViaDef.
  static oaCustomVia *create(oaBlock *block, const oaCustomViaDef *viaDef, const oaTransform &xform,
                             const oaParamArray *params = NULL);
};

// What all vias of one definition and parameter set have in common. The vias of a standard definition are on sub
// headers, one for each parameter set (the empty one included); their super header has no vias of its own. A header
// goes with its last via.
class oaViaHeader : public oaRefHeader {
public:
  oaViaDef *getViaDef() const;
  void getViaDefName(oaString &name) const;
  oaCollection<oaVia, oaViaHeader> getVias() const;
  oaCollection<oaViaHeader, oaViaHeader> getSubHeaders() const;
  // The super header of a standard definition. NULL when the block has no vias of the definition.
  static oaViaHeader *find(const oaBlock *block, const oaString &viaDefName);
  static oaViaHeader *find(const oaBlock *block, const oaViaDef *viaDef);
};

class oaStdViaHeader : public oaViaHeader {
public:
  // As oaStdVia::getViaParams(); of a super header the definition's.
  void getParams(oaViaParam &params) const;
};

class oaCustomViaHeader : public oaViaHeader {
public:
  // The definition's; what they were when it was last found while it is not.
  void getLibName(oaScalarName &libName) const;
  void getCellName(oaScalarName &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getLibName(const oaNameSpace &ns, oaString &libName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;
  void getViewName(const oaNameSpace &ns, oaString &viewName) const;
  void getParams(oaParamArray &params) const;
  void getAllParams(oaParamArray &params) const;
};

} // namespace OpenAccess_4

#endif
