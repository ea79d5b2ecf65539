#include "oa/oaVia.h"

#include "figureindexes.h"
#include "oa/oaException.h"
#include "references.h"
#include "supermaster.h"
#include "viaaccess.h"
#include "viareferences.h"
#include "viavalues.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace OpenAccess_4 {

namespace kit {

namespace {

bool isViaKind(std::uint8_t kind) { return kind == oacStdViaType || kind == oacCustomViaType; }

bool fits(std::int64_t value) {
  return value >= std::numeric_limits<oaCoord>::min() && value <= std::numeric_limits<oaCoord>::max();
}

CustomViaSource storedSource(const DesignDatabase &design, Row header) {
  const ViaHeaderTable &headers = design.viaHeaders;
  const StringTable &strings = design.strings();
  CustomViaSource source{strings.text(headers.name[header]), strings.text(headers.lib[header]),
                         strings.text(headers.cell[header]), strings.text(headers.view[header]), oaParamArray()};
  getCustomViaParams(design, header, source.params);
  return source;
}

Row addVia(DesignDatabase &design, oaTypeEnum kind, Row header, const oaTransform &placement) {
  ViaTable &vias = design.vias;
  const Row row = vias.addRow();
  vias.kind.set(row, static_cast<std::uint8_t>(kind));
  vias.origin.set(row, placement.offset());
  vias.orient.set(row, static_cast<std::uint8_t>(placement.orient()));
  joinViaHeader(design, row, header);
  viasChanged(design);
  return row;
}

} // namespace

DesignRow viaRow(const oaVia *via, std::uint8_t kind) {
  const DesignRow at = designRow(via, kViaTable);
  const std::uint8_t found = at.design.vias.kind[at.row];
  if (OA_UNLIKELY(!isViaKind(found) || (kind != 0 && found != kind))) {
    raiseCorrupted(at.design.vias, at.row, "kind " + std::to_string(found) + " is not what is expected here");
  }
  return at;
}

oaRefHeader *headerOfViaHandle(const oaObject *via) {
  ViaHeaderTable &headers = designOf(via).viaHeaders;
  const std::uint16_t aside = asideOf(via);
  if (OA_LIKELY(aside != 0)) { // noted by the walk that made the handle
    return static_cast<oaRefHeader *>(headers.handle(aside - 1U));
  }
  const DesignRow at = viaRow(static_cast<const oaVia *>(via));
  return static_cast<oaRefHeader *>(headers.handle(headerOfVia(at.design, at.row)));
}

oaBox viaBox(DesignDatabase &design, Row via) {
  return placedBox(design.vias, via, viaMasterBox(design, headerOfVia(design, via)));
}

void moveVia(DesignDatabase &design, Row via, const oaTransform &xform) {
  const oaTransform old(design.vias.origin[via], orientOfRef(design.vias, via));
  const oaPoint turned(old.offset(), oaTransform(0, 0, xform.orient()));
  const std::int64_t x = std::int64_t(turned.x()) + xform.xOffset();
  const std::int64_t y = std::int64_t(turned.y()) + xform.yOffset();
  if (!fits(x) || !fits(y)) {
    refuse(design, oacInvalidBBoxAfterTransform, "a via would leave the range of coordinates");
  }
  design.vias.origin.set(via, oaPoint(static_cast<oaCoord>(x), static_cast<oaCoord>(y)));
  design.vias.orient.set(via, static_cast<std::uint8_t>(old.orient().concat(xform.orient())));
  viasChanged(design);
}

oaFig *copyVia(DesignDatabase &design, Row via, const oaTransform &xform, DesignDatabase &target) {
  const Row from = headerOfVia(design, via);
  const StringTable &strings = design.strings();
  const ViaHeaderTable &headers = design.viaHeaders;
  const std::string name = strings.text(headers.name[from]);
  const auto kind = static_cast<oaTypeEnum>(design.vias.kind[via]);
  const Row header = kind == oacStdViaType ? stdViaHeaderFor(target, name, ownParamOf(design, from))
                                           : customViaHeaderFor(target, storedSource(design, from));
  const Row copy = addVia(target, kind, header, oaTransform(design.vias.origin[via], orientOfRef(design.vias, via)));
  target.vias.purpose.set(copy, design.vias.purpose[via]);
  moveVia(target, copy, xform);
  return objectAt<oaFig>(target.vias, copy);
}

void viaIsGoing(DesignDatabase &design, Row via) {
  leaveViaHeader(design, via);
  viasChanged(design);
}

void mergeViaBoxes(DesignDatabase &design, oaBox &box) {
  if (design.vias.rowCount() == 0) {
    return;
  }
  ViaState &state = design.viaState;
  const ViaHeaderTable &headers = design.viaHeaders;
  std::vector<oaBox> masterBoxes(headers.rowCount());
  for (Row header = headers.nextAlive(kNoRow); header != kNoRow; header = headers.nextAlive(header)) {
    if (!isSuperHeader(design, header)) {
      const oaBox masterBox = viaMasterBox(design, header);
      masterBoxes.resize(std::max<std::size_t>(masterBoxes.size(), header + 1)); // binding may add headers
      masterBoxes[header] = masterBox;
    }
  }
  if (!state.isBoxKnown || state.masterBoxes != masterBoxes) {
    state.box.init();
    for (Row via = design.vias.nextAlive(kNoRow); via != kNoRow; via = design.vias.nextAlive(via)) {
      const oaBox placed = placedBox(design.vias, via, masterBoxes[headerOfVia(design, via)]);
      if (!placed.isInverted()) {
        state.box.merge(placed);
      }
    }
    state.masterBoxes = std::move(masterBoxes);
    state.isBoxKnown = true;
  }
  if (!state.box.isInverted()) {
    box.merge(state.box);
  }
}

} // namespace kit

