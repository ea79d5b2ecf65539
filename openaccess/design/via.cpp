#include "oa/oaVia.h"

#include "connectivityaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

// No object of these classes exists, so whatever pointer arrives here was cast from something else, or is dead.
[[noreturn]] void refuseVia(const oaObject *object) {
  const DesignDatabase &design = designOf(object);
  raiseBase(oacNotYetSupported, design.label() + ": the object is no via; this release of the kit stores none");
}

} // namespace

oaViaHeader *oaVia::getHeader() const { refuseVia(this); }
oaViaDef *oaVia::getViaDef() const { refuseVia(this); }
void oaVia::getViaDefName(oaString &) const { refuseVia(this); }
oaPurposeNum oaVia::getPurposeNum() const { refuseVia(this); }

oaStdViaHeader *oaStdVia::getHeader() const { refuseVia(this); }
void oaStdVia::getViaParams(oaViaParam &) const { refuseVia(this); }

void oaCustomVia::getLibName(oaScalarName &) const { refuseVia(this); }
void oaCustomVia::getCellName(oaScalarName &) const { refuseVia(this); }
void oaCustomVia::getViewName(oaScalarName &) const { refuseVia(this); }
void oaCustomVia::getLibName(const oaNameSpace &, oaString &) const { refuseVia(this); }
void oaCustomVia::getCellName(const oaNameSpace &, oaString &) const { refuseVia(this); }
void oaCustomVia::getViewName(const oaNameSpace &, oaString &) const { refuseVia(this); }
oaCustomViaHeader *oaCustomVia::getHeader() const { refuseVia(this); }
void oaCustomVia::getParams(oaParamArray &) const { refuseVia(this); }

oaViaDef *oaViaHeader::getViaDef() const { refuseVia(this); }
void oaViaHeader::getViaDefName(oaString &) const { refuseVia(this); }
void oaStdViaHeader::getParams(oaViaParam &) const { refuseVia(this); }
void oaCustomViaHeader::getLibName(oaScalarName &) const { refuseVia(this); }
void oaCustomViaHeader::getCellName(oaScalarName &) const { refuseVia(this); }
void oaCustomViaHeader::getViewName(oaScalarName &) const { refuseVia(this); }
void oaCustomViaHeader::getLibName(const oaNameSpace &, oaString &) const { refuseVia(this); }
void oaCustomViaHeader::getCellName(const oaNameSpace &, oaString &) const { refuseVia(this); }
void oaCustomViaHeader::getViewName(const oaNameSpace &, oaString &) const { refuseVia(this); }
void oaCustomViaHeader::getParams(oaParamArray &) const { refuseVia(this); }
void oaCustomViaHeader::getAllParams(oaParamArray &) const { refuseVia(this); }

oaCollection<oaVia, oaBlock> oaBlock::getVias() const {
  (void)designOfBlock(this);
  return emptyCollection<oaCollection<oaVia, oaBlock>>();
}

} // namespace OpenAccess_4
