#ifndef OAVIAPARAM_H
#define OAVIAPARAM_H

#include "oa/oaTechTypes.h"
#include "oa/oaVector.h"

#include <utility>
#include <vector>

namespace OpenAccess_4 {

class oaViaParam;

namespace kit {
class MissingCutTable;
struct ViaParamValues;
ViaParamValues storedViaParam(const oaViaParam &param, MissingCutTable &missing);
oaViaParam loadedViaParam(const ViaParamValues &values, const MissingCutTable &missing);
} // namespace kit

// The shape of a standard via. Lengths are in database units. Each value has a flag "default", set in a new object and
// cleared by the value's setter: a via that is made with parameters takes only those that are not default from them,
// the others from its definition.
class oaViaParam {
public:
  oaViaParam() = default;
  oaViaParam(const oaViaParam &paramIn) = default;
  ~oaViaParam() = default;
  oaViaParam &operator=(const oaViaParam &params) = default;

  // By how much a layer reaches beyond the cuts, or an implant beyond its layer.
  const oaVector &getLayer1Enc() const { return layer1Enc_; }
  const oaVector &getLayer2Enc() const { return layer2Enc_; }
  const oaVector &getImplant1Enc() const { return implant1Enc_; }
  const oaVector &getImplant2Enc() const { return implant2Enc_; }
  const oaVector &getLayer1Offset() const { return layer1Offset_; }
  const oaVector &getLayer2Offset() const { return layer2Offset_; }
  // From edge to edge: x between columns, y between rows.
  const oaVector &getCutSpacing() const { return cutSpacing_; }
  // The centre of the cuts.
  const oaVector &getOriginOffset() const { return originOffset_; }
  oaDist getCutWidth() const { return cutWidth_; }
  oaDist getCutHeight() const { return cutHeight_; }
  // 0xffffffff until it is set.
  oaLayerNum getCutLayer() const { return cutLayer_; }
  oaUInt4 getCutColumns() const { return cutColumns_; }
  oaUInt4 getCutRows() const { return cutRows_; }
  // Is there a cut at this row (0 at the bottom) and column (0 at the left)? Raises oacInvalidViaParamRowNumber or
  // oacInvalidViaParamColumnNumber.
  oaBoolean getCutPatternVal(oaUInt4 cutRowNum, oaUInt4 cutColNum) const;
  // True when no cut is left out.
  oaBoolean hasDefaultCutPattern() const { return missingCuts_.empty(); }

  void setLayer1Enc(const oaVector &layer1Enc);
  void setLayer2Enc(const oaVector &layer2Enc);
  void setImplant1Enc(const oaVector &imp1Enc);
  void setImplant2Enc(const oaVector &imp2Enc);
  void setLayer1Offset(const oaVector &layer1Offset);
  void setLayer2Offset(const oaVector &layer2Offset);
  void setCutSpacing(const oaVector &cutSpacing);
  void setOriginOffset(const oaVector &originOffset);
  void setCutWidth(oaDist width);
  void setCutHeight(oaDist height);
  void setCutLayer(oaLayerNum cutLayer);
  // Both put the cut pattern back to its default; 0 raises oacZeroColumnsSpecifiedForViaParam,
  // oacZeroRowsSpecifiedForViaParam.
  void setCutColumns(oaUInt4 cutColumns);
  void setCutRows(oaUInt4 cutRows);
  void setDefaultCutPattern() { missingCuts_.clear(); }
  void setCutPatternVal(oaUInt4 cutRowNum, oaUInt4 cutColNum, oaBoolean val);

  oaBoolean hasDefault(oaViaParamType paramType) const;
  oaBoolean hasAnyDefaults() const { return defaults_ != 0; }
  // Sets the flag; the value stays.
  void setDefault(oaViaParamType paramType);
  void setAllNonDefault() { defaults_ = 0; }

  // Compares values only; == compares the flags, too.
  oaBoolean isEqual(const oaViaParam &params) const;
  oaBoolean operator==(const oaViaParam &param) const { return defaults_ == param.defaults_ && isEqual(param); }
  oaBoolean operator!=(const oaViaParam &param) const { return !(*this == param); }

private:
  friend kit::ViaParamValues kit::storedViaParam(const oaViaParam &param, kit::MissingCutTable &missing);
  friend oaViaParam kit::loadedViaParam(const kit::ViaParamValues &values, const kit::MissingCutTable &missing);

  static oaUInt4 flagsOf(oaViaParamType paramType);
  void checkCut(oaUInt4 cutRowNum, oaUInt4 cutColNum) const;
  void clear(oaViaParamTypeEnum paramType) { defaults_ &= ~(1U << paramType); }

  static constexpr oaUInt4 kAllFlags =
      0x3effU; // one for each oaViaParamTypeEnum but the cut size, which is two others together
  static constexpr oaLayerNum kNoLayer = 0xffffffffU;

  oaVector layer1Enc_{0, 0};
  oaVector layer2Enc_{0, 0};
  oaVector implant1Enc_{0, 0};
  oaVector implant2Enc_{0, 0};
  oaVector layer1Offset_{0, 0};
  oaVector layer2Offset_{0, 0};
  oaVector cutSpacing_{0, 0};
  oaVector originOffset_{0, 0};
  oaDist cutWidth_ = 0;
  oaDist cutHeight_ = 0;
  oaLayerNum cutLayer_ = kNoLayer;
  oaUInt4 cutColumns_ = 1;
  oaUInt4 cutRows_ = 1;
  oaUInt4 defaults_ = kAllFlags;
  std::vector<std::pair<oaUInt4, oaUInt4>> missingCuts_; // row, column; sorted
};

} // namespace OpenAccess_4

#endif
