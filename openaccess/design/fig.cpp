#include "oa/oaFig.h"

#include "connectivityaccess.h"
#include "figureindexes.h"
#include "multibit.h"
#include "oa/oaBlock.h"
#include "oa/oaDesignDB.h"
#include "references.h"
#include "shapeaccess.h"
#include "shapecontents.h"
#include "textdisplay.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

// The design whose block a figure is copied or moved to.
DesignDatabase &designForFigures(const oaBlock *block) { return designOfShapes(block); }

DesignDatabase &designForFigures(oaDesign *design) {
  DesignDatabase &target = designOf(design);
  blockOf(target);
  return target;
}

oaFig *copyFigure(const oaFig *figure, const oaTransform &xform, DesignDatabase &target) {
  Table &table = liveTable(figure);
  DesignDatabase &design = designOf(table);
  const Row row = rowOf(figure);
  if (table.id() != kShapeTable) {
    return copyRef(design, table, row, xform, target);
  }
  ShapeContents contents = readShape(design, row);
  contents.transform(xform, design.label());
  const Row lpp = checkedRow(design.lpps, design.shapes.lpp[row], "a shape");
  return shapeAt<oaFig>(target, addShape(target, design.lpps.layer[lpp], design.lpps.purpose[lpp], contents, design));
}

oaFig *moveFigure(oaFig *figure, const oaTransform &xform, DesignDatabase &target) {
  if (&designOf(figure) == &target) {
    figure->move(xform);
    return figure;
  }
  oaFig *copy = copyFigure(figure, xform, target);
  figure->destroy();
  return copy;
}

// The box of any figure. Out of line, so that the usual way, of shapes, needs no stack.
[[gnu::noinline]] void findBox(const oaFig *figure, oaBox &box) {
  Table &table = liveTable(figure);
  DesignDatabase &design = designOf(table);
  const Row row = rowOf(figure);
  if (table.id() != kShapeTable) {
    box = refBox(design, table, row);
  } else if (ShapeTable::isDisplayKind(design.shapes.kindOf(row))) {
    box = displayBox(design, row);
  } else {
    box = design.shapes.box[row];
  }
}

// A net or pin as an argument, which must belong to the figure's design.
Row memberOfDesign(const oaObject *object, std::uint16_t tableId, const char *what, const DesignDatabase &design,
                   oaUInt4 errorId) {
  const Table &table = tableAs<Table>(object, tableId, what);
  if (&table.database() != &design) {
    raiseDesign(errorId, design.label() + ": the figure and the " + what + " of " + table.database().label() +
                             " are in different blocks");
  }
  return rowOf(object);
}

} // namespace

void oaFig::destroy() {
  Table &table = liveTable(this);
  DesignDatabase &design = designOf(table);
  if (table.id() == kShapeTable) {
    design.destroyRow(table, rowOf(this));
  } else {
    destroyRef(design, table, rowOf(this));
  }
}

void oaFig::getBBox(oaBox &bBox) const {
  const Table *table = tableOf(this);
  if (OA_LIKELY(table != nullptr && table->id() == kShapeTable)) {
    const oaBox *box = static_cast<const ShapeTable *>(table)->box.ready(rowOf(this));
    if (OA_LIKELY(box != nullptr && !ShapeTable::isDisplayKind(static_cast<std::uint8_t>(getType())))) {
      bBox = *box;
      return;
    }
  }
  findBox(this, bBox);
}

oaBoolean oaFig::overlaps(const oaBox &box) const {
  oaBox own;
  getBBox(own);
  return own.overlaps(box);
}

void oaFig::move(const oaTransform &xform) {
  Table &table = liveTable(this);
  DesignDatabase &design = designOf(table);
  const Row row = rowOf(this);
  if (table.id() != kShapeTable) {
    moveRef(design, table, row, xform);
    return;
  }
  ShapeContents contents = readShape(design, row);
  contents.transform(xform, design.label());
  writeShape(design, row, contents);
}

oaFig *oaFig::move(const oaTransform &xform, oaBlock *block) {
  return moveFigure(this, xform, designForFigures(block));
}

oaFig *oaFig::move(const oaTransform &xform, oaDesign *design) {
  return moveFigure(this, xform, designForFigures(design));
}

oaFig *oaFig::copy(const oaTransform &xform) const { return copyFigure(this, xform, designOf(this)); }

oaFig *oaFig::copy(const oaTransform &xform, oaBlock *block) const {
  return copyFigure(this, xform, designForFigures(block));
}

oaFig *oaFig::copy(const oaTransform &xform, oaDesign *design) const {
  return copyFigure(this, xform, designForFigures(design));
}

oaBoolean oaConnFig::hasNet() const { return getNet() != nullptr; }

