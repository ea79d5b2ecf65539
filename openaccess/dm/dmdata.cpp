#include "oa/oaDMData.h"

#include "cellviewfiles.h"
#include "diskname.h"
#include "library.h"
#include "librarystructure.h"
#include "managementdata.h"
#include "oa/oaCellView.h"
#include "oa/oaLib.h"
#include "oa/oaScalarName.h"
#include "raise.h"
#include "viewtypes.h"

namespace OpenAccess_4 {

namespace {

using kit::ManagementData;
using kit::ManagementDataOwner;

ManagementDataOwner libraryOwner(const oaScalarName &lib) { return {oacLibDMDataType, kit::diskName(lib), {}, {}}; }
ManagementDataOwner cellOwner(const oaScalarName &lib, const oaScalarName &cell) {
  return {oacCellDMDataType, kit::diskName(lib), kit::diskName(cell), {}};
}
ManagementDataOwner cellViewOwner(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view) {
  return {oacCellViewDMDataType, kit::diskName(lib), kit::diskName(cell), kit::diskName(view)};
}

ManagementDataOwner ownerOf(const oaDMContainer *container) {
  kit::liveTable(container);
  const kit::Library &library = kit::Libraries::of(container->getLib());
  if (container->getType() == oacLibType) {
    return {oacLibDMDataType, library.diskName(), {}, {}};
  }
  kit::LibraryStructure &structure = kit::LibraryStructure::of(container);
  const kit::Row row = kit::rowOf(container);
  switch (container->getType()) {
  case oacCellType:
    return {oacCellDMDataType, library.diskName(), structure.cell(row).name, {}};
  case oacCellViewType: {
    const kit::LibraryStructure::CellView &cellView = structure.cellView(row);
    return {oacCellViewDMDataType, library.diskName(), structure.cell(cellView.cell).name, cellView.name};
  }
  default:
    raiseDM(oacDMDataDoesNotExist, "library " + library.label() + ": views have no management data");
  }
}

template <typename Data> Data *objectOf(ManagementData *data) {
  return data == nullptr ? nullptr : static_cast<Data *>(data->object());
}

kit::Row viewTypeOf(const ManagementData &data) {
  return kit::ViewTypes::instance().typeOfPrimaryFile(kit::findPrimaryFile(data.place().directory));
}

} // namespace

void oaDMData::close() { ManagementData::close(ManagementData::of(this)); }
void oaDMData::purge() { ManagementData::registry().remove(ManagementData::of(this)); }
void oaDMData::save() { ManagementData::of(this).save(); }
void oaDMData::reopen(oaChar mode) { ManagementData::of(this).reopen(mode); }
void oaDMData::revert() { ManagementData::of(this).revert(); }
void oaDMData::getLibName(oaScalarName &libName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().library, libName);
}
void oaDMData::getLibName(const oaNameSpace &ns, oaString &libName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().library, ns, libName);
}

oaLib *oaDMData::getLib() const {
  const kit::Library *library = ManagementData::of(this).library();
  return library == nullptr ? nullptr : library->handle();
}

oaChar oaDMData::getMode() const { return ManagementData::of(this).mode(); }
oaUInt4 oaDMData::getRefCount() const { return ManagementData::of(this).refCount(); }
oaBoolean oaDMData::isModified() const { return ManagementData::of(this).isModified(); }

oaDMData *oaDMData::open(const oaDMContainer *container, oaChar mode) {
  return ManagementData::open(ownerOf(container), mode).object();
}
oaDMData *oaDMData::find(const oaDMContainer *container) {
  return objectOf<oaDMData>(ManagementData::find(ownerOf(container)));
}
oaBoolean oaDMData::exists(const oaDMContainer *container) { return ManagementData::exists(ownerOf(container)); }
void oaDMData::destroy(const oaDMContainer *container) { ManagementData::destroy(ownerOf(container)); }

oaCollection<oaDMData, oaDMData> oaDMData::getOpenDMDataObjs() {
  return kit::openDatabases<oaCollection<oaDMData, oaDMData>, ManagementData>();
}

