// Headers of vias: what is stored of them, and how long they live.

#include "oa/oaVia.h"

#include "storedparams.h"
#include "viaaccess.h"
#include "viavalues.h"

#include <vector>

namespace OpenAccess_4 {

namespace kit {

namespace {

// Keys of the look-up. Names hold any bytes, so they come last.
std::string definitionKey(oaTypeEnum kind, const std::string &name) {
  return (kind == oacStdViaHeaderType ? "s" : "c") + name;
}
std::string subHeaderKey(Row super, const oaViaParam &own) {
  return "p" + std::to_string(super) + " " + viaParamKey(own);
}

std::string subHeaderKey(Row super, const oaParamArray &given) {
  return "q" + std::to_string(super) + " " + paramKey(given);
}

std::string keyOf(DesignDatabase &design, Row header) {
  const ViaHeaderTable &headers = design.viaHeaders;
  if (isSubHeader(design, header) && headers.kind[header] == oacCustomViaHeaderType) {
    oaParamArray given;
    getCustomViaParams(design, header, given);
    return subHeaderKey(headers.super[header], given);
  }
  if (isSubHeader(design, header)) {
    return subHeaderKey(headers.super[header], ownParamOf(design, header));
  }
  return definitionKey(static_cast<oaTypeEnum>(headers.kind[header]), design.strings().text(headers.name[header]));
}

NameIndex &headersByKey(DesignDatabase &design) {
  NameIndex &index = design.viaState.headersByKey;
  if (!index.isBuilt()) {
    index.clear();
    for (Row row = design.viaHeaders.nextAlive(kNoRow); row != kNoRow; row = design.viaHeaders.nextAlive(row)) {
      index.add(keyOf(design, row), row);
    }
    index.setBuilt();
  }
  return index;
}

Row addHeader(DesignDatabase &design, oaTypeEnum kind, Row name, std::string key) {
  ViaHeaderTable &headers = design.viaHeaders;
  const Row row = headers.addRow();
  headers.kind.set(row, static_cast<std::uint8_t>(kind));
  headers.name.set(row, name);
  oaBox unknown;
  unknown.init();
  headers.masterBox.set(row, unknown);
  headersByKey(design).add(std::move(key), row);
  return row;
}

// A new sub header counts as a user of its super header.
void goUnder(DesignDatabase &design, Row header, Row super) {
  ViaHeaderTable &headers = design.viaHeaders;
  headers.super.set(header, super);
  headers.users.set(super, headers.users[super] + 1);
  if (design.viaState.subHeadersOfHeader.isBuilt()) {
    design.viaState.subHeadersOfHeader.add(super, header);
  }
}

} // namespace

DesignRow viaHeaderRow(const oaObject *header, std::uint8_t kind) {
  const DesignRow at = designRow(header, kViaHeaderTable);
  const std::uint8_t found = at.design.viaHeaders.kind[at.row];
  if ((found != oacStdViaHeaderType && found != oacCustomViaHeaderType) || (kind != 0 && found != kind)) {
    raiseCorrupted(at.design.viaHeaders, at.row, "kind " + std::to_string(found) + " is not what is expected here");
  }
  return at;
}

Row headerOfVia(DesignDatabase &design, Row via) {
  const ViaHeaderTable &headers = design.viaHeaders;
  const Row header = checkedRow(headers, design.vias.header[via], "a via");
  const std::uint8_t expected = design.vias.kind[via] == oacStdViaType ? oacStdViaHeaderType : oacCustomViaHeaderType;
  if (OA_UNLIKELY(headers.kind[header] != expected || isSuperHeader(design, header))) {
    raiseCorrupted(design.vias, via, "the header in row " + std::to_string(header) + " places no vias of this kind");
  }
  return header;
}

bool isSubHeader(const DesignDatabase &design, Row header) { return design.viaHeaders.super[header] != kNoRow; }

bool isSuperHeader(const DesignDatabase &design, Row header) {
  const ViaHeaderTable &headers = design.viaHeaders;
  return headers.kind[header] == oacStdViaHeaderType ? !isSubHeader(design, header)
                                                     : headers.isCustomSuper[header] != 0;
}

Row findViaHeader(DesignDatabase &design, oaTypeEnum kind, const std::string &name) {
  return headersByKey(design).find(definitionKey(kind, name));
}

Row stdViaHeaderFor(DesignDatabase &design, const std::string &name, const oaViaParam &own) {
  ViaHeaderTable &headers = design.viaHeaders;
  Row super = findViaHeader(design, oacStdViaHeaderType, name);
  if (super != kNoRow) {
    const Row known = headersByKey(design).find(subHeaderKey(super, own));
    if (known != kNoRow) {
      return known;
    }
  } else {
    super =
        addHeader(design, oacStdViaHeaderType, design.strings().intern(name), definitionKey(oacStdViaHeaderType, name));
  }
  const Row header = addHeader(design, oacStdViaHeaderType, headers.name[super], subHeaderKey(super, own));
  const Row params = design.viaParams.addRow();
  design.viaParams.params.set(params, storedViaParam(own, design.viaMissingCuts));
  headers.params.set(header, params);
  goUnder(design, header, super);
  return header;
}

namespace {

Row addCustomSubHeader(DesignDatabase &design, Row super, const oaParamArray &given) {
  ViaHeaderTable &headers = design.viaHeaders;
  const Row header = addHeader(design, oacCustomViaHeaderType, headers.name[super], subHeaderKey(super, given));
  headers.lib.set(header, headers.lib[super]);
  headers.cell.set(header, headers.cell[super]);
  headers.view.set(header, headers.view[super]);
  headers.customParams.set(header, design.strings().add(storedParams(given)));
  goUnder(design, header, super);
  return header;
}

// The vias of a plain header go under a sub header without parameters.
void becomeSuperHeader(DesignDatabase &design, Row header) {
  ViaHeaderTable &headers = design.viaHeaders;
  const std::vector<Row> vias = viasOfHeader(design).rows(header).copy();
  unbindViaMaster(design, header);
  headers.isCustomSuper.set(header, 1);
  headers.users.set(header, 0);
  const Row sub = addCustomSubHeader(design, header, oaParamArray());
  headers.masterBox.set(sub, headers.masterBox[header]);
  headers.users.set(sub, static_cast<std::uint32_t>(vias.size()));
  for (const Row via : vias) {
    design.vias.header.set(via, sub);
    Table::dropAside(design.vias.handle(via));
  }
  design.viaState.viasOfHeader.clear();
  viasChanged(design);
}

} // namespace

Row customViaHeaderFor(DesignDatabase &design, const CustomViaSource &source) {
  ViaHeaderTable &headers = design.viaHeaders;
  const bool isGiven = source.params.getNumElements() != 0;
  Row header = findViaHeader(design, oacCustomViaHeaderType, source.name);
  if (header == kNoRow) {
    header = addHeader(design, oacCustomViaHeaderType, design.strings().intern(source.name),
                       definitionKey(oacCustomViaHeaderType, source.name));
    headers.lib.set(header, design.strings().intern(source.lib));
    headers.cell.set(header, design.strings().intern(source.cell));
    headers.view.set(header, design.strings().intern(source.view));
    headers.isCustomSuper.set(header, isGiven ? 1 : 0);
  } else if (isGiven && !isSuperHeader(design, header)) {
    becomeSuperHeader(design, header);
  }
  if (!isSuperHeader(design, header)) {
    return header;
  }
  const Row sub = headersByKey(design).find(subHeaderKey(header, source.params));
  return sub != kNoRow ? sub : addCustomSubHeader(design, header, source.params);
}

namespace {

// With the super headers above it that have no other sub header. A damaged file may have any number of those.
void destroyHeader(DesignDatabase &design, Row header) {
  ViaHeaderTable &headers = design.viaHeaders;
  for (;;) {
    headersByKey(design).remove(keyOf(design, header), header);
    unbindViaMaster(design, header);
    const Row super = headers.super[header];
    design.destroyRow(headers, header);
    if (super == kNoRow) {
      return;
    }
    if (design.viaState.subHeadersOfHeader.isBuilt()) {
      design.viaState.subHeadersOfHeader.remove(super, header);
    }
    if (!headers.isAlive(super)) { // a damaged file
      return;
    }
    const std::uint32_t users = headers.users[super];
    if (users > 1) {
      headers.users.set(super, users - 1);
      return;
    }
    if (!isSuperHeader(design, super)) {
      return;
    }
    header = super;
  }
}

} // namespace

void joinViaHeader(DesignDatabase &design, Row via, Row header) {
  design.vias.header.set(via, header);
  design.viaHeaders.users.set(header, design.viaHeaders.users[header] + 1);
  if (design.viaState.viasOfHeader.isBuilt()) {
    design.viaState.viasOfHeader.add(header, via);
  }
}

void leaveViaHeader(DesignDatabase &design, Row via) {
  const Row header = design.vias.header[via];
  if (design.viaState.viasOfHeader.isBuilt()) {
    design.viaState.viasOfHeader.remove(header, via);
  }
  if (!design.viaHeaders.isAlive(header)) { // a damaged file
    return;
  }
  const std::uint32_t users = design.viaHeaders.users[header];
  if (users > 1) {
    design.viaHeaders.users.set(header, users - 1);
  } else {
    destroyHeader(design, header);
  }
}

void getCustomViaParams(const DesignDatabase &design, Row header, oaParamArray &params) {
  loadParams(design, design.viaHeaders.customParams[header], params);
}

oaViaParam ownParamOf(const DesignDatabase &design, Row header) {
  if (isSuperHeader(design, header)) {
    return oaViaParam();
  }
  const Row params = design.viaHeaders.params[header];
  return loadedViaParam(design.viaParams.params[checkedRow(design.viaParams, params, "a via header")],
                        design.viaMissingCuts);
}

namespace {

OwnerIndex &builtIndex(OwnerIndex &index, const Table &table, const Column<Row> &owners) {
  if (!index.isBuilt()) {
    index.clear();
    for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
      if (owners[row] != kNoRow) {
        index.add(owners[row], row);
      }
    }
    index.setBuilt();
  }
  return index;
}

} // namespace

OwnerIndex &viasOfHeader(DesignDatabase &design) {
  return builtIndex(design.viaState.viasOfHeader, design.vias, design.vias.header);
}

OwnerIndex &subHeadersOfHeader(DesignDatabase &design) {
  return builtIndex(design.viaState.subHeadersOfHeader, design.viaHeaders, design.viaHeaders.super);
}

} // namespace kit

