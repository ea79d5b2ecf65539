#include "libraryaccess.h"

#include "oa/oaException.h"
#include "raise.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

LibraryAccess::LibraryAccess(std::string libraryFilePath, std::string label)
    : path_(std::move(libraryFilePath)), label_(std::move(label)) {}

bool LibraryAccess::acquire(oaLibAccessEnum kind, unsigned long long timeoutMs) {
  if (level_ == oacReadLibAccessLevel && kind == oacWriteLibAccess) {
    raiseDM(oacLibAccessCannotUpgrade,
            "library " + label_ +
                ": write access is asked for while this process holds read access; release that first");
  }
  if (level_ == oacNoLibAccessLevel) {
    const FileLock::Kind lockKind = kind == oacWriteLibAccess ? FileLock::Kind::exclusive : FileLock::Kind::shared;
    try {
      lock_ = FileLock::acquire(path_, lockKind, std::max<unsigned long long>(timeoutMs, kMomentMs));
    } catch (const oaError &error) {
      raiseDM(oacCannotOpenLibDataFile, "library " + label_ + ": " + std::string(error.getMsg()));
    }
    wasRefused_ = !lock_;
    if (wasRefused_) {
      return false;
    }
    level_ = kind == oacWriteLibAccess ? oacWriteLibAccessLevel : oacReadLibAccessLevel;
  }
  ++count_;
  return true;
}

bool LibraryAccess::release() {
  if (count_ == 0) {
    raiseDM(oacLibReleaseNoAccess, "library " + label_ + ": access is released, but none is held");
  }
  if (--count_ != 0) {
    return false;
  }
  releaseAll();
  return true;
}

void LibraryAccess::releaseAll() {
  count_ = 0;
  level_ = oacNoLibAccessLevel;
  lock_.reset();
}

void LibraryAccess::followReplacedFile() {
  // Somebody else may hold the new file for the instant since it appeared; with every other process the old lock still
  // counts.
  constexpr unsigned kLongestInstantMs = 5000;
  std::unique_ptr<FileLock> lock = FileLock::acquire(path_, FileLock::Kind::exclusive, kLongestInstantMs);
  if (lock) {
    lock_ = std::move(lock);
  }
}

} // namespace kit
} // namespace OpenAccess_4
