#include "database.h"

#include "databaseimage.h"
#include "databasewriter.h"
#include "oa/oaBaseMsgIds.h"
#include "properties.h"
#include "raise.h"

#include <ctime>

namespace OpenAccess_4 {
namespace kit {

namespace {

// A row with a kind, a text or an element of a pool is there because column 1 holds it. All that a payload holds may be
// defaults.
void requireStoredRows(const Table &table, const std::string &path) {
  if (table.life() == TableLife::referenced && table.id() != kStringTable) {
    return;
  }
  for (const ColumnBase *column : table.columns()) {
    if (column->id() == 1 && column->size() != table.rowCount()) {
      raiseBase(oacCorruptedDatabase, "file " + path + ": damaged: table " + table.name() + " claims " +
                                          std::to_string(table.rowCount()) + " rows, but its column " + column->name() +
                                          " holds " + std::to_string(column->size()));
    }
  }
}

} // namespace

DatabaseTable::DatabaseTable(Database &database) : Table(database, kDatabaseTable, "database", TableLife::kinds) {
  setKindColumn(kind);
}

Database::Database(DatabaseKind kind, oaTypeEnum type)
    : kind_(kind), type_(type), strings_(new StringTable(*this)), databaseTable_(new DatabaseTable(*this)),
      properties_(new PropertyTable(*this)) {
  clear(false);
}

Database::~Database() = default;

void Database::addTable(Table &table) {
  tables_.push_back(&table);
  if (table.id() >= tablesById_.size()) {
    tablesById_.resize(std::size_t(table.id()) + 1);
  }
  tablesById_[table.id()] = &table;
}

void Database::clear(bool keepSelf) {
  for (Table *table : tables_) {
    if (!keepSelf || table != databaseTable_.get()) {
      table->killHandles();
    }
    table->clear();
  }
  image_.reset();
  const Row row = databaseTable_->addRow();
  databaseTable_->kind.set(row, static_cast<std::uint8_t>(type_));
  databaseTable_->createTime.set(row, static_cast<std::int64_t>(std::time(nullptr)));
  hasAbandonedRows_ = false;
  properties_->contentsChanged();
  contentsChanged();
}

void Database::load(const std::string &path) { load(DatabaseImage::open(path)); }

void Database::load(std::unique_ptr<DatabaseImage> image) {
  if (image->databaseKind() != static_cast<std::uint8_t>(kind_)) {
    raiseBase(oacInvalidDatabaseFile, "file " + image->path() + ": is a database of another kind (" +
                                          std::to_string(image->databaseKind()) + ", expected " +
                                          std::to_string(static_cast<int>(kind_)) + ")");
  }
  clear();
  try {
    for (Table *table : tables_) {
      table->clear();
      table->setRowCount(image->rowCount(table->id()));
      for (ColumnBase *column : table->columns()) {
        column->borrow(*image, image->column(table->id(), column->id(), column->elementBytes()));
      }
      requireStoredRows(*table, image->path());
      table->loaded();
    }
    image_ = std::move(image);
    if (databaseTable_->rowCount() != 1) {
      raiseBase(oacCorruptedDatabase, "file " + image_->path() + ": damaged: the database table has " +
                                          std::to_string(databaseTable_->rowCount()) + " rows, expected 1");
    }
    databaseTable_->kind.set(0, static_cast<std::uint8_t>(type_));
    properties_->contentsChanged();
    contentsChanged();
    checkLoaded();
  } catch (...) {
    clear();
    throw;
  }
  isModified_ = false;
}

void Database::writeTo(const std::string &path, const std::function<void()> &beforeRename) {
  const std::int64_t previous = databaseTable_->savedTime[0];
  databaseTable_->savedTime.set(0, static_cast<std::int64_t>(std::time(nullptr)));
  try {
    DatabaseWriter(*this).writeTo(path, beforeRename);
  } catch (...) {
    databaseTable_->savedTime.set(0, previous);
    throw;
  }
  isModified_ = false;
}

void Database::killHandles() {
  for (Table *table : tables_) {
    table->killHandles();
  }
}

void Database::destroyRow(Table &table, Row row) {
  properties_->destroyOf(table, row);
  if (&table == properties_.get()) {
    properties_->rowIsGoing(row);
  } else {
    rowIsGoing(table, row);
  }
  table.setKind(row, 0);
  touch();
}

} // namespace kit
} // namespace OpenAccess_4
