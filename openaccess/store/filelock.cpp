#include "filelock.h"

#include "filelayer.h"
#include "oa/oaBaseMsgIds.h"
#include "raise.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr unsigned kFirstPauseMs = 2;
constexpr unsigned kLongestPauseMs = 50;

int lockNow(int file, int operation) {
  int result = 0;
  do {
    result = ::flock(file, operation | LOCK_NB);
  } while (result != 0 && errno == EINTR);
  return result;
}

// Whoever asks who edits a file locks it for an instant; that is not what is meant by editing it.
int lockUnlessEdited(int file) {
  constexpr int kAttempts = 3;
  int result = lockNow(file, LOCK_EX);
  for (int attempt = 1; attempt < kAttempts && result != 0 && errno == EWOULDBLOCK; ++attempt) {
    std::this_thread::sleep_for(std::chrono::milliseconds(kFirstPauseMs));
    result = lockNow(file, LOCK_EX);
  }
  return result;
}

int openForLock(const std::string &path, FileLock::Kind kind) {
  // Over a network an exclusive lock needs a file that is open for writing.
  int file = kind == FileLock::Kind::exclusive ? ::open(path.c_str(), O_RDWR | O_CLOEXEC) : -1;
  if (file < 0) {
    file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  }
  return file;
}

std::string readHolder(int file) {
  char text[1024];
  const long bytes = ::pread(file, text, sizeof text, 0);
  std::string holder;
  for (long i = 0; i < bytes; ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    holder += c == '\n' ? std::string(", ") : std::string(1, c < 0x20 || c > 0x7e ? '?' : text[i]);
  }
  while (!holder.empty() && (holder.back() == ' ' || holder.back() == ',')) {
    holder.pop_back();
  }
  return holder;
}

std::string loginName() {
  const struct passwd *user = ::getpwuid(::geteuid());
  return user != nullptr ? user->pw_name : std::to_string(::geteuid());
}

std::string ownerText(const std::string &path) {
  char host[256] = "";
  ::gethostname(host, sizeof host - 1);
  const std::time_t now = std::time(nullptr);
  struct tm local;
  char when[64] = "";
  if (::localtime_r(&now, &local) != nullptr) {
    std::strftime(when, sizeof when, "%Y-%m-%d %H:%M:%S %z", &local);
  }
  return "login " + loginName() + "\nhost " + host + "\nprocess " + std::to_string(::getpid()) + "\ntime " + when +
         "\npath " + path + "\n";
}

} // namespace

std::unique_ptr<FileLock> FileLock::acquire(const std::string &path, Kind kind, unsigned long long timeoutMs) {
  using Clock = std::chrono::steady_clock;
  constexpr unsigned long long kLongestWaitMs = 1000ULL * 3600 * 24 * 365;
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(std::min(timeoutMs, kLongestWaitMs));
  unsigned pauseMs = kFirstPauseMs;
  for (;;) {
    const int file = openForLock(path, kind);
    if (file < 0) {
      raiseBase(oacFileOpenFailed, "file " + path + ": cannot be opened to be locked: " + std::strerror(errno));
    }
    if (lockNow(file, kind == Kind::exclusive ? LOCK_EX : LOCK_SH) == 0) {
      std::unique_ptr<FileLock> lock(new FileLock(file));
      // A lock on what has been replaced or removed meanwhile excludes nobody.
      if (isOpenFileAt(file, path)) {
        return lock;
      }
      continue;
    }
    const int error = errno;
    ::close(file);
    if (error != EWOULDBLOCK) {
      raiseOS(error, "file " + path + ": cannot be locked");
    }
    const auto now = Clock::now();
    if (now >= end) {
      return nullptr;
    }
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - now) + std::chrono::milliseconds(1);
    std::this_thread::sleep_for(std::min(left, std::chrono::milliseconds(pauseMs)));
    pauseMs = std::min(pauseMs * 2, kLongestPauseMs);
  }
}

FileLock::~FileLock() { ::close(file_); }

EditLock::Outcome EditLock::acquire(const std::string &path, std::unique_ptr<EditLock> &lock, std::string &holder) {
  const std::string lockPath = path + kEditLockSuffix;
  for (;;) {
    int file = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    const int refusal = file < 0 ? errno : 0;
    if (refusal == EACCES) { // another user's, perhaps, who alone may write it
      file = ::open(lockPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    }
    if (file < 0) {
      holder = std::strerror(refusal);
      return Outcome::impossible;
    }
    if (lockUnlessEdited(file) != 0) {
      const int error = errno;
      holder = error == EWOULDBLOCK ? readHolder(file) : std::strerror(refusal != 0 ? refusal : error);
      ::close(file);
      return error == EWOULDBLOCK ? Outcome::held : Outcome::impossible;
    }
    // An owner that just went away removes its file: then this is a lock on nothing.
    if (!isOpenFileAt(file, lockPath)) {
      ::close(file);
      continue;
    }
    // What another user's killed process has left makes room for a file that can say who edits now.
    if (refusal != 0) {
      const bool isRemoved = ::unlink(lockPath.c_str()) == 0;
      ::close(file);
      if (isRemoved) {
        continue;
      }
      holder = std::strerror(refusal);
      return Outcome::impossible;
    }
    // The text is for people. On a full disk it stays short, and the lock holds all the same.
    const std::string text = ownerText(path);
    const bool told = ::ftruncate(file, 0) == 0 && ::pwrite(file, text.data(), text.size(), 0) >= 0;
    static_cast<void>(told);
    lock.reset(new EditLock(file, lockPath));
    return Outcome::taken;
  }
}

bool EditLock::isInPlace() const { return isOpenFileAt(file_, lockPath_); }

EditLock::~EditLock() {
  // Removed while it is still locked, so that nobody can have taken it over meanwhile. It may be gone with its whole
  // directory.
  if (isOpenFileAt(file_, lockPath_)) {
    ::unlink(lockPath_.c_str());
  }
  ::close(file_);
}

} // namespace kit
} // namespace OpenAccess_4