using namespace kit;

namespace {

// Steps over the vias of a block, noting each one's header, which a reader asks for next.
class ViasOfBlock final : public WholeTableKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    ViaTable &vias = static_cast<ViaTable &>(*question.table);
    const Row row = position + 1; // kNoRow + 1 is 0
    const std::uint8_t *kind = vias.kind.ready(row);
    const Row *header = vias.header.ready(row);
    if (OA_LIKELY(kind != nullptr && header != nullptr && *header < 0xfffe && isViaKind(*kind) &&
                  fitsHeader(vias, *kind, *header))) {
      position = row;
      return vias.handle(row, *kind, static_cast<std::uint16_t>(*header + 1));
    }
    oaObject *via = WholeTableKind::next(question, position, hint);
    if (via != nullptr) {
      viaRow(static_cast<const oaVia *>(via));
    }
    return via;
  }

private:
  // What headerOfVia() checks.
  static bool fitsHeader(const ViaTable &vias, std::uint8_t kind, Row header) {
    const DesignDatabase &design = designOf(vias);
    const ViaHeaderTable &headers = design.viaHeaders;
    const std::uint8_t expected = kind == oacStdViaType ? oacStdViaHeaderType : oacCustomViaHeaderType;
    return header < headers.rowCount() && headers.kind[header] == expected && !isSuperHeader(design, header);
  }
};

std::string nameOf(const oaViaDef *viaDef) {
  oaString name;
  viaDef->getName(name);
  return textOf(name);
}

// The name of a definition that vias of the design can be made of: it belongs to the design's technology, and no
// definition of the other kind had that name when others were made.
std::string usableName(DesignDatabase &design, const oaViaDef *viaDef, oaTypeEnum otherHeaders, oaUInt4 otherId) {
  const std::string name = nameOf(viaDef);
  const oaTech *tech = design.tech();
  const bool isKnown =
      tech != nullptr && (viaDef->getTech() == tech || oaViaDef::find(tech, oaString(name.c_str())) == viaDef);
  if (!isKnown) {
    refuse(design, oacViaDefNotInTechAssociatedWithDesign,
           "via definition " + name + " does not belong to the technology of the design");
  }
  if (findViaHeader(design, otherHeaders, name) != kNoRow) {
    refuse(design, otherId, "there are vias of another kind under the name of via definition " + name);
  }
  return name;
}

// The definition with parameters that its master knows; `params` may be NULL.
CustomViaSource customSource(const DesignDatabase &design, const oaCustomViaDef *viaDef, const oaParamArray *params) {
  oaScalarName lib, cell, view;
  viaDef->getLibName(lib);
  viaDef->getCellName(cell);
  viaDef->getViewName(view);
  CustomViaSource source{nameOf(viaDef), nativeText(lib), nativeText(cell), nativeText(view), oaParamArray()};
  if (params != nullptr && params->getNumElements() != 0) {
    source.params = fittingParams(lib, cell, view, *params, design.label() + ": a via of definition " + source.name,
                                  oacParamsSuppliedForNonPCellViaMaster);
  }
  return source;
}

void changeHeader(const DesignRow &at, oaVia *via, Row header) {
  if (header == at.design.vias.header[at.row]) {
    return;
  }
  leaveViaHeader(at.design, at.row);
  joinViaHeader(at.design, at.row, header);
  Table::dropAside(via);
  at.design.noteAbandonedRows();
  viasChanged(at.design);
}

} // namespace

oaViaHeader *oaVia::getHeader() const { return static_cast<oaViaHeader *>(oaRef::getHeader()); }
oaViaDef *oaVia::getViaDef() const { return getHeader()->getViaDef(); }
void oaVia::getViaDefName(oaString &name) const { getHeader()->getViaDefName(name); }

oaPurposeNum oaVia::getPurposeNum() const {
  const DesignRow at = viaRow(this);
  return at.design.vias.purpose[at.row];
}

