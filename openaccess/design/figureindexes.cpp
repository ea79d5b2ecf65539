#include "figureindexes.h"

#include "collection.h"
#include "designaccess.h"
#include "oa/oaLPPHeader.h"
#include "oa/oaShape.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

namespace {

// Adds the row unless it is there already: a figure may leave its owner and come back.
void addOnce(OwnerIndex &index, std::uint64_t owner, Row row) {
  const RowSpan rows = index.rows(owner);
  if (rows.empty() || rows.back() < row || !std::binary_search(rows.begin(), rows.end(), row)) {
    index.add(owner, row);
  }
}

// Fills an index from the column that holds each row's owner. Rows beyond the stored part of the column have none.
void build(OwnerIndex &index, const Table &table, const Column<Row> &owners) {
  if (index.isBuilt()) {
    return;
  }
  const Row stored = std::min(owners.size(), table.rowCount());
  for (Row row = 0; row < stored; ++row) {
    const Row owner = owners[row];
    if (owner != kNoRow && table.isAlive(row)) {
      index.add(owner, row);
    }
  }
  index.setBuilt();
}

// The rows of an index that still have their owner.
template <typename Visit>
void visitMembers(const OwnerIndex &index, const Table &table, const Column<Row> &owners, Row owner, Visit visit) {
  for (const Row row : index.rows(owner)) {
    if (owners[row] == owner && table.isAlive(row)) {
      visit(row);
    }
  }
}

// Shapes of a pair or of a net. The question's table is that of the shapes.
class OwnedShapesKind : public OwnedRowsKind {
public:
  OwnedShapesKind(OwnerIndex DesignDatabase::*index, const Column<Row> &(*owners)(const ShapeTable &))
      : index_(index), owners_(owners) {}

protected:
  RowSpan members(const CollectionQuestion &question) const override {
    DesignDatabase &design = designOf(*question.table);
    build(design.*index_, design.shapes, owners_(design.shapes));
    return (design.*index_).rows(question.owner);
  }
  Table &memberTable(const CollectionQuestion &question) const override { return *question.table; }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const ShapeTable &shapes = static_cast<const ShapeTable &>(*question.table);
    return owners_(shapes)[row] == question.owner && ShapeTable::isShapeKind(shapes.kindOf(row));
  }

private:
  OwnerIndex DesignDatabase::*index_;
  const Column<Row> &(*owners_)(const ShapeTable &);
};

const Column<Row> &lppColumn(const ShapeTable &shapes) { return shapes.lpp; }
const Column<Row> &netColumn(const ShapeTable &shapes) { return shapes.net; }

// Figures of a pin. The question's table is that of the pins, its owner the pin; a position at or above kInstPositions
// stands for an instance.
class PinFigsKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    DesignDatabase &design = designOf(*question.table);
    // `hint` 0: among the shapes; 1: among the instances.
    if (hint == 0) {
      build(design.shapesOfPin, design.shapes, design.shapes.pin);
      if (const Row row = after(design.shapesOfPin, design.shapes, design.shapes.pin, question.owner, position);
          row != kNoRow) {
        position = row;
        return design.shapes.handle(row);
      }
      hint = 1;
      position = kNoRow;
    }
    build(design.instsOfPin, design.insts, design.insts.pin);
    const Row row = after(design.instsOfPin, design.insts, design.insts.pin, question.owner, position);
    if (row == kNoRow) {
      return nullptr;
    }
    position = row;
    return design.insts.handle(row);
  }

private:
  static Row after(const OwnerIndex &index, const Table &table, const Column<Row> &owners, Row owner, Row position) {
    const RowSpan rows = index.rows(owner);
    auto place = position == kNoRow ? rows.begin() : std::upper_bound(rows.begin(), rows.end(), position);
    for (; place != rows.end(); ++place) {
      if (owners[*place] == owner && table.isAlive(*place)) {
        return *place;
      }
    }
    return kNoRow;
  }
};

std::uint64_t displayKey(std::uint16_t table, Row row) { return (std::uint64_t(table) << 32) | row; }

// Under this key the index of displays holds all of them.
constexpr std::uint64_t kAllDisplays = ~std::uint64_t(0);

std::uint64_t displayKeyOf(const DesignDatabase &design, Row shape) {
  const Row payload = checkedRow(design.textDisplays, design.shapes.payload[shape], "a text display");
  return displayKey(design.textDisplays.objectTable[payload], design.textDisplays.objectRow[payload]);
}

void addDisplay(DesignDatabase &design, Row shape) {
  addOnce(design.displaysOfObject, displayKeyOf(design, shape), shape);
  addOnce(design.displaysOfObject, kAllDisplays, shape);
}

void buildDisplays(DesignDatabase &design) {
  if (design.displaysOfObject.isBuilt()) {
    return;
  }
  if (design.textDisplays.rowCount() != 0) {
    for (Row row = 0; row < design.shapes.rowCount(); ++row) {
      if (ShapeTable::isDisplayKind(design.shapes.kindOf(row))) {
        addDisplay(design, row);
      }
    }
  }
  design.displaysOfObject.setBuilt();
}

} // namespace

oaCollection<oaShape, oaLPPHeader> shapesOnLpp(DesignDatabase &design, Row lpp) {
  dropOrphanedDisplays(design);
  static const OwnedShapesKind kind(&DesignDatabase::shapesOfLpp, lppColumn);
  return CollectionAccess::make<oaCollection<oaShape, oaLPPHeader>>(kind, &design.shapes, lpp);
}

