#include "viawriter.h"

#include <QSet>

#include "viaparameters.h"

using namespace oa;

namespace {

QString valueOf(const char *key, const QStringList &names, const QStringList &values) {
  return oaConvert::getParameter_(QLatin1String(key), names, values, QString());
}

bool hasType(const char *type, const QStringList &names, const QStringList &values) {
  return valueOf(viakey::kType, names, values) == QLatin1String(type);
}

// Null when the technology of the current design has no definition of that name.
oaViaDef *findViaDef(oaPlugInMain &host, const QString &name) {
  const oaTech *tech = host.currentDesign->getTech();
  return tech ? oaViaDef::find(tech, oaConvert::toOaString(name)) : nullptr;
}

// The technology of the library from which the host has a via; open for reading while the object lives.
class OriginalTech {
public:
  explicit OriginalTech(const QString &libName) {
    try {
      oaLib *lib = libName.isEmpty() ? nullptr : oaLib::find(oaConvert::toOaScalarName(libName));
      if (lib && oaTech::exists(lib)) {
        tech_ = oaTech::open(lib, 'r');
      }
    } catch (const oaException &) { // NOLINT(bugprone-empty-catch): a via can do without
    }
  }
  ~OriginalTech() {
    if (tech_ && tech_->isValid()) {
      tech_->close();
    }
  }
  OriginalTech(const OriginalTech &) = delete;
  OriginalTech &operator=(const OriginalTech &) = delete;

