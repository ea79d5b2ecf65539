#include "connectivitytables.h"

#include <cstddef>

namespace OpenAccess_4 {
namespace kit {

BitsTable::BitsTable(Database &database, std::uint16_t id, const char *name, std::uint16_t defTableId,
                     std::uint16_t memberTableId)
    : Table(database, id, name, TableLife::referenced) {
  def.refersTo(defTableId);
  members.spansPool(memberTableId, offsetof(Span, begin), offsetof(Span, count));
}

MemberTable::MemberTable(Database &database, std::uint16_t id, const char *name, std::uint16_t objectTableId)
    : Table(database, id, name, TableLife::pool) {
  members.refersTo(objectTableId, offsetof(Member, object));
}

BitsDefTable::BitsDefTable(Database &database, std::uint16_t id, const char *name)
    : Table(database, id, name, TableLife::kinds) {
  setKindColumn(kind);
  this->name.refersTo(kStringTable);
}

NetTable::NetTable(Database &database) : Table(database, kNetTable, "nets", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  bits.refersTo(kNetBitsTable);
  equivalents.refersTo(kNetTable);
}

TermTable::TermTable(Database &database) : Table(database, kTermTable, "terms", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  net.refersTo(kNetTable);
  bits.refersTo(kTermBitsTable);
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
  super.refersTo(kInstHeaderTable);
  params.refersTo(kStringTable);
}

InstTable::InstTable(Database &database) : RefTable(database, kInstTable, "insts") {
  setKindColumn(kind);
  header.refersTo(kInstHeaderTable);
  name.refersTo(kStringTable);
  array.refersTo(kArrayTable);
  pin.refersTo(kPinTable);
  bits.refersTo(kInstBitsTable);
}

ArrayTable::ArrayTable(Database &database) : Table(database, kArrayTable, "arrays", TableLife::referenced) {}

InstTermTable::InstTermTable(Database &database) : Table(database, kInstTermTable, "instTerms", TableLife::kinds) {
  setKindColumn(kind);
  inst.refersTo(kInstTable);
  net.refersTo(kNetTable);
  termName.refersTo(kStringTable);
  members.spansPool(kInstTermMemberTable, offsetof(BitsTable::Span, begin), offsetof(BitsTable::Span, count));
}

} // namespace kit
} // namespace OpenAccess_4
