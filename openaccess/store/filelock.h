#ifndef OAKIT_FILELOCK_H
#define OAKIT_FILELOCK_H

// Locks between processes. Both kinds are kernel locks on an open file (flock), so they end with the process, however
// it ends; a lock file that a killed process left behind is only a file.

#include <memory>
#include <string>

namespace OpenAccess_4 {
namespace kit {

// A lock on an existing file.
class FileLock {
public:
  enum class Kind { shared, exclusive };

  // Tries until `timeoutMs` have passed, once at least. NULL when somebody else still holds it. When the file is
  // replaced meanwhile, the lock is on the new one. Raises oacFileOpenFailed when the file cannot be opened.
  static std::unique_ptr<FileLock> acquire(const std::string &path, Kind kind, unsigned long long timeoutMs);
  ~FileLock();
  FileLock(const FileLock &) = delete;
  FileLock &operator=(const FileLock &) = delete;

private:
  explicit FileLock(int file) : file_(file) {}
  int file_;
};

constexpr const char *kEditLockSuffix = ".cdslck";

// The right to edit a file: the lock file `<path>.cdslck`, which says in text lines who has it.
class EditLock {
public:
  // What came of an attempt.
  enum class Outcome { taken, held, impossible };
  // `held`: by a living process, `holder` says which; `impossible`: no lock file can be made, `holder` gives the
  // system's reason.
  static Outcome acquire(const std::string &path, std::unique_ptr<EditLock> &lock, std::string &holder);
  // Removes the lock file.
  ~EditLock();
  // False when the lock file was removed, alone or with its directory: it excludes nobody any more.
  bool isInPlace() const;
  EditLock(const EditLock &) = delete;
  EditLock &operator=(const EditLock &) = delete;

private:
  EditLock(int file, std::string lockPath) : file_(file), lockPath_(std::move(lockPath)) {}
  int file_;
  std::string lockPath_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
