#include "designname.h"

#include "oapluginmain.h"

using namespace oa;

DesignName::DesignName(const QString &libText, const QString &cellText, const QString &viewText)
    : lib(oaConvert::toOaScalarName(libText)), cell(oaConvert::toOaScalarName(cellText)),
      view(oaConvert::toOaScalarName(viewText)) {}

oaDesign *DesignName::open() const {
  oaDesign *design = oaDesign::open(lib, cell, view, 'r');
  if (!design) {
    throw oaPlugInMain::tr("can not open");
  }
  return design;
}

void DesignName::evaluateDefaults(DesignHolder &super) const {
  oaParamArray params;
  super.get()->getParams(params);
  super.close();
  super.reset(oaDesign::open(lib, cell, view, params));
  if (!super.get()) {
    throw oaPlugInMain::tr("can not create parametric cell");
  }
}
