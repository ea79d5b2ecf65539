#include "columnfile.h"

#include "columnfile_generated.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaException.h"
#include "raise.h"

#include <algorithm>
#include <cstring>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr unsigned char kLicensedKitMagic[4] = {0x67, 0x45, 0x23, 0x01};
constexpr std::size_t kMostDirectoryEntries = 100000;

std::uint64_t checksumOf(const void *bytes, std::size_t count) { return XXH3_64bits(bytes, count); }

Row segmentsOf(Row rows) { return rows / kSegmentRows + (rows % kSegmentRows != 0); }

} // namespace

DatabaseImage::~DatabaseImage() = default;

std::unique_ptr<DatabaseImage> DatabaseImage::open(const std::string &path) {
  MappedFile mapping(path);
  if (mapping.size() >= sizeof kLicensedKitMagic &&
      std::memcmp(mapping.bytes(), kLicensedKitMagic, sizeof kLicensedKitMagic) == 0) {
    raiseBase(oacCannotUpgrade,
              "file " + path +
                  ": was written by the licensed OpenAccess kit (it begins with 67 45 23 01), whose format this "
                  "kit cannot read yet; open the library with a plug-in built against that kit");
  }
  if (mapping.size() < sizeof(ColumnFileHeader) ||
      std::memcmp(mapping.bytes(), kColumnFileMagic, sizeof kColumnFileMagic) != 0) {
    raiseBase(oacInvalidDatabaseFile, "file " + path + ": is not a database file of this kit");
  }
  return std::unique_ptr<DatabaseImage>(new ColumnFile(path, std::move(mapping)));
}

bool DatabaseImage::isLicensedKitFile(const std::string &path) {
  try {
    const MappedFile mapping(path);
    return mapping.size() >= sizeof kLicensedKitMagic &&
           std::memcmp(mapping.bytes(), kLicensedKitMagic, sizeof kLicensedKitMagic) == 0;
  } catch (const oaException &) {
    return false;
  }
}

ColumnFile::ColumnFile(const std::string &path, MappedFile mapping)
    : DatabaseImage(path), mapping_(std::move(mapping)) {
  readDirectory();
}

void ColumnFile::corrupted(const std::string &what) const {
  raiseBase(oacCorruptedDatabase, "file " + path() + ": damaged: " + what);
}

ColumnFileHeader ColumnFile::readHeader() const {
  ColumnFileHeader header;
  std::memcpy(&header, mapping_.bytes(), sizeof header);
  if (checksumOf(&header, offsetof(ColumnFileHeader, headerChecksum)) != header.headerChecksum) {
    corrupted("the header's checksum does not fit");
  }
  if (header.headerBytes != sizeof header || header.fileBytes != mapping_.size()) {
    corrupted("it should have " + std::to_string(header.fileBytes) + " bytes, but has " +
              std::to_string(mapping_.size()));
  }
  if (header.directoryOffset > mapping_.size() || header.directoryBytes > mapping_.size() - header.directoryOffset ||
      header.directoryOffset % 8 != 0) {
    corrupted("the directory lies outside the file");
  }
  return header;
}

void ColumnFile::readDirectory() {
  const ColumnFileHeader header = readHeader();
  const unsigned char *bytes = mapping_.bytes() + header.directoryOffset;
  const std::size_t size = static_cast<std::size_t>(header.directoryBytes);
  if (checksumOf(bytes, size) != header.directoryChecksum) {
    corrupted("the directory's checksum does not fit");
  }
  // A directory may list one table or column again and again; each entry of a list takes four bytes. What the kit
  // writes has some hundred.
  const std::size_t mostEntries = std::min<std::size_t>(kMostDirectoryEntries, size / 4);
  flatbuffers::Verifier verifier(bytes, size, 16, static_cast<flatbuffers::uoffset_t>(mostEntries));
  if (!file::VerifyDirectoryBuffer(verifier)) {
    corrupted("the directory is malformed, or describes more than " + std::to_string(mostEntries) +
              " tables and columns");
  }
  const file::Directory *directory = file::GetDirectory(bytes);
  if (directory->schema_step() > kCurrentSchemaStep) {
    raiseBase(oacCannotUpgrade, "file " + path() + ": was written by a newer kit (schema step " +
                                    std::to_string(directory->schema_step()) + ", this kit knows " +
                                    std::to_string(kCurrentSchemaStep) + ")");
  }
  databaseKind_ = directory->database_kind();
  if (directory->tables() == nullptr) {
    return;
  }
  Claims claims{header.directoryOffset, 0, 0};
  for (const file::StoredTable *table : *directory->tables()) {
    readTable(*table, claims);
  }
}

