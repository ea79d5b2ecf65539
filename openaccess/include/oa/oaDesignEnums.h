#ifndef OADESIGNENUMS_H
#define OADESIGNENUMS_H

#include "oa/oaTechDB.h"

namespace OpenAccess_4 {

// Ends of a path: flush, half the width, octagonal cap of half the width, extensions of their own.
enum oaPathStyleEnum {
  oacTruncatePathStyle = 0,
  oacExtendPathStyle = 1,
  oacRoundPathStyle = 2,
  oacVariablePathStyle = 3
};
OA_ENUM_WRAPPER(oaPathStyle);

// One end of a path segment.
enum oaEndStyleEnum {
  oacTruncateEndStyle = 0,
  oacExtendEndStyle = 1,
  oacVariableEndStyle = 2,
  oacChamferEndStyle = 3,
  oacCustomEndStyle = 4
};
OA_ENUM_WRAPPER(oaEndStyle);

// The place of a text's origin in its box.
enum oaTextAlignEnum {
  oacUpperLeftTextAlign = 0,
  oacCenterLeftTextAlign = 1,
  oacLowerLeftTextAlign = 2,
  oacUpperCenterTextAlign = 3,
  oacCenterCenterTextAlign = 4,
  oacLowerCenterTextAlign = 5,
  oacUpperRightTextAlign = 6,
  oacCenterRightTextAlign = 7,
  oacLowerRightTextAlign = 8
};
OA_ENUM_WRAPPER(oaTextAlign);

enum oaTextDisplayFormatEnum {
  oacNameTextDisplayFormat = 0,
  oacValueTextDisplayFormat = 1,
  oacNameValueTextDisplayFormat = 2
};
OA_ENUM_WRAPPER(oaTextDisplayFormat);

enum oaCellTypeEnum {
  oacNoCellType = 0,
  oacBlockCellType = 1,
  oacBlockRingCellType = 2,
  oacCoverCellType = 3,
  oacCoverBumpCellType = 4,
  oacPadCellType = 5,
  oacPadSpacerCellType = 6,
  oacCoreCellType = 7,
  oacCoreSpacerCellType = 8,
  oacCoreAntennaCellType = 9,
  oacCornerCellType = 10,
  oacSoftMacroCellType = 11,
  oacViaCellType = 12,
  oacBlockBlackBoxCellType = 13,
  oacPadAreaIOCellType = 14,
  oacCoreWellTapCellType = 15
};
OA_ENUM_WRAPPER(oaCellType);

// Whether an object of the block also exists in the module view of the design. Kept and given back; there are no
// modules here.
enum oaBlockDomainVisibilityEnum { oacInheritFromTopBlock = 0, oacExcludeFromModuleDomain = 1 };
OA_ENUM_WRAPPER(oaBlockDomainVisibility);

} // namespace OpenAccess_4

#endif
