#include "oa/oaInstHeader.h"

#include "designlife.h"
#include "instaccess.h"
#include "instheaders.h"
#include "references.h"
#include "supermaster.h"
#include "viaaccess.h"
#include "viareferences.h"

#include <iterator>
#include <unordered_set>
#include <vector>

namespace OpenAccess_4 {

namespace kit {

namespace {

// Opens the master that a header names: of a sub header, the sub master for its parameters.
oaDesign *openMaster(DesignDatabase &design, Row header) {
  const InstHeaderTable &headers = design.instHeaders;
  const StringTable &strings = design.strings();
  oaScalarName lib, cell, view;
  getStoredName(strings, headers.lib[header], lib);
  getStoredName(strings, headers.cell[header], cell);
  getStoredName(strings, headers.view[header], view);
  oaDesign *master = oaDesign::open(lib, cell, view, 'r');
  if (!master->isSuperMaster()) {
    becomePlainHeader(design, header);
    return master;
  }
  if (!isSubInstHeader(design, header)) {
    return master;
  }
  const KeptDesign kept(designOf(master), KeptDesign::Reference::takenOver);
  oaParamArray params;
  getInstHeaderParams(design, header, params);
  return oaDesign::open(lib, cell, view, params);
}

} // namespace

oaDesign *bindMaster(DesignDatabase &design, Row header) {
  const auto bound = design.boundMasters.find(header);
  if (bound != design.boundMasters.end()) {
    return bound->second->design();
  }
  const PinnedDesign pinned(design);
  oaDesign *master = nullptr;
  try {
    master = openMaster(design, header);
  } catch (const oaException &) {
    // A master that is missing or damaged is no error of the design that places it.
    return nullptr;
  }
  DesignDatabase &masterDesign = designOf(master);
  // The evaluator may have closed the design, taken the instances away, or bound the header itself.
  // It may also have gone because the master is ordinary now; the plain header is to be bound then.
  const bool isWanted =
      !design.isGone() && design.instHeaders.isAlive(header) && !reachesThroughMasters(masterDesign, design);
  if (!isWanted || !design.boundMasters.emplace(header, &masterDesign).second) {
    DesignDatabase::release(masterDesign);
    return isWanted ? design.boundMasters[header]->design() : nullptr;
  }
  if (isSubInstHeader(design, header) && masterDesign.blockRow() != kNoRow) {
    design.instHeaders.masterBox.set(header, masterBoxOf(design, header));
  }
  if (isSuperMaster(masterDesign) && !isSuperInstHeader(design, header)) {
    becomeSuperHeader(design, header);
  }
  return master;
}

namespace {

const DesignDatabase *boundMaster(const DesignDatabase &design, Row header) {
  const auto bound = design.boundMasters.find(header);
  return bound == design.boundMasters.end() ? nullptr : bound->second;
}

// A header that knows no box is bound for its sake. One that cannot be is not tried again before something has changed.
void bindForBox(DesignDatabase &design, Row header) {
  const auto tried = design.connectivity.triedToBindAt.find(header);
  if (tried == design.connectivity.triedToBindAt.end() || tried->second != DesignDatabase::boxGeneration()) {
    (void)bindMaster(design, header);
    design.connectivity.triedToBindAt[header] = DesignDatabase::boxGeneration();
  }
}

} // namespace

oaBox masterBoxOf(DesignDatabase &design, Row header) {
  const PinnedDesign pinned(design);
  if (boundMaster(design, header) == nullptr && design.instHeaders.masterBox[header].isInverted()) {
    bindForBox(design, header);
  }
  const DesignDatabase *master = boundMaster(design, header);
  if (master == nullptr || master->blockRow() == kNoRow) { // a sub master without its evaluator had a block once
    return design.instHeaders.masterBox[header];
  }
  return design.boundMasters[header]->blockBox();
}

bool reachesThroughMasters(const DesignDatabase &design, const DesignDatabase &wanted) {
  // Each design once, without recursion: hierarchies may be deep.
  std::vector<const DesignDatabase *> found = {&design};
  std::unordered_set<const DesignDatabase *> seen = {&design};
  for (std::size_t next = 0; next < found.size(); ++next) {
    if (found[next] == &wanted) {
      return true;
    }
    std::vector<DesignDatabase *> masters = found[next]->masters();
    if (found[next]->subState != nullptr && found[next]->subState->super != nullptr) {
      masters.push_back(found[next]->subState->super);
    }
    for (const DesignDatabase *master : masters) {
      if (seen.insert(master).second) {
        found.push_back(master);
      }
    }
  }
  return false;
}

void masterIsGoing(const DesignDatabase &master) {
  for (const std::unique_ptr<DesignDatabase> &design : DesignDatabase::registry().all()) {
    for (auto entry = design->boundMasters.begin(); entry != design->boundMasters.end();) {
      entry = entry->second == &master ? design->boundMasters.erase(entry) : std::next(entry);
    }
    for (auto entry = design->boundVias.begin(); entry != design->boundVias.end();) {
      entry = entry->second.master == &master ? design->boundVias.erase(entry) : std::next(entry);
    }
  }
}

void storeMasterBoxes(DesignDatabase &design) {
  for (const auto &entry : design.boundMasters) {
    if (entry.second->blockRow() != kNoRow) {
      design.instHeaders.masterBox.set(entry.first, masterBoxOf(design, entry.first));
    }
  }
  storeViaMasters(design);
}

} // namespace kit

using namespace kit;

namespace {

const StringTable &stringsOf(const DesignRow &at) { return at.design.strings(); }

class InstsOfHeader : public MembersKind {
public:
  InstsOfHeader() : MembersKind(instsOfHeader, kInstTable) {}

protected:
  bool accepts(const CollectionQuestion &question, Row row) const override {
    return passesInstFilter(designOf(*question.table), row, question.flags);
  }
};

} // namespace

// Headers of vias are told apart by their table.
namespace {

bool isOfVias(const oaRefHeader *header) { return liveTable(header).id() == kViaHeaderTable; }

DesignRow refHeaderRow(const oaRefHeader *header) {
  return isOfVias(header) ? viaHeaderRow(header) : designRow(header, kInstHeaderTable);
}

} // namespace

oaDesign *oaRefHeader::getMaster() const {
  const DesignRow at = refHeaderRow(this);
  return isOfVias(this) ? bindViaMaster(at.design, at.row) : bindMaster(at.design, at.row);
}

void oaRefHeader::getMasterBBox(oaBox &bBox) const {
  const DesignRow at = refHeaderRow(this);
  bBox = isOfVias(this) ? viaMasterBox(at.design, at.row) : masterBoxOf(at.design, at.row);
}

void oaRefHeader::getBBox(oaBox &bBox) const {
  const DesignRow at = refHeaderRow(this);
  Table &refs = isOfVias(this) ? static_cast<Table &>(at.design.vias) : at.design.insts;
  bBox.init();
  for (const Row ref : (isOfVias(this) ? viasOfHeader(at.design) : instsOfHeader(at.design)).rows(at.row)) {
    const oaBox box = refBox(at.design, refs, ref);
    if (!box.isInverted()) {
      bBox.merge(box);
    }
  }
}

oaRefHeader *oaRefHeader::getSuperHeader() const {
  const DesignRow at = refHeaderRow(this);
  if (!isSubHeader()) {
    return nullptr;
  }
  if (isOfVias(this)) {
    const ViaHeaderTable &headers = at.design.viaHeaders;
    return objectAt<oaRefHeader>(at.design.viaHeaders, checkedRow(headers, headers.super[at.row], "a via header"));
  }
  const InstHeaderTable &headers = at.design.instHeaders;
  return objectAt<oaRefHeader>(at.design.instHeaders, checkedRow(headers, headers.super[at.row], "an instance header"));
}

oaBoolean oaRefHeader::isBound() const {
  const DesignRow at = refHeaderRow(this);
  return isOfVias(this) ? isViaBound(at.design, at.row) : at.design.boundMasters.count(at.row) != 0;
}

oaBoolean oaRefHeader::isSuperHeader() const {
  const DesignRow at = refHeaderRow(this);
  return isOfVias(this) ? kit::isSuperHeader(at.design, at.row) : isSuperInstHeader(at.design, at.row);
}

oaBoolean oaRefHeader::isSubHeader() const {
  const DesignRow at = refHeaderRow(this);
  return isOfVias(this) ? kit::isSubHeader(at.design, at.row) : isSubInstHeader(at.design, at.row);
}

void oaInstHeader::getLibName(oaScalarName &libName) const {
  const DesignRow at = instHeaderRow(this);
  getStoredName(stringsOf(at), at.design.instHeaders.lib[at.row], libName);
}
void oaInstHeader::getCellName(oaScalarName &cellName) const {
  const DesignRow at = instHeaderRow(this);
  getStoredName(stringsOf(at), at.design.instHeaders.cell[at.row], cellName);
}
void oaInstHeader::getViewName(oaScalarName &viewName) const {
  const DesignRow at = instHeaderRow(this);
  getStoredName(stringsOf(at), at.design.instHeaders.view[at.row], viewName);
}
void oaInstHeader::getLibName(const oaNameSpace &ns, oaString &libName) const {
  const DesignRow at = instHeaderRow(this);
  getStoredName(stringsOf(at), at.design.instHeaders.lib[at.row], ns, libName);
}
void oaInstHeader::getCellName(const oaNameSpace &ns, oaString &cellName) const {
  const DesignRow at = instHeaderRow(this);
  getStoredName(stringsOf(at), at.design.instHeaders.cell[at.row], ns, cellName);
}
void oaInstHeader::getViewName(const oaNameSpace &ns, oaString &viewName) const {
  const DesignRow at = instHeaderRow(this);
  getStoredName(stringsOf(at), at.design.instHeaders.view[at.row], ns, viewName);
}

void oaInstHeader::getParams(oaParamArray &params) const {
  const DesignRow at = instHeaderRow(this);
  getInstHeaderParams(at.design, at.row, params);
}

void oaInstHeader::getAllParams(oaParamArray &params) const {
  const DesignRow at = instHeaderRow(this);
  const oaDesign *master = bindMaster(at.design, at.row);
  if (master != nullptr && (master->isSuperMaster() || master->isSubMaster())) {
    master->getParams(params);
  } else {
    getInstHeaderParams(at.design, at.row, params);
  }
}

void oaInstHeader::setMasterBBox(const oaBox &bBox) {
  const DesignRow at = instHeaderRow(this);
  at.design.instHeaders.masterBox.set(at.row, bBox);
  instsChanged(at.design);
}

oaCollection<oaInst, oaInstHeader> oaInstHeader::getInsts(oaUInt4 filterFlags) const {
  static const InstsOfHeader kind;
  const DesignRow at = instHeaderRow(this);
  return CollectionAccess::make<oaCollection<oaInst, oaInstHeader>>(kind, &at.design.instHeaders, at.row, filterFlags);
}

oaCollection<oaInstHeader, oaInstHeader> oaInstHeader::getSubHeaders() const {
  static const MembersKind kind(subHeadersOfInstHeader, kInstHeaderTable);
  const DesignRow at = instHeaderRow(this);
  return CollectionAccess::make<oaCollection<oaInstHeader, oaInstHeader>>(kind, &at.design.instHeaders, at.row);
}

oaInstHeader *oaInstHeader::find(const oaBlock *block, const oaDesign *master) {
  oaScalarName lib, cell, view;
  master->getLibName(lib);
  master->getCellName(cell);
  master->getViewName(view);
  return find(block, lib, cell, view);
}

oaInstHeader *oaInstHeader::find(const oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName) {
  DesignDatabase &design = designOfBlock(block);
  return objectAt<oaInstHeader>(
      design.instHeaders, findInstHeader(design, nativeText(libName), nativeText(cellName), nativeText(viewName)));
}

oaCollection<oaInstHeader, oaBlock> oaBlock::getInstHeaders() const {
  return wholeTable<oaCollection<oaInstHeader, oaBlock>>(designOfBlock(this).instHeaders);
}

} // namespace OpenAccess_4