// Memory is taken for each row of a table, so rows are believed only as far as the file pays for them: each has a byte
// at least that no other row has, its kind, its element of a pool, or the reference that it is there for.
void ColumnFile::readTable(const file::StoredTable &table, Claims &claims) {
  const std::string name = table.name() != nullptr ? table.name()->str() : std::to_string(table.id());
  claims.rows += table.rows();
  if (table.rows() == kNoRow || claims.rows > mapping_.size()) {
    corrupted("table " + name + " claims " + std::to_string(table.rows()) + " rows, but the file has only " +
              std::to_string(mapping_.size()) + " bytes for those of all tables");
  }
  tableRows_.emplace_back(table.id(), table.rows());
  if (table.columns() == nullptr) {
    return;
  }
  for (const file::StoredColumn *column : *table.columns()) {
    readColumn(table, *column, name, claims);
  }
}

void ColumnFile::readColumn(const file::StoredTable &table, const file::StoredColumn &column,
                            const std::string &tableName, Claims &claims) {
  const std::string name =
      tableName + "." + (column.name() != nullptr ? column.name()->str() : std::to_string(column.id()));
  const std::uint64_t end = claims.columnsEnd;
  const std::uint64_t room = column.offset() <= end ? end - column.offset() : 0;
  const std::uint64_t bytes = std::uint64_t(column.rows()) * column.element_bytes();
  if (column.element_bytes() == 0 || column.element_bytes() > 4096 || column.offset() % kColumnAlignmentBytes != 0 ||
      column.rows() > table.rows() || bytes > room) {
    corrupted("column " + name + " claims " + std::to_string(column.rows()) + " rows of " +
              std::to_string(column.element_bytes()) + " bytes at " + std::to_string(column.offset()) +
              ", which the file does not hold");
  }
  claims.columnBytes += bytes;
  if (claims.columnBytes > end) {
    corrupted("column " + name + " lies where others lie: together they would have " +
              std::to_string(claims.columnBytes) + " bytes, and the file has " + std::to_string(end) + " for them");
  }
  const Row segments = segmentsOf(column.rows());
  if (segments != (column.checksums() != nullptr ? column.checksums()->size() : 0)) {
    corrupted("column " + name + " lacks checksums");
  }
  ColumnView view;
  view.elements = mapping_.bytes() + column.offset();
  view.rows = column.rows();
  view.checksums = segments != 0 ? reinterpret_cast<const std::uint64_t *>(column.checksums()->Data()) : nullptr;
  columns_.push_back({table.id(), column.id(), column.element_bytes(), view});
}

Row ColumnFile::rowCount(std::uint16_t table) const {
  for (const auto &entry : tableRows_) {
    if (entry.first == table) {
      return entry.second;
    }
  }
  return 0;
}

ColumnView ColumnFile::column(std::uint16_t table, std::uint16_t column, std::uint32_t elementBytes) const {
  for (const ColumnEntry &entry : columns_) {
    if (entry.table == table && entry.column == column) {
      if (entry.elementBytes != elementBytes) {
        corrupted("column " + std::to_string(column) + " of table " + std::to_string(table) + " has elements of " +
                  std::to_string(entry.elementBytes) + " bytes, expected " + std::to_string(elementBytes));
      }
      return entry.view;
    }
  }
  return ColumnView();
}

void ColumnFile::verify(const void *segment, std::size_t bytes, std::uint64_t checksum,
                        const std::string &where) const {
  if (checksumOf(segment, bytes) != checksum) {
    raiseBase(oacChecksumMismatch, "file " + path() + ": damaged: a checksum of " + where + " does not fit");
  }
}

