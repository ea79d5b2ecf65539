#include "opendatabase.h"

#include "cellviewfiles.h"
#include "columnfile.h"
#include "filelock.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaException.h"
#include "raise.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

FileStamp FileStamp::of(const std::string &path) {
  FileStamp stamp;
  struct stat status;
  if (::stat(path.c_str(), &status) == 0) {
    stamp.device = status.st_dev;
    stamp.inode = status.st_ino;
    stamp.sizeBytes = static_cast<std::uint64_t>(status.st_size);
    stamp.modifiedNs = std::int64_t(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec;
  }
  return stamp;
}

void BriefWriteAccess::check(Library &library, const OpenErrorIds &ids, const std::string &label) {
  if (library.access().level() == oacReadLibAccessLevel) {
    ids.raise(ids.hasReadNeedsWrite, label + ": needs write access to library " + library.label() +
                                         ", but this process holds read access; release that first");
  }
  if (!library.isWritable()) {
    ids.raise(ids.cannotGetWriteAccess,
              label + ": library " + library.label() + " at " + library.fullPath() + " is read-only");
  }
}

BriefWriteAccess::BriefWriteAccess(Library &library, const OpenErrorIds &ids, const std::string &label)
    : library_(library) {
  check(library, ids, label);
  if (!library.access().acquire(oacWriteLibAccess, kAccessWaitSeconds * 1000ULL)) {
    ids.raise(ids.cannotGetWriteAccess, label + ": another process has held access to library " + library.label() +
                                            " for " + std::to_string(kAccessWaitSeconds) + " s");
  }
}

BriefWriteAccess::~BriefWriteAccess() { library_.releaseAccess(); }

void checkReplaceable(const std::string &path, const std::string &label) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) {
    return;
  }
  char beginning[sizeof kColumnFileMagic] = {};
  const long got = ::read(file, beginning, sizeof beginning);
  ::close(file);
  if (got == 0 || (got == sizeof beginning && std::memcmp(beginning, kColumnFileMagic, sizeof beginning) == 0)) {
    return;
  }
  const char *what =
      DatabaseImage::isLicensedKitFile(path) ? "was written by the licensed kit" : "is not a database of this kit";
  raiseBase(oacInvalidDatabaseFile,
            label + ": file " + path + " " + what + " and is not written over; move it away to start anew");
}

OpenDatabase::OpenDatabase(DatabaseKind kind, oaTypeEnum type, const OpenErrorIds &ids, DatabasePlace place)
    : Database(kind, type), ids_(&ids), place_(std::move(place)) {}

OpenDatabase::~OpenDatabase() {
  lock_.reset();
  removeCreated();
}

Library *OpenDatabase::library() const {
  Library *library = Libraries::instance().find(place_.libraryName);
  return library != nullptr && library->fullPath() == place_.libraryPath ? library : nullptr;
}

void OpenDatabase::fail(oaUInt4 id, const std::string &what) const {
  ids_->raise(id, place_.label + ": " + what);
  std::abort(); // the raise functions do not return, but a pointer to one cannot say so
}

void OpenDatabase::checkMode(char mode, const OpenErrorIds &ids, const std::string &label) {
  if (mode != 'r' && mode != 'w' && mode != 'a' && mode != 'A') {
    ids.raise(ids.undefinedMode, label + ": mode '" + std::string(1, mode) + "' is unknown, expected r, w, a or A");
  }
}

void OpenDatabase::open(char mode) {
  checkMode(mode, *ids_, place_.label);
  const bool hasContents = fileSizeBytes(place_.path()) != 0;
  if (mode == 'r' && !hasContents) {
    fail(ids_->doesNotExist, "there is no file " + place_.path() + ", or it is empty");
  }
  if (mode != 'r') {
    lock_ = newLock();
  }
  if (mode == 'w') {
    checkReplaceable(place_.path(), place_.label);
    startEmpty();
  } else if (fileSizeBytes(place_.path()) != 0) {
    loadStable();
  } else {
    startEmpty();
  }
  mode_ = mode;
  refCount_ = 1;
}

void OpenDatabase::openScratch() {
  startEmpty();
  mode_ = 's';
  refCount_ = 1;
}

void OpenDatabase::openAgain(char mode) {
  checkMode(mode, *ids_, place_.label);
  strengthen(mode);
  ++refCount_;
}

void OpenDatabase::reopen(char mode) {
  checkMode(mode, *ids_, place_.label);
  if (mode != 'r' || mode_ == 'r') {
    strengthen(mode);
    return;
  }
  if (isModified() || mode_ == 'w' || mode_ == 's') {
    raiseBase(oacCannotDowngradeDatabase, place_.label + ": has changes that are not saved, so mode '" +
                                              std::string(1, mode_) + "' cannot become 'r'");
  }
  mode_ = 'r';
  lock_.reset();
}

void OpenDatabase::strengthen(char mode) {
  if (mode == 'r' || (mode != 'w' && isWritable())) {
    return;
  }
  if (isScratch()) {
    fail(ids_->undefinedMode, "a scratch database has no other mode");
  }
  std::unique_ptr<EditLock> lock = lock_ ? nullptr : newLock();
  if (mode == 'w') {
    checkReplaceable(place_.path(), place_.label);
    beforeDrop();
    startEmpty();
  } else if (FileStamp::of(place_.path()) != stamp_) {
    raiseBase(oacCannotUpgradeOverwrittenDatabase,
              place_.label + ": file " + place_.path() + " was replaced since it was read; close it and open it again");
  }
  if (lock) {
    lock_ = std::move(lock);
  }
  mode_ = mode;
}

