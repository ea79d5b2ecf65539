#ifndef OAKIT_DATABASEWRITER_H
#define OAKIT_DATABASEWRITER_H

#include "database.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

// Writes the tables of a database to a file. Rows that were destroyed, and texts and points that nothing refers to any
// more, are left out; the rows after them move up, and every reference is written with the new number. The database in
// memory keeps its row numbers.
class DatabaseWriter {
public:
  explicit DatabaseWriter(const Database &database) : database_(database) {}
  // See Database::writeTo().
  void writeTo(const std::string &path, const std::function<void()> &beforeRename = {});

private:
  // What becomes of the rows of one table. Pools have spans instead: their elements are written in the order in which
  // the owners' spans were numbered.
  struct Renumbering {
    std::vector<Row> newRow; // kNoRow: left out
    Row rows = 0;
  };
  struct PoolPiece {
    Row begin;
    Row count;
  };

  bool isAnythingLeftOut() const;
  void renumber();
  void mark(const Table &table);
  void number(const Table &table);
  void layOutPools();
  void writeColumnRenumbered(class ColumnFileWriter &writer, const Table &table, const ColumnBase &column);
  void writePool(class ColumnFileWriter &writer, const Table &table);
  void writeColumnAsIs(class ColumnFileWriter &writer, const ColumnBase &column);
  Row newRowOf(std::uint16_t table, Row row) const;
  std::vector<const Table *> inReferenceOrder() const;

  const Database &database_;
  std::unordered_map<std::uint16_t, std::vector<bool>> live_;
  std::unordered_map<std::uint16_t, Renumbering> renumbering_;
  std::unordered_map<std::uint16_t, std::vector<PoolPiece>> pieces_;
  // New beginnings of the spans of one column, in the order of its rows.
  std::unordered_map<const ColumnBase *, std::vector<Row>> newBegins_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
