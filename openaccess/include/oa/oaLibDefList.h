#ifndef OALIBDEFLIST_H
#define OALIBDEFLIST_H

#include "oa/oaDMAttr.h"
#include "oa/oaDMTypes.h"
#include "oa/oaObject.h"

namespace OpenAccess_4 {

class oaLibDefListMem;
class oaScalarName;

// A library definition file (lib.defs) in memory: an ordered list of library definitions and references to other lists.
class oaLibDefList : public oaSessionObject {
public:
  // Opens the libraries that the list and its includes define, as openLibs() does, without reading this list's file
  // again. Raises oacLibDefFileRecursiveInclude.
  void open();
  // Writes the file, in mode 'a' or 'w'; comments of the file that was read stay where they were. Raises
  // oacSaveReadOnlyLibDefList, oacLibDefListFileNotWritable or oacLibDefListDirNotWritable; the old file is intact
  // then.
  void save();
  // Writes another file. The list keeps its path and mode.
  void saveAs(const oaString &path);
  // As it was given.
  void getPath(oaString &path) const;
  // Absolute.
  void getFullPath(oaString &path) const;
  // 'r', 'w' or 'a'.
  oaChar getMode() const;
  // Forgets the list and its members. The file is not touched.
  void destroy();
  // In the order of the file.
  oaCollection<oaLibDefListMem, oaLibDefList> getMembers() const;

  // Reads ./lib.defs, or $HOME/lib.defs, or the installation's data/lib.defs, with all includes, and opens every
  // library that they define. Reports to the observers what is wrong and never throws for a missing file. A library
  // that is open at the same path stays as it is; one whose path has changed is closed and opened again.
  static void openLibs();
  // The same with this file. Raises oacLibDefListFileNotReadable.
  static void openLibs(const oaString &path);
  // The list of the last openLibs(), NULL when that failed.
  static oaLibDefList *getTopList();
  // Where openLibs() would read; empty when there is no such file.
  static void getDefaultPath(oaString &path);
  // "lib.defs".
  static void getDefaultFileName(oaString &libDefName);
  // A new, empty list, in mode 'w'.
  static oaLibDefList *create(const oaString &filePath);
  // The list of that file. 'r': the file must be readable (oacLibDefListFileNotReadable); 'a': it may be missing, and
  // must be writable (oacLibDefListFileNotWritable) and no symbolic link (oacLibDefFileCannotAppendSymbolicLink); 'w':
  // starts empty. An existing list changes its mode, and is emptied by 'w'. Other modes raise
  // oacUndefinedLibDefListMode. Opens no library and reads no include.
  static oaLibDefList *get(const oaString &filePath, oaChar mode);
  // NULL when no such list is in memory.
  static oaLibDefList *find(const oaString &filePath);
  static oaCollection<oaLibDefList, oaLibDefList> getLibDefLists();
};

class oaLibDefListMem : public oaSessionObject {
public:
  oaLibDefList *getList() const;
  // Raises oacInvalidLibDefListMemCreate when `member` belongs to another list.
  void moveAfter(oaLibDefListMem *member);
  void moveToFirst();
  void moveToLast();
  // Takes the member off its list. The file is not touched before save().
  void destroy();
};

// DEFINE and its ASSIGNs.
class oaLibDef : public oaLibDefListMem {
public:
  void getLibName(oaScalarName &libName) const;
  // As written in the file.
  void getLibPath(oaString &path) const;
  void getLibWritePath(oaString &writePath) const;
  void setLibWritePath(const oaString &writePath);
  oaLibMode getLibMode() const;
  void setLibMode(oaLibMode libMode);
  void getLibAttributes(oaDMAttrArray &attrs) const;
  void addLibAttribute(const oaString &attrName, const oaString &attrVal);
  void removeLibAttribute(const oaString &attrName);

  // Appends, or inserts before `followingMem`. Opens nothing. Raises oacLibDefExists when the list defines that name
  // already, oacInvalidLibName when the name cannot be written, oacInvalidLibDefListMemCreate when followingMem is of
  // another list.
  static oaLibDef *create(oaLibDefList *defList, const oaScalarName &libName, const oaString &libPath,
                          const oaString &writePath = "", oaLibMode libMode = oacSharedLibMode,
                          const oaDMAttrArray *libAttrs = NULL, oaLibDefListMem *followingMem = NULL);
  static oaLibDef *find(const oaLibDefList *defList, const oaScalarName &libName);
};

// INCLUDE.
class oaLibDefListRef : public oaLibDefListMem {
public:
  // As written in the file.
  void getRefListPath(oaString &path) const;

  // Raises oacLibDefListRefExists.
  static oaLibDefListRef *create(oaLibDefList *libList, const oaString &refListPath,
                                 oaLibDefListMem *followingMem = NULL);
  static oaLibDefListRef *find(const oaLibDefList *defList, const oaString &refListPath);
};

} // namespace OpenAccess_4

#endif
