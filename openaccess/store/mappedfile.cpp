#include "mappedfile.h"

#include "filelayer.h"
#include "oa/oaBaseMsgIds.h"
#include "raise.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace OpenAccess_4 {
namespace kit {

MappedFile::MappedFile(const std::string &path) {
  FileLayer &files = FileLayer::current();
  // O_NONBLOCK: a fifo in the place of a file must not hang us.
  const int file = files.open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK, 0);
  if (file < 0) {
    raiseBase(oacFileOpenFailed, "file " + path + ": cannot be opened: " + std::strerror(errno));
  }
  struct stat status;
  const bool known = ::fstat(file, &status) == 0;
  const int error = errno;
  if (!known || !S_ISREG(status.st_mode)) {
    files.close(file);
    raiseBase(oacFileOpenFailed, "file " + path + ": " + (known ? "is no ordinary file" : std::strerror(error)));
  }
  if (status.st_size == 0) {
    files.close(file);
    raiseBase(oacInvalidFileSize, "file " + path + ": is empty");
  }
  size_ = static_cast<std::size_t>(status.st_size);
  void *address = files.map(file, size_);
  const int mapError = errno;
  files.close(file);
  if (address == MAP_FAILED) {
    raiseBase(oacFileMappingFailed, "file " + path + ": cannot be mapped into memory: " + std::strerror(mapError));
  }
  bytes_ = static_cast<const unsigned char *>(address);
}

MappedFile::~MappedFile() {
  if (bytes_ != nullptr) {
    ::munmap(const_cast<unsigned char *>(bytes_), size_);
  }
}

MappedFile::MappedFile(MappedFile &&other) noexcept
    : bytes_(std::exchange(other.bytes_, nullptr)), size_(std::exchange(other.size_, 0)) {}

MappedFile &MappedFile::operator=(MappedFile &&other) noexcept {
  std::swap(bytes_, other.bytes_);
  std::swap(size_, other.size_);
  return *this;
}

} // namespace kit
} // namespace OpenAccess_4
