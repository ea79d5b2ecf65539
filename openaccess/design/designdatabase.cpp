#include "designdatabase.h"

#include "connectivity.h"
#include "designaccess.h"
#include "designlife.h"
#include "evaluationlimits.h"
#include "figureindexes.h"
#include "library.h"
#include "oa/oaDesign.h"
#include "oa/oaException.h"
#include "oa/oaTech.h"
#include "references.h"
#include "stdviamaster.h"
#include "supermaster.h"
#include "techdatabase.h"
#include "textdisplay.h"
#include "viareferences.h"
#include "viewtypes.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

std::uint64_t DesignDatabase::boxGeneration_ = 1;
std::uint64_t DesignDatabase::techChanges_ = 0;

namespace {

std::uint64_t numbersKey(oaLayerNum layer, oaPurposeNum purpose) { return (std::uint64_t(layer) << 32) | purpose; }

} // namespace

DesignDatabase::DesignDatabase(DatabasePlace place, std::string cell, std::string view)
    : OpenDatabase(DatabaseKind::design, oacDesignType, errorIds(), std::move(place)), cell_(std::move(cell)),
      view_(std::move(view)) {
  static std::uint32_t lastSerialNumber = 0;
  serialNumber_ = ++lastSerialNumber;
  contentsChanged();
}

DesignDatabase::~DesignDatabase() {
  ++boxGeneration_;
  letGo();
}

void DesignDatabase::letGo() {
  forgetMasters();
  subMasterIsGoing(*this);
  oaTech *tech = heldTech_;
  heldTech_ = nullptr;
  if (tech != nullptr && tech->isValid()) {
    tech->close();
  }
}

int ForeignCode::running_ = 0;

namespace {

std::vector<std::unique_ptr<DesignDatabase>> &goneDesigns() {
  static auto &designs = *new std::vector<std::unique_ptr<DesignDatabase>>;
  return designs;
}

} // namespace

void DesignDatabase::forgetGone() {
  auto &gone = goneDesigns();
  if (gone.empty() || ForeignCode::isRunning()) {
    return;
  }
  gone.erase(std::remove_if(gone.begin(), gone.end(), [](const auto &design) { return design->pins_ == 0; }),
             gone.end());
}

const OpenErrorIds &DesignDatabase::errorIds() {
  static const OpenErrorIds ids = {raiseDesign,
                                   oacOpenUndefinedModeDesign,
                                   oacDesignPrimaryFileDoesNotExist,
                                   oacSaveReadOnlyDesign,
                                   oacSaveScratchModeDesign,
                                   oacCannotLockDatabase,
                                   oacDesignCannotGetWriteAccess,
                                   oacDesignHasReadNeedWriteAccess,
                                   oacCannotFindLibrary,
                                   oacDesignNoLongerExists};
  return ids;
}

OpenRegistry<DesignDatabase> &DesignDatabase::registry() {
  static OpenRegistry<DesignDatabase> *designs =
      new OpenRegistry<DesignDatabase>; // open designs are dropped at exit, unsaved
  return *designs;
}

oaDesign *DesignDatabase::design() { return static_cast<oaDesign *>(self()); }

void DesignDatabase::purge(DesignDatabase &design) {
  if (design.isGone_) {
    return;
  }
  design.isGone_ = true;
  masterIsGoing(design);
  superMasterIsGoing(design);
  design.letGo();
  // Off the list last: masters that go meanwhile still have to find it there.
  std::unique_ptr<DesignDatabase> going = registry().take(design);
  if (going != nullptr && (design.pins_ != 0 || ForeignCode::isRunning())) {
    design.killHandles();
    goneDesigns().push_back(std::move(going));
  }
}

void DesignDatabase::release(DesignDatabase &design) {
  if (design.releaseReference()) {
    purge(design);
  }
}

