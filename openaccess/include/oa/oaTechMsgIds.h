// Numbers of the messages that exceptions of the tech layer carry. A comment covers the numbers under it.
#ifndef OATECHMSGIDS_H
#define OATECHMSGIDS_H

namespace OpenAccess_4 {

enum oaTechMsgIds {
  // Dead handle, or a technology that refers to itself; library not open
  oacInvalidTech = 2000,
  oacTechLibNotFound = 2002,
  // Save of an 'r' technology; create of an existing one
  oacSaveReadOnlyTech = 2003,
  oacTechAlreadyExists = 2004,
  // Open without technology
  oacCannotFindLibraryTech = 2006,
  oacTechFileDoesNotExist = 2057,
  // Zero DBU; view type without units
  oacInvalidDBUPerUU = 2009,
  oacInvalidTechViewType = 2010,
  // Another process edits it
  oacCannotLockTech = 2011,
  // Number, name in use
  oacLayerNumberExists = 2013,
  oacLayerNameExists = 2014,
  // Object of another kind passed
  oacInvalidLayer = 2012,
  oacInvalidPurpose = 2022,
  // Number, name in use
  oacPurposeNumberExists = 2023,
  oacPurposeNameExists = 2024,
  // Reserved purpose changed, destroyed; user purpose with a reserved number
  oacCannotChangeReservedPurpose = 2026,
  oacCannotDestroyReservedPurpose = 2027,
  oacPurposeNumberIsReserved = 2120,
  // Via definition name in use
  oacViaDefExists = 2032,
  // Via cut row, column out of range; zero columns, rows
  oacInvalidViaParamRowNumber = 2042,
  oacInvalidViaParamColumnNumber = 2043,
  oacZeroColumnsSpecifiedForViaParam = 2044,
  oacZeroRowsSpecifiedForViaParam = 2045,
  // Technology cannot get read / write access; has read, needs write
  oacTechCannotObtainReadAccess = 2051,
  oacTechCannotObtainWriteAccess = 2052,
  oacTechHasReadNeedWriteAccess = 2053,
  // Library has an attachment already; attached library not found
  oacTechAttachedTechLibDetected = 2055,
  oacCannotFindInheritedTechLib = 2056,
  // Destroy of an open technology; of an attached one
  oacDestroyTechOpen = 2059,
  oacDestroyWithAttachProperty = 2112,
  // Layer of a foreign technology; attach/detach/get without or with local technology
  oacLayerNotInReferencedTech = 2090,
  oacAttachLibraryHasLocalTech = 2104,
  oacDetachNoAttachment = 2105,
  oacGetAttachmentNoAttachment = 2106,
  // Implant number asked but none
  oacStdViaDefDoesNotHaveImplant1 = 2114,
  oacStdViaDefDoesNotHaveImplant2 = 2115,
  // Mode not r, w, a, A
  oacOpenUndefinedModeTech = 2142
};

} // namespace OpenAccess_4

#endif
