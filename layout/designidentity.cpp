#include "designidentity.h"

#include <cstring>
#include <vector>

#include "oaconvert.h"

using namespace oa;

namespace {

// The embedded kit draws no via with more, and of those that other kits may draw the pattern is not looked at.
const quint64 kMostCuts = 1000000;

template <typename Value> void appendBytes(std::string &key, Value value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  key.append(bytes, sizeof value);
}

void appendText(std::string &key, const oaString &text) {
  key.append(static_cast<const oaChar *>(text), text.getLength() + 1);
}

bool hasCuts(const oaViaParam &params) {
  return params.getCutWidth() != 0 && params.getCutHeight() != 0 && params.getCutLayer() != oaViaParam().getCutLayer();
}

} // namespace

void appendKey(std::string &key, const oaParamArray &params) {
  for (oaUInt4 i = 0; i < params.getNumElements(); ++i) {
    const oaParam &param = params[i];
    oaString text;
    param.getName(text);
    appendText(key, text);
    const oaParamTypeEnum type = param.getType();
    key += char('0' + int(type));
    switch (type) {
    case oacIntParamType:
      appendBytes(key, param.getIntVal());
      break;
    case oacFloatParamType:
      appendBytes(key, param.getFloatVal());
      break;
    case oacDoubleParamType:
      appendBytes(key, param.getDoubleVal());
      break;
    case oacBooleanParamType:
      key += param.getBooleanVal() ? '1' : '0';
      break;
    case oacTimeParamType:
      appendBytes(key, param.getTimeVal());
      break;
    case oacStringParamType:
      param.getStringVal(text);
      appendText(key, text);
      break;
    case oacAppParamType: {
      std::vector<oaByte> bytes(param.getNumBytes() + 1);
      param.getAppVal(bytes.data());
      appendBytes(key, param.getNumBytes());
      key.append(reinterpret_cast<const char *>(bytes.data()), param.getNumBytes());
      break;
    }
    }
  }
}

void appendCutPattern(std::string &key, const oaViaParam &params) {
  const oaUInt4 rows = params.getCutRows();
  const oaUInt4 columns = params.getCutColumns();
  if (params.hasDefaultCutPattern() || !hasCuts(params) || quint64(rows) * columns > kMostCuts) {
    return;
  }
  unsigned int bits = 0;
  int count = 0;
  for (oaUInt4 row = 0; row < rows; ++row) {
    for (oaUInt4 column = 0; column < columns; ++column) {
      bits = bits << 1 | (params.getCutPatternVal(row, column) ? 1U : 0U);
      if (++count % 8 == 0) {
        key += char(bits & 0xffU);
      }
    }
  }
  key += char(bits << (8 - count % 8) & 0xffU);
}

std::string identityOf(const oaDesign *design) {
  std::string key;
  oaString text;
  design->getLibName(oaConvert::ns, text);
  appendText(key, text);
  design->getCellName(oaConvert::ns, text);
  appendText(key, text);
  design->getViewName(oaConvert::ns, text);
  appendText(key, text);
  if (design->isSuperMaster() || design->isSubMaster()) {
    oaParamArray params;
    design->getParams(params);
    appendKey(key, params);
  } else if (design->isStdViaMaster()) {
    oaViaParam params;
    design->getParams(params);
    key += oaConvert::toViaParameterList(params, QString(), 0, 0).join(QLatin1String("\n")).toUtf8().constData();
    appendCutPattern(key, params);
  }
  return key;
}