void oaVia::setPurposeNum(oaPurposeNum purposeNum) {
  const DesignRow at = viaRow(this);
  if (purposeNum == oavPurposeNumberAny || purposeNum == oavPurposeNumberNo) {
    refuse(at.design, oacInvalidPurposeNumber,
           "no via can be on purpose " + std::to_string(purposeNum) + ", which stands for any or none");
  }
  at.design.vias.purpose.set(at.row, purposeNum);
  at.design.touch();
}

oaStdViaHeader *oaStdVia::getHeader() const { return static_cast<oaStdViaHeader *>(oaRef::getHeader()); }

void oaStdVia::getViaParams(oaViaParam &params) const {
  const DesignRow at = viaRow(this, oacStdViaType);
  getEffectiveParams(at.design, headerOfVia(at.design, at.row), params);
}

void oaStdVia::setViaParams(const oaViaParam &params) {
  const DesignRow at = viaRow(this, oacStdViaType);
  const Row old = headerOfVia(at.design, at.row);
  const auto *viaDef = static_cast<const oaStdViaDef *>(viaDefOf(at.design, old));
  oaViaParam defaults;
  if (viaDef != nullptr) {
    viaDef->getParams(defaults);
  }
  const std::string name = at.design.strings().text(at.design.viaHeaders.name[old]);
  // The new header first: it may be the old one, which must not go.
  const Row header = stdViaHeaderFor(at.design, name, ownViaParam(params, viaDef == nullptr ? nullptr : &defaults));
  changeHeader(at, this, header);
}

oaStdVia *oaStdVia::create(oaBlock *block, const oaStdViaDef *viaDef, const oaTransform &xform,
                           const oaViaParam *params) {
  DesignDatabase &design = designOfBlock(block);
  const std::string name = usableName(design, viaDef, oacCustomViaHeaderType, oacStdViaDefSameNameAsCustomViaDef);
  oaViaParam own;
  if (params != nullptr) {
    oaViaParam defaults;
    viaDef->getParams(defaults);
    own = ownViaParam(*params, &defaults);
  }
  return objectAt<oaStdVia>(design.vias, addVia(design, oacStdViaType, stdViaHeaderFor(design, name, own), xform));
}

oaCustomViaHeader *oaCustomVia::getHeader() const { return static_cast<oaCustomViaHeader *>(oaRef::getHeader()); }
void oaCustomVia::getLibName(oaScalarName &libName) const { getHeader()->getLibName(libName); }
void oaCustomVia::getCellName(oaScalarName &cellName) const { getHeader()->getCellName(cellName); }
void oaCustomVia::getViewName(oaScalarName &viewName) const { getHeader()->getViewName(viewName); }
void oaCustomVia::getLibName(const oaNameSpace &ns, oaString &libName) const { getHeader()->getLibName(ns, libName); }
void oaCustomVia::getCellName(const oaNameSpace &ns, oaString &cellName) const {
  getHeader()->getCellName(ns, cellName);
}
void oaCustomVia::getViewName(const oaNameSpace &ns, oaString &viewName) const {
  getHeader()->getViewName(ns, viewName);
}

void oaCustomVia::getParams(oaParamArray &params) const { getHeader()->getParams(params); }

void oaCustomVia::setParams(const oaParamArray &params) {
  const DesignRow at = viaRow(this, oacCustomViaType);
  oaViaDef *viaDef = getViaDef();
  if (viaDef == nullptr && params.getNumElements() != 0) {
    oaString name;
    getViaDefName(name);
    refuse(at.design, oacPcellMasterNotBound,
           "a via of definition " + textOf(name) + " cannot have parameters: the technology has no such definition");
  }
  const Row old = headerOfVia(at.design, at.row);
  CustomViaSource source = viaDef == nullptr
                               ? storedSource(at.design, old)
                               : customSource(at.design, static_cast<const oaCustomViaDef *>(viaDef), &params);
  if (viaDef == nullptr) {
    source.params.setNumElements(0);
  }
  changeHeader(at, this, customViaHeaderFor(at.design, source));
}

oaCustomVia *oaCustomVia::create(oaBlock *block, const oaCustomViaDef *viaDef, const oaTransform &xform,
                                 const oaParamArray *params) {
  DesignDatabase &design = designOfBlock(block);
  (void)usableName(design, viaDef, oacStdViaHeaderType, oacCustomViaDefSameNameAsStdViaDef);
  const Row header = customViaHeaderFor(design, customSource(design, viaDef, params));
  return objectAt<oaCustomVia>(design.vias, addVia(design, oacCustomViaType, header, xform));
}

oaCollection<oaVia, oaBlock> oaBlock::getVias() const {
  static const ViasOfBlock kind;
  return CollectionAccess::make<oaCollection<oaVia, oaBlock>>(kind, &designOfBlock(this).vias, 0);
}

} // namespace OpenAccess_4
