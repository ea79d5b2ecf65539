// The operations that read a layout; the walk itself is LayoutWalk.

#include <cstdio>

#include "designholder.h"
#include "errorguard.h"
#include "layoutwalk.h"
#include "oapluginmain.h"

using namespace oa;

namespace {

double metresPerUserUnit(oaUserUnitsType unit) {
  switch (oaUserUnitsTypeEnum(unit)) {
  case oacMillimeter:
    return 0.001;
  case oacCentimeter:
    return 0.01;
  case oacMeter:
    return 1.0;
  case oacMil:
    return 2.54e-05;
  case oacInch:
    return 0.0254;
  case oacNanometer:
    return 1e-9;
  default: // microns
    return 1e-6;
  }
}

void printParams(const oaParamArray &params) {
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    const oaParam &param = params[i];
    oaString text;
    param.getName(text);
    std::printf("%s = ", static_cast<const oaChar *>(text));
    switch (oaParamTypeEnum(param.getType())) {
    case oacBooleanParamType:
      std::printf("bool %d\n", int(param.getBooleanVal()));
      break;
    case oacIntParamType:
      std::printf("int %d\n", int(param.getIntVal()));
      break;
    case oacFloatParamType:
      std::printf("float %f\n", double(param.getFloatVal()));
      break;
    case oacStringParamType:
      param.getStringVal(text);
      std::printf("string %s\n", static_cast<const oaChar *>(text));
      break;
    case oacDoubleParamType:
      std::printf("double %f\n", param.getDoubleVal());
      break;
    default:
      break;
    }
  }
}

// A layout as the host names it.
struct LayoutName {
  LayoutName(const QString &libText, const QString &cellText, const QString &viewText)
      : lib(oaConvert::toOaScalarName(libText)), cell(oaConvert::toOaScalarName(cellText)),
        view(oaConvert::toOaScalarName(viewText)) {}

  // Opens the stored design for reading, making its library known first when a path is given.
  oaDesign *open(const QString &libPath) const {
    if (!libPath.isEmpty()) {
      oaConvert::getLib(lib, oaConvert::toOaPath(libPath));
    }
    return oaDesign::open(lib, cell, view, 'r'); // raises for a library that is still unknown
  }

  // Exchanges the open parametric master for its evaluation. Gives up with a text for the user.
  oaDesign *evaluate(DesignHolder &super, const oaParamArray &params) const {
    super.close();
    oaDesign *evaluated = oaDesign::open(lib, cell, view, params);
    if (!evaluated) {
      throw oaPlugInMain::tr("can not create parametric cell");
    }
    return evaluated;
  }

  oaScalarName lib, cell, view;
};

} // namespace

void oaPlugInMain::openLayout(QString lib, QString cell, QString view, QString libPath) {
  guard::reporting(
      [&] {
        oaConvert::init();
        const LayoutName name(lib, cell, view);
        EvaluationFaults faults;
        DesignHolder stored(name.open(libPath));
        DesignHolder evaluated;
        oaDesign *design = stored.get();
        if (design->isSuperMaster()) {
          if (oaConvert::debug) {
            std::printf("parametric cell, use defaults");
          }
          emit reportError(tr("Parametric cell, open with default parameter"), 2, MasterTable::pathOf(design));
          oaParamArray params;
          design->getParams(params);
          if (oaConvert::debug) {
            printParams(params);
          }
          design = name.evaluate(stored, params);
          evaluated.reset(design);
        }
        if (oaBlock *block = design->getTopBlock()) {
          const double dbuPerUserUnit = block->getDBUPerUU();
          emit setUnits(1.0 / dbuPerUserUnit, metresPerUserUnit(block->getUserUnits()) / dbuPerUserUnit);
        }
        emit setCurrentCell(LayoutWalk(*this, lib, faults).send(design, QStringList()));
      },
      [this](const QString &cause) { emit reportError(tr("Aborted."), 1, cause); });
}

QString oaPlugInMain::openLayout(QString lib, QString cell, QString view, QString libPath, QStringList names,
                                 QStringList values) {
  QString cellName;
  guard::reporting(
      [&] {
        oaConvert::init();
        const LayoutName name(lib, cell, view);
        EvaluationFaults faults;
        DesignHolder stored(name.open(libPath));
        DesignHolder evaluated;
        oaDesign *design = stored.get();
        if (design->isSuperMaster()) {
          oaParamArray defaults;
          design->getParams(defaults);
          // A name without a value leaves its parameter at the default.
          design = name.evaluate(stored, mergeParameter(defaults, names.mid(0, values.size()), values));
          evaluated.reset(design);
        }
        LayoutWalk walk(*this, lib, faults);
        const QString sentName = walk.cellNameOf(design, QStringList());
        emit existCell(sentName);
        if (!cellExistsReply) {
          walk.send(design, QStringList());
        }
        cellName = sentName;
      },
      [this](const QString &cause) { emit reportError(tr("Aborted."), 1, cause); });
  return cellName;
}

QString oaPlugInMain::openLayout(oaDesign *design, QStringList cellData) {
  oaString lib;
  design->getLibName(ns, lib);
  EvaluationFaults faults;
  return LayoutWalk(*this, toString(lib), faults).send(design, cellData);
}