void DesignDatabase::forgetMasters() {
  // One by one, and off the list first: a master that goes may take others along, and tells its users so.
  while (!boundMasters.empty()) {
    DesignDatabase &master = *boundMasters.begin()->second;
    boundMasters.erase(boundMasters.begin());
    release(master);
  }
  while (!boundVias.empty()) {
    DesignDatabase &master = *boundVias.begin()->second.master;
    boundVias.erase(boundVias.begin());
    release(master);
  }
}

std::vector<DesignDatabase *> DesignDatabase::masters() const {
  std::vector<DesignDatabase *> masters;
  masters.reserve(boundMasters.size() + boundVias.size());
  for (const auto &entry : boundMasters) {
    masters.push_back(entry.second);
  }
  for (const auto &entry : boundVias) {
    masters.push_back(entry.second.master);
  }
  return masters;
}

oaTech *DesignDatabase::tech() {
  if (heldTech_ != nullptr && heldTech_->isValid()) {
    return heldTech_;
  }
  heldTech_ = nullptr;
  const Library *open = library();
  if (open == nullptr) {
    return nullptr;
  }
  try {
    if (oaTech *found = oaTech::find(open->handle())) {
      return found;
    }
    heldTech_ = oaTech::open(open->handle(), 'r');
  } catch (const oaException &) {
    // Documented: a design whose technology cannot be opened has none.
  }
  return heldTech_;
}

Row DesignDatabase::viewType() {
  // The file's name first: a client may have changed the type of the cell view.
  const Row type = ViewTypes::instance().typeOfPrimaryFile(place().fileName);
  if (type != kNoRow || attributes.rowCount() == 0) {
    return type;
  }
  const std::string name = strings().text(attributes.viewType[0]);
  return name.empty() ? kNoRow : ViewTypes::instance().findOrAdd(name);
}

void DesignDatabase::initialiseNew() {
  const Row row = attributes.addRow();
  attributes.kind.set(row, oacDesignType);
  const Row type = ViewTypes::instance().typeOfPrimaryFile(place().fileName);
  if (type != kNoRow) {
    attributes.viewType.set(row, strings().intern(ViewTypes::instance().nameOf(type)));
  }
  if (stdViaMaster != nullptr) {
    drawStdVia(*this, *stdViaMaster);
  }
}

void DesignDatabase::contentsChanged() {
  for (NameIndex *index : {&netsByName, &termsByName, &instsByName}) {
    index->clear();
  }
  for (OwnerIndex *index : {&termsOfNet, &pinsOfTerm, &instsOfHeader, &instTermsOfInst, &instTermsOfBitNet,
                            &instTermsOfWideNet, &shapesOfLpp, &shapesOfNet, &shapesOfPin, &instsOfPin, &viasOfNet,
                            &viasOfPin, &displaysOfObject, &equivalentNets, &instTermsOfInstTerm}) {
    index->clear();
  }
  for (BitsIndexes *indexes : {&netBitsIndexes, &termBitsIndexes, &instBitsIndexes}) {
    indexes->clear();
  }
  connectivity.clear();
  viaState.clear();
  nextNetNumber = nextInstNumber = nextPinNumber = 0;
  lastLpp_ = kNoRow;
  lppNumbers_.clear();
  gatheredLpps_ = 0;
  lppByNumbers_.clear();
  layerHeaderByNumber_.clear();
  isLppByNumbersBuilt_ = false;
  shapeBox_.init();
  isShapeBoxKnown_ = true;
  ++boxGeneration_;
}

void DesignDatabase::checkLoaded() {
  if (attributes.rowCount() != 1) {
    raiseBase(oacCorruptedDatabase, label() + ": damaged: table " + attributes.name() + " has " +
                                        std::to_string(attributes.rowCount()) + " rows, expected 1");
  }
  const Row block = blocks.nextAlive(kNoRow);
  if (blocks.rowCount() > 1 || (block != kNoRow && blocks.kindOf(block) != oacBlockType)) {
    raiseBase(oacCorruptedDatabase, label() + ": damaged: table " + blocks.name() + " has " +
                                        std::to_string(blocks.rowCount()) + " rows, expected one block or none");
  }
  shapeBox_.init();
  if (block != kNoRow) {
    shapeBox_ = blocks.shapeBox[block];
  }
}

