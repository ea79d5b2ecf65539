#include "figureindexes.h"

#include "collection.h"
#include "designaccess.h"
#include "oa/oaLPPHeader.h"
#include "oa/oaShape.h"

#include <algorithm>
#include <array>

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

// The tables whose rows may be on a net or in a pin, with the column that says on or in which.
struct Figures {
  Table *table;
  Column<Row> *owners;
  OwnerIndex *index;

  void buildIndex() const { build(*index, *table, *owners); }
  // The next figure of the owner after `position` (kNoRow: the first), or kNoRow.
  Row after(Row owner, Row position) const {
    buildIndex();
    const RowSpan rows = index->rows(owner);
    auto place = position == kNoRow ? rows.begin() : std::upper_bound(rows.begin(), rows.end(), position);
    for (; place != rows.end(); ++place) {
      if ((*owners)[*place] == owner && table->isAlive(*place)) {
        return *place;
      }
    }
    return kNoRow;
  }
  void set(Row figure, Row owner) const {
    owners->set(figure, owner);
    if (owner != kNoRow && index->isBuilt()) {
      addOnce(*index, owner, figure);
    }
  }
  void leave(Row owner) const {
    buildIndex();
    visitMembers(*index, *table, *owners, owner, [&](Row figure) { owners->set(figure, kNoRow); });
  }
};

std::array<Figures, 2> netFigures(DesignDatabase &design) {
  return {
      {{&design.shapes, &design.shapes.net, &design.shapesOfNet}, {&design.vias, &design.vias.net, &design.viasOfNet}}};
}

std::array<Figures, 3> pinFigures(DesignDatabase &design) {
  return {{{&design.shapes, &design.shapes.pin, &design.shapesOfPin},
           {&design.insts, &design.insts.pin, &design.instsOfPin},
           {&design.vias, &design.vias.pin, &design.viasOfPin}}};
}

// The figures of one table, NULL when none of its rows can have such an owner.
template <typename Set> const Figures *figuresIn(const Set &set, const Table &table) {
  for (const Figures &figures : set) {
    if (figures.table == &table) {
      return &figures;
    }
  }
  return nullptr;
}

// Figures of a pin. The question's table is that of the pins, its owner the pin; `hint` is the place of the table that
// `position` is a row of.
class PinFigsKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    const auto set = pinFigures(designOf(*question.table));
    for (; hint < set.size(); ++hint) {
      if (const Row row = set[hint].after(question.owner, position); row != kNoRow) {
        position = row;
        return set[hint].table->handle(row);
      }
      position = kNoRow;
    }
    return nullptr;
  }
};

// Vias on a net. The question's table is that of the vias.
class NetViasKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &) const override {
    DesignDatabase &design = designOf(*question.table);
    const Row row = netFigures(design)[1].after(question.owner, position);
    if (row == kNoRow) {
      return nullptr;
    }
    position = row;
    return design.vias.handle(row);
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

oaCollection<oaVia, oaNet> viasOnNet(DesignDatabase &design, Row net) {
  static const NetViasKind kind;
  return CollectionAccess::make<oaCollection<oaVia, oaNet>>(kind, &design.vias, net);
}

Row netOfFigure(DesignDatabase &design, const Table &table, Row figure) {
  const auto set = netFigures(design);
  const Figures *figures = figuresIn(set, table);
  return figures == nullptr ? kNoRow : (*figures->owners)[figure];
}

Row pinOfFigure(DesignDatabase &design, const Table &table, Row figure) {
  const auto set = pinFigures(design);
  const Figures *figures = figuresIn(set, table);
  return figures == nullptr ? kNoRow : (*figures->owners)[figure];
}

void setNetOfFigure(DesignDatabase &design, Table &table, Row figure, Row net) {
  const auto set = netFigures(design);
  if (const Figures *figures = figuresIn(set, table)) {
    figures->set(figure, net);
    design.touch();
  }
}

void setPinOfFigure(DesignDatabase &design, Table &table, Row figure, Row pin) {
  const auto set = pinFigures(design);
  if (const Figures *figures = figuresIn(set, table)) {
    figures->set(figure, pin);
    design.touch();
  }
}

void leaveNet(DesignDatabase &design, Row net) {
  for (const Figures &figures : netFigures(design)) {
    figures.leave(net);
  }
}

void leavePin(DesignDatabase &design, Row pin) {
  for (const Figures &figures : pinFigures(design)) {
    figures.leave(pin);
  }
}

bool isNetWithoutFigures(DesignDatabase &design, Row net) {
  const auto set = netFigures(design);
  return std::all_of(set.begin(), set.end(),
                     [&](const Figures &figures) { return figures.after(net, kNoRow) == kNoRow; });
}

void moveFiguresToNet(DesignDatabase &design, Row from, Row to) {
  for (const Figures &figures : netFigures(design)) {
    figures.buildIndex();
    const std::vector<Row> rows = figures.index->rows(from).copy();
    for (const Row figure : rows) {
      if ((*figures.owners)[figure] == from && figures.table->isAlive(figure)) {
        setNetOfFigure(design, *figures.table, figure, to);
      }
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
