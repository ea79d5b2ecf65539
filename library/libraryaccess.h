#ifndef LIBRARYACCESS_H
#define LIBRARYACCESS_H

#include <oa/oaDesignDB.h>

// Read access to a library for the lifetime of the object; taking it waits up to `timeoutSeconds`. Cells, views and
// cell views are invalid once the outermost access is gone. When the access is refused, because another process writes,
// the walk that follows raises the kit's own error.
class LibraryReadAccess {
public:
  explicit LibraryReadAccess(oa::oaLib *lib, oa::oaUInt4 timeoutSeconds = 0)
      : lib_(lib), isHeld_(lib->getAccess(oa::oaLibAccess("read"), timeoutSeconds)) {}
  ~LibraryReadAccess() {
    if (isHeld_ && lib_->getAccessLevel() != oa::oacNoLibAccessLevel) {
      lib_->releaseAccess();
    }
  }

private:
  LibraryReadAccess(const LibraryReadAccess &);
  LibraryReadAccess &operator=(const LibraryReadAccess &);

  oa::oaLib *lib_;
  bool isHeld_;
};

#endif
