#ifndef OALIB_H
#define OALIB_H

#include "oa/oaDMAttr.h"
#include "oa/oaDMObject.h"
#include "oa/oaDMTypes.h"

namespace OpenAccess_4 {

class oaCell;
class oaCellView;
class oaView;

// A library that is open in this process: a directory that holds a file `.oalib`.
class oaLib : public oaDMContainer {
public:
  // Drops all access and closes the library; it and everything of its structure is dead afterwards. Open designs stay
  // usable, but can be saved only after the library was opened again.
  void close();

  void getName(oaScalarName &name) const;
  void getName(const oaNameSpace &ns, oaString &out) const;
  // As it was given to open() or create().
  void getPath(oaString &path) const;
  // Absolute.
  void getFullPath(oaString &fullPath) const;
  // Directory for temporary files; the library's own when none was given.
  void getWritePath(oaString &writePath) const;
  oaLibMode getMode() const;
  void getDMSystemName(oaString &dmSystem) const;
  void getAttributes(oaDMAttrArray &attrs) const;
  // Adds attributes or changes their values, in memory and in `.oalib`. Raises oacLibAccessDenied without write access.
  void setAttributes(const oaDMAttrArray &attrs);
  // From the permissions of the directory. A read-only library (by mode, or by the attribute libReadOnly) is never
  // writable.
  oaBoolean isReadable() const;
  oaBoolean isWritable() const;

  // Asks for access, in this process and against others: many readers or one writer. Waits up to `timeout` seconds (0:
  // tries once) and answers false when others still hold it. Nests: each success needs its own releaseAccess(). Reading
  // inside writing is granted; write access while holding only read access raises oacLibAccessCannotUpgrade, write
  // access to a read-only library oacNoWriteAccessOnReadOnlyLib. Access ends with the process, however it ends.
  oaBoolean getAccess(oaLibAccess accessType, oaUInt4 timeout = 0);
  // Raises oacLibReleaseNoAccess when none is held.
  void releaseAccess();
  oaLibAccessLevel getAccessLevel() const;

  // These need access, or raise oacLibAccessDenied. The directory is read once per period of access.
  oaCollection<oaCell, oaLib> getCells() const;
  // One view for each name and view type in use.
  oaCollection<oaView, oaLib> getViews() const;
  oaCollection<oaView, oaLib> getViewsByName(const oaScalarName &name) const;
  oaCollection<oaCellView, oaLib> getCellViews() const;

  // Makes the directory (its parent must exist; an existing one must be empty) and opens the library. lib.defs is not
  // touched. Raises oacLibNameExists, oacLibCouldNotCreate, oacInvalidLibName, oacFailedToGetDMInterface for an unknown
  // system, or oacOSError.
  static oaLib *create(const oaScalarName &name, const oaString &libPath, oaLibMode mode = oacSharedLibMode,
                       const oaString &dmSystem = "oaDMSystem", const oaDMAttrArray *dmAttrList = NULL);
  // Raises oacCannotOpenOpenedLib when a library of that name is open, and oacLibCouldNotOpen when the directory is no
  // library.
  static oaLib *open(const oaScalarName &name, const oaString &libPath, const oaString &writePath = "",
                     oaLibMode mode = oacSharedLibMode);
  // Open libraries only; NULL otherwise.
  static oaLib *find(const oaScalarName &name);
  // Is there a library in this directory, open or not?
  static oaBoolean exists(const oaString &libPath);
  static oaCollection<oaLib, oaLib> getOpenLibs();
};

} // namespace OpenAccess_4

#endif
