#ifndef OATECH_H
#define OATECH_H

#include "oa/oaTechHeader.h"
#include "oa/oaTechObject.h"

namespace OpenAccess_4 {

class oaLayer;
class oaLib;
class oaNameSpace;
class oaPurpose;
class oaScalarName;
class oaViaDef;
class oaViewType;

// The technology of a library (the file `tech.db`): layers, purposes, via definitions, units. A library may be attached
// to another library and then uses that one's technology. The caller needs no access to the library.
//
// View types: units exist for the design types maskLayout, schematic, schematicSymbol, netlist and oaHierDesign; others
// raise oacInvalidTechViewType.
class oaTech : public oaTechObject {
public:
  // Takes one from the count. At 0 the technology goes; what was not saved is lost.
  void close();
  // Closes whatever the count is.
  void purge();
  // Raises oacSaveReadOnlyTech in mode 'r', oacTechHasReadNeedWriteAccess when this process holds read access to the
  // library, oacTechCannotObtainWriteAccess when another process holds access.
  void save();
  // Writes a copy as the technology of another open library, which must have none; this object stays what it is.
  void saveAs(const oaScalarName &libName);
  // Changes the mode; the count stays. 'w' drops the contents, 'a' takes the edit lock, 'r' is refused with
  // oacCannotDowngradeDatabase while there are changes.
  void reopen(oaChar mode);
  // Reads the file again; all changes are lost and all pointers into the technology are dead.
  void revert();

  void getLibName(oaScalarName &libName) const;
  void getLibName(const oaNameSpace &ns, oaString &out) const;
  oaLib *getLib() const;
  oaTime getCreateTime() const;
  oaTime getLastSavedTime() const;
  oaChar getMode() const;
  oaUInt4 getRefCount() const;
  oaBoolean isModified() const;

  // Database units per user unit. Defaults: 1000 per micron for maskLayout and oaHierDesign, 160 per inch for the
  // others. The forms with `local` leave out the technologies that this one refers to.
  oaUInt4 getDBUPerUU(const oaViewType *viewType) const;
  oaUInt4 getDBUPerUU(const oaViewType *viewType, oaBoolean local) const;
  oaUserUnitsType getUserUnits(const oaViewType *viewType) const;
  oaUserUnitsType getUserUnits(const oaViewType *viewType, oaBoolean local) const;
  // Raises oacInvalidDBUPerUU for 0.
  void setDBUPerUU(const oaViewType *viewType, oaUInt4 value);
  void setUserUnits(const oaViewType *viewType, oaUserUnitsType value);
  void unsetDBUPerUU(const oaViewType *viewType);
  void unsetUserUnits(const oaViewType *viewType);
  oaBoolean isDBUPerUUSet(const oaViewType *viewType) const;
  oaBoolean isUserUnitsSet(const oaViewType *viewType) const;

  // Database units; 0 when not set.
  oaDist getDefaultManufacturingGrid() const;
  oaDist getDefaultManufacturingGrid(oaBoolean local) const;
  void setDefaultManufacturingGrid(oaDist grid);
  void unsetDefaultManufacturingGrid();
  oaBoolean isDefaultManufacturingGridSet() const;

  void setProcessFamily(const oaString &processFamily);
  void unsetProcessFamily();
  void getProcessFamily(oaString &processFamily, oaBoolean local = false) const;
  oaBoolean hasProcessFamily(oaBoolean local = false) const;

  // User units to database units, rounded to the nearest, at the limits of the type when it does not fit.
  oaInt4 uuToDBU(const oaViewType *viewType, oaDouble value);
  oaUInt4 uuToDBUDistance(const oaViewType *viewType, oaDouble value);
  oaUInt8 uuToDBUArea(const oaViewType *viewType, oaDouble value);
  oaDouble dbuToUU(const oaViewType *viewType, oaInt4 value);
  oaDouble dbuToUUDistance(const oaViewType *viewType, oaUInt4 value);
  oaDouble dbuToUUArea(const oaViewType *viewType, oaUInt8 value);

