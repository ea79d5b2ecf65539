#include "oa/oaCellView.h"

#include "diskname.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaCell.h"
#include "oa/oaDMFile.h"
#include "oa/oaLib.h"
#include "oa/oaView.h"
#include "raise.h"
#include "viewtypes.h"

namespace OpenAccess_4 {

namespace {

using kit::LibraryStructure;
using kit::Row;

oaCellView *cellViewObject(LibraryStructure &structure, Row row) {
  return static_cast<oaCellView *>(static_cast<oaObject *>(structure.cellViews().handle(row)));
}

void checkSameLibrary(const oaCell *cell, const oaView *view) {
  const LibraryStructure &ofCell = LibraryStructure::of(cell);
  const LibraryStructure &ofView = LibraryStructure::of(view);
  if (&ofCell != &ofView) {
    raiseDM(oacCellViewNotInSameLib,
            "the cell is in library " + ofCell.library().label() + ", the view in library " + ofView.library().label());
  }
}

Row getCellView(kit::Library &library, const std::string &cellName, const std::string &viewName, Row type) {
  LibraryStructure &structure = library.structure();
  const Row cell = structure.findCell(cellName);
  const bool isThere = cell != kit::kNoRow && structure.findCellView(cell, viewName) != kit::kNoRow;
  return library.structure(!isThere).getCellView(cellName, viewName, type);
}

} // namespace

void oaCellView::destroy() { LibraryStructure::of(this).library().structure(true).destroyCellView(kit::rowOf(this)); }

oaCell *oaCellView::getCell() const {
  LibraryStructure &structure = LibraryStructure::of(this);
  return static_cast<oaCell *>(
      static_cast<oaObject *>(structure.cells().handle(structure.cellView(kit::rowOf(this)).cell)));
}

oaView *oaCellView::getView() const {
  LibraryStructure &structure = LibraryStructure::of(this);
  const Row row = structure.cellView(kit::rowOf(this)).view;
  // A view may have been forgotten by oaView::destroy(); it is only a name, and comes back.
  if (!structure.views().isAlive(row)) {
    const LibraryStructure::View view = structure.view(row);
    structure.cellView(kit::rowOf(this)).view = structure.getView(view.name, view.type);
  }
  return static_cast<oaView *>(
      static_cast<oaObject *>(structure.views().handle(structure.cellView(kit::rowOf(this)).view)));
}

oaDMFile *oaCellView::getPrimary() const {
  LibraryStructure &structure = LibraryStructure::of(this);
  const Row row = kit::rowOf(this);
  const std::uint16_t table = structure.cellViews().id();
  return static_cast<oaDMFile *>(static_cast<oaObject *>(
      structure.files().handle(structure.findFile(table, row, structure.cellView(row).primaryFile))));
}

oaCellView *oaCellView::find(const oaCell *cell, const oaView *view) {
  checkSameLibrary(cell, view);
  LibraryStructure &structure = LibraryStructure::of(cell);
  const LibraryStructure::View wanted = structure.view(kit::rowOf(view));
  const Row row = structure.findCellView(kit::rowOf(cell), wanted.name);
  if (row == kit::kNoRow || structure.view(structure.cellView(row).view).type != wanted.type) {
    return nullptr;
  }
  return cellViewObject(structure, row);
}

oaCellView *oaCellView::find(const oaLib *lib, const oaScalarName &cellName, const oaScalarName &viewName) {
  LibraryStructure &structure = kit::Libraries::of(lib).structure();
  const Row cell = structure.findCell(kit::diskName(cellName));
  const std::string view = kit::diskName(viewName);
  return cell == kit::kNoRow ? nullptr : cellViewObject(structure, structure.findCellView(cell, view));
}

oaCellView *oaCellView::get(const oaCell *cell, const oaView *view) {
  checkSameLibrary(cell, view);
  LibraryStructure &structure = LibraryStructure::of(cell);
  const LibraryStructure::View wanted = structure.view(kit::rowOf(view));
  const std::string cellName = structure.cell(kit::rowOf(cell)).name;
  return cellViewObject(structure, getCellView(structure.library(), cellName, wanted.name, wanted.type));
}

oaCellView *oaCellView::get(const oaLib *lib, const oaScalarName &cellName, const oaScalarName &viewName,
                            const oaViewType *viewType) {
  kit::Library &library = kit::Libraries::of(lib);
  const Row row =
      getCellView(library, kit::diskName(cellName), kit::diskName(viewName), kit::ViewTypes::rowOfType(viewType));
  return cellViewObject(library.structure(), row);
}

} // namespace OpenAccess_4
