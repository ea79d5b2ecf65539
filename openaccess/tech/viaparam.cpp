#include "oa/oaViaParam.h"

#include "database.h"
#include "raise.h"
#include "viaparamtable.h"

#include <algorithm>

namespace OpenAccess_4 {

oaUInt4 oaViaParam::flagsOf(oaViaParamType paramType) {
  if (paramType == oacCutSizeViaParamType) {
    return (1U << oacCutWidthViaParamType) | (1U << oacCutHeightViaParamType);
  }
  return 1U << static_cast<oaViaParamTypeEnum>(paramType);
}

oaBoolean oaViaParam::hasDefault(oaViaParamType paramType) const {
  const oaUInt4 flags = flagsOf(paramType);
  return (defaults_ & flags) == flags;
}

void oaViaParam::setDefault(oaViaParamType paramType) { defaults_ |= flagsOf(paramType); }

void oaViaParam::setLayer1Enc(const oaVector &layer1Enc) {
  layer1Enc_ = layer1Enc;
  clear(oacLayer1EncViaParamType);
}

void oaViaParam::setLayer2Enc(const oaVector &layer2Enc) {
  layer2Enc_ = layer2Enc;
  clear(oacLayer2EncViaParamType);
}

void oaViaParam::setImplant1Enc(const oaVector &imp1Enc) {
  implant1Enc_ = imp1Enc;
  clear(oacImplant1EncViaParamType);
}

void oaViaParam::setImplant2Enc(const oaVector &imp2Enc) {
  implant2Enc_ = imp2Enc;
  clear(oacImplant2EncViaParamType);
}

void oaViaParam::setLayer1Offset(const oaVector &layer1Offset) {
  layer1Offset_ = layer1Offset;
  clear(oacLayer1OffsetViaParamType);
}

void oaViaParam::setLayer2Offset(const oaVector &layer2Offset) {
  layer2Offset_ = layer2Offset;
  clear(oacLayer2OffsetViaParamType);
}

void oaViaParam::setCutSpacing(const oaVector &cutSpacing) {
  cutSpacing_ = cutSpacing;
  clear(oacCutSpacingViaParamType);
}

void oaViaParam::setOriginOffset(const oaVector &originOffset) {
  originOffset_ = originOffset;
  clear(oacOriginOffsetViaParamType);
}

void oaViaParam::setCutWidth(oaDist width) {
  cutWidth_ = width;
  clear(oacCutWidthViaParamType);
}

void oaViaParam::setCutHeight(oaDist height) {
  cutHeight_ = height;
  clear(oacCutHeightViaParamType);
}

void oaViaParam::setCutLayer(oaLayerNum cutLayer) {
  cutLayer_ = cutLayer;
  clear(oacCutLayerViaParamType);
}

void oaViaParam::setCutColumns(oaUInt4 cutColumns) {
  if (cutColumns == 0) {
    raiseTech(oacZeroColumnsSpecifiedForViaParam, "via parameters: 0 cut columns, expected at least 1");
  }
  cutColumns_ = cutColumns;
  missingCuts_.clear();
  clear(oacCutColumnsViaParamType);
}

void oaViaParam::setCutRows(oaUInt4 cutRows) {
  if (cutRows == 0) {
    raiseTech(oacZeroRowsSpecifiedForViaParam, "via parameters: 0 cut rows, expected at least 1");
  }
  cutRows_ = cutRows;
  missingCuts_.clear();
  clear(oacCutRowsViaParamType);
}

void oaViaParam::checkCut(oaUInt4 cutRowNum, oaUInt4 cutColNum) const {
  if (cutRowNum >= cutRows_) {
    raiseTech(oacInvalidViaParamRowNumber, "via parameters: cut row " + std::to_string(cutRowNum) + " of " +
                                               std::to_string(cutRows_) + "; rows are counted from 0");
  }
  if (cutColNum >= cutColumns_) {
    raiseTech(oacInvalidViaParamColumnNumber, "via parameters: cut column " + std::to_string(cutColNum) + " of " +
                                                  std::to_string(cutColumns_) + "; columns are counted from 0");
  }
}

oaBoolean oaViaParam::getCutPatternVal(oaUInt4 cutRowNum, oaUInt4 cutColNum) const {
  checkCut(cutRowNum, cutColNum);
  return !std::binary_search(missingCuts_.begin(), missingCuts_.end(), std::make_pair(cutRowNum, cutColNum));
}

void oaViaParam::setCutPatternVal(oaUInt4 cutRowNum, oaUInt4 cutColNum, oaBoolean val) {
  checkCut(cutRowNum, cutColNum);
  const auto cut = std::make_pair(cutRowNum, cutColNum);
  const auto place = std::lower_bound(missingCuts_.begin(), missingCuts_.end(), cut);
  const bool isMissing = place != missingCuts_.end() && *place == cut;
  if (val && isMissing) {
    missingCuts_.erase(place);
  } else if (!val && !isMissing) {
    missingCuts_.insert(place, cut);
  }
}

oaBoolean oaViaParam::isEqual(const oaViaParam &params) const {
  return layer1Enc_ == params.layer1Enc_ && layer2Enc_ == params.layer2Enc_ && implant1Enc_ == params.implant1Enc_ &&
         implant2Enc_ == params.implant2Enc_ && layer1Offset_ == params.layer1Offset_ &&
         layer2Offset_ == params.layer2Offset_ && cutSpacing_ == params.cutSpacing_ &&
         originOffset_ == params.originOffset_ && cutWidth_ == params.cutWidth_ && cutHeight_ == params.cutHeight_ &&
         cutLayer_ == params.cutLayer_ && cutColumns_ == params.cutColumns_ && cutRows_ == params.cutRows_ &&
         missingCuts_ == params.missingCuts_;
}

namespace kit {

MissingCutTable::MissingCutTable(Database &database, std::uint16_t id)
    : Table(database, id, "missing cuts", TableLife::pool) {}

ViaParamValues storedViaParam(const oaViaParam &param, MissingCutTable &missing) {
  ViaParamValues values{};
  const oaVector vectors[] = {param.getLayer1Enc(),   param.getLayer2Enc(),    param.getImplant1Enc(),
                              param.getImplant2Enc(), param.getLayer1Offset(), param.getLayer2Offset(),
                              param.getCutSpacing(),  param.getOriginOffset()};
  std::int32_t *next = values.vectors;
  for (const oaVector &vector : vectors) {
    *next++ = vector.x();
    *next++ = vector.y();
  }
  values.cutWidthDbu = param.getCutWidth();
  values.cutHeightDbu = param.getCutHeight();
  values.cutLayer = param.getCutLayer();
  values.cutColumns = param.getCutColumns();
  values.cutRows = param.getCutRows();
  values.defaultFlags = param.defaults_;
  values.missingBegin = missing.rowCount();
  values.missingCount = static_cast<std::uint32_t>(param.missingCuts_.size());
  std::vector<MissingCutTable::Cut> cuts;
  for (const auto &[row, column] : param.missingCuts_) {
    cuts.push_back({row, column});
  }
  if (!cuts.empty()) {
    missing.addRows(values.missingCount);
    missing.cuts.append(cuts.data(), values.missingCount);
  }
  return values;
}

oaViaParam loadedViaParam(const ViaParamValues &values, const MissingCutTable &missing) {
  const std::string &where = missing.database().label();
  if (values.cutColumns == 0 || values.cutRows == 0) {
    raiseBase(oacCorruptedDatabase, where + ": damaged: via parameters with " + std::to_string(values.cutColumns) +
                                        " columns and " + std::to_string(values.cutRows) + " rows of cuts");
  }
  missing.checkSpan(values.missingBegin, values.missingCount, "via parameters");
  oaViaParam param;
  const std::int32_t *next = values.vectors;
  for (oaVector *vector : {&param.layer1Enc_, &param.layer2Enc_, &param.implant1Enc_, &param.implant2Enc_,
                           &param.layer1Offset_, &param.layer2Offset_, &param.cutSpacing_, &param.originOffset_}) {
    *vector = oaVector(next[0], next[1]);
    next += 2;
  }
  param.cutWidth_ = values.cutWidthDbu;
  param.cutHeight_ = values.cutHeightDbu;
  param.cutLayer_ = values.cutLayer;
  param.cutColumns_ = values.cutColumns;
  param.cutRows_ = values.cutRows;
  const MissingCutTable::Cut *cuts = missing.cuts.span(values.missingBegin, values.missingCount);
  for (std::uint32_t i = 0; i < values.missingCount; ++i) {
    param.setCutPatternVal(cuts[i].row, cuts[i].column, false);
  }
  param.defaults_ = values.defaultFlags & oaViaParam::kAllFlags;
  return param;
}

} // namespace kit
} // namespace OpenAccess_4