void DesignDatabase::beforeDrop() {
  forgetMasters();
  superMasterIsGoing(*this);
}

void DesignDatabase::beforeSave() {
  dropOrphanedDisplays(*this);
  storePcellData(*this);
  const Row block = blockRow();
  if (block != kNoRow) {
    blocks.shapeBox.set(block, shapeBox());
    storeMasterBoxes(*this);
  }
}

void DesignDatabase::rowIsGoing(Table &table, Row row) {
  if (textDisplays.rowCount() != 0) {
    for (const Row display : displaysOf(*this, table, row)) {
      destroyRow(shapes, display);
    }
  }
  if (&table == &shapes) {
    if (!ShapeTable::isDisplayKind(shapes.kindOf(row))) {
      shapeBoxLeaves(shapes.box[row]);
    }
    leaveLpp(shapes.lpp[row]);
    if (shapes.payload[row] != kNoRow) {
      noteAbandonedRows();
    }
    return;
  }
  connectivityRowIsGoing(*this, table, row);
}

namespace {

// A hierarchy in files may be deeper than the stack: what lies below so many levels is left out.
class BoxDepth {
public:
  BoxDepth() { ++depth_; }
  ~BoxDepth() { --depth_; }
  BoxDepth(const BoxDepth &) = delete;
  BoxDepth &operator=(const BoxDepth &) = delete;
  bool isTooDeep() const { return depth_ > kMostLevels; }

private:
  static constexpr int kMostLevels = 2000;
  static int depth_;
};
int BoxDepth::depth_ = 0;

} // namespace

const oaBox &DesignDatabase::blockBox() {
  // Masters of vias anywhere below follow their definitions.
  if (techChanges_ != TechDatabase::changes()) {
    techChanges_ = TechDatabase::changes();
    ++boxGeneration_;
  }
  const bool areViasCurrent = viaHeaders.rowCount() == 0 || areViaMastersCurrent(*this);
  if ((blockBoxGeneration_ == boxGeneration_ && areViasCurrent) || isFindingBlockBox_) {
    return blockBox_;
  }
  const PinnedDesign pinned(*this);
  const BoxDepth depth;
  const BoxUnderWay underWay(*this);
  isFindingBlockBox_ = true;
  try {
    dropOrphanedDisplays(*this);
    blockBox_ = shapeBox();
    mergeDisplayBoxes(*this, blockBox_);
    if (!depth.isTooDeep()) {
      mergeRefBoxes(*this, blockBox_);
    }
  } catch (...) {
    isFindingBlockBox_ = false;
    throw;
  }
  isFindingBlockBox_ = false;
  // A display's text follows its object, whose changes are not counted.
  blockBoxGeneration_ = textDisplays.rowCount() == 0 ? boxGeneration_ : 0;
  return blockBox_;
}

const oaBox &DesignDatabase::shapeBox() {
  if (!isShapeBoxKnown_) {
    shapeBox_.init();
    for (Row row = shapes.nextAlive(kNoRow); row != kNoRow; row = shapes.nextAlive(row)) {
      if (!ShapeTable::isDisplayKind(shapes.kindOf(row))) {
        shapeBox_.merge(shapes.box[row]);
      }
    }
    isShapeBoxKnown_ = true;
  }
  return shapeBox_;
}

void DesignDatabase::buildLppNumbers() {
  if (isLppByNumbersBuilt_) {
    return;
  }
  for (Row row = layerHeaders.nextAlive(kNoRow); row != kNoRow; row = layerHeaders.nextAlive(row)) {
    layerHeaderByNumber_.emplace(layerHeaders.layer[row], LayerPairs{row, 0});
  }
  for (Row row = lpps.nextAlive(kNoRow); row != kNoRow; row = lpps.nextAlive(row)) {
    lppByNumbers_.emplace(numbersKey(lpps.layer[row], lpps.purpose[row]), row);
    const auto layer = layerHeaderByNumber_.find(lpps.layer[row]);
    if (layer == layerHeaderByNumber_.end()) {
      lppByNumbers_.clear();
      layerHeaderByNumber_.clear();
      raiseCorrupted(lpps, row, "layer " + std::to_string(lpps.layer[row]) + " has no header");
    }
    ++layer->second.pairs;
  }
  isLppByNumbersBuilt_ = true;
}