  // References to the technologies of other libraries, in place of those that there are. What they hold is found in
  // this one too, unless `local` or oacTechIterLocal says otherwise: depth first, this one first. They are open as long
  // as this one is. Raises oacInvalidTech for a circle, and for what both sides have oacLayerNameExists,
  // oacLayerNumberExists, oacPurposeNameExists, oacPurposeNumberExists, oacViaDefExists, or oacInvalidDBUPerUU for
  // different units; so does whatever makes such a conflict later on.
  void setRefs(const oaTechArray &refs);
  void unsetRefs();
  // In the order of the search; with `local` only its own.
  void getTechHeaders(oaTechHeaderArray &refHeaders, oaBoolean local = false) const;
  oaBoolean hasUnboundRefs() const;
  // Of all open technologies that refer to this one.
  oaCollection<oaTechHeader, oaTech> getUsedIn() const;

  // In the order of creation; physical and derived layers alike. Those of referenced technologies follow.
  oaCollection<oaLayer, oaTech> getLayers() const;
  oaCollection<oaLayer, oaTech> getLayers(oaUInt4 filterFlags) const;
  // The reserved ones first.
  oaCollection<oaPurpose, oaTech> getPurposes() const;
  oaCollection<oaPurpose, oaTech> getPurposes(oaUInt4 filterFlags) const;
  oaCollection<oaViaDef, oaTech> getViaDefs() const;
  oaCollection<oaViaDef, oaTech> getViaDefs(oaUInt4 filterFlags) const;

  // A new technology, open in mode 'w', with the reserved purposes. On disk it appears with the first save(). Raises
  // oacTechLibNotFound, oacTechAlreadyExists, or oacTechAttachedTechLibDetected for a library with an attachment.
  static oaTech *create(const oaScalarName &libName);
  static oaTech *create(oaLib *lib);
  // Opens the technology of the library, or of the library it is attached to. 'r', 'w' (starts empty), 'a'. An open one
  // is counted and its mode never gets weaker. Raises oacCannotFindLibraryTech, oacTechLibNotFound,
  // oacCannotFindInheritedTechLib, oacCannotLockTech when another process edits it, oacOpenUndefinedModeTech.
  static oaTech *open(const oaScalarName &libName, oaChar mode = 'r');
  static oaTech *open(oaLib *lib, oaChar mode = 'r');
  // Open technologies only; NULL otherwise.
  static oaTech *find(const oaScalarName &libName);
  static oaTech *find(const oaLib *lib);
  // Removes the file. Raises oacDestroyTechOpen, oacDestroyWithAttachProperty, oacTechFileDoesNotExist.
  static void destroy(const oaScalarName &libName);
  static void destroy(oaLib *lib);
  // Open, or on disk with contents. `inherited` follows attachments.
  static oaBoolean exists(const oaScalarName &libName, oaBoolean inherited = true);
  static oaBoolean exists(oaLib *lib, oaBoolean inherited = true);

  static oaUInt4 getDefaultDBUPerUU(const oaViewType *viewType);
  static oaUserUnitsType getDefaultUserUnits(const oaViewType *viewType);
  static oaDist getDefaultDefaultManufacturingGrid();

  // The attachment is a property of the library's management data and is saved at once. attach() raises
  // oacAttachLibraryHasLocalTech when the library has a technology of its own; detach() and getAttachment() raise
  // oacDetachNoAttachment and oacGetAttachmentNoAttachment.
  static void attach(oaLib *lib, const oaScalarName &attachLibName);
  static void detach(oaLib *lib);
  static oaBoolean hasAttachment(const oaLib *lib);
  static void getAttachment(const oaLib *lib, oaScalarName &attachLibName);

  static oaCollection<oaTech, oaTech> getOpenTechs();
};

} // namespace OpenAccess_4

#endif
