#include "designtables.h"

namespace OpenAccess_4 {
namespace kit {

DesignAttributesTable::DesignAttributesTable(Database &database)
    : Table(database, kDesignAttributesTable, "designAttributes", TableLife::kinds) {
  setKindColumn(kind);
  viewType.refersTo(kStringTable);
}

BlockTable::BlockTable(Database &database) : Table(database, kBlockTable, "blocks", TableLife::kinds) {
  setKindColumn(kind);
}

} // namespace kit
} // namespace OpenAccess_4