using namespace kit;

namespace {

DesignRow currentHeader(const oaCustomViaHeader *header) {
  const DesignRow at = viaHeaderRow(header, oacCustomViaHeaderType);
  followViaDef(at.design, at.row);
  return at;
}

void getCustomName(const oaCustomViaHeader *header, Column<Row> ViaHeaderTable::*column, const oaNameSpace &ns,
                   oaString &name) {
  const DesignRow at = currentHeader(header);
  getStoredName(at.design.strings(), (at.design.viaHeaders.*column)[at.row], ns, name);
}

void getCustomName(const oaCustomViaHeader *header, Column<Row> ViaHeaderTable::*column, oaScalarName &name) {
  const DesignRow at = currentHeader(header);
  getStoredName(at.design.strings(), (at.design.viaHeaders.*column)[at.row], name);
}

} // namespace

oaViaDef *oaViaHeader::getViaDef() const {
  const DesignRow at = viaHeaderRow(this);
  return viaDefOf(at.design, at.row);
}

void oaViaHeader::getViaDefName(oaString &name) const {
  const DesignRow at = viaHeaderRow(this);
  at.design.strings().get(at.design.viaHeaders.name[at.row], name);
}

oaCollection<oaVia, oaViaHeader> oaViaHeader::getVias() const {
  static const MembersKind kind(viasOfHeader, kViaTable);
  const DesignRow at = viaHeaderRow(this);
  return CollectionAccess::make<oaCollection<oaVia, oaViaHeader>>(kind, &at.design.viaHeaders, at.row);
}