void OpenDatabase::revert() {
  const bool isEmptyOnDisk = fileSizeBytes(place_.path()) == 0;
  beforeDrop();
  if (mode_ == 'w' || mode_ == 's' || (isEmptyOnDisk && mode_ != 'r')) {
    startEmpty();
  } else if (isEmptyOnDisk) {
    fail(ids_->doesNotExist, "file " + place_.path() + " is gone or empty");
  } else {
    loadStable();
  }
}

void OpenDatabase::save() {
  if (isScratch()) {
    fail(ids_->saveScratch, "lives in memory only and cannot be saved");
  }
  if (!isWritable()) {
    fail(ids_->saveReadOnly, "is open for reading and cannot be saved");
  }
  Library *open = library();
  if (open == nullptr) {
    fail(ids_->libraryNotOpen, "the library at " + place_.libraryPath + " is not open");
  }
  if (!isDirectory(place_.directory) || !lock_->isInPlace()) {
    fail(ids_->noLongerExists, "directory " + place_.directory + " was removed since this was opened");
  }
  BriefWriteAccess::check(*open, *ids_, place_.label);
  checkReplaceable(place_.path(), place_.label);
  beforeSave();
  std::optional<BriefWriteAccess> access;
  writeTo(place_.path(), [&] {
    access.emplace(*open, *ids_, place_.label);
    checkReplaceable(place_.path(), place_.label);
  });
  stamp_ = FileStamp::of(place_.path());
  created_.clear();
  mode_ = 'a';
}

void OpenDatabase::saveCopy(const std::string &path) {
  checkReplaceable(path, place_.label);
  beforeSave();
  const bool wasModified = isModified();
  const std::int64_t savedTime = databaseTable().savedTime[0];
  const auto restore = [&] {
    setModified(wasModified);
    databaseTable().savedTime.set(0, savedTime);
  };
  try {
    writeTo(path);
  } catch (...) {
    restore();
    throw;
  }
  restore();
}

void OpenDatabase::noteCreated(const std::string &path) {
  created_.push_back(path);
  if (Library *open = library()) {
    refreshStructure(*open);
  }
}

// A client that holds write access may have listed cells already.
void OpenDatabase::refreshStructure(Library &library) const {
  if (library.access().level() != oacWriteLibAccessLevel || place_.directory.size() <= place_.libraryPath.size()) {
    return;
  }
  const std::string inside = place_.directory.substr(place_.libraryPath.size() + 1);
  const std::size_t slash = inside.find('/');
  if (slash != std::string::npos) {
    library.structure().refresh(inside.substr(0, slash), inside.substr(slash + 1));
  }
}

void OpenDatabase::setFileName(const std::string &fileName) { place_.fileName = fileName; }

std::unique_ptr<EditLock> OpenDatabase::newLock() const {
  const Library *open = library();
  if (open != nullptr && !open->isWritable()) {
    fail(ids_->cannotGetWriteAccess, "library " + open->label() + " at " + open->fullPath() + " is read-only");
  }
  std::unique_ptr<EditLock> lock;
  std::string holder;
  switch (EditLock::acquire(place_.path(), lock, holder)) {
  case EditLock::Outcome::taken:
    break;
  case EditLock::Outcome::held:
    fail(ids_->cannotLock, "is being edited: " + holder);
  case EditLock::Outcome::impossible:
    fail(ids_->cannotGetWriteAccess, "no lock file can be made beside " + place_.path() + ": " + holder);
  }
  return lock;
}

// Another process may replace the file between a look at it and loading it; then the stamp would belong to other
// contents.
void OpenDatabase::loadStable() {
  constexpr int kAttempts = 100;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    stamp_ = FileStamp::of(place_.path());
    load(place_.path());
    if (FileStamp::of(place_.path()) == stamp_) {
      break;
    }
  }
  afterLoad();
  setModified(false);
}

void OpenDatabase::startEmpty() {
  stamp_ = FileStamp::of(place_.path());
  clear();
  databaseTable().createTime.set(0, static_cast<std::int64_t>(std::time(nullptr)));
  initialiseNew();
  setModified(false);
}

void OpenDatabase::removeCreated() {
  if (created_.empty() || fileSizeBytes(place_.path()) != 0) {
    return;
  }
  // Best effort: whoever holds access keeps the empty files; they count as absent everywhere.
  Library *open = library();
  if (open == nullptr || open->access().level() == oacReadLibAccessLevel) {
    return;
  }
  try {
    if (!open->access().acquire(oacWriteLibAccess, 0)) {
      return;
    }
  } catch (const oaException &) {
    return;
  }
  for (auto path = created_.rbegin(); path != created_.rend(); ++path) {
    ::remove(path->c_str()); // leaves directories alone that are not empty
  }
  refreshStructure(*open);
  open->releaseAccess();
}

} // namespace kit
} // namespace OpenAccess_4
