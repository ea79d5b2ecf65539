#include "databasefile.h"

#include "columnfile_generated.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaException.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

constexpr unsigned char kLicensedKitMagic[4] = {0x67, 0x45, 0x23, 0x01};

bool isLicensedKit(const unsigned char *bytes, std::size_t size) {
  return size >= sizeof kLicensedKitMagic && std::memcmp(bytes, kLicensedKitMagic, sizeof kLicensedKitMagic) == 0;
}

bool isThisKit(const unsigned char *bytes, std::size_t size) {
  return size >= sizeof kColumnFileMagic && std::memcmp(bytes, kColumnFileMagic, sizeof kColumnFileMagic) == 0;
}

// Messages of the kit begin with the file, which every finding names anyway.
std::string withoutFile(const oaException &exception, const std::string &path) {
  std::string text(exception.getMsg());
  const std::string file = "file " + path + ": ";
  if (text.compare(0, file.size(), file) == 0) {
    text.erase(0, file.size());
  }
  const std::string damaged = "damaged: ";
  if (text.compare(0, damaged.size(), damaged) == 0) {
    text.erase(0, damaged.size());
  }
  return text;
}

template <typename Entry> std::string nameOf(const Entry &entry) {
  std::string number = std::to_string(entry.id());
  if (entry.name() == nullptr || entry.name()->size() == 0) {
    return number;
  }
  // Names are for people, and from the file: what is printed must be printable.
  const std::string name = quoted(entry.name()->string_view());
  return name.substr(1, name.size() - 2);
}

// Also of a link that leads nowhere.
bool nameExists(const std::string &path) {
  struct stat status;
  return ::lstat(path.c_str(), &status) == 0;
}

// Others make, remove and replace files at any moment: one that is gone when it is opened, or still empty, is no
// damage.
std::optional<MappedFile> mapped(const std::string &path, FileReport &report) {
  constexpr int kAttempts = 3;
  for (int attempt = 1;; ++attempt) {
    try {
      return MappedFile(path);
    } catch (const oaException &exception) {
      if (exception.getMsgId() == oacInvalidFileSize) {
        report.warning("is empty: made, and never saved");
        return std::nullopt;
      }
      const bool isThere = nameExists(path);
      if (exception.getMsgId() != oacFileOpenFailed || (isThere && attempt == kAttempts)) {
        throw;
      }
      if (!isThere) {
        report.warning("was removed during the check");
        return std::nullopt;
      }
    }
  }
}

} // namespace

std::unique_ptr<DatabaseFile> DatabaseFile::open(const std::string &path, FileReport &report) {
  try {
    std::optional<MappedFile> found = mapped(path, report);
    if (!found) {
      return nullptr;
    }
    MappedFile &mapping = *found;
    if (isLicensedKit(mapping.bytes(), mapping.size())) {
      report.foreign("was written by the licensed OpenAccess kit (it begins with 67 45 23 01) and is not checked");
      return nullptr;
    }
    if (mapping.size() < sizeof(ColumnFileHeader) || !isThisKit(mapping.bytes(), mapping.size())) {
      report.damage({"is not a database file of this kit", "64 bytes or more that begin with 8b 'OAKIT'"});
      return nullptr;
    }
    return std::unique_ptr<DatabaseFile>(new DatabaseFile(path, std::move(mapping)));
  } catch (const oaException &exception) {
    if (exception.getMsgId() == oacCannotUpgrade) {
      report.foreign(withoutFile(exception, path));
    } else {
      report.damage({withoutFile(exception, path), {}});
    }
    return nullptr;
  }
}

bool DatabaseFile::beginsLikeDatabase(const std::string &path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) {
    return false;
  }
  unsigned char beginning[sizeof kColumnFileMagic] = {};
  const long got = ::read(file, beginning, sizeof beginning);
  ::close(file);
  const std::size_t size = got < 0 ? 0 : static_cast<std::size_t>(got);
  return isLicensedKit(beginning, size) || isThisKit(beginning, size);
}

