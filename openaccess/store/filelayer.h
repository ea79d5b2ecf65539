#ifndef OAKIT_FILELAYER_H
#define OAKIT_FILELAYER_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace OpenAccess_4 {
namespace kit {

// The system calls through which every file is written. Tests put a layer in place that fails, shortens or loses a
// chosen call. Functions answer like the system calls they name: -1 and errno on failure.
class FileLayer {
public:
  virtual ~FileLayer();
  virtual int open(const char *path, int flags, int mode);
  virtual long write(int file, const void *bytes, std::size_t count);
  virtual long writeAt(int file, const void *bytes, std::size_t count, long long offsetBytes);
  virtual int sync(int file);
  virtual int close(int file);
  virtual int rename(const char *from, const char *to);
  virtual int unlink(const char *path);
  virtual void *map(int file, std::size_t bytes);

  static FileLayer &current();
  // NULL puts the ordinary layer back. Returns the one that was in place, NULL for the ordinary one.
  static FileLayer *replace(FileLayer *layer);
};

// A file that appears under its final name only when it is complete. The bytes go to a hidden temporary file beside the
// target; commit() flushes it, renames it over the target and flushes the directory, so that after a crash at any
// instruction the old file or the new one is there, whole. Without commit() the destructor removes the temporary file;
// one that a killed process left behind is removed by the next writer of the same target.
class AtomicFile {
public:
  // Raises oacFileOpenFailed when the directory cannot be written.
  explicit AtomicFile(const std::string &targetPath);
  ~AtomicFile();
  AtomicFile(const AtomicFile &) = delete;
  AtomicFile &operator=(const AtomicFile &) = delete;

  // Appends. Raises oacFileWriteFailed, for a full disk too.
  void write(const void *bytes, std::size_t count);
  // Overwrites at an earlier place.
  void writeAt(const void *bytes, std::size_t count, unsigned long long offsetBytes);
  unsigned long long size() const { return size_; }
  // Where the new contents are until commit() puts them in place.
  const std::string &temporaryPath() const { return temporaryPath_; }
  // `beforeRename` is called when the new contents are on disk, right before they replace the old ones; when it throws,
  // they do not.
  void commit(const std::function<void()> &beforeRename = {});

private:
  [[noreturn]] void fail(unsigned messageId, const char *doing, int error);
  void removeAbandoned(const std::string &directory, const std::string &prefix);
  bool isTakenForAbandoned() const;

  std::string targetPath_;
  std::string directory_;
  std::string temporaryPath_;
  int file_ = -1;
  int lock_ = -1; // a second descriptor of the file, when file_ is closed
  unsigned long long size_ = 0;
};

// Whether the path leads to the file that is open: it may have been replaced or removed since it was opened.
bool isOpenFileAt(int file, const std::string &path);

// Replaces a small file by `bytes` as AtomicFile does.
void replaceFile(const std::string &path, std::string_view bytes);
// The whole file. Raises oacFileOpenFailed or oacFileReadFailed; also for a file of more than `limitBytes`.
std::string readSmallFile(const std::string &path, std::size_t limitBytes);

} // namespace kit
} // namespace OpenAccess_4

#endif
