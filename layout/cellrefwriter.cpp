// The operations that write references to other cells.

#include "currentlayout.h"
#include "givenparameters.h"
#include "oapluginmain.h"
#include "saveguard.h"
#include "viawriter.h"

using namespace oa;

namespace {

// A reference as the host describes it; the lists run parallel.
struct Reference {
  const char *operation;
  QString lib, cell, view;
  QPoint origin;
  QString trans;
  QString instance;
  QStringList parameterNames;
  QStringList parameterValues;

  QString path() const { return lib + '/' + cell + '/' + view; }
  QString described() const { return instance.isEmpty() ? path() : instance + QLatin1String(" of ") + path(); }
};

// An orientation that OpenAccess does not have is told, and the reference is placed unrotated.
oaTransform transformOf(oaPlugInMain &host, const Reference &reference) {
  bool isOrthogonal = true;
  const oaOrient orient = oaConvert::toOaOrient(reference.trans, &isOrthogonal);
  if (!isOrthogonal) {
    emit host.reportError(oaPlugInMain::tr("non orthogonal cell reference is not supported in OpenAccess"), 2,
                          reference.described() + QLatin1String(": ") + reference.trans);
  }
  return oaTransform(oaConvert::toOaPoint(reference.origin), orient);
}

bool paramsOf(oaPlugInMain &host, const Reference &reference, oaParamArray &params) {
  return givenParameters(host, reference.lib, reference.cell, reference.view,
                         {reference.parameterNames, reference.parameterValues}, DefaultValues::kFollowMaster, params);
}

oaInst *placeScalar(oaPlugInMain &host, const Reference &reference) {
  oaParamArray given;
  const oaTransform xform = transformOf(host, reference);
  const oaParamArray *params = paramsOf(host, reference, given) ? &given : nullptr;
  const oaScalarName lib = oaConvert::toOaScalarName(reference.lib);
  const oaScalarName cell = oaConvert::toOaScalarName(reference.cell);
  const oaScalarName view = oaConvert::toOaScalarName(reference.view);
  if (reference.instance.isEmpty()) {
    return oaScalarInst::create(host.currentBlock, lib, cell, view, xform, params);
  }
  return oaScalarInst::create(host.currentBlock, lib, cell, view, oaConvert::toOaScalarName(reference.instance), xform,
                              params);
}

struct ArrayStep {
  int columnPitch, rowPitch, columns, rows;
};

void placeArray(oaPlugInMain &host, const Reference &reference, const ArrayStep &step) {
  oaParamArray given;
  const oaTransform xform = transformOf(host, reference);
  const oaParamArray *params = paramsOf(host, reference, given) ? &given : nullptr;
  const oaScalarName lib = oaConvert::toOaScalarName(reference.lib);
  const oaScalarName cell = oaConvert::toOaScalarName(reference.cell);
  const oaScalarName view = oaConvert::toOaScalarName(reference.view);
  const oaUInt4 rows = oaUInt4(step.rows);
  const oaUInt4 columns = oaUInt4(step.columns);
  if (reference.instance.isEmpty()) {
    oaArrayInst::create(host.currentBlock, lib, cell, view, xform, step.columnPitch, step.rowPitch, rows, columns,
                        params);
  } else {
    oaArrayInst::create(host.currentBlock, lib, cell, view, oaConvert::toOaScalarName(reference.instance), xform,
                        step.columnPitch, step.rowPitch, rows, columns, params);
  }
}

// The net of a name, which is created when the block has none.
oaNet *netNamed(oaPlugInMain &host, const QString &name) {
  if (oaNet *net = host.netsByName.value(name)) {
    return net;
  }
  const oaName netName = oaConvert::toOaName(name);
  oaNet *net = oaNet::find(host.currentBlock, netName);
  if (!net) {
    net = oaNet::create(host.currentBlock, netName);
  }
  host.netsByName.insert(name, net);
  return net;
}

// Each connection stands for itself: one that is refused leaves the others.
void connectTerminals(oaPlugInMain &host, const Reference &reference, oaInst *inst, const QStringList &terminalNames,
                      const QStringList &netNames) {
  for (int i = 0; i < terminalNames.size(); ++i) {
    const QString &terminal = terminalNames.at(i);
    if (i >= netNames.size()) {
      emit host.reportError(oaPlugInMain::tr("terminal without a net name stays unconnected"), 2,
                            terminal + QLatin1String(" of ") + reference.described());
      continue;
    }
    saving(
        host, reference.operation,
        [&] { oaInstTerm::create(netNamed(host, netNames.at(i)), inst, oaConvert::toOaName(terminal)); },
        [&] { return terminal + QLatin1String(" of ") + reference.described(); });
  }
}

// A reference whose parameters are the reader's list of a via becomes that via. It has no name and no terminals. Null
// when the definition is missing, which the host was told.
oaVia *placeVia(oaPlugInMain &host, const Reference &reference, const oaTransform &xform) {
  if (!viawriter::isCustomVia(reference.parameterNames, reference.parameterValues)) {
    return viawriter::createStdVia(host, reference.lib, reference.parameterNames, reference.parameterValues, xform);
  }
  oaCustomViaDef *viaDef = viawriter::findCustomViaDef(host, reference.parameterNames, reference.parameterValues);
  if (!viaDef) {
    return nullptr;
  }
  oaString lib;
  oaString cell;
  oaString view;
  viaDef->getLibName(oaConvert::ns, lib);
  viaDef->getCellName(oaConvert::ns, cell);
  viaDef->getViewName(oaConvert::ns, view);
  viawriter::reportOtherMaster(host, viaDef, {reference.lib, reference.cell, reference.view});
  HostParameters parameters = {reference.parameterNames, reference.parameterValues};
  viawriter::takeMasterParameters(parameters.names, parameters.values);
  oaParamArray given;
  // The list names what was given to the via, and that alone.
  const oaParamArray *params = givenParameters(host, oaConvert::toString(lib), oaConvert::toString(cell),
                                               oaConvert::toString(view), parameters, DefaultValues::kAreGiven, given)
                                   ? &given
                                   : nullptr;
  return oaCustomVia::create(host.currentBlock, viaDef, xform, params);
}

void connectVia(oaPlugInMain &host, const Reference &reference, oaVia *via, const QStringList &netNames) {
  if (!via || netNames.isEmpty()) {
    return;
  }
  via->addToNet(netNamed(host, netNames.first()));
  if (netNames.count(netNames.first()) != netNames.size()) {
    emit host.reportError(oaPlugInMain::tr("a via can be on one net only"), 2,
                          reference.described() + QLatin1String(": ") + netNames.join(QLatin1String(" ")));
  }
}

// There are no arrays of vias: each element becomes a via of its own.
void placeVias(oaPlugInMain &host, const Reference &reference, const ArrayStep &step) {
  const oaTransform first = transformOf(host, reference);
  for (int row = 0; row < step.rows; ++row) {
    for (int column = 0; column < step.columns; ++column) {
      const qint64 x = first.xOffset() + qint64(column) * step.columnPitch;
      const qint64 y = first.yOffset() + qint64(row) * step.rowPitch;
      if (x != int(x) || y != int(y)) {
        emit host.reportError(oaPlugInMain::tr("array of vias beyond the range of coordinates, the rest is left out"),
                              1, reference.described());
        return;
      }
      if (!placeVia(host, reference, oaTransform(int(x), int(y), first.orient()))) {
        return;
      }
    }
  }
}

oaInst *instNamed(oaBlock *block, const QString &name) {
  try {
    if (oaInst *inst = oaInst::find(block, oaSimpleName(oaConvert::toOaScalarName(name)))) {
      return inst;
    }
  } catch (const oaException &) { // NOLINT(bugprone-empty-catch): not a scalar name, so it has to be that of a vector
  }
  return oaInst::find(block, oaSimpleName(oaConvert::ns, oaConvert::toOaString(name)));
}

} // namespace

