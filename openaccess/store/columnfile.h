#ifndef OAKIT_COLUMNFILE_H
#define OAKIT_COLUMNFILE_H

// The embedded kit's own file format: header, columns, directory. The bytes are drawn in docs/format.md; reader and
// writer stand side by side here so that a change of one is seen at the other.

#include "databaseimage.h"
#include "filelayer.h"
#include "mappedfile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

namespace file {
struct StoredTable;
struct StoredColumn;
} // namespace file

struct ColumnFileHeader {
  char magic[8];
  std::uint32_t headerBytes;
  std::uint32_t reserved;
  std::uint64_t directoryOffset;
  std::uint64_t directoryBytes;
  std::uint64_t directoryChecksum;
  std::uint64_t fileBytes;
  std::uint64_t reserved2;
  std::uint64_t headerChecksum; // XXH3 of all bytes before
};
static_assert(sizeof(ColumnFileHeader) == 64, "the header is 64 bytes on disk");

// The first byte is no text and no beginning of any other known file; CR LF shows damage by text transfers, as in PNG.
constexpr char kColumnFileMagic[8] = {'\x8b', 'O', 'A', 'K', 'I', 'T', '\r', '\n'};
constexpr std::uint64_t kColumnAlignmentBytes = 64;

// Steps of the schema: a reader refuses files of a later step than its own. A new step needs a line here saying what it
// added.
enum SchemaStep : std::uint16_t {
  kScalarConnectivityStep = 1, // designs, technologies, management data; scalar nets, terminals and instances
  kCurrentSchemaStep = kScalarConnectivityStep
};

class ColumnFile : public DatabaseImage {
public:
  // Checks header and directory, that every column lies inside the file, and that the file is large enough for the
  // rows that it claims. Raises as DatabaseImage::open does.
  ColumnFile(const std::string &path, MappedFile mapping);

  std::uint8_t databaseKind() const override { return databaseKind_; }
  Row rowCount(std::uint16_t table) const override;
  ColumnView column(std::uint16_t table, std::uint16_t column, std::uint32_t elementBytes) const override;
  void verify(const void *segment, std::size_t bytes, std::uint64_t checksum, const std::string &where) const override;

private:
  struct ColumnEntry {
    std::uint16_t table;
    std::uint16_t column;
    std::uint32_t elementBytes;
    ColumnView view;
  };
  // What the directory has claimed so far.
  struct Claims {
    std::uint64_t columnsEnd; // where the directory begins
    std::uint64_t rows;
    std::uint64_t columnBytes;
  };
  [[noreturn]] void corrupted(const std::string &what) const;
  ColumnFileHeader readHeader() const;
  void readDirectory();
  void readTable(const file::StoredTable &table, Claims &claims);
  void readColumn(const file::StoredTable &table, const file::StoredColumn &column, const std::string &tableName,
                  Claims &claims);

  MappedFile mapping_;
  std::uint8_t databaseKind_ = 0;
  std::vector<std::pair<std::uint16_t, Row>> tableRows_;
  std::vector<ColumnEntry> columns_;
};

// Writes one file, table by table, column by column.
class ColumnFileWriter {
public:
  explicit ColumnFileWriter(const std::string &path);
  void beginTable(std::uint16_t id, const char *name, Row rows);
  void beginColumn(std::uint16_t id, const char *name, std::uint32_t elementBytes);
  // The next elements of the column; any number, at most the table's rows in all.
  void addElements(const void *elements, Row count);
  void endColumn();
  // Writes directory and header and puts the file in place.
  // `beforeRename`: see AtomicFile::commit().
  void finish(std::uint8_t databaseKind, const std::function<void()> &beforeRename = {});

private:
  struct WrittenColumn {
    std::uint16_t id;
    std::string name;
    std::uint32_t elementBytes;
    Row rows;
    std::uint64_t offset;
    std::vector<std::uint64_t> checksums;
  };
  struct WrittenTable {
    std::uint16_t id;
    std::string name;
    Row rows;
    std::vector<WrittenColumn> columns;
  };
  void writeSegment(const void *elements, Row count);
  void pad();

  AtomicFile file_;
  std::vector<WrittenTable> tables_;
  // Elements of a segment that is not full yet.
  std::vector<unsigned char> pending_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
