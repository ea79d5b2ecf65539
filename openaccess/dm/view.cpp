#include "oa/oaView.h"

#include "collection.h"
#include "diskname.h"
#include "library.h"
#include "librarystructure.h"
#include "oa/oaCellView.h"
#include "oa/oaLib.h"
#include "viewtypes.h"

namespace OpenAccess_4 {

namespace {

using kit::LibraryStructure;

class CellViewsOfView : public kit::WholeTableKind {
protected:
  bool accepts(const kit::CollectionQuestion &question, kit::Row row) const override {
    return static_cast<LibraryStructure &>(question.table->database()).cellView(row).view == question.owner;
  }
  bool isFiltered(const kit::CollectionQuestion &) const override { return true; }
};

} // namespace

void oaView::destroy() { LibraryStructure::of(this).library().structure(true).destroyView(kit::rowOf(this)); }

void oaView::getName(oaScalarName &name) const {
  kit::nameFromDisk(LibraryStructure::of(this).view(kit::rowOf(this)).name, name);
}

void oaView::getName(const oaNameSpace &ns, oaString &out) const {
  kit::nameFromDisk(LibraryStructure::of(this).view(kit::rowOf(this)).name, ns, out);
}

oaViewType *oaView::getViewType() const {
  return kit::ViewTypes::instance().object(LibraryStructure::of(this).view(kit::rowOf(this)).type);
}

oaCollection<oaCellView, oaView> oaView::getCellViews() const {
  static const CellViewsOfView kind;
  LibraryStructure &structure = LibraryStructure::of(this);
  structure.listAllCellViews();
  return kit::CollectionAccess::make<oaCollection<oaCellView, oaView>>(kind, &structure.cellViews(), kit::rowOf(this));
}

oaView *oaView::find(const oaLib *lib, const oaScalarName &name, const oaViewType *viewType) {
  LibraryStructure &structure = kit::Libraries::of(lib).structure();
  const kit::Row row = structure.getView(kit::diskName(name), kit::ViewTypes::rowOfType(viewType));
  return static_cast<oaView *>(static_cast<oaObject *>(structure.views().handle(row)));
}

oaView *oaView::get(const oaLib *lib, const oaScalarName &name, const oaViewType *viewType) {
  return find(lib, name, viewType);
}

} // namespace OpenAccess_4