oaCollection<oaShape, oaNet> shapesOnNet(DesignDatabase &design, Row net) {
  static const OwnedShapesKind kind(&DesignDatabase::shapesOfNet, netColumn);
  return CollectionAccess::make<oaCollection<oaShape, oaNet>>(kind, &design.shapes, net);
}

oaCollection<oaPinFig, oaPin> figsInPin(DesignDatabase &design, Row pin) {
  static const PinFigsKind kind;
  return CollectionAccess::make<oaCollection<oaPinFig, oaPin>>(kind, &design.pins, pin);
}

Row netOfFigure(const DesignDatabase &design, const Table &table, Row figure) {
  return &table == &design.shapes ? design.shapes.net[figure] : kNoRow;
}

Row pinOfFigure(const DesignDatabase &design, const Table &table, Row figure) {
  if (&table == &design.shapes) {
    return design.shapes.pin[figure];
  }
  return &table == &design.insts ? design.insts.pin[figure] : kNoRow;
}

void setNetOfFigure(DesignDatabase &design, Table &table, Row figure, Row net) {
  if (&table != &design.shapes) {
    return;
  }
  design.shapes.net.set(figure, net);
  if (net != kNoRow && design.shapesOfNet.isBuilt()) {
    addOnce(design.shapesOfNet, net, figure);
  }
  design.touch();
}

void setPinOfFigure(DesignDatabase &design, Table &table, Row figure, Row pin) {
  const bool isShape = &table == &design.shapes;
  (isShape ? design.shapes.pin : design.insts.pin).set(figure, pin);
  OwnerIndex &index = isShape ? design.shapesOfPin : design.instsOfPin;
  if (pin != kNoRow && index.isBuilt()) {
    addOnce(index, pin, figure);
  }
  design.touch();
}

void leaveNet(DesignDatabase &design, Row net) {
  build(design.shapesOfNet, design.shapes, design.shapes.net);
  visitMembers(design.shapesOfNet, design.shapes, design.shapes.net, net,
               [&](Row shape) { design.shapes.net.set(shape, kNoRow); });
}

void leavePin(DesignDatabase &design, Row pin) {
  build(design.shapesOfPin, design.shapes, design.shapes.pin);
  visitMembers(design.shapesOfPin, design.shapes, design.shapes.pin, pin,
               [&](Row shape) { design.shapes.pin.set(shape, kNoRow); });
  build(design.instsOfPin, design.insts, design.insts.pin);
  visitMembers(design.instsOfPin, design.insts, design.insts.pin, pin,
               [&](Row inst) { design.insts.pin.set(inst, kNoRow); });
}

bool isNetWithoutFigures(DesignDatabase &design, Row net) {
  build(design.shapesOfNet, design.shapes, design.shapes.net);
  bool isEmpty = true;
  visitMembers(design.shapesOfNet, design.shapes, design.shapes.net, net, [&](Row) { isEmpty = false; });
  return isEmpty;
}

void moveFiguresToNet(DesignDatabase &design, Row from, Row to) {
  build(design.shapesOfNet, design.shapes, design.shapes.net);
  const std::vector<Row> rows = design.shapesOfNet.rows(from).copy();
  for (const Row shape : rows) {
    if (design.shapes.net[shape] == from && design.shapes.isAlive(shape)) {
      setNetOfFigure(design, design.shapes, shape, to);
    }
  }
}

void shapeJoinsLpp(DesignDatabase &design, Row shape, Row lpp) {
  if (design.shapesOfLpp.isBuilt()) {
    addOnce(design.shapesOfLpp, lpp, shape);
  }
}

std::vector<Row> displaysOf(DesignDatabase &design, const Table &table, Row row) {
  buildDisplays(design);
  std::vector<Row> displays;
  const std::uint64_t key = displayKey(table.id(), row);
  for (const Row shape : design.displaysOfObject.rows(key)) {
    if (design.shapes.isAlive(shape) && displayKeyOf(design, shape) == key) {
      displays.push_back(shape);
    }
  }
  return displays;
}

RowSpan allDisplays(DesignDatabase &design) {
  buildDisplays(design);
  return design.displaysOfObject.rows(kAllDisplays);
}

void dropOrphanedDisplays(DesignDatabase &design) {
  if (design.textDisplays.rowCount() == 0) {
    return;
  }
  const bool wasModified = design.isModified();
  const std::vector<Row> displays = allDisplays(design).copy(); // a copy: destroying may build the index anew
  for (const Row shape : displays) {
    if (!design.shapes.isAlive(shape)) {
      continue;
    }
    const Row payload = checkedRow(design.textDisplays, design.shapes.payload[shape], "a text display");
    const Table *table = design.table(design.textDisplays.objectTable[payload]);
    if (table == nullptr || table->life() != TableLife::kinds ||
        !table->isAlive(design.textDisplays.objectRow[payload])) {
      design.destroyRow(design.shapes, shape);
    }
  }
  design.setModified(wasModified);
}

void displayShows(DesignDatabase &design, Row displayShape) {
  if (design.displaysOfObject.isBuilt()) {
    addDisplay(design, displayShape);
  }
}

} // namespace kit
} // namespace OpenAccess_4