  // Null unless there is a standard definition of that name between these layers.
  const oaStdViaDef *find(const QString &name, oaLayerNum layer1, oaLayerNum layer2) const {
    const oaViaDef *viaDef = tech_ ? oaViaDef::find(tech_, oaConvert::toOaString(name)) : nullptr;
    const bool isThis = viaDef && viaDef->getType() == oacStdViaDefType && viaDef->getLayer1Num() == layer1 &&
                        viaDef->getLayer2Num() == layer2;
    return isThis ? static_cast<const oaStdViaDef *>(viaDef) : nullptr;
  }

private:
  oaTech *tech_ = nullptr;
};

// A layer of the technology by number. One that is missing is created like `original`, if there is one and its name is
// free.
oaPhysicalLayer *layerOf(oaTech *tech, oaLayerNum number, const oaPhysicalLayer *original) {
  if (oaPhysicalLayer *layer = oaPhysicalLayer::find(tech, number)) {
    return layer;
  }
  oaString name = oaConvert::toOaString(QString::number(number));
  oaMaterial material = oacOtherMaterial;
  if (original) {
    oaString originalName;
    original->getName(originalName);
    material = original->getMaterial();
    if (!oaLayer::find(tech, originalName)) {
      name = originalName;
    }
  }
  return oaPhysicalLayer::create(tech, name, number, material);
}

// A copy in another technology.
oaStdViaDef *copyStdViaDef(oaTech *tech, const oaStdViaDef *original) {
  oaString name;
  original->getName(name);
  oaViaParam params;
  original->getParams(params);
  oaPhysicalLayer *layer1 = layerOf(tech, original->getLayer1Num(), original->getLayer1());
  oaPhysicalLayer *layer2 = layerOf(tech, original->getLayer2Num(), original->getLayer2());
  oaPhysicalLayer *implant1 =
      original->hasImplant1() ? layerOf(tech, original->getImplant1Num(), original->getImplant1()) : nullptr;
  oaPhysicalLayer *implant2 =
      original->hasImplant2() ? layerOf(tech, original->getImplant2Num(), original->getImplant2()) : nullptr;
  oaStdViaDef *copy = oaStdViaDef::create(tech, name, layer1, layer2, params, implant1, implant2);
  copy->setResistancePerCut(original->getResistancePerCut());
  return copy;
}

// The technology may be one that the library has attached: then the definition changes another library.
void reportForeignTech(oaPlugInMain &host, oaTech *tech, const QString &name) {
  oaString techLib, lib;
  tech->getLibName(oaConvert::ns, techLib);
  host.currentDesign->getLibName(oaConvert::ns, lib);
  if (techLib != lib) {
    emit host.reportError(oaPlugInMain::tr("std via definition is created in the technology of another library"), 2,
                          name + QLatin1String(", ") + oaConvert::toString(techLib));
  }
}

// Saved and closed with the design. The list of a via tells its own values only, and no implants, so the definition
// that it was read by is copied where it can be had.
oaStdViaDef *createStdViaDef(oaPlugInMain &host, const QString &name, const QString &originalLib,
                             const QStringList &names, const QStringList &values) {
  for (const char *key : {viakey::kLayer1, viakey::kLayer2, "cutLayer", "cutWidth", "cutHeight"}) {
    bool isNumber = false;
    const QString value = valueOf(key, names, values);
    (void)value.toUInt(&isNumber);
    if (!isNumber) {
      emit host.reportError(oaPlugInMain::tr("std via definition not found"), 1,
                            oaPlugInMain::tr("%1, and it cannot be created: %2 is \"%3\", expected a number")
                                .arg(name, QLatin1String(key), value));
      return nullptr;
    }
  }
  const QString layer1 = valueOf(viakey::kLayer1, names, values);
  const QString layer2 = valueOf(viakey::kLayer2, names, values);
  host.openTech('a');
  oaTech *tech = host.currentTech;
  if (!tech || tech != host.currentDesign->getTech()) {
    emit host.reportError(oaPlugInMain::tr("std via definition not found"), 1,
                          oaPlugInMain::tr("%1, and the technology cannot be opened to create it").arg(name));
    return nullptr;
  }
  reportForeignTech(host, tech, name);
  const OriginalTech originalTech(originalLib);
  if (const oaStdViaDef *original = originalTech.find(name, layer1.toUInt(), layer2.toUInt())) {
    return copyStdViaDef(tech, original);
  }
  const oaViaParam params = toOaViaParam(names, values);
  if (params.getImplant1Enc() != oaVector(0, 0) || params.getImplant2Enc() != oaVector(0, 0)) {
    emit host.reportError(oaPlugInMain::tr("std via definition is created without implants"), 2, name);
  }
  return oaStdViaDef::create(tech, oaConvert::toOaString(name), layerOf(tech, layer1.toUInt(), nullptr),
                             layerOf(tech, layer2.toUInt(), nullptr), params);
}

// Why a via that the list describes is not one of this definition; empty when it is. A list need not tell layers.
QString layersFault(const oaViaDef *viaDef, const QStringList &names, const QStringList &values) {
  const struct {
    const char *key;
    oaLayerNum number;
  } layers[] = {{viakey::kLayer1, viaDef->getLayer1Num()}, {viakey::kLayer2, viaDef->getLayer2Num()}};
  for (const auto &layer : layers) {
    // Parameters of a custom via's master may have the same name and come first.
    const int at = names.lastIndexOf(QLatin1String(layer.key));
    if (at < 0 || at >= values.size()) {
      continue;
    }
    bool isNumber = false;
    if (values.at(at).toUInt(&isNumber) != layer.number || !isNumber) {
      return oaPlugInMain::tr("the one of the technology has %1 %2, that of the via %3")
          .arg(QLatin1String(layer.key))
          .arg(layer.number)
          .arg(values.at(at));
    }
  }
  return QString();
}

bool hasLayersOf(oaPlugInMain &host, const QString &message, const oaViaDef *viaDef, const QStringList &names,
                 const QStringList &values) {
  const QString fault = layersFault(viaDef, names, values);
  if (!fault.isEmpty()) {
    emit host.reportError(message, 1, valueOf(viakey::kViaDefName, names, values) + QLatin1String(": ") + fault);
  }
  return fault.isEmpty();
}

// What is told once for a design, though it concerns each via. Kept by this file, since vias are written one by one.
QSet<QString> &toldOfDesign() {
  static QSet<QString> told;
  return told;
}

bool isToldFirst(const QString &what) {
  const bool isFirst = !toldOfDesign().contains(what);
  toldOfDesign().insert(what);
  return isFirst;
}

QString implantsOf(const oaStdViaDef *viaDef) {
  const QString none = oaPlugInMain::tr("none");
  return (viaDef->hasImplant1() ? QString::number(viaDef->getImplant1Num()) : none) + QLatin1String(", ") +
         (viaDef->hasImplant2() ? QString::number(viaDef->getImplant2Num()) : none);
}

// The definition that the technology has may draw other implants than the one that the via was read by. That one is
// looked up once for a design, not with each via.
void reportOtherImplants(oaPlugInMain &host, const oaStdViaDef *viaDef, const QString &originalLib,
                         const oaViaParam &params) {
  oaString text;
  viaDef->getName(text);
  const QString name = oaConvert::toString(text);
  viaDef->getTech()->getLibName(oaConvert::ns, text);
  const QString lib = oaConvert::toString(text);
  if (lib == originalLib || !isToldFirst(originalLib + QLatin1Char('/') + name)) {
    return;
  }
  const OriginalTech originalTech(originalLib);
  if (const oaStdViaDef *original = originalTech.find(name, viaDef->getLayer1Num(), viaDef->getLayer2Num())) {
    if (implantsOf(original) != implantsOf(viaDef)) {
      emit host.reportError(oaPlugInMain::tr("std via definition has other implants"), 2,
                            oaPlugInMain::tr("%1: on layers %2 in library %3, on layers %4 in library %5")
                                .arg(name, implantsOf(viaDef), lib, implantsOf(original), originalLib));
    }
    return;
  }
  if ((params.getImplant1Enc() != oaVector(0, 0) && !viaDef->hasImplant1()) ||
      (params.getImplant2Enc() != oaVector(0, 0) && !viaDef->hasImplant2())) {
    emit host.reportError(oaPlugInMain::tr("std via definition is without implants"), 2, name);
  }
}

// OpenAccess would take any name, and readers complain of an empty one.
bool hasName(oaPlugInMain &host, const QString &message, const QString &name) {
  if (name.isEmpty()) {
    emit host.reportError(message, 1,
                          oaPlugInMain::tr("%1 is empty, expected a name").arg(QLatin1String(viakey::kViaDefName)));
  }
  return !name.isEmpty();
}

// The definition of a standard via, which is created when there is none. Null when there cannot be one, which the host
// was told.
const oaStdViaDef *stdViaDefOf(oaPlugInMain &host, const QString &originalLib, const QStringList &names,
                               const QStringList &values) {
  const QString message = oaPlugInMain::tr("std via definition not found");
  const QString name = valueOf(viakey::kViaDefName, names, values);
  if (!hasName(host, message, name)) {
    return nullptr;
  }
  const oaViaDef *found = findViaDef(host, name);
  if (!found) {
    isToldFirst(originalLib + QLatin1Char('/') + name); // whatever is to be told of implants
    return createStdViaDef(host, name, originalLib, names, values);
  }
  if (found->getType() != oacStdViaDefType) {
    emit host.reportError(message, 1, oaPlugInMain::tr("%1 is the definition of a custom via").arg(name));
    return nullptr;
  }
  return hasLayersOf(host, message, found, names, values) ? static_cast<const oaStdViaDef *>(found) : nullptr;
}

} // namespace

