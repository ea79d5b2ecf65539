#ifndef OAVIA_H
#define OAVIA_H

#include "oa/oaRef.h"

namespace OpenAccess_4 {

class oaCustomViaHeader;
class oaStdViaHeader;
class oaViaDef;
class oaViaHeader;
class oaViaParam;

// The placement of a via definition's master. This release of the kit stores no vias: blocks have none, and clients
// that read vias compile and find nothing to read.
class oaVia : public oaRef {
public:
  oaViaHeader *getHeader() const;
  // NULL while the definition is not found in the design's technology.
  oaViaDef *getViaDef() const;
  void getViaDefName(oaString &name) const;
  oaPurposeNum getPurposeNum() const;
};

class oaStdVia : public oaVia {
public:
  oaStdViaHeader *getHeader() const;
  // Effective values, the definition's included.
  void getViaParams(oaViaParam &params) const;
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
  void getParams(oaParamArray &params) const;
};

// What all vias of one definition and parameter set have in common.
class oaViaHeader : public oaRefHeader {
public:
  oaViaDef *getViaDef() const;
  void getViaDefName(oaString &name) const;
};

class oaStdViaHeader : public oaViaHeader {
public:
  void getParams(oaViaParam &params) const;
};

class oaCustomViaHeader : public oaViaHeader {
public:
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
