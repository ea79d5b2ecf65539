#include "oa/oaCell.h"

#include "collection.h"
#include "diskname.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaCellView.h"
#include "oa/oaLib.h"

namespace OpenAccess_4 {

namespace {

using kit::LibraryStructure;

class CellViewsOfCell : public kit::OwnedRowsKind {
protected:
  kit::RowSpan members(const kit::CollectionQuestion &question) const override {
    auto &structure = static_cast<LibraryStructure &>(question.table->database());
    if (!structure.cells().isAlive(question.owner)) {
      return kit::RowSpan();
    }
    const std::vector<kit::Row> &cellViews = structure.cell(question.owner).cellViews;
    return kit::RowSpan(cellViews.data(), cellViews.size());
  }
  kit::Table &memberTable(const kit::CollectionQuestion &question) const override {
    return static_cast<LibraryStructure &>(question.table->database()).cellViews();
  }
};

oaCell *cellObject(LibraryStructure &structure, kit::Row row) {
  return static_cast<oaCell *>(static_cast<oaObject *>(structure.cells().handle(row)));
}

} // namespace

void oaCell::destroy() { LibraryStructure::of(this).library().structure(true).destroyCell(kit::rowOf(this)); }

void oaCell::getName(oaScalarName &name) const {
  kit::nameFromDisk(LibraryStructure::of(this).cell(kit::rowOf(this)).name, name);
}

void oaCell::getName(const oaNameSpace &ns, oaString &out) const {
  kit::nameFromDisk(LibraryStructure::of(this).cell(kit::rowOf(this)).name, ns, out);
}

oaCollection<oaCellView, oaCell> oaCell::getCellViews() const {
  static const CellViewsOfCell kind;
  LibraryStructure &structure = LibraryStructure::of(this);
  structure.listCellViews(kit::rowOf(this));
  return kit::CollectionAccess::make<oaCollection<oaCellView, oaCell>>(kind, &structure.cells(), kit::rowOf(this));
}

oaCell *oaCell::find(const oaLib *lib, const oaScalarName &name) {
  LibraryStructure &structure = kit::Libraries::of(lib).structure();
  return cellObject(structure, structure.findCell(kit::diskName(name)));
}

oaCell *oaCell::get(const oaLib *lib, const oaScalarName &name) {
  kit::Library &library = kit::Libraries::of(lib);
  const std::string disk = kit::diskName(name);
  LibraryStructure &structure = library.structure(library.structure().findCell(disk) == kit::kNoRow);
  return cellObject(structure, structure.getCell(disk));
}

} // namespace OpenAccess_4
