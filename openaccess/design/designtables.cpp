#include "designtables.h"

namespace OpenAccess_4 {
namespace kit {

DesignAttributesTable::DesignAttributesTable(Database &database)
    : Table(database, kDesignAttributesTable, "designAttributes", TableLife::kinds) {
  setKindColumn(kind);
  viewType.refersTo(kStringTable);
  superMaster.refersTo(kSuperMasterTable);
}

SuperMasterTable::SuperMasterTable(Database &database)
    : Table(database, kSuperMasterTable, "superMasters", TableLife::referenced) {
  evaluator.refersTo(kStringTable);
  data.refersTo(kStringTable);
  params.refersTo(kStringTable);
}

BlockTable::BlockTable(Database &database) : Table(database, kBlockTable, "blocks", TableLife::kinds) {
  setKindColumn(kind);
}

} // namespace kit
} // namespace OpenAccess_4
