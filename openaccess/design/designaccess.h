#ifndef OAKIT_DESIGNACCESS_H
#define OAKIT_DESIGNACCESS_H

// From API objects to tables and back, with the checks that keep damaged files and wrong casts harmless.

#include "connectivity.h"
#include "designdatabase.h"
#include "oa/oaDesignObject.h"
#include "raise.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

#define OA_LIKELY(condition) __builtin_expect(!!(condition), 1)
#define OA_UNLIKELY(condition) __builtin_expect(!!(condition), 0)

// Raises oacDeletedDatabase for a dead object.
inline DesignDatabase &designOf(const oaObject *object) {
  return static_cast<DesignDatabase &>(liveTable(object).database());
}
inline DesignDatabase &designOf(const Table &table) { return static_cast<DesignDatabase &>(table.database()); }

// Raises oacInvalidReference: a pointer was cast to a class that the object does not have.
[[noreturn]] void raiseWrongTable(const Table &table, const char *expected);

// The table behind an object, which must be the one with that id.
template <typename T> inline T &tableAs(const oaObject *object, std::uint16_t id, const char *expected) {
  Table &table = liveTable(object);
  if (OA_UNLIKELY(table.id() != id)) {
    raiseWrongTable(table, expected);
  }
  return static_cast<T &>(table);
}
inline ShapeTable &shapesOf(const oaObject *object) { return tableAs<ShapeTable>(object, kShapeTable, "shape"); }

// Raises oacCorruptedDatabase, naming the design, the table and the row.
[[noreturn]] void raiseCorrupted(const Table &table, Row row, const std::string &what);

// A stored enumeration value, which must be below `count`.
template <typename Enum>
inline Enum checkedEnum(const Table &table, Row row, std::uint32_t value, std::uint32_t count, const char *what) {
  if (OA_UNLIKELY(value >= count)) {
    raiseCorrupted(table, row,
                   std::string(what) + " is " + std::to_string(value) + ", expected less than " +
                       std::to_string(count));
  }
  return static_cast<Enum>(value);
}

// A row that another one refers to.
inline Row checkedRow(const Table &table, Row row, const char *referrer) {
  if (OA_UNLIKELY(!table.isAlive(row))) {
    table.checkRow(row, referrer);
  }
  return row;
}

// The handle of a row as an object of its class. NULL for kNoRow.
template <typename Object> inline Object *objectOf(Table &table, Row row) {
  return static_cast<Object *>(table.handle(row));
}

// The design's block; raises oacDeletedDatabase when it was destroyed.
oaBlock *blockOf(DesignDatabase &design);

} // namespace kit
} // namespace OpenAccess_4

#endif
