#include "filelayer.h"

#include "oa/oaBaseMsgIds.h"
#include "raise.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

FileLayer *replacement = nullptr;

std::string directoryOf(const std::string &path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string(".") : slash == 0 ? std::string("/") : path.substr(0, slash);
}

std::string nameOf(const std::string &path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

FileLayer::~FileLayer() = default;
int FileLayer::open(const char *path, int flags, int mode) { return ::open(path, flags, mode); }
long FileLayer::write(int file, const void *bytes, std::size_t count) { return ::write(file, bytes, count); }
long FileLayer::writeAt(int file, const void *bytes, std::size_t count, long long offsetBytes) {
  return ::pwrite(file, bytes, count, offsetBytes);
}
int FileLayer::sync(int file) { return ::fsync(file); }
int FileLayer::close(int file) { return ::close(file); }
int FileLayer::rename(const char *from, const char *to) { return ::rename(from, to); }
int FileLayer::unlink(const char *path) { return ::unlink(path); }
void *FileLayer::map(int file, std::size_t bytes) { return ::mmap(nullptr, bytes, PROT_READ, MAP_SHARED, file, 0); }

FileLayer &FileLayer::current() {
  static FileLayer ordinary;
  return replacement != nullptr ? *replacement : ordinary;
}

FileLayer *FileLayer::replace(FileLayer *layer) {
  FileLayer *previous = replacement;
  replacement = layer;
  return previous;
}

AtomicFile::AtomicFile(const std::string &targetPath) : targetPath_(targetPath), directory_(directoryOf(targetPath)) {
  const std::string prefix = "." + nameOf(targetPath) + ".new-";
  removeAbandoned(directory_, prefix);
  FileLayer &files = FileLayer::current();
  for (unsigned attempt = 0; file_ < 0; ++attempt) {
    temporaryPath_ = directory_ + "/" + prefix + std::to_string(getpid()) + "-" + std::to_string(attempt);
    file_ = files.open(temporaryPath_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    const int error = errno;
    if (file_ >= 0 && attempt < 1000 && isTakenForAbandoned()) {
      files.close(file_);
      file_ = -1;
    } else if (file_ < 0 && (error != EEXIST || attempt == 1000)) {
      temporaryPath_.clear();
      fail(oacFileOpenFailed, "cannot create a file beside it", error);
    }
  }
  struct stat old;
  if (::stat(targetPath_.c_str(), &old) == 0) {
    (void)::fchmod(file_, old.st_mode & 07777);
  }
}

AtomicFile::~AtomicFile() {
  if (file_ >= 0) {
    FileLayer::current().close(file_);
  }
  if (lock_ >= 0) {
    ::close(lock_);
  }
  if (!temporaryPath_.empty()) {
    FileLayer::current().unlink(temporaryPath_.c_str());
  }
}

void AtomicFile::removeAbandoned(const std::string &directory, const std::string &prefix) {
  DIR *entries = ::opendir(directory.c_str());
  if (entries == nullptr) {
    return;
  }
  while (const dirent *entry = ::readdir(entries)) {
    if (std::strncmp(entry->d_name, prefix.c_str(), prefix.size()) != 0) {
      continue;
    }
    const std::string path = directory + "/" + entry->d_name;
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0) {
      continue;
    }
    // Its writer may have put it in place meanwhile, and begun another one of that name.
    if (::flock(file, LOCK_EX | LOCK_NB) == 0 && isOpenFileAt(file, path)) {
      ::unlink(path.c_str());
    }
    ::close(file);
  }
  ::closedir(entries);
}

// Locks the new file, which says that it is being written; the lock vanishes with this process. True when another
// writer found the file before it was locked, and removes it.
bool AtomicFile::isTakenForAbandoned() const {
  if (::flock(file_, LOCK_EX | LOCK_NB) != 0) {
    return errno == EWOULDBLOCK; // some file systems have no locks
  }
  struct stat status;
  return ::fstat(file_, &status) == 0 && status.st_nlink == 0;
}

void AtomicFile::fail(unsigned messageId, const char *doing, int error) {
  raiseBase(messageId, "file " + targetPath_ + ": " + doing + ": " + std::strerror(error));
}

void AtomicFile::write(const void *bytes, std::size_t count) {
  const char *next = static_cast<const char *>(bytes);
  while (count != 0) {
    const long written = FileLayer::current().write(file_, next, count);
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      fail(oacFileWriteFailed, "cannot write the new contents", written == 0 ? ENOSPC : errno);
    }
    next += written;
    count -= static_cast<std::size_t>(written);
    size_ += static_cast<unsigned long long>(written);
  }
}