// ColumnFile refuses what would make the directory unsafe to read, and owns the mapping from then on.
DatabaseFile::DatabaseFile(const std::string &path, MappedFile mapping)
    : bytes_(mapping.bytes()), size_(mapping.size()), image_(new ColumnFile(path, std::move(mapping))), header_() {
  std::memcpy(&header_, bytes_, sizeof header_);
  readDirectory();
}

void DatabaseFile::readDirectory() {
  const file::Directory *directory = file::GetDirectory(bytes_ + header_.directoryOffset);
  if (directory->tables() == nullptr) {
    return;
  }
  for (const file::StoredTable *table : *directory->tables()) {
    tables_.push_back({table->id(), nameOf(*table), table->rows()});
    if (table->columns() == nullptr) {
      continue;
    }
    for (const file::StoredColumn *column : *table->columns()) {
      ColumnView view;
      view.elements = bytes_ + column->offset();
      view.rows = column->rows();
      view.checksums = column->checksums() != nullptr && column->checksums()->size() != 0
                           ? reinterpret_cast<const std::uint64_t *>(column->checksums()->Data())
                           : nullptr;
      columns_.push_back({table->id(), column->id(), tables_.back().name, nameOf(*column), column->element_bytes(),
                          column->offset(), view, true});
    }
  }
}

void DatabaseFile::checkBytes(FileReport &report) {
  if (header_.reserved != 0 || header_.reserved2 != 0) {
    report.damage({"the reserved fields of the header are in use", "0"});
  }
  if (header_.directoryOffset + header_.directoryBytes != header_.fileBytes) {
    report.damage({"the directory ends at byte " + std::to_string(header_.directoryOffset + header_.directoryBytes),
                   "the end of the file, byte " + std::to_string(header_.fileBytes)});
  }
  checkNumbers(report);
  checkExtents(report);
  for (const StoredColumn &column : columns_) {
    if (column.isUsable) {
      checkSegments(column, report);
    }
  }
}

void DatabaseFile::checkNumbers(FileReport &report) {
  std::set<std::uint16_t> tables;
  for (const StoredTable &table : tables_) {
    if (!tables.insert(table.id).second) {
      report.damage(table.name, "", {"table " + std::to_string(table.id) + " is there more than once", {}});
    }
  }
  std::set<std::pair<std::uint16_t, std::uint16_t>> columns;
  for (StoredColumn &column : columns_) {
    if (!columns.insert({column.table, column.column}).second) {
      report.damage(column.tableName, column.columnName,
                    {"column " + std::to_string(column.column) + " is there more than once", {}});
    }
  }
}

bool DatabaseFile::isZero(std::uint64_t begin, std::uint64_t end) const {
  return std::all_of(bytes_ + begin, bytes_ + end, [](unsigned char byte) { return byte == 0; });
}

// Columns lie one after the other with zeros between them. A column that shares bytes with others is not read: many of
// them could make a small file endless.
void DatabaseFile::checkExtents(FileReport &report) {
  std::vector<StoredColumn *> order;
  for (StoredColumn &column : columns_) {
    if (column.view.rows != 0) {
      order.push_back(&column);
    }
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const StoredColumn *a, const StoredColumn *b) { return a->offset < b->offset; });
  std::uint64_t end = sizeof(ColumnFileHeader);
  const auto checkGap = [&](std::uint64_t next) {
    if (next > end && (next - end >= kColumnAlignmentBytes || !isZero(end, next))) {
      report.damage({"bytes " + std::to_string(end) + " to " + std::to_string(next - 1) + " belong to no column",
                     "less than 64 zeros between columns"});
    }
  };
  for (StoredColumn *column : order) {
    if (column->offset < end) {
      column->isUsable = false;
      report.damage(column->tableName, column->columnName,
                    {"begins at byte " + std::to_string(column->offset) + ", inside the column before or the header",
                     "byte " + std::to_string(end) + " or later"});
      continue;
    }
    checkGap(column->offset);
    end = column->offset + std::uint64_t(column->view.rows) * column->elementBytes;
  }
  checkGap(header_.directoryOffset);
}

