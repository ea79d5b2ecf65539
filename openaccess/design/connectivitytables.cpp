#include "connectivitytables.h"

namespace OpenAccess_4 {
namespace kit {

NetTable::NetTable(Database &database) : Table(database, kNetTable, "nets", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
}

TermTable::TermTable(Database &database) : Table(database, kTermTable, "terms", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  net.refersTo(kNetTable);
}

PinTable::PinTable(Database &database) : Table(database, kPinTable, "pins", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  term.refersTo(kTermTable);
}

InstHeaderTable::InstHeaderTable(Database &database)
    : Table(database, kInstHeaderTable, "instHeaders", TableLife::kinds) {
  setKindColumn(kind);
  lib.refersTo(kStringTable);
  cell.refersTo(kStringTable);
  view.refersTo(kStringTable);
}

InstTable::InstTable(Database &database) : Table(database, kInstTable, "insts", TableLife::kinds) {
  setKindColumn(kind);
  header.refersTo(kInstHeaderTable);
  name.refersTo(kStringTable);
  array.refersTo(kArrayTable);
  pin.refersTo(kPinTable);
}

ArrayTable::ArrayTable(Database &database) : Table(database, kArrayTable, "arrays", TableLife::referenced) {}

InstTermTable::InstTermTable(Database &database) : Table(database, kInstTermTable, "instTerms", TableLife::kinds) {
  setKindColumn(kind);
  inst.refersTo(kInstTable);
  net.refersTo(kNetTable);
  termName.refersTo(kStringTable);
}

} // namespace kit
} // namespace OpenAccess_4
