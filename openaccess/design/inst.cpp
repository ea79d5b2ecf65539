#include "oa/oaInst.h"

#include "connections.h"
#include "designlife.h"
#include "instaccess.h"
#include "instheaders.h"
#include "oa/oaException.h"
#include "supermaster.h"

#include <typeinfo>

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaPlacementStatus, raiseBase, oacInvalidEnumValue, "placement status", "none", "unplaced", "placed",
              "fixed", "locked")

using namespace kit;

namespace {

oaScalarInst *addScalarInst(DesignDatabase &design, const NewInst &inst, const std::string &name,
                            const oaParamArray *params) {
  return objectAt<oaScalarInst>(design.insts, addInst(design, oacScalarInstType, inst, name, params));
}

NewInst masterOf(const DesignRow &at) {
  const InstHeaderTable &headers = at.design.instHeaders;
  const Row header = checkedRow(headers, at.design.insts.header[at.row], "an instance");
  const StringTable &strings = at.design.strings();
  NewInst inst;
  inst.lib = strings.text(headers.lib[header]);
  inst.cell = strings.text(headers.cell[header]);
  inst.view = strings.text(headers.view[header]);
  return inst;
}

// The instance and its bits go under the header for the master and the parameters.
void changeMaster(const DesignRow &at, const NewInst &wanted) {
  // The new header first: it may be the old one, which must not go.
  const Row header = instHeaderFor(at.design, wanted.lib, wanted.cell, wanted.view, wanted.params);
  visitWithBits(at.design, at.row, [&](Row row) {
    at.design.instHeaders.insts.set(header, at.design.instHeaders.insts[header] + 1);
    leaveInstHeader(at.design, row);
    at.design.insts.header.set(row, header);
    Table::dropAside(at.design.insts.handle(row));
    if (at.design.instsOfHeader.isBuilt()) {
      at.design.instsOfHeader.add(header, row);
    }
  });
  instsChanged(at.design);
}

// The properties that are parameters of the new master; it is looked into when it can be.
oaParamArray paramsOfNewMaster(oaInst *inst, const oaScalarName &lib, const oaScalarName &cell,
                               const oaScalarName &view) {
  oaParamArray params;
  try {
    oaDesign *master = oaDesign::open(lib, cell, view, 'r');
    const KeptDesign kept(designOf(master), KeptDesign::Reference::takenOver);
    if (master->isSuperMaster()) {
      params = paramsFromProps(inst, designOf(master));
    }
  } catch (const oaException &) { // NOLINT(bugprone-empty-catch): the master need not exist
  }
  return params;
}

class InstsOfBlock final : public WholeTableKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    const InstTable &insts = static_cast<const InstTable &>(*question.table);
    if (OA_UNLIKELY(isFiltered(question))) {
      return WholeTableKind::next(question, position, hint);
    }
    const Row row = position + 1; // kNoRow + 1 is 0
    const std::uint8_t *kind = insts.kind.ready(row);
    const Row *header = insts.header.ready(row);
    if (OA_LIKELY(kind != nullptr && *kind != 0 && header != nullptr && *header < 0xfffe &&
                  designOf(insts).instHeaders.isAlive(*header))) {
      position = row;
      return question.table->handle(row, *kind, static_cast<std::uint16_t>(*header + 1));
    }
    return WholeTableKind::next(question, position, hint);
  }

protected:
  // Where there are no vector instances, all are explicit and of one bit.
  bool isFiltered(const CollectionQuestion &question) const override {
    return designOf(*question.table).instBits.rowCount() != 0;
  }
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const DesignDatabase &design = designOf(*question.table);
    return design.instBits.rowCount() == 0 || passesInstFilter(design, row, question.flags);
  }
};

} // namespace

void oaInst::getLibName(oaScalarName &libName) const { getHeader()->getLibName(libName); }
void oaInst::getCellName(oaScalarName &cellName) const { getHeader()->getCellName(cellName); }
void oaInst::getViewName(oaScalarName &viewName) const { getHeader()->getViewName(viewName); }
void oaInst::getLibName(const oaNameSpace &ns, oaString &libName) const { getHeader()->getLibName(ns, libName); }
void oaInst::getCellName(const oaNameSpace &ns, oaString &cellName) const { getHeader()->getCellName(ns, cellName); }
void oaInst::getViewName(const oaNameSpace &ns, oaString &viewName) const { getHeader()->getViewName(ns, viewName); }

oaInstHeader *oaInst::getHeader() const { return static_cast<oaInstHeader *>(oaRef::getHeader()); }

void oaInst::getName(oaSimpleName &name) const {
  const oaName own = instNameOf(this);
  if (const oaVectorName *vector = own.getVector()) {
    name = *vector;
  } else if (const oaVectorBitName *bit = own.getVectorBit()) {
    name = *bit;
  } else {
    name = *own.getScalar();
  }
}

void oaInst::getName(const oaNameSpace &ns, oaString &name) const {
  const InstTable &insts = instsOf(this);
  const StringTable &strings = insts.database().strings();
  const Row stored = insts.name[rowOf(this)];
  if (OA_UNLIKELY(stored == kNoRow)) { // vector instances and their bits
    instNames(designOf(insts)).getName(rowOf(this), ns, name);
    return;
  }
  if (typeid(ns) == typeid(oaNativeNS)) { // what is stored, and what a walk asks of every instance
    const std::string_view text = strings.view(stored);
    name.assign(text.data(), static_cast<oaUInt4>(text.size()));
    return;
  }
  getStoredName(strings, stored, ns, name);
}

