#ifndef OADMTYPES_H
#define OADMTYPES_H

#include "oa/oaEnumWrapper.h"

namespace OpenAccess_4 {

// How a library is used. The file system behind a library enforces neither shared nor non-shared; a read-only library
// refuses write access.
enum oaLibModeEnum { oacSharedLibMode = 0, oacNonSharedLibMode = 1, oacReadOnlyLibMode = 2 };
OA_ENUM_WRAPPER(oaLibMode);

// What oaLib::getAccess() asks for.
enum oaLibAccessEnum { oacReadLibAccess = 0, oacWriteLibAccess = 1 };
OA_ENUM_WRAPPER(oaLibAccess);

// What this process holds.
enum oaLibAccessLevelEnum { oacNoLibAccessLevel = 0, oacReadLibAccessLevel = 1, oacWriteLibAccessLevel = 2 };
OA_ENUM_WRAPPER(oaLibAccessLevel);

enum oaReservedViewTypeEnum {
  oacMaskLayout = 0,
  oacSchematic = 1,
  oacSchematicSymbol = 2,
  oacNetlist = 3,
  oacWafer = 4,
  oacVerilogAMSText = 5,
  oacVHDLAMSText = 6,
  oacVerilogText = 7,
  oacVHDLText = 8,
  oacVerilogAText = 9,
  oacHierDesign = 10,
  oacSystemVerilogText = 11,
  oacSPECTREText = 12,
  oacSPICEText = 13,
  oacHSPICEText = 14,
  oacCDLText = 15
};
OA_ENUM_WRAPPER(oaReservedViewType);

// What a warning of oaLibDefList::openLibs() is about.
enum oaLibDefListWarningTypeEnum {
  oacNoDefaultLibDefListWarning = 0,
  oacCannotOpenDefaultLibDefListWarning = 1,
  oacSyntaxErrorLibDefListWarning = 2,
  oacCannotOpenIncludeLibDefListWarning = 3,
  oacRecursiveIncludeLibDefListWarning = 4,
  oacMultiDefinitionsLibDefListWarning = 5,
  oacCannotOpenLibLibDefListWarning = 6,
  oacUndefinedVarLibDefListWarning = 7,
  oacLibNameUndefinedLibDefListWarning = 8
};

} // namespace OpenAccess_4

#endif
