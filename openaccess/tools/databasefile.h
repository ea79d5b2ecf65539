#ifndef OAKIT_DATABASEFILE_H
#define OAKIT_DATABASEFILE_H

// A database file as bytes: header, directory, columns, checksums; nothing of what the rows mean.

#include "columnfile.h"
#include "database.h"
#include "findings.h"

#include <memory>
#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

class DatabaseFile {
public:
  // Maps the file once: whatever others save meanwhile, all checks see this one version. NULL, with a finding, for a
  // file that is foreign, or so damaged that its columns cannot be found.
  static std::unique_ptr<DatabaseFile> open(const std::string &path, FileReport &report);
  // The first bytes are those of a file of this kit, or of the licensed kit.
  static bool beginsLikeDatabase(const std::string &path);

  std::size_t sizeBytes() const { return size_; }
  std::uint8_t databaseKind() const { return image_->databaseKind(); }

  // Checks what needs no knowledge of the tables: that columns lie side by side, and every checksum.
  void checkBytes(FileReport &report);
  // Lends the columns to the tables of `database`, which must not outlive this file. Columns that are damaged as a
  // whole stay empty; elements of damaged segments raise oacChecksumMismatch when they are read.
  void lendTo(Database &database, FileReport &report) const;

private:
  struct StoredColumn {
    std::uint16_t table, column;
    std::string tableName, columnName;
    std::uint32_t elementBytes;
    std::uint64_t offset;
    ColumnView view;
    bool isUsable;
  };
  struct StoredTable {
    std::uint16_t id;
    std::string name;
    Row rows;
  };

  DatabaseFile(const std::string &path, MappedFile mapping);
  void readDirectory();
  void checkExtents(FileReport &report);
  void checkNumbers(FileReport &report);
  void checkSegments(const StoredColumn &column, FileReport &report) const;
  bool isZero(std::uint64_t begin, std::uint64_t end) const;
  void lendColumn(ColumnBase &column, const Table &table, FileReport &report) const;
  void checkRowCount(const Table &table, FileReport &report) const;
  void tellUnknown(const Database &database, FileReport &report) const;

  const unsigned char *bytes_;
  std::size_t size_;
  std::unique_ptr<ColumnFile> image_; // owns the mapping
  ColumnFileHeader header_;
  std::vector<StoredTable> tables_;
  std::vector<StoredColumn> columns_;
};

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