oaCollection<oaViaHeader, oaViaHeader> oaViaHeader::getSubHeaders() const {
  static const MembersKind kind(subHeadersOfHeader, kViaHeaderTable);
  const DesignRow at = viaHeaderRow(this);
  return CollectionAccess::make<oaCollection<oaViaHeader, oaViaHeader>>(kind, &at.design.viaHeaders, at.row);
}

oaViaHeader *oaViaHeader::find(const oaBlock *block, const oaString &viaDefName) {
  DesignDatabase &design = designOfBlock(block);
  const std::string name = textOf(viaDefName);
  const Row std = findViaHeader(design, oacStdViaHeaderType, name);
  return objectAt<oaViaHeader>(design.viaHeaders,
                               std != kNoRow ? std : findViaHeader(design, oacCustomViaHeaderType, name));
}

oaViaHeader *oaViaHeader::find(const oaBlock *block, const oaViaDef *viaDef) {
  DesignDatabase &design = designOfBlock(block);
  oaString name;
  viaDef->getName(name);
  const oaTypeEnum kind = viaDef->getType() == oacStdViaDefType ? oacStdViaHeaderType : oacCustomViaHeaderType;
  return objectAt<oaViaHeader>(design.viaHeaders, findViaHeader(design, kind, textOf(name)));
}

