#ifndef OADMFILE_H
#define OADMFILE_H

#include "oa/oaDMObject.h"

namespace OpenAccess_4 {

// A file in the directory of a library, cell or cell view.
class oaDMFile : public oaDMObject {
public:
  // Removes the file. Raises oacLibAccessDenied without write access.
  void destroy();
  oaDMContainer *getParent() const;
  void getName(oaString &name) const;
  // Absolute.
  void getPath(oaString &path) const;
  oaBoolean isPrimary() const;
  oaBoolean existsOnDisk() const;
  // Bytes; 0 when the file does not exist.
  oaUInt8 getOnDiskSize() const;
  // Takes the file's edit lock; false when anybody holds it, this process included.
  oaBoolean getLock();
  void releaseLock();

  // NULL when there is no such file.
  static oaDMFile *find(const oaDMContainer *parent, const oaString &name);
  // Makes an empty file, or a copy of `srcPath`. Raises oacDMFileExists, and oacLibAccessDenied without write access.
  static oaDMFile *create(const oaDMContainer *parent, const oaString &name);
  static oaDMFile *create(const oaDMContainer *parent, const oaString &name, const oaString &srcPath);
};

} // namespace OpenAccess_4

#endif
