#include "oa/oaBlock.h"

#include "collection.h"
#include "designaccess.h"
#include "figureindexes.h"
#include "multibit.h"
#include "oa/oaDesign.h"
#include "oa/oaLPPHeader.h"
#include "oa/oaShape.h"
#include "oa/oaTech.h"
#include "viewtypes.h"

#include <algorithm>

namespace OpenAccess_4 {

using namespace kit;

namespace {

// The next shape behind `row`, whatever it takes.
[[gnu::noinline]] oaObject *findNextShape(ShapeTable &shapes, Row row, Row &position) {
  const Row end = shapes.rowCount();
  for (; row < end; ++row) {
    const std::uint8_t kind = shapes.kind[row];
    if (ShapeTable::isShapeKind(kind)) {
      position = row;
      return shapes.handle(row, kind);
    }
    if (kind != 0) {
      raiseCorrupted(shapes, row, "kind " + std::to_string(kind) + " is none of a shape");
    }
  }
  return nullptr;
}

// All shapes: the walk that reads a layout. `hint` is the row up to which the segments of a file have been verified and
// handles have room, so that a step is a few loads and stores.
class AllShapesKind : public WholeTableKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    ShapeTable &shapes = static_cast<ShapeTable &>(*question.table);
    const Row row = position + 1; // kNoRow + 1 is 0
    if (OA_LIKELY(row < hint && row < shapes.kind.size())) {
      const std::uint8_t kind = shapes.kind.raw()[row];
      if (OA_LIKELY(ShapeTable::isShapeKind(kind))) {
        position = row;
        return shapes.handleInBlock(row, kind, designOf(shapes).asideOfLpp(shapes.lpp.raw()[row]));
      }
    }
    return prepareAndFind(shapes, row, position, hint);
  }

private:
  // Out of line, so that a step needs no stack.
  [[gnu::noinline]] static oaObject *prepareAndFind(ShapeTable &shapes, Row row, Row &position, Row &hint) {
    oaObject *found = findNextShape(shapes, row, position);
    if (found != nullptr) {
      const Row begin = position + 1;
      const Row blockEnd = (position | (HandleBlock::kHandles - 1)) + 1;
      const Row end = std::min({blockEnd, shapes.kind.size(), shapes.lpp.size()});
      hint = begin;
      if (begin < end && shapes.kind.ready(begin) != nullptr && shapes.kind.ready(end - 1) != nullptr) {
        shapes.lpp.verify(begin, end);
        hint = end;
      }
    }
    return found;
  }
};

// Every destroyable row of a table, oldest first.
void destroyAll(DesignDatabase &design, Table &table) {
  for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
    design.destroyRow(table, row);
  }
}

// The same for objects that may be members of others.
void destroyAll(MultiBit names, const Table &table) {
  for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
    names.destroyWithOwners(row);
  }
}

Row blockRowOf(const oaBlock *block) {
  tableAs<BlockTable>(block, kBlockTable, "block");
  return rowOf(block);
}

// The view type for units; types without units of their own count as layouts.
oaViewType *unitsTypeOf(DesignDatabase &design) {
  const Row type = design.viewType();
  const bool hasUnits = type <= oacNetlist || type == oacHierDesign;
  return ViewTypes::instance().object(hasUnits ? type : Row(oacMaskLayout));
}

} // namespace

oaBlock *oaBlock::create(const oaDesign *design, oaBoolean visibleToModule) {
  DesignDatabase &owner = designOf(design);
  if (owner.blockRow() != kNoRow) {
    raiseDesign(oacTopBlockAlreadyExists, owner.label() + ": has a block already");
  }
  const Row row = owner.blocks.addRow();
  owner.blocks.kind.set(row, oacBlockType);
  owner.blocks.visibleToModule.set(row, visibleToModule);
  owner.touch();
  return objectOf<oaBlock>(owner.blocks, row);
}

void oaBlock::destroy() {
  const Row row = blockRowOf(this);
  DesignDatabase &design = designOf(this);
  // Instances before nets, since their terminals sit on nets; shapes last, since nothing hangs on them.
  destroyAll(instNames(design), design.insts);
  destroyAll(design, design.vias);
  destroyAll(netNames(design), design.nets);
  for (Table *defs : {static_cast<Table *>(&design.vectorInstDefs), static_cast<Table *>(&design.busNetDefs),
                      static_cast<Table *>(&design.busTermDefs)}) {
    destroyAll(design, *defs);
  }
  destroyAll(design, design.shapes);
  design.destroyRow(design.blocks, row);
}

oaUInt4 oaBlock::getDBUPerUU() const {
  DesignDatabase &design = designOf(this);
  const oaTech *tech = design.tech();
  const oaViewType *type = unitsTypeOf(design);
  return tech == nullptr ? oaTech::getDefaultDBUPerUU(type) : tech->getDBUPerUU(type);
}

oaUserUnitsType oaBlock::getUserUnits() const {
  DesignDatabase &design = designOf(this);
  const oaTech *tech = design.tech();
  const oaViewType *type = unitsTypeOf(design);
  return tech == nullptr ? oaTech::getDefaultUserUnits(type) : tech->getUserUnits(type);
}

void oaBlock::getBBox(oaBox &bBox) const {
  blockRowOf(this);
  bBox = designOf(this).blockBox();
}

oaBoolean oaBlock::isVisibleToModule() const { return designOf(this).blocks.visibleToModule[blockRowOf(this)] != 0; }

void oaBlock::setVisibleToModule() {
  const Row row = blockRowOf(this);
  DesignDatabase &design = designOf(this);
  design.blocks.visibleToModule.set(row, 1);
  design.touch();
}

void oaBlock::initForRegionQuery() { blockRowOf(this); }

oaCollection<oaShape, oaBlock> oaBlock::getShapes() const {
  static const AllShapesKind kind;
  blockRowOf(this);
  DesignDatabase &design = designOf(this);
  dropOrphanedDisplays(design);
  design.gatherNumbers();
  return CollectionAccess::make<oaCollection<oaShape, oaBlock>>(kind, &design.shapes, 0);
}

oaCollection<oaLPPHeader, oaBlock> oaBlock::getLPPHeaders() const {
  blockRowOf(this);
  return wholeTable<oaCollection<oaLPPHeader, oaBlock>>(designOf(this).lpps);
}

oaCollection<oaLayerHeader, oaBlock> oaBlock::getLayerHeaders() const {
  blockRowOf(this);
  return wholeTable<oaCollection<oaLayerHeader, oaBlock>>(designOf(this).layerHeaders);
}

} // namespace OpenAccess_4