void oaStdViaHeader::getParams(oaViaParam &params) const {
  const DesignRow at = viaHeaderRow(this, oacStdViaHeaderType);
  getEffectiveParams(at.design, at.row, params);
}

void oaCustomViaHeader::getLibName(oaScalarName &libName) const { getCustomName(this, &ViaHeaderTable::lib, libName); }
void oaCustomViaHeader::getCellName(oaScalarName &cellName) const {
  getCustomName(this, &ViaHeaderTable::cell, cellName);
}
void oaCustomViaHeader::getViewName(oaScalarName &viewName) const {
  getCustomName(this, &ViaHeaderTable::view, viewName);
}
void oaCustomViaHeader::getLibName(const oaNameSpace &ns, oaString &libName) const {
  getCustomName(this, &ViaHeaderTable::lib, ns, libName);
}
void oaCustomViaHeader::getCellName(const oaNameSpace &ns, oaString &cellName) const {
  getCustomName(this, &ViaHeaderTable::cell, ns, cellName);
}
void oaCustomViaHeader::getViewName(const oaNameSpace &ns, oaString &viewName) const {
  getCustomName(this, &ViaHeaderTable::view, ns, viewName);
}

void oaCustomViaHeader::getParams(oaParamArray &params) const {
  const DesignRow at = viaHeaderRow(this, oacCustomViaHeaderType);
  getCustomViaParams(at.design, at.row, params);
}

void oaCustomViaHeader::getAllParams(oaParamArray &params) const {
  const DesignRow at = viaHeaderRow(this, oacCustomViaHeaderType);
  const oaDesign *master = bindViaMaster(at.design, at.row);
  if (master != nullptr && (master->isSuperMaster() || master->isSubMaster())) {
    master->getParams(params);
  } else {
    getCustomViaParams(at.design, at.row, params);
  }
}

oaCollection<oaViaHeader, oaBlock> oaBlock::getViaHeaders() const {
  return wholeTable<oaCollection<oaViaHeader, oaBlock>>(designOfBlock(this).viaHeaders);
}

} // namespace OpenAccess_4
