#include "viavalues.h"

#include "raise.h"

#include <cstring>

namespace OpenAccess_4 {
namespace kit {

namespace {

template <typename Value> struct ViaValue {
  oaViaParamTypeEnum type;
  Value (oaViaParam::*get)() const;
  void (oaViaParam::*set)(Value value);
};

constexpr ViaValue<const oaVector &> kVectors[] = {
    {oacLayer1EncViaParamType, &oaViaParam::getLayer1Enc, &oaViaParam::setLayer1Enc},
    {oacLayer2EncViaParamType, &oaViaParam::getLayer2Enc, &oaViaParam::setLayer2Enc},
    {oacImplant1EncViaParamType, &oaViaParam::getImplant1Enc, &oaViaParam::setImplant1Enc},
    {oacImplant2EncViaParamType, &oaViaParam::getImplant2Enc, &oaViaParam::setImplant2Enc},
    {oacLayer1OffsetViaParamType, &oaViaParam::getLayer1Offset, &oaViaParam::setLayer1Offset},
    {oacLayer2OffsetViaParamType, &oaViaParam::getLayer2Offset, &oaViaParam::setLayer2Offset},
    {oacCutSpacingViaParamType, &oaViaParam::getCutSpacing, &oaViaParam::setCutSpacing},
    {oacOriginOffsetViaParamType, &oaViaParam::getOriginOffset, &oaViaParam::setOriginOffset},
};

constexpr ViaValue<oaUInt4> kNumbers[] = {
    {oacCutWidthViaParamType, &oaViaParam::getCutWidth, &oaViaParam::setCutWidth},
    {oacCutHeightViaParamType, &oaViaParam::getCutHeight, &oaViaParam::setCutHeight},
    {oacCutLayerViaParamType, &oaViaParam::getCutLayer, &oaViaParam::setCutLayer},
    {oacCutColumnsViaParamType, &oaViaParam::getCutColumns, &oaViaParam::setCutColumns},
    {oacCutRowsViaParamType, &oaViaParam::getCutRows, &oaViaParam::setCutRows},
};

bool isDefault(const oaViaParam &params, oaViaParamTypeEnum type) { return params.hasDefault(oaViaParamType(type)); }

template <typename Value>
void take(oaViaParam &to, const oaViaParam &from, const ViaValue<Value> &value, bool asDefault) {
  (to.*value.set)((from.*value.get)());
  if (asDefault) {
    to.setDefault(oaViaParamType(value.type));
  }
}

bool hasOwnCounts(const oaViaParam &params) {
  return !isDefault(params, oacCutColumnsViaParamType) || !isDefault(params, oacCutRowsViaParamType);
}

bool haveEqualCounts(const oaViaParam &a, const oaViaParam &b) {
  return a.getCutRows() == b.getCutRows() && a.getCutColumns() == b.getCutColumns();
}

template <typename Visit> void visitMissingCuts(const oaViaParam &params, Visit visit) {
  if (params.hasDefaultCutPattern()) {
    return;
  }
  if (cutCount(params) > kMaxViaCuts) {
    raiseBase(oacNotYetSupported, "via parameters: a cut pattern of " + std::to_string(params.getCutRows()) +
                                      " rows and " + std::to_string(params.getCutColumns()) + " columns, at most " +
                                      std::to_string(kMaxViaCuts) + " cuts can have one");
  }
  for (oaUInt4 row = 0; row < params.getCutRows(); ++row) {
    for (oaUInt4 column = 0; column < params.getCutColumns(); ++column) {
      if (!params.getCutPatternVal(row, column)) {
        visit(row, column);
      }
    }
  }
}

void takePattern(oaViaParam &to, const oaViaParam &from) {
  visitMissingCuts(from, [&](oaUInt4 row, oaUInt4 column) { to.setCutPatternVal(row, column, false); });
}

bool haveEqualPatterns(const oaViaParam &a, const oaViaParam &b) {
  std::string cuts[2];
  std::string *text = cuts;
  for (const oaViaParam *params : {&a, &b}) {
    visitMissingCuts(*params, [&](oaUInt4 row, oaUInt4 column) {
      *text += std::to_string(row) + "," + std::to_string(column) + " ";
    });
    ++text;
  }
  return haveEqualCounts(a, b) && cuts[0] == cuts[1];
}

template <typename Number> void appendBytes(std::string &key, Number number) {
  char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  key.append(bytes, sizeof number);
}

} // namespace

oaViaParam effectiveViaParam(const oaViaParam &own, const oaViaParam &definition) {
  oaViaParam params;
  for (const auto &value : kVectors) {
    const bool asDefault = isDefault(own, value.type);
    take(params, asDefault ? definition : own, value, asDefault);
  }
  for (const auto &value : kNumbers) {
    const bool asDefault = isDefault(own, value.type);
    take(params, asDefault ? definition : own, value, asDefault);
  }
  const bool isOwnPattern = hasOwnCounts(own) || !own.hasDefaultCutPattern();
  const oaViaParam &pattern = isOwnPattern ? own : definition;
  if (haveEqualCounts(pattern, params)) {
    takePattern(params, pattern);
  }
  return params;
}

oaViaParam ownViaParam(const oaViaParam &params, const oaViaParam *definition) {
  oaViaParam own;
  for (const auto &value : kVectors) {
    if (!isDefault(params, value.type)) {
      take(own, params, value, false);
    }
  }
  const bool isOwnPattern = !params.hasDefaultCutPattern() &&
                            (hasOwnCounts(params) || definition == nullptr || !haveEqualPatterns(params, *definition));
  for (const auto &value : kNumbers) {
    const bool asDefault = isDefault(params, value.type);
    // A pattern needs the counts that it was made for.
    const bool isCount = value.type == oacCutColumnsViaParamType || value.type == oacCutRowsViaParamType;
    if (!asDefault || (isOwnPattern && isCount)) {
      take(own, params, value, asDefault);
    }
  }
  if (isOwnPattern) {
    takePattern(own, params);
  }
  return own;
}

std::string viaParamKey(const oaViaParam &params) {
  std::string key;
  key.reserve(128);
  oaUInt4 flags = 0;
  for (const auto &value : kVectors) {
    const oaVector &vector = (params.*value.get)();
    appendBytes(key, vector.x());
    appendBytes(key, vector.y());
    flags |= isDefault(params, value.type) ? 1U << value.type : 0;
  }
  for (const auto &value : kNumbers) {
    appendBytes(key, (params.*value.get)());
    flags |= isDefault(params, value.type) ? 1U << value.type : 0;
  }
  appendBytes(key, flags);
  visitMissingCuts(params, [&](oaUInt4 row, oaUInt4 column) {
    appendBytes(key, row);
    appendBytes(key, column);
  });
  return key;
}

} // namespace kit
} // namespace OpenAccess_4
