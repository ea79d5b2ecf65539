#include "oa/oaTechTypes.h"
#include "raise.h"

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaMaterial, raiseBase, oacInvalidEnumValue, "material", "other", "nWell", "pWell", "nDiff", "pDiff",
              "nImplant", "pImplant", "poly", "cut", "metal", "contactlessMetal", "diffusion", "recognition",
              "passivationCut")
OA_ENUM_NAMES(oaPrefRoutingDir, raiseBase, oacInvalidEnumValue, "preferred routing direction", "notApplicable", "none",
              "horizontal", "vertical", "leftDiag", "rightDiag")
OA_ENUM_NAMES(oaLayerOp, raiseBase, oacInvalidEnumValue, "layer operation", "and", "or", "not", "xor")
OA_ENUM_NAMES(oaUserUnitsType, raiseBase, oacInvalidEnumValue, "user unit", "micron", "millimeter", "centimeter",
              "meter", "mil", "inch", "nanometer")
// In the order of the reserved purposes' numbers, downwards from 0xffffffff; the texts are their names.
OA_ENUM_NAMES(oaPurposeType, raiseBase, oacInvalidEnumValue, "purpose type", "drawing", "fill", "slot", "OPCSerif",
              "OPCAntiSerif", "annotation", "gapFill", "redundant", "oaAny", "oaNo", "oaFillOPC")
OA_ENUM_NAMES(oaViaParamType, raiseBase, oacInvalidEnumValue, "via parameter", "layer1Enc", "layer2Enc", "implant1Enc",
              "implant2Enc", "layer1Offset", "layer2Offset", "cutSpacing", "originOffset", "cutSize", "cutLayer",
              "cutColumns", "cutRows", "cutWidth", "cutHeight")

oaPurposeTypeEnum oaPurposeType::get(oaPurposeNum purposeNum) {
  const oaUInt4 type = oavPurposeNumberDrawing - purposeNum;
  return type <= oacFillOPCPurposeType ? static_cast<oaPurposeTypeEnum>(type) : oacDrawingPurposeType;
}

} // namespace OpenAccess_4
