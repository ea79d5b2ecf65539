#include "viawriter.h"

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

// Saved and closed with the design. The list of a via tells its own values only, and no implants, so the definition
// that it was read by is copied where it can be had.
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
  const QString name = valueOf(viakey::kViaDefName, names, values);
  oaViaDef *found = findViaDef(host, name);
  if (found && found->getType() != oacStdViaDefType) {
    emit host.reportError(oaPlugInMain::tr("std via definition not found"), 1,
                          oaPlugInMain::tr("%1 is the definition of a custom via").arg(name));
    return nullptr;
  }
  const oaStdViaDef *viaDef =
      found ? static_cast<oaStdViaDef *>(found) : createStdViaDef(host, name, originalLib, names, values);
  if (!viaDef) {
    return nullptr;
  }
  oaViaParam definition;
  viaDef->getParams(definition);
  oaViaParam params = toOaViaParam(names, values);
  leaveToDefinition(params, definition);
  return oaStdVia::create(host.currentBlock, viaDef, xform, &params);
}

oaCustomViaDef *findCustomViaDef(oaPlugInMain &host, const QStringList &names, const QStringList &values) {
  const QString name = valueOf(viakey::kViaDefName, names, values);
  oaViaDef *viaDef = findViaDef(host, name);
  if (viaDef && viaDef->getType() == oacCustomViaDefType) {
    return static_cast<oaCustomViaDef *>(viaDef);
  }
  emit host.reportError(oaPlugInMain::tr("custom via definition not found"), 1, name);
  return nullptr;
}

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