oaLibDMData *oaLibDMData::open(const oaScalarName &libName, oaChar mode) {
  return objectOf<oaLibDMData>(&ManagementData::open(libraryOwner(libName), mode));
}
oaLibDMData *oaLibDMData::find(const oaScalarName &libName) {
  return objectOf<oaLibDMData>(ManagementData::find(libraryOwner(libName)));
}
oaBoolean oaLibDMData::exists(const oaScalarName &libName) { return ManagementData::exists(libraryOwner(libName)); }
void oaLibDMData::destroy(const oaScalarName &libName) { ManagementData::destroy(libraryOwner(libName)); }

void oaCellDMData::getCellName(oaScalarName &cellName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().cell, cellName);
}
void oaCellDMData::getCellName(const oaNameSpace &ns, oaString &cellName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().cell, ns, cellName);
}

oaCellDMData *oaCellDMData::open(const oaScalarName &libName, const oaScalarName &cellName, oaChar mode) {
  return objectOf<oaCellDMData>(&ManagementData::open(cellOwner(libName, cellName), mode));
}
oaCellDMData *oaCellDMData::find(const oaScalarName &libName, const oaScalarName &cellName) {
  return objectOf<oaCellDMData>(ManagementData::find(cellOwner(libName, cellName)));
}
oaBoolean oaCellDMData::exists(const oaScalarName &libName, const oaScalarName &cellName) {
  return ManagementData::exists(cellOwner(libName, cellName));
}
void oaCellDMData::destroy(const oaScalarName &libName, const oaScalarName &cellName) {
  ManagementData::destroy(cellOwner(libName, cellName));
}

void oaCellViewDMData::getCellName(oaScalarName &cellName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().cell, cellName);
}
void oaCellViewDMData::getCellName(const oaNameSpace &ns, oaString &cellName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().cell, ns, cellName);
}
void oaCellViewDMData::getViewName(oaScalarName &viewName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().view, viewName);
}
void oaCellViewDMData::getViewName(const oaNameSpace &ns, oaString &viewName) const {
  kit::nameFromDisk(ManagementData::of(this).owner().view, ns, viewName);
}

oaViewType *oaCellViewDMData::getViewType() const {
  const kit::Row type = viewTypeOf(ManagementData::of(this));
  return type == kit::kNoRow ? nullptr : kit::ViewTypes::instance().object(type);
}

oaCellViewDMData *oaCellViewDMData::open(const oaScalarName &libName, const oaScalarName &cellName,
                                         const oaScalarName &viewName, const oaViewType *viewType, oaChar mode) {
  const ManagementDataOwner owner = cellViewOwner(libName, cellName, viewName);
  const kit::DatabasePlace place = ManagementData::placeOf(owner);
  kit::ViewTypes &types = kit::ViewTypes::instance();
  const kit::Row found = types.typeOfPrimaryFile(kit::findPrimaryFile(place.directory));
  const kit::Row wanted = kit::ViewTypes::rowOfType(viewType);
  if (found != wanted) {
    raiseDM(oacMismatchViewType, place.label + ": the cell view has the view type " +
                                     (found == kit::kNoRow ? std::string("none") : types.nameOf(found)) +
                                     ", expected " + types.nameOf(wanted));
  }
  return objectOf<oaCellViewDMData>(&ManagementData::open(owner, mode));
}

oaCellViewDMData *oaCellViewDMData::open(const oaScalarName &libName, const oaScalarName &cellName,
                                         const oaScalarName &viewName, oaChar mode) {
  return objectOf<oaCellViewDMData>(&ManagementData::open(cellViewOwner(libName, cellName, viewName), mode));
}
oaCellViewDMData *oaCellViewDMData::find(const oaScalarName &libName, const oaScalarName &cellName,
                                         const oaScalarName &viewName) {
  return objectOf<oaCellViewDMData>(ManagementData::find(cellViewOwner(libName, cellName, viewName)));
}
oaBoolean oaCellViewDMData::exists(const oaScalarName &libName, const oaScalarName &cellName,
                                   const oaScalarName &viewName) {
  return ManagementData::exists(cellViewOwner(libName, cellName, viewName));
}
void oaCellViewDMData::destroy(const oaScalarName &libName, const oaScalarName &cellName,
                               const oaScalarName &viewName) {
  ManagementData::destroy(cellViewOwner(libName, cellName, viewName));
}

} // namespace OpenAccess_4
