#ifndef OAKIT_PROPERTIES_H
#define OAKIT_PROPERTIES_H

#include "oa/oaType.h"
#include "ownerruns.h"
#include "table.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

// The properties of all objects of a database. The kind is the property's oaType (all are below 256).
class PropertyTable : public Table {
public:
  explicit PropertyTable(Database &database);

  Column<std::uint8_t> kind{*this, 1, "kind"};
  Column<Row> name{*this, 2, "name", kNoRow};
  Column<std::uint16_t> ownerTable{*this, 3, "ownerTable"};
  Column<Row> ownerRow{*this, 4, "ownerRow"};
  // Bits of the value: integer, double, time, boolean. Floats are stored as doubles.
  Column<std::uint64_t> value{*this, 5, "value"};
  Column<std::uint64_t> lower{*this, 6, "lower"};
  Column<std::uint64_t> upper{*this, 7, "upper"};
  // String, enumeration value, or the bytes of an application property.
  Column<Row> text{*this, 8, "text", kNoRow};
  // Application type, or the enumeration's texts, each ended by a zero byte.
  Column<Row> typeText{*this, 9, "typeText", kNoRow};

  // Properties of the object (table, row), in creation order.
  RowSpan of(const Table &table, Row row) {
    if (!index_.isBuilt()) {
      buildIndex();
    }
    return index_.rows(key(table.id(), row));
  }
  bool hasAny(const Table &table, Row row) {
    return __builtin_expect(runs_.isBuilt(), 1) ? runs_.has(table.id(), row) : searchAny(table, row);
  }
  Row count(const Table &table, Row row);
  // The property of the object (table, row) behind `position` (kNoRow: the first one), or kNoRow. `left` says how many
  // come behind that one; so most steps of a walk need no search, see readyKind().
  Row search(const Table &table, Row row, Row position, Row &left);
  // The kind of a property when it is alive, belongs to the object and all that can be had without further ado; NULL
  // otherwise.
  const std::uint8_t *readyKind(Row property, const Table &table, Row row) const {
    const Row *owner = ownerRow.ready(property);
    const std::uint16_t *tableId = ownerTable.ready(property);
    const std::uint8_t *type = kind.ready(property);
    const bool isReady = owner != nullptr && tableId != nullptr && type != nullptr;
    return __builtin_expect(isReady && *owner == row && *tableId == table.id() && *type != 0, 1) ? type : nullptr;
  }
  Row find(const Table &table, Row row, const std::string &name);
  // The text that one of the columns of texts has for a property, whatever it takes.
  void getText(Row row, const Column<Row> &column, oaString &text) const;
  Row add(std::uint8_t kind, const Table &ownerTable, Row ownerRow, Row name);
  // Destroys the properties of an object and theirs.
  void destroyOf(const Table &table, Row row);
  void rowIsGoing(Row row);
  void moveTo(Row row, const Table &table, Row newOwner);
  void contentsChanged() {
    runs_.clear();
    index_.clear();
  }
  // One property of each circle of properties that own each other. Only a damaged file has any.
  std::vector<Row> circles() const;

private:
  static std::uint64_t key(std::uint16_t tableId, Row row) { return (std::uint64_t(tableId) << 32) | row; }
  // Raises for a row of a damaged file.
  void checkKind(Row row, std::uint8_t type) const {
    if (__builtin_expect(type < oacIntPropType || type > oacEnumPropType, 0)) {
      raiseUnknownType(row);
    }
  }
  [[noreturn]] void raiseUnknownType(Row row) const;
  void requireNoCircles() const;
  // The property that owns this one, or kNoRow.
  Row ownerAmongProperties(Row row) const;
  bool searchAny(const Table &table, Row row);
  // Makes sure that `runs_` or `index_` is built, and tells whether it is the former; after a change it is the latter.
  bool isSorted();
  bool buildRuns();
  void buildIndex();

  // Never both at a time.
  OwnerRuns runs_;
  OwnerIndex index_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