void AtomicFile::writeAt(const void *bytes, std::size_t count, unsigned long long offsetBytes) {
  const char *next = static_cast<const char *>(bytes);
  while (count != 0) {
    const long written = FileLayer::current().writeAt(file_, next, count, static_cast<long long>(offsetBytes));
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      fail(oacFileWriteFailed, "cannot write the new contents", written == 0 ? ENOSPC : errno);
    }
    next += written;
    count -= static_cast<std::size_t>(written);
    offsetBytes += static_cast<unsigned long long>(written);
  }
}

void AtomicFile::commit(const std::function<void()> &beforeRename) {
  FileLayer &files = FileLayer::current();
  if (files.sync(file_) != 0) {
    fail(oacFileWriteFailed, "cannot flush the new contents to disk", errno);
  }
  // Closed before the rename, because some file systems do not tell of a failure earlier. The duplicate keeps the lock
  // until then: nobody may take the file for an abandoned one meanwhile.
  lock_ = ::fcntl(file_, F_DUPFD_CLOEXEC, 0);
  const int closed = files.close(file_);
  const int closeError = errno;
  file_ = -1;
  if (closed != 0) {
    fail(oacFileCloseFailed, "cannot close the new contents", closeError);
  }
  if (beforeRename) {
    beforeRename();
  }
  if (files.rename(temporaryPath_.c_str(), targetPath_.c_str()) != 0) {
    fail(oacFileWriteFailed, "cannot put the new contents in place", errno);
  }
  temporaryPath_.clear();
  // Without this the rename itself could be lost in a power cut. Some file systems refuse to flush a directory; that is
  // no failure of ours.
  const int directory = ::open(directory_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (directory >= 0) {
    const bool failed = files.sync(directory) != 0 && errno == EIO;
    ::close(directory);
    if (failed) {
      fail(oacFileWriteFailed, "cannot flush the directory to disk", EIO);
    }
  }
}

bool isOpenFileAt(int file, const std::string &path) {
  struct stat opened;
  struct stat there;
  return ::fstat(file, &opened) == 0 && ::stat(path.c_str(), &there) == 0 && opened.st_dev == there.st_dev &&
         opened.st_ino == there.st_ino;
}

void replaceFile(const std::string &path, std::string_view bytes) {
  AtomicFile file(path);
  file.write(bytes.data(), bytes.size());
  file.commit();
}

std::string readSmallFile(const std::string &path, std::size_t limitBytes) {
  const int file = FileLayer::current().open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK, 0);
  if (file < 0) {
    raiseBase(oacFileOpenFailed, "file " + path + ": cannot be opened: " + std::strerror(errno));
  }
  std::string bytes;
  char buffer[16384];
  long got = 0;
  while ((got = ::read(file, buffer, sizeof buffer)) > 0 && bytes.size() <= limitBytes) {
    bytes.append(buffer, static_cast<std::size_t>(got));
  }
  const int error = errno;
  ::close(file);
  if (got < 0) {
    raiseBase(oacFileReadFailed, "file " + path + ": cannot be read: " + std::strerror(error));
  }
  if (bytes.size() > limitBytes) {
    raiseBase(oacFileReadFailed,
              "file " + path + ": longer than the " + std::to_string(limitBytes) + " bytes that such a file may have");
  }
  return bytes;
}

} // namespace kit
} // namespace OpenAccess_4
