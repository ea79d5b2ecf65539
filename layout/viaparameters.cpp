#include "viaparameters.h"

#include <limits>

#include "oaconvert.h"

using namespace oa;

namespace {

typedef const oaVector &(oaViaParam::*VectorGetter)() const;
typedef oaUInt4 (oaViaParam::*NumberGetter)() const;

// Both tables are in the order of the list.
const struct {
  const char *key;
  VectorGetter get;
} kVectors[] = {
    {"layer1Enc", &oaViaParam::getLayer1Enc},       {"layer2Enc", &oaViaParam::getLayer2Enc},
    {"implant1Enc", &oaViaParam::getImplant1Enc},   {"implant2Enc", &oaViaParam::getImplant2Enc},
    {"layer1Offset", &oaViaParam::getLayer1Offset}, {"layer2Offset", &oaViaParam::getLayer2Offset},
    {"cutSpacing", &oaViaParam::getCutSpacing},     {"originOffset", &oaViaParam::getOriginOffset},
};

const struct {
  const char *key;
  NumberGetter get;
} kNumbers[] = {
    {"cutWidth", &oaViaParam::getCutWidth}, {"cutHeight", &oaViaParam::getCutHeight},
    {"cutLayer", &oaViaParam::getCutLayer}, {"cutColumns", &oaViaParam::getCutColumns},
    {"cutRows", &oaViaParam::getCutRows},
};

QStringList &addPair(QStringList &list, const char *key, const QString &value) {
  return list << QLatin1String(key) << value;
}

// The shortest decimal text that reads back as the same number.
template <typename Number> QString shortestText(Number value) {
  int digits = 6;
  QString text = QString::number(double(value), 'g', digits);
  while (Number(text.toDouble()) != value && digits < std::numeric_limits<Number>::max_digits10) {
    text = QString::number(double(value), 'g', ++digits);
  }
  return text;
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

QStringList toCustomViaParameterList(const oaParamArray &params, const QString &viaDefName, const oaViaDef *viaDef) {
  QStringList list;
  addPair(list, viakey::kType, QLatin1String(viakey::kCustomVia));
  addPair(list, viakey::kViaDefName, viaDefName);
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    oaString name;
    params[i].getName(name);
    QString value;
    if (valueText(params[i], value)) {
      list << oaConvert::toString(name) << value;
    }
  }
  if (viaDef) {
    addPair(list, viakey::kLayer1, oaConvert::toString(viaDef->getLayer1Num()));
    addPair(list, viakey::kLayer2, oaConvert::toString(viaDef->getLayer2Num()));
  }
  return list;
}
