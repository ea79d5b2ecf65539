// Numbers of the messages that exceptions of the base layer carry. A comment covers the numbers under it.
#ifndef OABASEMSGIDS_H
#define OABASEMSGIDS_H

namespace OpenAccess_4 {

enum oaBaseMsgIds {
  // A system call failed and nothing more specific fits (e.g. parent directory missing in oaLib::create)
  oacOSError = 0,
  // Application's API minor is newer than the kit
  oacInvalidAPIRev = 1,
  // A file to be written is read-only
  oacFileNotWritable = 3,
  // Database file has no bytes
  oacInvalidFileSize = 6,
  // File missing or not one of ours
  oacInvalidDatabaseFile = 9,
  // Call on a database that is gone
  oacDeletedDatabase = 12,
  // File revision unknown to this kit
  oacCannotUpgrade = 14,
  // Mode character unknown (generic)
  oacInvalidDatabaseAccessMode = 15,
  // Object passed is not a property
  oacInvalidProp = 16,
  // Property name already on that object
  oacPropNameUsed = 17,
  // Object kind cannot carry properties
  oacInvalidObjForProp = 18,
  // Range property value outside bounds
  oacInvalidValueForIntRange = 36,
  oacInvalidValueForFloatRange = 37,
  // Enum property value not in its list
  oacInvalidEnumValue = 38,
  // Hierarchy member added to an empty name
  oacInvalidName = 39,
  // Name empty or too long (member over 256, whole over 8024 characters)
  oacInvalidNameLength = 41,
  // Text does not parse as that kind of name
  oacInvalidNameSyntax = 42,
  // Character not allowed in that name space
  oacInvalidNameChar = 43,
  // Step in a name space without steps
  oacStepNameInvalid = 44,
  // Bit name asked of a name space without indices
  oacIndexedNameInvalid = 45,
  // Vector name asked of a name space without vectors
  oacVectorNameInvalid = 46,
  // Hierarchical name where none is possible (Unix, LEF)
  oacHierNameInvalid = 47,
  // Bad start, stop or step (step 0)
  oacInvalidVectorValue = 49,
  // Bundle asked of a name space without bundles
  oacBundleNameInvalid = 50,
  // Bus or hierarchy character clash in LEF, DEF, SPEF
  oacProgrammableCharTaken = 51,
  oacProgrammableCharInvalid = 52,
  // Bit asked of a name without it
  oacNameNotIndexed = 53,
  oacBitNotInRangeForName = 54,
  // Object has no database
  oacNoObjectDB = 66,
  // Unknown text in that enum wrapper
  oacInvalidObjectTypeName = 67,
  oacInvalidOrientName = 68,
  oacInvalidParamTypeName = 72,
  // Bus, bit, parenthesis, first-character, escape syntax; finer name-syntax errors; 42 may stand for all
  oacInvalidBusSyntax = 121,
  oacInvalidBitValue = 122,
  oacInvalidParenSyntax = 123,
  oacFirstCharInvalid = 124,
  oacInvalidCharFollowingEscChar = 125,
  // Number expected inside brackets
  oacInvalidNumberSyntax = 127,
  // # not followed by two fitting hex digits
  oacInvalidCharFollowingHexChar = 128,
  // Function exists but does nothing here
  oacNotYetSupported = 129,
  // File content fails its checks
  oacCorruptedDatabase = 131,
  // API major differs
  oacInvalidMajorAPIRev = 138,
  // Reopen to a weaker mode refused
  oacCannotDowngradeDatabase = 142,
  // File has features newer than this kit: open, open 'a', open editable, save (class oaCompatibilityError)
  oacDataNotCompatibleOnOpen = 143,
  oacDataNotCompatibleOnOpenInAppendMode = 144,
  oacDataNotCompatibleOnOpenInEditableMode = 145,
  oacDataNotCompatibleOnSave = 146,
  // Data model argument of an init call
  oacInvalidDataModelRev = 147,
  oacInconsistentDataModelRev = 148,
  // 'r' to 'a' refused: file on disk changed meanwhile
  oacCannotUpgradeOverwrittenDatabase = 166,
  // File map, open, read, write, truncate, copy, attributes, mkdir
  oacCreateFileMappingFailed = 174,
  oacResetFileMappingFailed = 175,
  oacFileMappingFailed = 176,
  oacMemMapCloseFailed = 177,
  oacMemMapWriteFailed = 178,
  oacFileTruncateFailed = 179,
  oacGetFullPathFailed = 180,
  oacFileOpenFailed = 181,
  oacFileCloseFailed = 182,
  oacFileReadFailed = 183,
  oacFileWriteFailed = 184,
  oacFileGetInfoFailed = 185,
  oacFileCopyFailed = 186,
  oacFileSetAttrFailed = 187,
  oacDirCreateFailed = 188,
  // OaParam accessor of another type (checked in debug kits only; embedded: always)
  oacParamTypeDoesNotMatchWithGetFunction = 213,
  // Damaged file
  oacInvalidStringRef = 222,
  oacInvalidNameRef = 223,
  oacInvalidReference = 224,
  oacChecksumMismatch = 226,
  // Database use before init
  oacOpenAccessNotInitialized = 228,
  // Plug-in library could not be loaded
  oacFailedToLoadPlugIn = 229,
  // Repeat count of a name too large
  oacInvalidRepeat = 233
};

} // namespace OpenAccess_4

#endif