void oaInst::getParams(oaParamArray &params) const { getHeader()->getParams(params); }

oaBoolean oaInst::findParam(const oaString &name, oaParam &param) const {
  oaParamArray params;
  getParams(params);
  return params.find(name, param);
}

void oaInst::setParams(const oaParamArray &params) {
  const DesignRow at = instRow(this);
  requireExplicitInst(at.design, at.row, oacCannotSetParamsImplicitInst, "given parameters");
  changeMaster(at, withParams(at.design, masterOf(at), &params));
}

oaUInt4 oaInst::getNumBits() const {
  const DesignRow at = instRow(this);
  return at.design.insts.bits[at.row] == kNoRow ? 1 : instNames(at.design).numBits(at.row);
}

oaPlacementStatus oaInst::getPlacementStatus() const {
  const DesignRow at = instRow(this);
  return checkedEnum<oaPlacementStatusEnum>(at.design.insts, at.row, at.design.insts.placementStatus[at.row], 5,
                                            "the placement status");
}

oaUInt4 oaInst::getPriority() const {
  const DesignRow at = instRow(this);
  return at.design.insts.priority[at.row];
}

oaBoolean oaInst::isImplicit() const {
  const DesignRow at = instRow(this);
  return isImplicitInst(at.design, at.row);
}

oaBoolean oaInst::usesTermPositions() const {
  const DesignRow at = instRow(this);
  return Connections(at.design).usesPositions(at.row);
}

void oaInst::setMaster(const oaDesign *master) {
  const DesignRow at = instRow(this);
  const NewInst wanted = newInst(at.design, master, oaTransform(), oacInheritFromTopBlock, oacNonePlacementStatus);
  const oaNativeNS ns;
  setMaster(oaScalarName(ns, wanted.lib.c_str()), oaScalarName(ns, wanted.cell.c_str()),
            oaScalarName(ns, wanted.view.c_str()));
  if (wanted.params.getNumElements() != 0) {
    setParams(wanted.params);
  }
}

void oaInst::setMaster(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  const DesignRow at = instRow(this);
  requireExplicitInst(at.design, at.row, oacCannotSetMasterImplicitInst, "given another master");
  oaParamArray params;
  getParams(params);
  NewInst wanted = newInst(libName, cellName, viewName, oaTransform(), oacInheritFromTopBlock, oacNonePlacementStatus);
  // Parameters that the new master does not know are kept as properties, and come back from there.
  paramsBecomeProps(this, params);
  if (hasProp()) {
    wanted.params = paramsOfNewMaster(this, libName, cellName, viewName);
  }
  changeMaster(at, wanted);
}

void oaInst::setPlacementStatus(oaPlacementStatus status) {
  const DesignRow at = instRow(this);
  requireExplicitInst(at.design, at.row, oacCannotSetPlacementStatusImplicitInst, "given a placement status");
  visitWithBits(at.design, at.row,
                [&](Row row) { at.design.insts.placementStatus.set(row, static_cast<std::uint8_t>(status)); });
  at.design.touch();
}

void oaInst::setPriority(oaUInt4 priority) {
  const DesignRow at = instRow(this);
  requireExplicitInst(at.design, at.row, oacCannotSetPriorityImplicitInst, "given a priority");
  visitWithBits(at.design, at.row, [&](Row row) { at.design.insts.priority.set(row, priority); });
  at.design.touch();
}

oaInst *oaInst::find(const oaBlock *block, const oaSimpleName &name) {
  return findInst(designOfBlock(block), name, oacUnknownType);
}

void oaScalarInst::getName(oaScalarName &name) const {
  const DesignRow at = instRow(this);
  getStoredName(at.design.strings(), at.design.insts.name[at.row], name);
}

void oaScalarInst::setName(const oaScalarName &name) { rename(this, name); }

oaScalarInst *oaScalarInst::create(oaBlock *block, oaDesign *master, const oaScalarName &name, const oaTransform &xform,
                                   const oaParamArray *params, oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(design, master, xform, view, status);
  return addScalarInst(design, inst, checkedInstName(design, name), params);
}

oaScalarInst *oaScalarInst::create(oaBlock *block, oaDesign *master, const oaTransform &xform,
                                   const oaParamArray *params, oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  return addScalarInst(design, newInst(design, master, xform, view, status), std::string(), params);
}

oaScalarInst *oaScalarInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                   const oaScalarName &viewName, const oaScalarName &name, const oaTransform &xform,
                                   const oaParamArray *params, oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(libName, cellName, viewName, xform, view, status);
  return addScalarInst(design, inst, checkedInstName(design, name), params);
}

oaScalarInst *oaScalarInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                   const oaScalarName &viewName, const oaTransform &xform, const oaParamArray *params,
                                   oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  return addScalarInst(design, newInst(libName, cellName, viewName, xform, view, status), std::string(), params);
}

oaScalarInst *oaScalarInst::find(const oaBlock *block, const oaScalarName &name) {
  return static_cast<oaScalarInst *>(findInst(designOfBlock(block), name, oacScalarInstType));
}

oaBoolean oaScalarInst::isValidName(const oaBlock *block, const oaScalarName &name) {
  return instNames(designOfBlock(block)).isUsable(oaName(name));
}

oaCollection<oaInst, oaBlock> oaBlock::getInsts(oaUInt4 filterFlags) const {
  static const InstsOfBlock kind;
  return CollectionAccess::make<oaCollection<oaInst, oaBlock>>(kind, &designOfBlock(this).insts, 0, filterFlags);
}

} // namespace OpenAccess_4
