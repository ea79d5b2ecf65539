#ifndef OAKIT_PROPERTIES_H
#define OAKIT_PROPERTIES_H

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
  Row find(const Table &table, Row row, const std::string &name);
  Row add(std::uint8_t kind, const Table &ownerTable, Row ownerRow, Row name);
  // Destroys the properties of an object and theirs.
  void destroyOf(const Table &table, Row row);
  void rowIsGoing(Row row);
  void moveTo(Row row, const Table &table, Row newOwner);
  void contentsChanged() { index_.clear(); }
  // One property of each circle of properties that own each other. Only a damaged file has any.
  std::vector<Row> circles() const;

private:
  static std::uint64_t key(std::uint16_t tableId, Row row) { return (std::uint64_t(tableId) << 32) | row; }
  // Raises for a row of a damaged file.
  void checkStored(Row row) const;
  void requireNoCircles() const;
  // The property that owns this one, or kNoRow.
  Row ownerAmongProperties(Row row) const;
  void buildIndex();
  OwnerIndex index_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