namespace {

// The object in a column of the shapes, which a walk over a schematic asks of every wire or port. NULL when it takes
// more to find, or there is none.
template <typename Object, typename Objects>
inline Object *readyOwner(const oaObject *shape, Column<Row> ShapeTable::*column, Objects DesignDatabase::*objects) {
  const Table *table = tableOf(shape);
  if (OA_UNLIKELY(table == nullptr || table->id() != kShapeTable)) {
    return nullptr;
  }
  const Row *owner = (static_cast<const ShapeTable *>(table)->*column).ready(rowOf(shape));
  if (OA_UNLIKELY(owner == nullptr)) {
    return nullptr;
  }
  Objects &owners = designOf(*table).*objects;
  const std::uint8_t *kind = owners.kind.ready(*owner);
  return OA_LIKELY(kind != nullptr && *kind != 0) ? static_cast<Object *>(owners.readyHandle(*owner, *kind)) : nullptr;
}

// Out of line, so that the usual way needs no stack.
[[gnu::noinline]] oaNet *findNet(const oaConnFig *figure) {
  Table &table = liveTable(figure);
  DesignDatabase &design = designOf(table);
  const Row net = netOfFigure(design, table, rowOf(figure));
  return net == kNoRow ? nullptr : static_cast<oaNet *>(design.nets.handle(checkedRow(design.nets, net, "a figure")));
}

[[gnu::noinline]] oaPin *findPin(const oaPinFig *figure) {
  Table &table = liveTable(figure);
  DesignDatabase &design = designOf(table);
  const Row pin = pinOfFigure(design, table, rowOf(figure));
  return pin == kNoRow ? nullptr : static_cast<oaPin *>(design.pins.handle(checkedRow(design.pins, pin, "a figure")));
}

} // namespace

oaNet *oaConnFig::getNet() const {
  oaNet *ready = readyOwner<oaNet>(this, &ShapeTable::net, &DesignDatabase::nets);
  return OA_LIKELY(ready != nullptr) ? ready : findNet(this);
}

void oaConnFig::addToNet(oaNet *net) {
  Table &table = liveTable(this);
  DesignDatabase &design = designOf(table);
  const Row to = memberOfDesign(net, kNetTable, "net", design, oacNetFigNotInSameBlock);
  if (pinOfFigure(design, table, rowOf(this)) != kNoRow) {
    raiseDesign(oacCannotAddPinFigToNet,
                design.label() + ": the figure is in a pin; take it out before it can be on a net");
  }
  if ((design.nets.flags[to] & kNetImplicit) != 0) {
    raiseDesign(oacCannotAddFigToImplicitNet, design.label() + ": " + netNames(design).describe(to) +
                                                  " is implicit and takes no figures; create it first");
  }
  if (table.id() == kInstTable) {
    raiseBase(oacNotYetSupported, design.label() + ": instances cannot be on nets");
  }
  const std::uint8_t kind = design.nets.kind[to];
  if (table.id() == kViaTable && (kind == oacBusNetType || kind == oacBundleNetType)) {
    raiseDesign(kViaOnMultiBitNet, design.label() + ": " + netNames(design).describe(to) +
                                       " has several bits; a via can only be on a net of one bit");
  }
  setNetOfFigure(design, table, rowOf(this), to);
}

void oaConnFig::removeFromNet() {
  Table &table = liveTable(this);
  DesignDatabase &design = designOf(table);
  if (netOfFigure(design, table, rowOf(this)) != kNoRow) {
    setNetOfFigure(design, table, rowOf(this), kNoRow);
  }
}

oaBoolean oaPinFig::hasPin() const { return getPin() != nullptr; }

oaPin *oaPinFig::getPin() const {
  oaPin *ready = readyOwner<oaPin>(this, &ShapeTable::pin, &DesignDatabase::pins);
  return OA_LIKELY(ready != nullptr) ? ready : findPin(this);
}

void oaPinFig::addToPin(oaPin *pin) {
  Table &table = liveTable(this);
  DesignDatabase &design = designOf(table);
  const Row to = memberOfDesign(pin, kPinTable, "pin", design, oacPinAndFigNotInSameBlock);
  if (netOfFigure(design, table, rowOf(this)) != kNoRow) {
    raiseDesign(oacCannotAddNetFigToPin,
                design.label() + ": the figure is on a net; take it off before it can be in a pin");
  }
  setPinOfFigure(design, table, rowOf(this), to);
}

void oaPinFig::removeFromPin() {
  Table &table = liveTable(this);
  DesignDatabase &design = designOf(table);
  if (pinOfFigure(design, table, rowOf(this)) != kNoRow) {
    setPinOfFigure(design, table, rowOf(this), kNoRow);
  }
}

} // namespace OpenAccess_4
