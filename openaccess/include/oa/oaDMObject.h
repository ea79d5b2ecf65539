#ifndef OADMOBJECT_H
#define OADMOBJECT_H

#include "oa/oaObject.h"

namespace OpenAccess_4 {

class oaDMFile;
class oaLib;
class oaNameSpace;
class oaScalarName;
class oaString;

// Something of a library's structure: the library itself, a cell, view, cell view or file. All but the library live
// only as long as this process holds access to the library: they are dead after the last releaseAccess().
class oaDMObject : public oaObject {
public:
  // True for everything but files.
  oaBoolean isContainer() const;
  oaLib *getLib() const;
};

class oaDMContainer : public oaDMObject {
public:
  // The files directly in the container's directory, lock files excluded. Views have none. Raises oacLibAccessDenied
  // without access.
  oaCollection<oaDMFile, oaDMContainer> getDMFiles() const;
};

} // namespace OpenAccess_4

#endif
