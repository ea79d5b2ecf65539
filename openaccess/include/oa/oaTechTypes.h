#ifndef OATECHTYPES_H
#define OATECHTYPES_H

#include "oa/oaEnumWrapper.h"

// Filter flags of the collections of a technology: with those of the technologies it refers to (the default), or its
// own only.
#define oacTechIterAll 0x0000
#define oacTechIterLocal 0x0001

// The mask number of a layer that has none.
#define oacUnsetMaskNumber 0xffffffffU

namespace OpenAccess_4 {

enum oaMaterialEnum {
  oacOtherMaterial = 0,
  oacNWellMaterial = 1,
  oacPWellMaterial = 2,
  oacNDiffMaterial = 3,
  oacPDiffMaterial = 4,
  oacNImplantMaterial = 5,
  oacPImplantMaterial = 6,
  oacPolyMaterial = 7,
  oacCutMaterial = 8,
  oacMetalMaterial = 9,
  oacContactlessMetalMaterial = 10,
  oacDiffMaterial = 11,
  oacRecognitionMaterial = 12,
  oacPassivationCutMaterial = 13
};
OA_ENUM_WRAPPER(oaMaterial);

enum oaPrefRoutingDirEnum {
  oacNotApplicablePrefRoutingDir = 0,
  oacNonePrefRoutingDir = 1,
  oacHorzPrefRoutingDir = 2,
  oacVertPrefRoutingDir = 3,
  oacLeftDiagPrefRoutingDir = 4,
  oacRightDiagPrefRoutingDir = 5
};
OA_ENUM_WRAPPER(oaPrefRoutingDir);

// How a derived layer is made of its two layers.
enum oaLayerOpEnum { oacAndLayerOp = 0, oacOrLayerOp = 1, oacNotLayerOp = 2, oacXorLayerOp = 3 };
OA_ENUM_WRAPPER(oaLayerOp);

enum oaUserUnitsTypeEnum {
  oacMicron = 0,
  oacMillimeter = 1,
  oacCentimeter = 2,
  oacMeter = 3,
  oacMil = 4,
  oacInch = 5,
  oacNanometer = 6
};
OA_ENUM_WRAPPER(oaUserUnitsType);

enum oaPurposeTypeEnum {
  oacDrawingPurposeType = 0,
  oacFillPurposeType = 1,
  oacSlotPurposeType = 2,
  oacOPCSerifPurposeType = 3,
  oacOPCAntiSerifPurposeType = 4,
  oacAnnotationPurposeType = 5,
  oacGapFillPurposeType = 6,
  oacRedundantPurposeType = 7,
  oacAnyPurposeType = 8,
  oacNoPurposeType = 9,
  oacFillOPCPurposeType = 10
};
const oaEnumNames &oaEnumNamesOf(oaPurposeTypeEnum);

class oaPurposeType : public oaEnumWrapper<oaPurposeTypeEnum> {
public:
  using oaEnumWrapper<oaPurposeTypeEnum>::oaEnumWrapper;
  oaPurposeType() = default;
  // The type of a reserved purpose number; drawing for every other number.
  static oaPurposeTypeEnum get(oaPurposeNum purposeNum);
};

// Numbers of the reserved purposes. Numbers from 0xffff0000 on are closed to other purposes.
constexpr oaPurposeNum oavPurposeNumberDrawing = 0xffffffffU;
constexpr oaPurposeNum oavPurposeNumberFill = 0xfffffffeU;
constexpr oaPurposeNum oavPurposeNumberSlot = 0xfffffffdU;
constexpr oaPurposeNum oavPurposeNumberOPCSerif = 0xfffffffcU;
constexpr oaPurposeNum oavPurposeNumberOPCAntiSerif = 0xfffffffbU;
constexpr oaPurposeNum oavPurposeNumberAnnotation = 0xfffffffaU;
constexpr oaPurposeNum oavPurposeNumberGapFill = 0xfffffff9U;
constexpr oaPurposeNum oavPurposeNumberRedundant = 0xfffffff8U;
constexpr oaPurposeNum oavPurposeNumberAny = 0xfffffff7U;
constexpr oaPurposeNum oavPurposeNumberNo = 0xfffffff6U;
constexpr oaPurposeNum oavPurposeNumberFillOPC = 0xfffffff5U;

enum oaViaParamTypeEnum {
  oacLayer1EncViaParamType = 0,
  oacLayer2EncViaParamType = 1,
  oacImplant1EncViaParamType = 2,
  oacImplant2EncViaParamType = 3,
  oacLayer1OffsetViaParamType = 4,
  oacLayer2OffsetViaParamType = 5,
  oacCutSpacingViaParamType = 6,
  oacOriginOffsetViaParamType = 7,
  oacCutSizeViaParamType = 8, // width and height together
  oacCutLayerViaParamType = 9,
  oacCutColumnsViaParamType = 10,
  oacCutRowsViaParamType = 11,
  oacCutWidthViaParamType = 12,
  oacCutHeightViaParamType = 13
};
OA_ENUM_WRAPPER(oaViaParamType);

} // namespace OpenAccess_4

#endif
