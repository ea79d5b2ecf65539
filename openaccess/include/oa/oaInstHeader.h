#ifndef OAINSTHEADER_H
#define OAINSTHEADER_H

#include "oa/oaInst.h"

namespace OpenAccess_4 {

// One for each master that a block places. It appears with the first instance of the master and goes with the last.
class oaInstHeader : public oaRefHeader {
public:
  void getLibName(oaScalarName &libName) const;
  void getCellName(oaScalarName &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getLibName(const oaNameSpace &ns, oaString &libName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;
  void getViewName(const oaNameSpace &ns, oaString &viewName) const;
  // Parameters of the header's instances: none for ordinary masters.
  void getParams(oaParamArray &params) const;
  void getAllParams(oaParamArray &params) const;
  void setMasterBBox(const oaBox &bBox);
  oaCollection<oaInst, oaInstHeader> getInsts(oaUInt4 filterFlags = oacInstIterNotImplicit) const;
  oaCollection<oaInstHeader, oaInstHeader> getSubHeaders() const;
  static oaInstHeader *find(const oaBlock *block, const oaDesign *master);
  static oaInstHeader *find(const oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                            const oaScalarName &viewName);
};

} // namespace OpenAccess_4

#endif
