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

oaPhysicalLayer *layerOf(oaTech *tech, const QString &number) {
  if (oaPhysicalLayer *layer = oaPhysicalLayer::find(tech, number.toUInt())) {
    return layer;
  }
  return oaPhysicalLayer::create(tech, oaConvert::toOaString(number), number.toUInt());
}

// Saved and closed with the design.
oaStdViaDef *createStdViaDef(oaPlugInMain &host, const QString &name, const QStringList &names,
                             const QStringList &values) {
  const QString layer1 = valueOf(viakey::kLayer1, names, values);
  const QString layer2 = valueOf(viakey::kLayer2, names, values);
  if (layer1.isEmpty() || layer2.isEmpty()) {
    emit host.reportError(oaPlugInMain::tr("std via definition not found"), 1,
                          oaPlugInMain::tr("%1, and it cannot be created without layer1 and layer2").arg(name));
    return nullptr;
  }
  host.openTech('a');
  oaTech *tech = host.currentTech;
  if (!tech || tech != host.currentDesign->getTech()) {
    emit host.reportError(oaPlugInMain::tr("std via definition not found"), 1,
                          oaPlugInMain::tr("%1, and the technology cannot be opened to create it").arg(name));
    return nullptr;
  }
  return oaStdViaDef::create(tech, oaConvert::toOaString(name), layerOf(tech, layer1), layerOf(tech, layer2),
                             toOaViaParam(names, values));
}

} // namespace

namespace viawriter {

bool isVia(const QStringList &names, const QStringList &values) {
  return hasType(viakey::kStdVia, names, values) || isCustomVia(names, values);
}

bool isCustomVia(const QStringList &names, const QStringList &values) {
  return hasType(viakey::kCustomVia, names, values);
}

oaVia *createStdVia(oaPlugInMain &host, const QStringList &names, const QStringList &values, const oaTransform &xform) {
  const QString name = valueOf(viakey::kViaDefName, names, values);
  oaViaDef *found = findViaDef(host, name);
  if (found && found->getType() != oacStdViaDefType) {
    emit host.reportError(oaPlugInMain::tr("std via definition not found"), 1,
                          oaPlugInMain::tr("%1 is the definition of a custom via").arg(name));
    return nullptr;
  }
  const oaStdViaDef *viaDef = found ? static_cast<oaStdViaDef *>(found) : createStdViaDef(host, name, names, values);
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
