#ifndef OAKIT_MAPPEDFILE_H
#define OAKIT_MAPPEDFILE_H

#include <cstddef>
#include <string>

namespace OpenAccess_4 {
namespace kit {

// A whole file in memory, read-only, for as long as this object lives. The kit never changes a file in place, so what
// is mapped stays as it was even when another process saves.
class MappedFile {
public:
  MappedFile() = default;
  // Raises oacFileOpenFailed (also for what is no ordinary file), oacInvalidFileSize for an empty file,
  // oacFileMappingFailed.
  explicit MappedFile(const std::string &path);
  ~MappedFile();
  MappedFile(MappedFile &&other) noexcept;
  MappedFile &operator=(MappedFile &&other) noexcept;
  MappedFile(const MappedFile &) = delete;
  MappedFile &operator=(const MappedFile &) = delete;

  const unsigned char *bytes() const { return bytes_; }
  std::size_t size() const { return size_; }

private:
  const unsigned char *bytes_ = nullptr;
  std::size_t size_ = 0;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