void DesignDatabase::gatherNumbers() {
  const Row last = std::min({lpps.rowCount(), lpps.kind.size(), Row(0xfffe)});
  for (; gatheredLpps_ < last; ++gatheredLpps_) {
    if (lpps.isAlive(gatheredLpps_)) {
      numbersOf(gatheredLpps_);
    }
  }
  if (lppNumbers_.size() < gatheredLpps_) {
    lppNumbers_.resize(gatheredLpps_);
  }
}

const DesignDatabase::LppNumbers &DesignDatabase::numbersOf(Row lpp) {
  checkedRow(lpps, lpp, "a shape");
  if (lpp >= lppNumbers_.size()) {
    lppNumbers_.resize(lpps.rowCount());
  }
  lppNumbers_[lpp] = {lpps.layer[lpp], lpps.purpose[lpp], true};
  return lppNumbers_[lpp];
}

Row DesignDatabase::findLpp(oaLayerNum layer, oaPurposeNum purpose) {
  buildLppNumbers();
  const auto found = lppByNumbers_.find(numbersKey(layer, purpose));
  return found == lppByNumbers_.end() ? kNoRow : found->second;
}

Row DesignDatabase::findLayerHeader(oaLayerNum layer) {
  buildLppNumbers();
  const auto found = layerHeaderByNumber_.find(layer);
  return found == layerHeaderByNumber_.end() ? kNoRow : found->second.header;
}

Row DesignDatabase::findOrAddLpp(oaLayerNum layer, oaPurposeNum purpose) {
  if (purpose == oavPurposeNumberAny || purpose == oavPurposeNumberNo) {
    raiseDesign(oacInvalidPurposeNumber, label() + ": no shape can be on the purpose \"" +
                                             (purpose == oavPurposeNumberAny ? "oaAny" : "oaNo") + "\" (layer " +
                                             std::to_string(layer) + ")");
  }
  Row lpp = findLpp(layer, purpose);
  if (lpp == kNoRow) {
    lpp = lpps.addRow();
    lpps.kind.set(lpp, oacLPPHeaderType);
    lpps.layer.set(lpp, layer);
    lpps.purpose.set(lpp, purpose);
    lppByNumbers_.emplace(numbersKey(layer, purpose), lpp);
    if (findLayerHeader(layer) == kNoRow) {
      const Row header = layerHeaders.addRow();
      layerHeaders.kind.set(header, oacLayerHeaderType);
      layerHeaders.layer.set(header, layer);
      layerHeaderByNumber_.emplace(layer, LayerPairs{header, 0});
    }
    ++layerHeaderByNumber_[layer].pairs;
  }
  lastLpp_ = lpp;
  lastLayer_ = layer;
  lastPurpose_ = purpose;
  return lpp;
}

void DesignDatabase::leaveLpp(Row lpp) {
  checkedRow(lpps, lpp, "a shape");
  const std::uint32_t left = lpps.shapes[lpp];
  if (left > 1) {
    lpps.shapes.set(lpp, left - 1);
    return;
  }
  buildLppNumbers();
  const oaLayerNum layer = lpps.layer[lpp];
  lppByNumbers_.erase(numbersKey(layer, lpps.purpose[lpp]));
  if (lastLpp_ == lpp) {
    lastLpp_ = kNoRow;
  }
  destroyRow(lpps, lpp);
  const auto entry = layerHeaderByNumber_.find(layer);
  if (entry != layerHeaderByNumber_.end() && --entry->second.pairs == 0) {
    destroyRow(layerHeaders, entry->second.header);
    layerHeaderByNumber_.erase(entry);
  }
}

} // namespace kit
} // namespace OpenAccess_4
