// Numbers of the messages that exceptions of the DM layer carry. A comment covers the numbers under it.
#ifndef OADMMSGIDS_H
#define OADMMSGIDS_H

namespace OpenAccess_4 {

enum oaDMMsgIds {
  // Library of that name already open
  oacLibNameExists = 3002,
  // Name unknown to a DM-data or library call
  oacLibNotFound = 3003,
  oacCellNotFound = 3004,
  oacViewNotFound = 3005,
  // Directory not empty; not a library
  oacLibCouldNotCreate = 3006,
  oacLibCouldNotOpen = 3007,
  // Custom view type created twice
  oacViewTypeExists = 3014,
  // Cell and view of different libraries
  oacCellViewNotInSameLib = 3017,
  // File entry exists in that container
  oacDMFileExists = 3022,
  // List includes itself (explicit open())
  oacLibDefFileRecursiveInclude = 3032,
  // DM system not loadable; DM plug-in exception; unknown dmSystem name
  oacFailedToGetDMInterface = 3041,
  oacInterfaceException = 3042,
  // Write access asked while holding read
  oacLibAccessCannotUpgrade = 3054,
  // Release without access
  oacLibReleaseNoAccess = 3055,
  // Call needs access that is not held
  oacLibAccessDenied = 3057,
  // OaLib::open of an open library
  oacCannotOpenOpenedLib = 3058,
  // Library name not usable
  oacInvalidLibName = 3059,
  // Lib-def list: member order, name exists, include exists
  oacInvalidLibDefListMemCreate = 3064,
  oacLibDefExists = 3065,
  oacLibDefListRefExists = 3066,
  // List mode unknown; not writable; not readable; save of an 'r' list
  oacUndefinedLibDefListMode = 3067,
  oacLibDefListFileNotWritable = 3068,
  oacLibDefListFileNotReadable = 3069,
  oacSaveReadOnlyLibDefList = 3070,
  // DM data: mode unknown; does not exist ('r'); locked
  oacOpenUndefinedModeDMData = 3074,
  oacDMDataDoesNotExist = 3078,
  oacCannotLockDMData = 3079,
  // DM data: save 'r'; destroy open, unknown; read, write access missing; has read needs write
  oacSaveReadOnlyDMData = 3083,
  oacDestroyDMDataOpen = 3084,
  oacDestroyDMDataDoesNotExist = 3085,
  oacDMDataCannotGetReadAccess = 3086,
  oacDMDataCannotGetWriteAccess = 3087,
  oacDMDataHasReadNeedWriteAccess = 3088,
  // Lib.defs: undefined variable in library, include, write path; append through a symbolic link
  oacLibDefFileUndefinedVarLibPath = 3100,
  oacLibDefFileUndefinedVarIncludePath = 3101,
  oacLibDefFileUndefinedVarWritePath = 3102,
  oacLibDefFileCannotAppendSymbolicLink = 3103,
  // Write access on a read-only library
  oacNoWriteAccessOnReadOnlyLib = 3104,
  // Directory of the list not writable
  oacLibDefListDirNotWritable = 3106,
  // Cell view exists with another type
  oacMismatchViewType = 3107,
  // .oalib unreadable, malformed
  oacCannotOpenLibDataFile = 3109,
  oacLibDataFileSyntaxError = 3110
};

} // namespace OpenAccess_4

#endif
