#include "oa/oaDesign.h"

#include "collection.h"
#include "connectivity.h"
#include "designaccess.h"
#include "designlife.h"
#include "diskname.h"
#include "library.h"
#include "oa/oaBlock.h"
#include "oa/oaDesignDB.h"
#include "references.h"
#include "viewtypes.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace OpenAccess_4 {

using namespace kit;

namespace {

// Headers of other designs whose master is the design behind the question's table: position is the header's row, hint
// the serial number of the design that holds it.
class UsedInKind : public CollectionKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    const DesignDatabase *master = &designOf(*question.table);
    for (const auto &user : DesignDatabase::registry().all()) {
      if (user->serialNumber() < hint) {
        continue;
      }
      Row next = kNoRow;
      for (const auto &bound : user->boundMasters) {
        const bool isBehind = user->serialNumber() > hint || position == kNoRow || bound.first > position;
        if (bound.second == master && isBehind) {
          next = std::min(next, bound.first);
        }
      }
      if (next != kNoRow) {
        hint = user->serialNumber();
        position = next;
        return user->instHeaders.handle(next);
      }
    }
    return nullptr;
  }
};

} // namespace

void oaDesign::close() { DesignDatabase::release(designOf(this)); }

void oaDesign::purge() { DesignDatabase::purge(designOf(this)); }

void oaDesign::save() {
  const PinnedDesign pinned(designOf(this));
  pinned.design().save();
}

void oaDesign::reopen(oaChar mode) {
  DesignDatabase &design = designOf(this);
  const PinnedDesign pinned(design);
  if (mode == 's') {
    raiseDesign(oacCannotSetModeToScratch, design.label() + ": mode 's' cannot be asked for");
  }
  if (design.isScratch()) {
    raiseDesign(oacCannotChangeFromScratchMode, design.label() + ": lives in memory only, so its mode cannot change");
  }
  design.reopen(mode);
}

void oaDesign::revert() {
  const PinnedDesign pinned(designOf(this));
  pinned.design().revert();
}

void oaDesign::getLibName(oaScalarName &libName) const { nameFromDisk(designOf(this).libName(), libName); }
void oaDesign::getCellName(oaScalarName &cellName) const { nameFromDisk(designOf(this).cellName(), cellName); }
void oaDesign::getViewName(oaScalarName &viewName) const { nameFromDisk(designOf(this).viewName(), viewName); }

void oaDesign::getLibName(const oaNameSpace &ns, oaString &libName) const {
  nameFromDisk(designOf(this).libName(), ns, libName);
}
void oaDesign::getCellName(const oaNameSpace &ns, oaString &cellName) const {
  nameFromDisk(designOf(this).cellName(), ns, cellName);
}
void oaDesign::getViewName(const oaNameSpace &ns, oaString &viewName) const {
  nameFromDisk(designOf(this).viewName(), ns, viewName);
}

oaLib *oaDesign::getLib() const {
  if (isStdViaMaster()) {
    raiseDesign(oacCannotFindObjectForViaMaster,
                designOf(this).label() + ": lives in memory only and belongs to no library");
  }
  const Library *library = designOf(this).library();
  return library == nullptr ? nullptr : library->handle();
}

oaViewType *oaDesign::getViewType() const {
  const Row type = designOf(this).viewType();
  return type == kNoRow ? nullptr : ViewTypes::instance().object(type);
}

oaTech *oaDesign::getTech() const { return designOf(this).tech(); }

oaBlock *oaDesign::getTopBlock() const {
  DesignDatabase &design = designOf(this);
  return objectOf<oaBlock>(design.blocks, design.blockRow());
}

oaChar oaDesign::getMode() const { return designOf(this).mode(); }
oaUInt4 oaDesign::getRefCount() const { return designOf(this).refCount(); }
oaTime oaDesign::getCreateTime() const { return static_cast<oaTime>(designOf(this).databaseTable().createTime[0]); }
oaTime oaDesign::getLastSavedTime() const { return static_cast<oaTime>(designOf(this).databaseTable().savedTime[0]); }
oaBoolean oaDesign::isModified() const { return designOf(this).isModified(); }

oaCellType oaDesign::getCellType() const {
  const DesignDatabase &design = designOf(this);
  return checkedEnum<oaCellTypeEnum>(design.attributes, 0, design.attributes.cellType[0], oacCoreWellTapCellType + 1,
                                     "the cell type");
}

void oaDesign::setCellType(oaCellType cellType) {
  DesignDatabase &design = designOf(this);
  design.attributes.cellType.set(0, static_cast<std::uint8_t>(cellType));
  design.touch();
}

void oaDesign::enableTimeStamps(oaBoolean) { designOf(this); }

void oaDesign::openHier() { openHier(oacNullIndex); }

void oaDesign::openHier(oaUInt4 numLevels) {
  std::vector<PinnedDesign> level = {PinnedDesign(designOf(this))};
  std::unordered_set<const DesignDatabase *> seen = {&level.front().design()};
  for (oaUInt4 depth = 0; depth < numLevels && !level.empty(); ++depth) {
    std::vector<PinnedDesign> below;
    for (const PinnedDesign &design : level) {
      bindMasters(design.design());
      for (DesignDatabase *master : design.design().masters()) {
        if (seen.insert(master).second) {
          below.emplace_back(*master);
        }
      }
    }
    level.swap(below);
  }
}

oaBoolean oaDesign::hasReference(const oaDesign *design) const {
  const DesignDatabase &wanted = designOf(design);
  const std::vector<DesignDatabase *> masters = designOf(this).masters();
  return std::any_of(masters.begin(), masters.end(),
                     [&](const DesignDatabase *master) { return reachesThroughMasters(*master, wanted); });
}

oaBoolean oaDesign::hasRecursion() const { return hasReference(this); }

oaCollection<oaInstHeader, oaDesign> oaDesign::getUsedIn() const {
  static const UsedInKind kind;
  return CollectionAccess::make<oaCollection<oaInstHeader, oaDesign>>(kind, &liveTable(this), 0);
}

} // namespace OpenAccess_4
