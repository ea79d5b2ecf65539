#ifndef OADMDATA_H
#define OADMDATA_H

#include "oa/oaObject.h"

namespace OpenAccess_4 {

class oaDMContainer;
class oaLib;
class oaNameSpace;
class oaScalarName;
class oaString;
class oaViewType;

// Management data: a small database (the file `data.dm`) whose properties belong to a library, a cell or a cell view
// and stay on disk. Views have none. The caller needs no access to the library.
//
// open(): 'r' raises oacDMDataDoesNotExist when there is none, 'a' makes it when missing, 'w' starts empty; raises
// oacLibNotFound, oacCellNotFound, oacViewNotFound, oacCannotLockDMData when another process edits it. Opening again
// gives the same object and counts.
class oaDMData : public oaObject {
public:
  // Takes one from the count. At 0 the data goes; what was not saved is lost.
  void close();
  // Closes whatever the count is.
  void purge();
  // Raises oacSaveReadOnlyDMData in mode 'r', oacDMDataHasReadNeedWriteAccess when this process holds read access to
  // the library, oacDMDataCannotGetWriteAccess when another process holds access.
  void save();
  void reopen(oaChar mode);
  void revert();
  void getLibName(oaScalarName &libName) const;
  void getLibName(const oaNameSpace &ns, oaString &libName) const;
  oaLib *getLib() const;
  oaChar getMode() const;
  oaUInt4 getRefCount() const;
  oaBoolean isModified() const;

  static oaDMData *open(const oaDMContainer *container, oaChar mode);
  // Open data only; NULL otherwise.
  static oaDMData *find(const oaDMContainer *container);
  // Open, or on disk with contents.
  static oaBoolean exists(const oaDMContainer *container);
  // Removes the file. Raises oacDestroyDMDataOpen or oacDestroyDMDataDoesNotExist.
  static void destroy(const oaDMContainer *container);
  static oaCollection<oaDMData, oaDMData> getOpenDMDataObjs();
};

class oaLibDMData : public oaDMData {
public:
  static oaLibDMData *open(const oaScalarName &libName, oaChar mode);
  static oaLibDMData *find(const oaScalarName &libName);
  static oaBoolean exists(const oaScalarName &libName);
  static void destroy(const oaScalarName &libName);
};

class oaCellDMData : public oaDMData {
public:
  void getCellName(oaScalarName &cellName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;

  static oaCellDMData *open(const oaScalarName &libName, const oaScalarName &cellName, oaChar mode);
  static oaCellDMData *find(const oaScalarName &libName, const oaScalarName &cellName);
  static oaBoolean exists(const oaScalarName &libName, const oaScalarName &cellName);
  static void destroy(const oaScalarName &libName, const oaScalarName &cellName);
};

class oaCellViewDMData : public oaDMData {
public:
  void getCellName(oaScalarName &cellName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getViewName(const oaNameSpace &ns, oaString &viewName) const;
  oaViewType *getViewType() const;

  // The cell view must exist; with a view type it must have that one (oacMismatchViewType).
  static oaCellViewDMData *open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                                const oaViewType *viewType, oaChar mode);
  static oaCellViewDMData *open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                                oaChar mode);
  static oaCellViewDMData *find(const oaScalarName &libName, const oaScalarName &cellName,
                                const oaScalarName &viewName);
  static oaBoolean exists(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
  static void destroy(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
};

} // namespace OpenAccess_4

#endif
