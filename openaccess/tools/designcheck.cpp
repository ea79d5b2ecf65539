#include "designcheck.h"

#include "paramcheck.h"

#include "oa/oaDesignEnums.h"
#include "shapecheck.h"

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

void checkAttributes(const TableCheck &check, const DesignDatabase &design) {
  const DesignAttributesTable &attributes = design.attributes;
  check.checkKinds(attributes, {oacDesignType});
  if (attributes.rowCount() != 1) {
    check.report().damage(attributes.name(), "", {"has " + std::to_string(attributes.rowCount()) + " rows", "1"});
  }
  TableCheck::forEachRow(attributes,
                         [&](Row row) { check.checkEnum(attributes, row, attributes.cellType, oaCellTypeEnum()); });
}

// All objects of a design belong to its block.
void checkBlock(const TableCheck &check, const DesignDatabase &design) {
  const BlockTable &blocks = design.blocks;
  check.checkKinds(blocks, {oacBlockType});
  if (blocks.rowCount() > 1) {
    check.report().damage(blocks.name(), "", {"has " + std::to_string(blocks.rowCount()) + " rows", "1 or none"});
  }
  TableCheck::forEachRow(blocks, [&](Row row) { check.checkBelow(blocks, row, blocks.visibleToModule, 2); });
  if (design.blockRow() != kNoRow) {
    return;
  }
  for (const Table *table : design.tables()) {
    const bool isOfBlock = table->life() == TableLife::kinds && table->id() >= kBlockTable;
    if (isOfBlock && table->nextAlive(kNoRow) != kNoRow) {
      check.report().damage(table->name(), "", {"has objects, but the design has no block", {}});
    }
  }
}

} // namespace

void checkDesign(const TableCheck &check, DesignDatabase &design, const FindMaster &findMaster,
                 const FindViaDefinition &findViaDefinition) {
  check.guarded([&] { checkAttributes(check, design); });
  check.guarded([&] { checkBlock(check, design); });
  check.guarded([&] { checkShapes(check, design); });
  FamilyCheck nets(check, netFamily(design)), terms(check, termFamily(design)),
      insts(check, instFamily(design), oacArrayInstType);
  check.guarded([&] { nets.run(); });
  check.guarded([&] { terms.run(); });
  check.guarded([&] { insts.run(); });
  check.guarded([&] { checkNets(check, design); });
  check.guarded([&] { checkTerms(check, design, terms, nets); });
  check.guarded([&] { checkInsts(check, design, insts, findMaster); });
  check.guarded([&] { checkConnections(check, design, insts, nets); });
  check.guarded([&] { checkVias(check, design, nets, findViaDefinition); });
  check.guarded([&] { checkSuperMaster(check, design); });
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
