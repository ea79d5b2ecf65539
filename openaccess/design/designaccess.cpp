#include "designaccess.h"

#include "oa/oaBlock.h"

namespace OpenAccess_4 {
namespace kit {

void raiseWrongTable(const Table &table, const char *expected) {
  raiseDesign(oacInvalidReference,
              table.database().label() + ": the object is a row of table " + table.name() + ", expected a " + expected);
}

void raiseCorrupted(const Table &table, Row row, const std::string &what) {
  raiseBase(oacCorruptedDatabase, table.database().label() + ": damaged: table " + table.name() + ", row " +
                                      std::to_string(row) + ": " + what);
}

oaBlock *blockOf(DesignDatabase &design) {
  const Row row = design.blockRow();
  if (row == kNoRow) {
    raiseBase(oacDeletedDatabase, design.label() + ": the block has been destroyed");
  }
  return objectOf<oaBlock>(design.blocks, row);
}

} // namespace kit
} // namespace OpenAccess_4
