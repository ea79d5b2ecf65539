#include "viaparameters.h"

#include "oaconvert.h"
#include "parametertext.h"
#include "shortesttext.h"

using namespace oa;

namespace {

// Both tables are in the order of the list.
const struct {
  const char *key;
  oaViaParamTypeEnum type;
  const oaVector &(oaViaParam::*get)() const;
  void (oaViaParam::*set)(const oaVector &);
} kVectors[] = {
    {"layer1Enc", oacLayer1EncViaParamType, &oaViaParam::getLayer1Enc, &oaViaParam::setLayer1Enc},
    {"layer2Enc", oacLayer2EncViaParamType, &oaViaParam::getLayer2Enc, &oaViaParam::setLayer2Enc},
    {"implant1Enc", oacImplant1EncViaParamType, &oaViaParam::getImplant1Enc, &oaViaParam::setImplant1Enc},
    {"implant2Enc", oacImplant2EncViaParamType, &oaViaParam::getImplant2Enc, &oaViaParam::setImplant2Enc},
    {"layer1Offset", oacLayer1OffsetViaParamType, &oaViaParam::getLayer1Offset, &oaViaParam::setLayer1Offset},
    {"layer2Offset", oacLayer2OffsetViaParamType, &oaViaParam::getLayer2Offset, &oaViaParam::setLayer2Offset},
    {"cutSpacing", oacCutSpacingViaParamType, &oaViaParam::getCutSpacing, &oaViaParam::setCutSpacing},
    {"originOffset", oacOriginOffsetViaParamType, &oaViaParam::getOriginOffset, &oaViaParam::setOriginOffset},
};

const struct {
  const char *key;
  oaViaParamTypeEnum type;
  oaUInt4 (oaViaParam::*get)() const;
  void (oaViaParam::*set)(oaUInt4);
} kNumbers[] = {
    {"cutWidth", oacCutWidthViaParamType, &oaViaParam::getCutWidth, &oaViaParam::setCutWidth},
    {"cutHeight", oacCutHeightViaParamType, &oaViaParam::getCutHeight, &oaViaParam::setCutHeight},
    {"cutLayer", oacCutLayerViaParamType, &oaViaParam::getCutLayer, &oaViaParam::setCutLayer},
    {"cutColumns", oacCutColumnsViaParamType, &oaViaParam::getCutColumns, &oaViaParam::setCutColumns},
    {"cutRows", oacCutRowsViaParamType, &oaViaParam::getCutRows, &oaViaParam::setCutRows},
};

QStringList &addPair(QStringList &list, const char *key, const QString &value) {
  return list << QLatin1String(key) << value;
}

// Binary data and times have no text and are left out.
bool valueText(const oaParam &param, QString &text) {
  switch (oaParamTypeEnum(param.getType())) {
  case oacIntParamType:
    text = QString::number(param.getIntVal());
    return true;
  case oacFloatParamType:
    text = shortestText(param.getFloatVal());
    return true;
  case oacDoubleParamType:
    text = shortestText(param.getDoubleVal());
    return true;
  case oacBooleanParamType:
    text = QLatin1String(param.getBooleanVal() ? "true" : "false");
    return true;
  case oacStringParamType: {
    oaString value;
    param.getStringVal(value);
    text = oaConvert::toString(value);
    return true;
  }
  default:
    return false;
  }
}

} // namespace

QStringList oaConvert::toViaParameterList(const oaViaParam &params, const QString &viaDefName, oaLayerNum layer1,
                                          oaLayerNum layer2) {
  QStringList list;
  addPair(list, viakey::kType, QLatin1String(viakey::kStdVia));
  addPair(list, viakey::kViaDefName, viaDefName);
  for (const auto &vector : kVectors) {
    addPair(list, vector.key, toString((params.*vector.get)()));
  }
  for (const auto &number : kNumbers) {
    addPair(list, number.key, toString((params.*number.get)()));
  }
  addPair(list, viakey::kLayer1, toString(layer1));
  addPair(list, viakey::kLayer2, toString(layer2));
  return list;
}

oaViaParam toOaViaParam(const QStringList &names, const QStringList &values) {
  oaViaParam params;
  QString text;
  const auto has = [&](const char *key) {
    text = oaConvert::getParameter_(QLatin1String(key), names, values, QString());
    return !text.isNull();
  };
  for (const auto &vector : kVectors) {
    if (has(vector.key)) {
      (params.*vector.set)(oaConvert::toOaVector(text));
    }
  }
  for (const auto &number : kNumbers) {
    if (has(number.key)) {
      (params.*number.set)(text.toUInt());
    }
  }
  return params;
}

void leaveToDefinition(oaViaParam &params, const oaViaParam &definition) {
  for (const auto &vector : kVectors) {
    if ((params.*vector.get)() == (definition.*vector.get)()) {
      params.setDefault(vector.type);
    }
  }
  for (const auto &number : kNumbers) {
    if ((params.*number.get)() == (definition.*number.get)()) {
      params.setDefault(number.type);
    }
  }
}

QStringList toCustomViaParameterList(const oaParamArray &params, const QString &viaDefName, const oaViaDef *viaDef) {
  QStringList list;
  addPair(list, viakey::kType, QLatin1String(viakey::kCustomVia));
  addPair(list, viakey::kViaDefName, viaDefName);
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    QString value;
    if (valueText(params[i], value)) {
      list << toParameterName(params[i]) << value;
    }
  }
  if (viaDef) {
    addPair(list, viakey::kLayer1, oaConvert::toString(viaDef->getLayer1Num()));
    addPair(list, viakey::kLayer2, oaConvert::toString(viaDef->getLayer2Num()));
  }
  return list;
}
