#include "viatables.h"

#include <cstddef>

namespace OpenAccess_4 {
namespace kit {

ViaHeaderTable::ViaHeaderTable(Database &database) : Table(database, kViaHeaderTable, "viaHeaders", TableLife::kinds) {
  setKindColumn(kind);
  name.refersTo(kStringTable);
  super.refersTo(kViaHeaderTable);
  params.refersTo(kViaParamTable);
  lib.refersTo(kStringTable);
  cell.refersTo(kStringTable);
  view.refersTo(kStringTable);
  customParams.refersTo(kStringTable);
}

ViaTable::ViaTable(Database &database) : RefTable(database, kViaTable, "vias") {
  setKindColumn(kind);
  header.refersTo(kViaHeaderTable);
  net.refersTo(kNetTable);
  pin.refersTo(kPinTable);
}

ViaParamTable::ViaParamTable(Database &database) : Table(database, kViaParamTable, "viaParams", TableLife::referenced) {
  params.spansPool(kViaMissingCutTable, offsetof(ViaParamValues, missingBegin), offsetof(ViaParamValues, missingCount));
}

} // namespace kit
} // namespace OpenAccess_4
