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
}

Row PropertyTable::ownerAmongProperties(Row row) const {
  return ownerTable[row] == kPropertyTable && isAlive(ownerRow[row]) ? ownerRow[row] : kNoRow;
}

std::vector<Row> PropertyTable::circles() const {
  std::vector<Row> found;
  // From each property towards its outermost owner, as far as no earlier walk came by.
  std::vector<Row> walks(rowCount(), kNoRow);
  for (Row start = nextAlive(kNoRow); start != kNoRow; start = nextAlive(start)) {
    Row row = start;
    while (row != kNoRow && walks[row] == kNoRow) {
      walks[row] = start;
      row = ownerAmongProperties(row);
    }
    if (row != kNoRow && walks[row] == start) {
      found.push_back(row);
    }
  }
  return found;
}

// A property that owns itself, directly or in a circle, would make every walk over an owner's properties endless.
void PropertyTable::requireNoCircles() const {
  const std::vector<Row> found = circles();
  if (!found.empty()) {
    raiseBase(oacInvalidReference, database().label() + ": damaged: property " + std::to_string(found.front()) +
                                       " belongs to itself, directly or through others");
  }
}

void PropertyTable::buildIndex() {
  if (index_.isBuilt()) {
    return;
  }
  index_.clear();
  bool isAscending = true; // nothing belongs to a later property
  index_.fill<std::uint64_t>(rowCount(), [&](Row row, std::uint64_t &owner) {
    if (kind[row] == 0) {
      return false;
    }
    checkStored(row);
    isAscending = isAscending && (ownerTable[row] != kPropertyTable || ownerRow[row] < row);
    owner = key(ownerTable[row], ownerRow[row]);
    return true;
  });
  if (!isAscending) {
    requireNoCircles();
  }
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
