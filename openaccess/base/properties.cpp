#include "properties.h"

#include "database.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaType.h"
#include "raise.h"

namespace OpenAccess_4 {
namespace kit {

PropertyTable::PropertyTable(Database &database) : Table(database, kPropertyTable, "properties", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  text.refersTo(kStringTable);
  typeText.refersTo(kStringTable);
  ownerRow.refersTo(
      [](const Table &table, Row row) { return static_cast<const PropertyTable &>(table).ownerTable[row]; });
}

void PropertyTable::checkStored(Row row) const {
  const std::uint8_t type = kind[row];
  if (type < oacIntPropType || type > oacEnumPropType) {
    raiseBase(oacCorruptedDatabase, database().label() + ": damaged: property " + std::to_string(row) +
                                        " is of unknown type " + std::to_string(type));
  }
  // A property that owns itself, directly or in a circle, would make every walk over an owner's properties endless.
  if (ownerTable[row] == kPropertyTable && ownerRow[row] >= row) {
    raiseBase(oacInvalidReference, database().label() + ": damaged: property " + std::to_string(row) +
                                       " belongs to a property that was made later");
  }
}

void PropertyTable::buildIndex() {
  if (index_.isBuilt()) {
    return;
  }
  index_.clear();
  index_.fill<std::uint64_t>(rowCount(), [this](Row row, std::uint64_t &owner) {
    if (kind[row] == 0) {
      return false;
    }
    checkStored(row);
    owner = key(ownerTable[row], ownerRow[row]);
    return true;
  });
  index_.setBuilt();
}

Row PropertyTable::find(const Table &table, Row row, const std::string &wanted) {
  const StringTable &strings = database().strings();
  for (const Row property : of(table, row)) {
    if (strings.view(name[property]) == wanted) {
      return property;
    }
  }
  return kNoRow;
}

Row PropertyTable::add(std::uint8_t type, const Table &table, Row owner, Row nameRow) {
  buildIndex();
  const Row row = addRow();
  kind.set(row, type);
  name.set(row, nameRow);
  ownerTable.set(row, table.id());
  ownerRow.set(row, owner);
  index_.add(key(table.id(), owner), row);
  database().touch();
  return row;
}

void PropertyTable::destroyOf(const Table &table, Row row) {
  if (liveRowCount() == 0) {
    return;
  }
  while (true) {
    const RowSpan rows = of(table, row);
    if (rows.empty()) {
      return;
    }
    database().destroyRow(*this, rows.back());
  }
}

void PropertyTable::rowIsGoing(Row row) {
  index_.remove(key(ownerTable[row], ownerRow[row]), row);
  database().noteAbandonedRows();
}

void PropertyTable::moveTo(Row row, const Table &table, Row newOwner) {
  index_.remove(key(ownerTable[row], ownerRow[row]), row);
  ownerTable.set(row, table.id());
  ownerRow.set(row, newOwner);
  index_.add(key(table.id(), newOwner), row);
  database().touch();
}

} // namespace kit
} // namespace OpenAccess_4