void DatabaseFile::checkSegments(const StoredColumn &column, FileReport &report) const {
  const unsigned char *elements = static_cast<const unsigned char *>(column.view.elements);
  for (Row begin = 0, segment = 0; begin < column.view.rows; ++segment) {
    const Row rows = std::min(kSegmentRows, column.view.rows - begin);
    try {
      image_->verify(elements + std::size_t(begin) * column.elementBytes, std::size_t(rows) * column.elementBytes,
                     column.view.checksums[segment], {});
    } catch (const oaException &) {
      report.damage(column.tableName, column.columnName,
                    {"the checksum of rows " + std::to_string(begin) + " to " + std::to_string(begin + rows - 1) +
                         " does not fit",
                     {}});
    }
    if (column.view.rows - begin <= kSegmentRows) {
      break;
    }
    begin += kSegmentRows;
  }
}

void DatabaseFile::lendTo(Database &database, FileReport &report) const {
  for (Table *table : database.tables()) {
    table->clear();
    table->setRowCount(image_->rowCount(table->id()));
    for (ColumnBase *column : table->columns()) {
      lendColumn(*column, *table, report);
    }
    table->loaded();
    checkRowCount(*table, report);
  }
  tellUnknown(database, report);
}

void DatabaseFile::lendColumn(ColumnBase &column, const Table &table, FileReport &report) const {
  const auto stored = std::find_if(columns_.begin(), columns_.end(), [&](const StoredColumn &each) {
    return each.table == table.id() && each.column == column.id();
  });
  if (stored == columns_.end() || !stored->isUsable) {
    return;
  }
  if (stored->elementBytes != column.elementBytes()) {
    report.damage(
        table.name(), column.name(),
        {"has elements of " + std::to_string(stored->elementBytes) + " bytes", std::to_string(column.elementBytes())});
    return;
  }
  column.borrow(*image_, stored->view);
  try {
    column.verify(0, column.size());
  } catch (const oaException &) {
    // Told by checkSegments(). Reading the damaged segment raises again.
  }
}

// A row of a table with kinds, of a pool or of texts is there because an element of its column 1 is.
void DatabaseFile::checkRowCount(const Table &table, FileReport &report) const {
  if (table.life() == TableLife::referenced && table.id() != kStringTable) {
    return; // all that such a row holds may be defaults
  }
  const auto first = std::find_if(table.columns().begin(), table.columns().end(),
                                  [](const ColumnBase *column) { return column->id() == 1; });
  if (first != table.columns().end() && (*first)->size() != table.rowCount()) {
    report.damage(table.name(), (*first)->name(),
                  {"holds " + std::to_string((*first)->size()) + " rows",
                   std::to_string(table.rowCount()) + ", which is what the table has"});
  }
}

void DatabaseFile::tellUnknown(const Database &database, FileReport &report) const {
  for (const StoredTable &stored : tables_) {
    if (database.table(stored.id) == nullptr) {
      report.warning("table " + std::to_string(stored.id) + " (" + stored.name +
                     ") is unknown; a newer kit may have written it");
    }
  }
  for (const StoredColumn &stored : columns_) {
    const Table *table = database.table(stored.table);
    const auto isStored = [&](const ColumnBase *column) { return column->id() == stored.column; };
    if (table != nullptr && std::none_of(table->columns().begin(), table->columns().end(), isStored)) {
      report.warning("table " + stored.tableName + ", column " + std::to_string(stored.column) + " (" +
                     stored.columnName + ") is unknown; a newer kit may have written it");
    }
  }
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