void oaPlugInMain::saveCellref(QString lib, QString cell, QString view, QPoint origin, QString trans, QString instance,
                               QStringList parameterNames, QStringList parameterValues, QStringList terminalNames,
                               QStringList netNames) {
  const Reference reference = {"saveCellref", lib,      cell,           view,           origin,
                               trans,         instance, parameterNames, parameterValues};
  if (!currentlayout::isOpen(*this, reference.operation)) {
    return;
  }
  saving(
      *this, reference.operation,
      [&] {
        if (viawriter::isVia(reference.parameterNames, reference.parameterValues)) {
          connectVia(*this, reference, placeVia(*this, reference, transformOf(*this, reference)), netNames);
        } else {
          connectTerminals(*this, reference, placeScalar(*this, reference), terminalNames, netNames);
        }
      },
      [&] { return reference.described(); });
}

void oaPlugInMain::saveCellrefArray(QString lib, QString cell, QString view, QPoint origin, QString trans,
                                    QString instance, QStringList parameterNames, QStringList parameterValues,
                                    int columnPitch, int rowPitch, int columns, int rows) {
  const Reference reference = {"saveCellrefArray", lib, cell, view, origin, trans, instance, parameterNames,
                               parameterValues};
  if (!currentlayout::isOpen(*this, reference.operation)) {
    return;
  }
  if (columns < 1 || rows < 1) {
    emit reportError(tr("an array needs at least one column and one row"), 1,
                     tr("%1: %2 columns, %3 rows").arg(reference.described()).arg(columns).arg(rows));
    return;
  }
  saving(
      *this, reference.operation,
      [&] {
        if (viawriter::isVia(reference.parameterNames, reference.parameterValues)) {
          placeVias(*this, reference, {columnPitch, rowPitch, columns, rows});
        } else {
          placeArray(*this, reference, {columnPitch, rowPitch, columns, rows});
        }
      },
      [&] { return reference.described(); });
}

QString oaPlugInMain::getInst(QString lib, QString cell, QString view, QString instance) {
  QString master;
  const QString path = lib + '/' + cell + '/' + view;
  saving(
      *this, "getInst",
      [&] {
        oaConvert::init();
        if (currentlayout::path(*this) != path) {
          currentlayout::abandon(*this);
          currentlayout::adopt(*this,
                               oaDesign::open(toOaScalarName(lib), toOaScalarName(cell), toOaScalarName(view), 'a'));
          currentlayout::rememberConnectivity(*this);
        }
        if (const oaInst *inst = instNamed(currentBlock, instance)) {
          oaString masterLib;
          oaString masterCell;
          oaString masterView;
          inst->getLibName(ns, masterLib);
          inst->getCellName(ns, masterCell);
          inst->getViewName(ns, masterView);
          master = toString(masterLib) + '/' + toString(masterCell) + '/' + toString(masterView);
        }
      },
      [&] { return instance + QLatin1String(" in ") + path; });
  return master;
}
