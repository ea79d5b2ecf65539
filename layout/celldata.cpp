// What identifies a cell to the host: library, cell and view name, then the parameters of a parametric cell.

#include "oapluginmain.h"
#include "parametertext.h"

using namespace oa;

namespace {

struct Identity {
  QString lib, cell, view;
};

Identity identityOf(const oaDesign *design) {
  oaString lib;
  oaString cell;
  oaString view;
  design->getLibName(oaConvert::ns, lib);
  design->getCellName(oaConvert::ns, cell);
  design->getViewName(oaConvert::ns, view);
  return {oaConvert::toString(lib), oaConvert::toString(cell), oaConvert::toString(view)};
}

// Parameters exist on parametric masters and their evaluations only; the kit refuses the question on any other design.
oaParamArray paramsOf(const oaDesign *design) {
  oaParamArray params;
  if (design->isSuperMaster() || design->isSubMaster()) {
    design->getParams(params);
  }
  return params;
}

QString stringValueOf(const oaParam &param) {
  oaString value;
  param.getStringVal(value);
  return oaConvert::toString(value);
}

QString booleanText(bool value) { return QLatin1String(value ? "true" : "false"); }

} // namespace

QList<propertyItem2> oaConvert::toCellData(oaDesign *design, const QStringList &cellData) {
  const Identity identity = identityOf(design);
  QList<propertyItem2> items;
  items << propertyItem2(propertyItem2::kLibraryCode, identity.lib)
        << propertyItem2(propertyItem2::kCellCode, identity.cell)
        << propertyItem2(propertyItem2::kViewCode, identity.view);
  const oaParamArray params = paramsOf(design);
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    const oaParam &param = params[i];
    propertyItem2 item(toParameterName(param));
    switch (oaParamTypeEnum(param.getType())) {
    case oacIntParamType:
      item.setValue(int(param.getIntVal()));
      break;
    case oacFloatParamType:
      item.setValue(float(param.getFloatVal()));
      break;
    case oacDoubleParamType:
      item.setValue(float(param.getDoubleVal()));
      break;
    case oacStringParamType:
      item.setValue(stringValueOf(param));
      break;
    case oacBooleanParamType:
      item.setValue(booleanText(param.getBooleanVal()));
      break;
    default:
      continue;
    }
    items << item;
  }
  for (int i = 0; i + 1 < cellData.size(); i += 2) {
    items << propertyItem2(cellData.at(i), cellData.at(i + 1));
  }
  return items;
}

void oaPlugInMain::sendCellData(oaDesign *design) {
  const Identity identity = identityOf(design);
  emit addCellNumData(propertyItem2::kLibraryCode, identity.lib);
  emit addCellNumData(propertyItem2::kCellCode, identity.cell);
  emit addCellNumData(propertyItem2::kViewCode, identity.view);
  const oaParamArray params = paramsOf(design);
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    const oaParam &param = params[i];
    const QString name = toParameterName(param);
    switch (oaParamTypeEnum(param.getType())) {
    case oacIntParamType:
      emit addCellDataInt(name, int(param.getIntVal()));
      break;
    case oacFloatParamType:
      emit addCellDataFloat(name, float(param.getFloatVal()));
      break;
    case oacDoubleParamType:
      emit addCellDataFloat(name, float(param.getDoubleVal()));
      break;
    case oacStringParamType:
      emit addCellData(name, stringValueOf(param));
      break;
    case oacBooleanParamType:
      emit addCellData(name, booleanText(param.getBooleanVal()));
      break;
    default:
      break;
    }
  }
}
