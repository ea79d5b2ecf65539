// Numbers of the messages that exceptions of the design layer carry. A comment covers the numbers under it.
#ifndef OADESIGNMSGIDS_H
#define OADESIGNMSGIDS_H

namespace OpenAccess_4 {

enum oaDesignMsgIds {
  // Save of an 'r' design; of a sub master or via master
  oacSaveReadOnlyDesign = 1002,
  oacSaveScratchModeDesign = 1003,
  // Mode not r, w, a, A
  oacOpenUndefinedModeDesign = 1004,
  // Open: no such cell view
  oacCannotFindDesign = 1005,
  // Cell view without usable primary file
  oacDesignPrimaryFileDoesNotExist = 1006,
  // Reopen of or to mode 's'
  oacCannotSetModeToScratch = 1009,
  oacCannotChangeFromScratchMode = 1010,
  // (un)defineSuperMaster, evalSuperMaster on an 'r' design
  oacCannotModifyReadModeDesign = 1011,
  // View type not one of the five design types
  oacInvalidDesignViewType = 1014,
  // Existing view has another type
  oacMismatchViewTypeForOpen = 1015,
  // Static destroy of an open or unknown design
  oacDestroyDesignOpen = 1017,
  oacDestroyCannotFindDesign = 1018,
  // DM objects asked of a standard-via master
  oacCannotFindObjectForViaMaster = 1023,
  // Open: library not open
  oacCannotFindLibrary = 1025,
  // Arc creation
  oacArcEllipseBBoxInvalid = 1032,
  oacArcAnglesInvalid = 1033,
  // Arc calculation; three points collinear, arc over 180 degrees, boxes do not meet
  oacArcPointsColinear = 1034,
  oacArcTooLarge = 1035,
  oacArcWrongNumIntercepts = 1036,
  // Hole radius not smaller than radius
  oacDonutRadiiInvalid = 1037,
  // Sides must be over 3, 3, 2
  oacDonutNumSidesInvalid = 1038,
  oacEllipseNumSidesInvalid = 1040,
  oacArcNumSidesInvalid = 1047,
  // Ellipse box inverted or flat
  oacEllipseBBoxInvalid = 1039,
  // Extension given without variable style
  oacInvalidPathExtensionValue = 1041,
  // Collinear or coincident; fewer than 2
  oacPathHasExtraPoints = 1042,
  oacPathTooFewPoints = 1043,
  // The same for polygons; fewer than 3
  oacPolygonHasExtraPoints = 1044,
  oacPolygonTooFewPoints = 1045,
  // Rectangle inverted or flat
  oacRectBBoxInvalid = 1046,
  // Line with fewer than 2 points
  oacLineTooFewPoints = 1048,
  // Not a four-point orthogonal polygon
  oacCannotConvertPolygonToRect = 1049,
  // Figure and net in different blocks
  oacNetFigNotInSameBlock = 1050,
  // InstTerm across designs
  oacNetAndInstNotInSameDesign = 1052,
  // Filter flags contradict
  oacInvalidBlockNetIterFlags = 1059,
  oacInvalidBlockTermIterFlags = 1060,
  // Name clashes with a vector instance's base or bits
  oacInstNameOverlapsOtherInst = 1063,
  // Base name looks like an automatic name
  oacVectorInstNameMatchesAutoName = 1064,
  oacVectorInstBitNameMatchesAutoName = 1065,
  // Instance name in use
  oacInstNameExists = 1066,
  // Zero rows, columns
  oacInvalidArrayInstRows = 1067,
  oacInvalidArrayInstCols = 1068,
  // Name, destroy, master, params, status, move, copy of an implicit bit
  oacCannotSetNameOfImplicitInst = 1069,
  oacCannotDestroyImplicitInst = 1070,
  oacCannotSetMasterImplicitInst = 1071,
  oacCannotSetParamsImplicitInst = 1072,
  oacCannotSetPlacementStatusImplicitInst = 1073,
  oacCannotSetPriorityImplicitInst = 1074,
  oacCannotSetSourceImplicitInst = 1075,
  oacCannotSetUsageImplicitInst = 1076,
  oacCannotClusterImplicitInst = 1077,
  oacCannotScalarizeImplicitInst = 1078,
  oacCannotMoveImplicitInst = 1079,
  oacCannotCopyImplicitInst = 1080,
  // GetBit beyond the range
  oacInvalidBitIndexIntoInst = 1083,
  // Vector, bus net, bus term definition still in use
  oacCannotDestroyVectorInstDefWithInsts = 1089,
  oacCannotDestroyBusNetDefWithNets = 1155,
  oacCannotDestroyBusTermDefWithTerms = 1160,
  // Bus base name looks like an automatic net name
  oacBusNetNameMatchesAutoName = 1097,
  // Explicit net of that name exists
  oacNetExists = 1098,
  // Scalar and bus share a base name
  oacScalarNetNameMatchesBusBaseName = 1099,
  oacBusNetBaseNameMatchesScalarName = 1100,
  // Index out of range
  oacInvalidBundleNetMemberIndex = 1101,
  oacInvalidBusNetBitIndex = 1102,
  // Rename, scalarize, figure, destroy on an implicit net
  oacCannotSetNameOfImplicitNet = 1103,
  oacCannotSetNameOfNetInBundleNet = 1104,
  oacCannotSetParasiticConfImplicitNet = 1105,
  oacCannotScalarizeImplicitNet = 1106,
  oacCannotSetRangeOfImplicitBus = 1107,
  oacCannotSetRangeOfBusInBundleNet = 1108,
  oacCannotAddFigToImplicitNet = 1109,
  oacCannotDestroyImplicitNet = 1110,
  // Rename of an implicit term
  oacCannotSetNameOfImplicitTerm = 1123,
  // Term on an implicit net
  oacCannotCreateTermWithImplicitNet = 1128,
  // Term name in use
  oacTermExists = 1138,
  oacTermMemberExists = 1139,
  // Position given to two terms
  oacTermPositionAlreadyTaken = 1142,
  // Scalar/bus base clash for terms; as 1099, 1100
  oacScalarTermNameMatchesBusBaseName = 1143,
  oacBusTermBaseNameMatchesScalarName = 1144,
  // Term name bits differ from net bits
  oacNetTermWidthMismatch = 1146,
  // Term object belongs to another design than the master
  oacTermNotInInstMasterForInstTerm = 1165,
  // Connection repeated
  oacInstTermAlreadyExists = 1166,
  oacInstTermBitAlreadyExists = 1178,
  // Net bits differ from terminal x instance bits
  oacNetInstTermWidthMismatchForInstTerm = 1167,
  // Implicit net or instance
  oacInstTermNetImplicit = 1168,
  oacInstTermInstImplicit = 1175,
  // By position / by name mixed on one instance; creation and find
  oacInstTermMustBeByPosition = 1169,
  oacInstTermMustBeByName = 1170,
  oacInstTermInstUsesTermPosition = 1173,
  oacInstTermInstUsesTermName = 1174,
  // Name or position asked of the other kind
  oacInstTermConnectsByPosition = 1171,
  oacInstTermConnectsByName = 1172,
  // Destroy, modify
  oacCannotDestroyImplicitInstTerm = 1176,
  oacCannotModifyImplicitInstTerm = 1177,
  // Pin name in use on that term
  oacPinExists = 1193,
  // Pin on an implicit term
  oacTermCannotBeImplicit = 1195,
  // Call needs a sub, super master
  oacInvalidSubMaster = 1197,
  oacInvalidSuperMaster = 1198,
  // Bad definition object
  oacPcellInvalidPcellDef = 1202,
  // Parameters set but the super master cannot be opened
  oacPcellMasterNotBound = 1203,
  // Parameter unknown to the super master
  oacNotExistInDefaultParam = 1204,
  // Parameter of another type than the default
  oacInvalidDataTypeForParam = 1205,
  // Parameters asked of a design that is not parametric
  oacInvalidPcellMaster = 1206,
  // Evaluator registered twice; destroyed while linked
  oacPcellLinkExists = 1207,
  oacCannotDestroyIPcellWithLinkExist = 1208,
  // SaveAs of a super master whose evaluator is missing
  oacCannotSaveUnboundSuperMaster = 1209,
  // Text displays; object outside a design; master not bound; property or text not in the master
  oacNonDesignTextDisplay = 1210,
  oacNoMasterForTextDisplay = 1211,
  oacPropNotOnInstanceMaster = 1212,
  oacTextNotInInstanceMaster = 1213,
  // Text evaluator registered twice
  oacEvalTextLinkExists = 1216,
  // Second block
  oacTopBlockAlreadyExists = 1347,
  // Hierarchy delimiter in an explicit name
  oacInvalidHierInstName = 1406,
  oacInvalidHierNetName = 1407,
  oacInvalidHierTermName = 1408,
  // Segment style, pathSeg points; extension without variable end; not horizontal, vertical, diagonal or zero length
  oacInvalidEndStyleName = 1425,
  oacInvalidSegStyleBeginExtValue = 1426,
  oacInvalidSegStyleEndExtValue = 1427,
  oacInvalidPathSegPoints = 1428,
  // Parameters for an ordinary master
  oacParamsSuppliedForNonPCellViaMaster = 1437,
  oacParamsSuppliedForNonPCellInstMaster = 1438,
  // A figure belongs to a pin **or** a net
  oacCannotAddPinFigToNet = 1441,
  oacCannotAddNetFigToPin = 1444,
  // Pin and figure in different blocks
  oacPinAndFigNotInSameBlock = 1450,
  // Via parameters asked of another design
  oacInvalidStdViaMaster = 1451,
  // Another process edits this design
  oacCannotLockDatabase = 1453,
  // Design cannot get read / write access; has read, needs write; library access
  oacDesignCannotGetReadAccess = 1458,
  oacDesignCannotGetWriteAccess = 1459,
  oacDesignHasReadNeedWriteAccess = 1460,
  // Odd width
  oacEvenWidthRequiredForSegStyle = 1467,
  // Via definition of a foreign technology
  oacViaDefNotInTechAssociatedWithDesign = 1491,
  // OaPcellLink::getPcellDef only
  oacPcellEvaluatorNotFound = 1495,
  // Net mismatch in repeated members; instTerm, bundle term
  oacInstTermNetMismatchInRepeatedMembers = 1513,
  oacTermNetMismatchInRepeatedMembers = 1611,
  // Empty name
  oacInvalidNetName = 1514,
  oacInvalidTermName = 1515,
  // Destroy of an implicit term
  oacCannotDestroyImplicitTerm = 1518,
  // Shape on the purposes "oaAny" or "oaNo"
  oacInvalidPurposeNumber = 1558,
  // Std and custom via definition share a name in one design
  oacStdViaDefSameNameAsCustomViaDef = 1570,
  oacCustomViaDefSameNameAsStdViaDef = 1571,
  // SaveAs onto another view type; cell view vanished
  oacMismatchViewTypeForSaveAs = 1572,
  oacDesignNoLongerExists = 1576,
  // Points, box invalid after a transform
  oacInvalidPointsAfterTransform = 1595,
  oacInvalidBBoxAfterTransform = 1596,
  // Path part of a net name unknown
  oacHierPathDoesNotExist = 1598,
  // A design would contain itself
  oacCannotCreateRecursiveDesign = 1631
};

} // namespace OpenAccess_4

#endif