namespace viawriter {

bool isVia(const QStringList &names, const QStringList &values) {
  return hasType(viakey::kStdVia, names, values) || isCustomVia(names, values);
}

bool isCustomVia(const QStringList &names, const QStringList &values) {
  return hasType(viakey::kCustomVia, names, values);
}

oaVia *createStdVia(oaPlugInMain &host, const QString &originalLib, const QStringList &names, const QStringList &values,
                    const oaTransform &xform) {
  const oaStdViaDef *viaDef = stdViaDefOf(host, originalLib, names, values);
  if (!viaDef) {
    return nullptr;
  }
  oaViaParam definition;
  viaDef->getParams(definition);
  oaViaParam params = toOaViaParam(names, values);
  reportOtherImplants(host, viaDef, originalLib, params);
  leaveToDefinition(params, definition);
  return oaStdVia::create(host.currentBlock, viaDef, xform, &params);
}

oaCustomViaDef *findCustomViaDef(oaPlugInMain &host, const QStringList &names, const QStringList &values) {
  const QString message = oaPlugInMain::tr("custom via definition not found");
  const QString name = valueOf(viakey::kViaDefName, names, values);
  if (!hasName(host, message, name)) {
    return nullptr;
  }
  oaViaDef *found = findViaDef(host, name);
  if (!found || found->getType() != oacCustomViaDefType) {
    emit host.reportError(message, 1, name);
    return nullptr;
  }
  return hasLayersOf(host, message, found, names, values) ? static_cast<oaCustomViaDef *>(found) : nullptr;
}

// In a copy, the master may be in the library of the copy. Library names alone say little, then.
void reportOtherMaster(oaPlugInMain &host, const oaCustomViaDef *viaDef, const ViaMaster &master) {
  oaString text;
  viaDef->getLibName(oaConvert::ns, text);
  const QString lib = oaConvert::toString(text);
  viaDef->getCellName(oaConvert::ns, text);
  const QString cell = oaConvert::toString(text);
  viaDef->getViewName(oaConvert::ns, text);
  const QString view = oaConvert::toString(text);
  host.currentDesign->getLibName(oaConvert::ns, text);
  const bool isSame =
      cell == master.cell && view == master.view && (lib == master.lib || lib == oaConvert::toString(text));
  viaDef->getName(text);
  const QString detail = oaPlugInMain::tr("%1: %2, that of the via is %3")
                             .arg(oaConvert::toString(text), lib + '/' + cell + '/' + view,
                                  master.lib + '/' + master.cell + '/' + master.view);
  if (!isSame && isToldFirst(detail)) {
    emit host.reportError(oaPlugInMain::tr("custom via definition has another master"), 2, detail);
  }
}

void forgetTold() { toldOfDesign().clear(); }

// The reader puts the layers behind the parameters, one of which may have the same name.
void takeMasterParameters(QStringList &names, QStringList &values) {
  const auto take = [&](int at) {
    if (at >= 0) {
      names.removeAt(at);
      if (at < values.size()) {
        values.removeAt(at);
      }
    }
  };
  take(names.indexOf(QLatin1String(viakey::kType)));
  take(names.indexOf(QLatin1String(viakey::kViaDefName)));
  take(names.lastIndexOf(QLatin1String(viakey::kLayer1)));
  take(names.lastIndexOf(QLatin1String(viakey::kLayer2)));
}

} // namespace viawriter
