// The operation that asks a parametric cell for its parameters.

#include <cstdio>

#include "designname.h"
#include "errorguard.h"
#include "oapluginmain.h"
#include "parametertext.h"

using namespace oa;

namespace {

// What the host gets of one parameter goes into all three lists or into none.
void append(const oaParam &param, QStringList *names, QStringList *types, QStringList *values) {
  const QString name = toParameterName(param);
  const ParameterText text = toParameterText(param);
  names->append(name);
  types->append(QLatin1String(text.type));
  values->append(text.value);
}

} // namespace

// That the cell cannot be evaluated leaves the operation as a text for the user; the host shows it itself.
void oaPlugInMain::getParameter(QString lib, QString cell, QString view, QStringList *names, QStringList *types,
                                QStringList *values) {
  guard::run(
      [&] {
        oaConvert::init();
        const DesignName name(lib, cell, view);
        DesignHolder super(name.open());
        if (!super.get()->isSuperMaster()) {
          return;
        }
        if (debug) {
          std::printf("parametric cell load parameter\n");
        }
        oaParamArray params;
        super.get()->getParams(params, 1);
        for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
          append(params[i], names, types, values);
        }
        super.close();
        const DesignHolder evaluated(oaDesign::open(name.lib, name.cell, name.view, params));
        if (!evaluated.get()) {
          throw tr("can not create parametric cell");
        }
      },
      [this](const oaException &exception) { emit reportError(tr("Aborted."), 1, toString(exception.getMsg())); },
      [this](char character) {
        emit reportError(tr("Aborted."), 0, QLatin1String(""));
        emit reportError(QString(QChar::fromLatin1(character)), 1, QLatin1String(""));
      });
}
