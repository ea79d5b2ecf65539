#ifndef OAKIT_LIBRARYACCESS_H
#define OAKIT_LIBRARYACCESS_H

#include "filelock.h"
#include "oa/oaDMTypes.h"

#include <memory>
#include <string>

namespace OpenAccess_4 {
namespace kit {

// The access of this process to one library: a kernel lock on `<library>/.oalib`, shared for reading and exclusive for
// writing, and a count of how often it was granted. The lock is free as soon as this process is gone, however it went.
class LibraryAccess {
public:
  LibraryAccess(std::string libraryFilePath, std::string label);

  oaLibAccessLevelEnum level() const { return level_; }
  // Others held the library, and kept it, when access was asked for last.
  bool wasRefused() const { return wasRefused_; }
  // How often access was granted and not given back.
  unsigned count() const { return count_; }
  // Waits up to `timeoutMs`, and at least kMomentMs, for others. Reading inside writing counts as writing. Raises
  // oacLibAccessCannotUpgrade for writing inside reading, oacCannotOpenLibDataFile when `.oalib` is gone.
  bool acquire(oaLibAccessEnum kind, unsigned long long timeoutMs);
  // Raises oacLibReleaseNoAccess. True when the last one was given back.
  bool release();
  void releaseAll();
  // `.oalib` was replaced while write access was held: moves the lock to the new file.
  void followReplacedFile();

private:
  std::string path_;
  std::string label_;
  oaLibAccessLevelEnum level_ = oacNoLibAccessLevel;
  unsigned count_ = 0;
  bool wasRefused_ = false;
  std::unique_ptr<FileLock> lock_;
};

// A save of another process holds the lock for an instant, in which a slow disk flushes a few files. That is not what a
// client means by "in use", so even a request that does not want to wait lets such an instant pass.
constexpr unsigned kMomentMs = 400;

} // namespace kit
} // namespace OpenAccess_4

#endif
