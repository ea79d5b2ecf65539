#ifndef OAKIT_DATABASE_H
#define OAKIT_DATABASE_H

// One database in memory: a design, a technology, management data, or the session. It owns the tables, takes them over
// from a file and writes them to one. Which tables there are is said by the derived class; tables 1 to 9 are common to
// all.

#include "stringtable.h"
#include "table.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

class DatabaseImage;
class PropertyTable;

enum class DatabaseKind : std::uint8_t { session = 0, design = 1, technology = 2, managementData = 3, viaMaster = 4 };

// Table ids are part of the file format: never changed, never used again.
enum CommonTableId : std::uint16_t {
  kStringTable = 1,
  kStringBytesTable = 2,
  kPropertyTable = 3,
  kDatabaseTable = 4, // one row: the database object itself and its attributes
};

// Attributes of the database object that every kind has.
class DatabaseTable : public Table {
public:
  explicit DatabaseTable(Database &database);
  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<std::int64_t> createTime{*this, 2, "createTime"}; // seconds since 1970
  Column<std::int64_t> savedTime{*this, 3, "savedTime"};
};

class Database {
public:
  // `type` is the API type of the database object (oacDesignType, oacTechType, oacLibDMDataType, ...).
  Database(DatabaseKind kind, oaTypeEnum type);
  virtual ~Database();
  Database(const Database &) = delete;
  Database &operator=(const Database &) = delete;

  DatabaseKind kind() const { return kind_; }
  // "mylib/inv/layout" or the like, for messages.
  virtual std::string label() const = 0;

  // The handle of the database object: row 0 of the database table.
  oaObject *self() { return databaseTable_->handle(0); }
  DatabaseTable &databaseTable() { return *databaseTable_; }
  StringTable &strings() { return *strings_; }
  const StringTable &strings() const { return *strings_; }
  PropertyTable &properties() { return *properties_; }
  // NULL when there is none.
  Table *table(std::uint16_t id) const { return id < tablesById_.size() ? tablesById_[id] : nullptr; }
  const std::vector<Table *> &tables() const { return tables_; }

  bool isModified() const { return isModified_; }
  // Every change of the contents calls this.
  void touch() { isModified_ = true; }
  void setModified(bool modified) { isModified_ = modified; }

  // A text, a point list or a payload was replaced or lost its owner: the next save leaves it out.
  void noteAbandonedRows() { hasAbandonedRows_ = true; }
  bool hasAbandonedRows() const { return hasAbandonedRows_; }

  // Empties the database: all rows go, all handles die; a new database object of the same type appears. `self()` gives
  // a handle at the same address as before when `keepSelf` is set.
  void clear(bool keepSelf = true);
  // Takes over the contents of the file, which stays mapped. Empties the database first. Raises when the file is not a
  // database of this kind or is damaged; the database is empty then.
  void load(std::unique_ptr<DatabaseImage> image);
  void load(const std::string &path);
  // Writes the contents to a new file that replaces `path` atomically: after a crash at any moment the old or the new
  // file is there, whole. Sets the saved time. Raises when anything fails, leaving the old file.
  // `beforeRename` is called when the new file is complete on disk, right before it takes the old one's place; what it
  // throws ends the save.
  void writeTo(const std::string &path, const std::function<void()> &beforeRename = {});
  // Kills all handles, the database object's included. The Database object is about to be deleted.
  void killHandles();

  // Destroys a row of a table with kinds: first its properties and what derived classes hang on it, then the row
  // itself.
  void destroyRow(Table &table, Row row);

protected:
  // Called by destroyRow before the row dies.
  virtual void rowIsGoing(Table &, Row) {}
  // Called when tables were emptied or loaded: lazily built indexes must go.
  virtual void contentsChanged() {}
  // Checks relations that the generic checks do not know, right after the columns were taken over. Must be cheap: no
  // walk over all rows.
  virtual void checkLoaded() {}

private:
  friend class Table;
  void addTable(Table &table);

  DatabaseKind kind_;
  oaTypeEnum type_;
  bool isModified_ = false;
  bool hasAbandonedRows_ = false;
  std::unique_ptr<DatabaseImage> image_; // outlives the columns that borrow from it
  std::vector<Table *> tables_;
  std::vector<Table *> tablesById_; // NULL where there is none
  std::unique_ptr<StringTable> strings_;
  std::unique_ptr<DatabaseTable> databaseTable_;
  std::unique_ptr<PropertyTable> properties_;
};

inline Database &databaseOf(const oaObject *object) { return liveTable(object).database(); }

} // namespace kit
} // namespace OpenAccess_4

#endif
