#ifndef OAKIT_DATABASEIMAGE_H
#define OAKIT_DATABASEIMAGE_H

#include "column.h"

#include <memory>
#include <string>

namespace OpenAccess_4 {
namespace kit {

// A database file, opened for reading, as a source of columns. This is the one boundary between decoding bytes and
// giving them meaning: each file format has its own implementation, and everything above it only sees columns of rows.
class DatabaseImage {
public:
  virtual ~DatabaseImage();

  // Opens a file in whichever format it is. Raises oacFileOpenFailed, oacInvalidFileSize for an empty file,
  // oacInvalidDatabaseFile for a foreign one, oacCannotUpgrade for a newer or the licensed kit's format,
  // oacCorruptedDatabase for a damaged one.
  static std::unique_ptr<DatabaseImage> open(const std::string &path);
  // True when the file begins like one of the licensed kit. Such a file is never overwritten. False when it cannot be
  // read.
  static bool isLicensedKitFile(const std::string &path);

  const std::string &path() const { return path_; }
  // A DatabaseKind.
  virtual std::uint8_t databaseKind() const = 0;
  virtual Row rowCount(std::uint16_t table) const = 0;
  // A column that the file does not hold has no rows. Raises oacCorruptedDatabase when its elements have another size.
  virtual ColumnView column(std::uint16_t table, std::uint16_t column, std::uint32_t elementBytes) const = 0;
  // Raises oacChecksumMismatch when the bytes of a segment are not those that were written. `where` names table and
  // column.
  virtual void verify(const void *segment, std::size_t bytes, std::uint64_t checksum,
                      const std::string &where) const = 0;

protected:
  explicit DatabaseImage(std::string path) : path_(std::move(path)) {}

private:
  std::string path_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
