#include "properties.h"

#include "database.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaType.h"
#include "raise.h"

#include <algorithm>

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

[[gnu::noinline]] void PropertyTable::raiseUnknownType(Row row) const {
  raiseBase(oacCorruptedDatabase, database().label() + ": damaged: property " + std::to_string(row) +
                                      " is of unknown type " + std::to_string(kind[row]));
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

bool PropertyTable::isSorted() {
  if (!runs_.isBuilt() && !index_.isBuilt()) {
    if (buildRuns()) {
      runs_.setBuilt();
    } else {
      buildIndex();
    }
  }
  return runs_.isBuilt();
}

// False when the properties are not in the order that it takes.
bool PropertyTable::buildRuns() {
  runs_.clear();
  const Row rows = std::min(rowCount(), kind.size());
  const Row stored = std::min({rows, ownerTable.size(), ownerRow.size()}); // the rest may have defaults
  const std::uint8_t *kinds = kind.span(0, rows);
  const std::uint16_t *tableIds = ownerTable.span(0, stored);
  const Row *owners = ownerRow.span(0, stored);
  const auto belongsTo = [&](Row row, std::uint16_t tableId, Row owner) {
    return row < stored ? tableIds[row] == tableId && owners[row] == owner
                        : ownerTable[row] == tableId && ownerRow[row] == owner;
  };
  Row row = 0;
  while (row < rows) {
    if (kinds[row] == 0) {
      ++row;
      continue;
    }
    const Row begin = row;
    const std::uint16_t tableId = ownerTable[row];
    const Row owner = ownerRow[row];
    do {
      checkKind(row, kinds[row]);
      ++row;
    } while (row < rows && kinds[row] != 0 && belongsTo(row, tableId, owner));
    if ((tableId == kPropertyTable && owner >= begin) || !runs_.append(tableId, owner, {begin, row})) {
      return false;
    }
  }
  return true;
}

void PropertyTable::buildIndex() {
  if (index_.isBuilt()) {
    return;
  }
  runs_.clear();
  index_.clear();
  bool isAscending = true; // nothing belongs to a later property
  index_.fill<std::uint64_t>(rowCount(), [&](Row row, std::uint64_t &owner) {
    if (kind[row] == 0) {
      return false;
    }
    checkKind(row, kind[row]);
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
  Row left = 0;
  Row property = kNoRow;
  do {
    property = search(table, row, property, left);
  } while (property != kNoRow && strings.view(name[property]) != wanted);
  return property;
}

void PropertyTable::getText(Row row, const Column<Row> &column, oaString &text) const {
  database().strings().get(column[row], text);
}

bool PropertyTable::searchAny(const Table &table, Row row) {
  return isSorted() ? runs_.has(table.id(), row) : !of(table, row).empty();
}

Row PropertyTable::count(const Table &table, Row row) {
  if (!isSorted()) {
    return static_cast<Row>(of(table, row).size());
  }
  const OwnerRuns::Run run = runs_.rows(table.id(), row);
  return run.end - run.begin;
}

Row PropertyTable::search(const Table &table, Row row, Row position, Row &left) {
  const Row from = position + 1; // kNoRow + 1 is 0
  if (isSorted()) {
    const OwnerRuns::Run run = runs_.rows(table.id(), row);
    const Row found = std::max(run.begin, from);
    left = found < run.end ? run.end - found - 1 : 0;
    return found < run.end ? found : kNoRow;
  }
  const RowSpan rows = of(table, row);
  const Row *found = std::lower_bound(rows.begin(), rows.end(), from);
  left = found != rows.end() ? static_cast<Row>(rows.end() - found - 1) : 0;
  return found != rows.end() ? *found : kNoRow;
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
  if (liveRowCount() == 0 || !hasAny(table, row)) {
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
  buildIndex();
  index_.remove(key(ownerTable[row], ownerRow[row]), row);
  database().noteAbandonedRows();
}

void PropertyTable::moveTo(Row row, const Table &table, Row newOwner) {
  buildIndex();
  index_.remove(key(ownerTable[row], ownerRow[row]), row);
  ownerTable.set(row, table.id());
  ownerRow.set(row, newOwner);
  index_.add(key(table.id(), newOwner), row);
  database().touch();
}

} // namespace kit
} // namespace OpenAccess_4
