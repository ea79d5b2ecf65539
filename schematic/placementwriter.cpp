// Placements, and what belongs to the placement made last: its connections and properties. Properties of the design
// are here as well.

#include "schematicwriter.h"

using namespace oa;
using namespace schematicwriter;

namespace {

// An orientation that OpenAccess does not have is told, and the symbol is placed all the same.
oaTransform transformOf(oaPlugInMain &host, const QPoint &origin, const QString &trans) {
  bool isOrthogonal = true;
  const oaOrient orient = oaConvert::toOaOrient(trans, &isOrthogonal);
  if (!isOrthogonal) {
    emit host.reportError(oaPlugInMain::tr("non orthogonal placing are not supported in OpenAccess"), 1, trans);
  }
  return oaTransform(oaConvert::toOaPoint(origin), orient);
}

// A placement that is refused must not leave its connections and properties to the one before.
void forgetPlacement(oaPlugInMain &host) {
  host.currentScalarInst = nullptr;
  host.currentVectorInst = nullptr;
  host.propertyTarget = nullptr;
}

// Null before the first placement, and when its design was closed meanwhile.
oaInst *currentInst(const oaPlugInMain &host) {
  oaObject *target = host.propertyTarget;
  return target && target->isValid() ? static_cast<oaInst *>(target) : nullptr;
}

// A bundle of terminals, which has to be looked up in the master.
bool isTerminalBundle(const QString &terminal) {
  return terminal.contains(QLatin1Char(',')) || terminal.contains(QLatin1Char(':')) ||
         terminal.contains(QLatin1Char('*'));
}

// Null when the master, or a bundle terminal of that name in it, is missing.
oaBundleTerm *masterTermNamed(const oaInst *inst, const QString &terminal) {
  oaDesign *master = inst->getMaster();
  oaBlock *block = master ? master->getTopBlock() : nullptr;
  return block ? oaBundleTerm::find(block, oaConvert::toBundleName(terminal)) : nullptr;
}

QString instText(const QString &instance, const QString &lib, const QString &cell, const QString &view) {
  return instance + QLatin1String(" of ") + lib + '/' + cell + '/' + view;
}

QString nameText(const oaInst *inst) {
  oaString name;
  inst->getName(oaConvert::ns, name);
  return oaConvert::toString(name);
}

// Runs `create(oaObject *target)` for a property of the placement made last.
template <typename Create>
void writeProperty(oaPlugInMain &host, const char *label, const QString &name, Create create) {
  if (!currentlayout::isOpen(host, label)) {
    return;
  }
  oaInst *inst = currentInst(host);
  if (!inst) {
    emit host.reportError(oaPlugInMain::tr("no placement for the property"), 1,
                          QLatin1String(label) + QLatin1String(": ") + name);
    return;
  }
  saving(
      host, label, [&] { create(inst); }, [&] { return name + QLatin1String(" of ") + nameText(inst); });
}

} // namespace

void oaPlugInMain::savePlacement(QString lib, QString cell, QString view, QString instance, QPoint origin,
                                 QString trans) {
  write(
      *this, "savePlacement",
      [&] {
        forgetPlacement(*this);
        const oaTransform xform = transformOf(*this, origin, trans);
        currentScalarInst = oaScalarInst::create(currentBlock, toOaScalarName(lib), toOaScalarName(cell),
                                                 toOaScalarName(view), toOaScalarName(instance), xform, nullptr,
                                                 oacInheritFromTopBlock, oacNonePlacementStatus);
        propertyTarget = currentScalarInst;
      },
      [&] { return instText(instance, lib, cell, view); });
}

void oaPlugInMain::saveVectorPlacement(QString lib, QString cell, QString view, QString instance, QPoint origin,
                                       QString trans, int start, int stop) {
  write(
      *this, "saveVectorPlacement",
      [&] {
        forgetPlacement(*this);
        const oaTransform xform = transformOf(*this, origin, trans);
        currentVectorInst = oaVectorInst::create(
            currentBlock, toOaScalarName(lib), toOaScalarName(cell), toOaScalarName(view), toOaScalarName(instance),
            oaUInt4(start), oaUInt4(stop), xform, nullptr, oacInheritFromTopBlock, oacNonePlacementStatus);
        propertyTarget = currentVectorInst;
      },
      [&] { return instText(QString::fromLatin1("%1<%2:%3>").arg(instance).arg(start).arg(stop), lib, cell, view); });
}

// By the terminal's name, so the master need not exist.
void oaPlugInMain::savePlacementConnection(int net, QString terminal) {
  write(
      *this, "savePlacementConnection",
      [&] {
        oaInst *inst = currentInst(*this);
        oaNet *known = inst ? liveEntry(*this, "savePlacementConnection", netsByNumber, net) : nullptr;
        if (known) {
          oaInstTerm::create(known, inst, toOaName(terminal), oacInheritFromTopBlock);
        }
      },
      [&] { return QString::fromLatin1("net %1 to terminal ").arg(net) + terminal; });
}

void oaPlugInMain::saveVectorPlacementConnection(QString terminal, QString net) {
  const auto describe = [&] { return QLatin1String("net ") + net + QLatin1String(" to terminal ") + terminal; };
  write(
      *this, "saveVectorPlacementConnection",
      [&] {
        const oaBundleName bundle = toBundleName(net);
        oaInst *inst = currentInst(*this);
        if (!inst) {
          return;
        }
        oaBundleNet *bundleNet = bundleNetNamed(currentBlock, bundle);
        if (!isTerminalBundle(terminal)) {
          oaInstTerm::create(bundleNet, inst, toOaName(terminal), oacInheritFromTopBlock);
        } else if (oaBundleTerm *term = masterTermNamed(inst, terminal)) {
          oaInstTerm::create(bundleNet, inst, term, oacInheritFromTopBlock);
        } else {
          emit reportError(tr("the placed cell has no such bundle of terminals, the net stays unconnected"), 2,
                           QLatin1String("saveVectorPlacementConnection: ") + describe());
        }
      },
      describe);
}

void oaPlugInMain::saveStringProp(QString name, QString value) {
  writeProperty(*this, "saveStringProp", name,
                [&](oaObject *target) { oaStringProp::create(target, toOaString(name), toOaString(value)); });
}

void oaPlugInMain::saveIntProp(QString name, int value) {
  writeProperty(*this, "saveIntProp", name,
                [&](oaObject *target) { oaIntProp::create(target, toOaString(name), value); });
}

void oaPlugInMain::saveDoubleProp(QString name, double value) {
  writeProperty(*this, "saveDoubleProp", name,
                [&](oaObject *target) { oaDoubleProp::create(target, toOaString(name), value); });
}

void oaPlugInMain::saveBoolProp(QString name, bool value) {
  writeProperty(*this, "saveBoolProp", name,
                [&](oaObject *target) { oaBooleanProp::create(target, toOaString(name), value); });
}

void oaPlugInMain::savePointProp(QString name, QPoint value) {
  writeProperty(*this, "savePointProp", name, [&](oaObject *target) {
    oaStringProp::create(target, toOaString(name), toOaString(toPointString(value)));
  });
}

void oaPlugInMain::savePropString(QString name, QString value) {
  write(
      *this, "savePropString", [&] { oaStringProp::create(currentDesign, toOaString(name), toOaString(value)); },
      [&] { return name; });
}

void oaPlugInMain::savePropInt(QString name, int value) {
  write(
      *this, "savePropInt", [&] { oaIntProp::create(currentDesign, toOaString(name), value); }, [&] { return name; });
}