ColumnFileWriter::ColumnFileWriter(const std::string &path) : file_(path) {
  const ColumnFileHeader header = {};
  file_.write(&header, sizeof header);
}

void ColumnFileWriter::beginTable(std::uint16_t id, const char *name, Row rows) {
  tables_.push_back({id, name, rows, {}});
}

void ColumnFileWriter::beginColumn(std::uint16_t id, const char *name, std::uint32_t elementBytes) {
  pad();
  tables_.back().columns.push_back({id, name, elementBytes, 0, file_.size(), {}});
  pending_.clear();
}

void ColumnFileWriter::addElements(const void *elements, Row count) {
  const std::uint32_t elementBytes = tables_.back().columns.back().elementBytes;
  const unsigned char *next = static_cast<const unsigned char *>(elements);
  while (count != 0) {
    const Row pendingRows = static_cast<Row>(pending_.size() / elementBytes);
    const Row taken = std::min(count, kSegmentRows - pendingRows);
    if (pendingRows == 0 && taken == kSegmentRows) {
      writeSegment(next, taken);
    } else {
      pending_.insert(pending_.end(), next, next + std::size_t(taken) * elementBytes);
      if (pendingRows + taken == kSegmentRows) {
        writeSegment(pending_.data(), kSegmentRows);
        pending_.clear();
      }
    }
    next += std::size_t(taken) * elementBytes;
    count -= taken;
  }
}

void ColumnFileWriter::writeSegment(const void *elements, Row count) {
  WrittenColumn &column = tables_.back().columns.back();
  const std::size_t bytes = std::size_t(count) * column.elementBytes;
  column.checksums.push_back(checksumOf(elements, bytes));
  column.rows += count;
  file_.write(elements, bytes);
}

void ColumnFileWriter::endColumn() {
  if (!pending_.empty()) {
    writeSegment(pending_.data(), static_cast<Row>(pending_.size() / tables_.back().columns.back().elementBytes));
    pending_.clear();
  }
}

void ColumnFileWriter::pad() {
  static const unsigned char zeros[kColumnAlignmentBytes] = {};
  const std::uint64_t over = file_.size() % kColumnAlignmentBytes;
  if (over != 0) {
    file_.write(zeros, static_cast<std::size_t>(kColumnAlignmentBytes - over));
  }
}

void ColumnFileWriter::finish(std::uint8_t databaseKind, const std::function<void()> &beforeRename) {
  flatbuffers::FlatBufferBuilder builder;
  std::vector<flatbuffers::Offset<file::StoredTable>> tables;
  for (const WrittenTable &table : tables_) {
    std::vector<flatbuffers::Offset<file::StoredColumn>> columns;
    for (const WrittenColumn &column : table.columns) {
      const auto name = builder.CreateString(column.name);
      const auto checksums = builder.CreateVector(column.checksums);
      columns.push_back(file::CreateStoredColumn(builder, column.id, name, column.elementBytes, column.rows,
                                                 column.offset, checksums));
    }
    const auto name = builder.CreateString(table.name);
    const auto columnVector = builder.CreateVector(columns);
    tables.push_back(file::CreateStoredTable(builder, table.id, name, table.rows, columnVector));
  }
  const auto tableVector = builder.CreateVector(tables);
  file::FinishDirectoryBuffer(
      builder, file::CreateDirectory(builder, databaseKind, std::uint16_t(kCurrentSchemaStep), tableVector));
  pad();
  ColumnFileHeader header = {};
  std::memcpy(header.magic, kColumnFileMagic, sizeof header.magic);
  header.headerBytes = sizeof header;
  header.directoryOffset = file_.size();
  header.directoryBytes = builder.GetSize();
  header.directoryChecksum = checksumOf(builder.GetBufferPointer(), builder.GetSize());
  file_.write(builder.GetBufferPointer(), builder.GetSize());
  header.fileBytes = file_.size();
  header.headerChecksum = checksumOf(&header, offsetof(ColumnFileHeader, headerChecksum));
  file_.writeAt(&header, sizeof header, 0);
  file_.commit(beforeRename);
}

} // namespace kit
} // namespace OpenAccess_4
