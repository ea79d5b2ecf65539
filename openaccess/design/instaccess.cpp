#include "instaccess.h"

#include "instheaders.h"
#include "supermaster.h"

namespace OpenAccess_4 {
namespace kit {

NewInst newInst(const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view, const oaTransform &xform,
                oaBlockDomainVisibility visibility, oaPlacementStatus status) {
  return {nativeText(lib), nativeText(cell), nativeText(view), oaParamArray(), false, xform, visibility, status};
}

NewInst newInst(DesignDatabase &design, const oaDesign *master, const oaTransform &xform,
                oaBlockDomainVisibility visibility, oaPlacementStatus status) {
  if (reachesThroughMasters(designOf(master), design)) {
    refuse(design, oacCannotCreateRecursiveDesign,
           "an instance of " + designOf(master).label() + " would make the design contain itself");
  }
  oaScalarName lib, cell, view;
  master->getLibName(lib);
  master->getCellName(cell);
  master->getViewName(view);
  NewInst inst = newInst(lib, cell, view, xform, visibility, status);
  inst.bindsMaster = true;
  if (master->isSubMaster()) {
    master->getParams(inst.params, false);
  }
  return inst;
}

NewInst withParams(DesignDatabase &design, const NewInst &inst, const oaParamArray *params) {
  NewInst parametric = inst;
  if (params == nullptr || params->getNumElements() == 0) {
    return parametric;
  }
  const Row header = findInstHeader(design, inst.lib, inst.cell, inst.view);
  const auto bound = design.boundMasters.find(header);
  if (bound != design.boundMasters.end() && isSuperMaster(*bound->second)) {
    parametric.params = fittingParams(*bound->second, *params);
    return parametric;
  }
  const oaNativeNS ns;
  parametric.params = fittingParams(oaScalarName(ns, inst.lib.c_str()), oaScalarName(ns, inst.cell.c_str()),
                                    oaScalarName(ns, inst.view.c_str()), *params,
                                    design.label() + ": an instance of " + inst.lib + "/" + inst.cell + "/" + inst.view,
                                    oacParamsSuppliedForNonPCellInstMaster);
  return parametric;
}

std::string checkedInstName(DesignDatabase &design, const oaScalarName &name) {
  const MultiBit names = instNames(design);
  std::string text = nativeText(name);
  // The full check says what is wrong; most names pass this one.
  if (text.empty() || text.find('/') != std::string::npos || names.findDef(text) != kNoRow) {
    names.check(oaName(name));
  }
  if (names.byName().find(MultiBit::scalarKey(text)) != kNoRow) {
    refuse(design, oacInstNameExists, "instance " + text + " exists already");
  }
  return text;
}

namespace {

void placeInst(DesignDatabase &design, const NewInst &inst, Row header, Row row) {
  InstTable &insts = design.insts;
  insts.header.set(row, header);
  insts.origin.set(row, inst.placement.offset());
  insts.orient.set(row, static_cast<std::uint8_t>(inst.placement.orient()));
  insts.placementStatus.set(row, static_cast<std::uint8_t>(inst.status));
  insts.excludedFromModule.set(row, inst.visibility == oacExcludeFromModuleDomain ? 1 : 0);
  design.instHeaders.insts.set(header, design.instHeaders.insts[header] + 1);
  if (design.instsOfHeader.isBuilt()) {
    design.instsOfHeader.add(header, row);
  }
}

// The master that an instance was made by stays open as long as the design. Nothing is evaluated for that: of a
// parametric master the super master is bound.
void bindNew(DesignDatabase &design, const NewInst &inst, Row header) {
  if (inst.bindsMaster) {
    (void)bindMaster(design, isSubInstHeader(design, header) ? design.instHeaders.super[header] : header);
  }
}

} // namespace

Row addInst(DesignDatabase &design, oaTypeEnum kind, const NewInst &inst, std::string name,
            const oaParamArray *params) {
  const NewInst parametric = withParams(design, inst, params);
  NameIndex &byName = instsByName(design);
  if (name.empty()) {
    name = automaticName(byName, "I__", design.nextInstNumber);
  }
  const Row header = instHeaderFor(design, inst.lib, inst.cell, inst.view, parametric.params);
  const Row row = design.insts.addRow();
  design.insts.kind.set(row, static_cast<std::uint8_t>(kind));
  design.insts.name.set(row, design.strings().add(name));
  placeInst(design, inst, header, row);
  byName.add(MultiBit::scalarKey(name), row);
  instsChanged(design);
  bindNew(design, inst, header);
  return row;
}

void placeInsts(DesignDatabase &design, const NewInst &inst, const std::vector<Row> &rows) {
  const Row header = instHeaderFor(design, inst.lib, inst.cell, inst.view, inst.params);
  for (const Row row : rows) {
    placeInst(design, inst, header, row);
  }
  instsChanged(design);
  bindNew(design, inst, header);
}

void rename(const oaInst *inst, const oaScalarName &name) {
  const DesignRow at = instRow(inst);
  requireExplicitInst(at.design, at.row, oacCannotSetNameOfImplicitInst, "renamed");
  const std::string old = at.design.strings().text(at.design.insts.name[at.row]);
  if (nativeText(name) == old) {
    return;
  }
  const std::string text = checkedInstName(at.design, name);
  at.design.instsByName.remove(MultiBit::scalarKey(old), at.row);
  at.design.instsByName.add(MultiBit::scalarKey(text), at.row);
  at.design.insts.name.set(at.row, at.design.strings().add(text));
  at.design.noteAbandonedRows();
  at.design.touch();
}

oaInst *findInst(DesignDatabase &design, const oaSimpleName &name, oaTypeEnum kind) {
  const Row row = instsByName(design).find(MultiBit::keyOf(name));
  const bool fits = row != kNoRow && (kind == oacUnknownType || design.insts.kind[row] == kind);
  return fits ? objectAt<oaInst>(design.insts, row) : nullptr;
}

oaName instNameOf(const oaInst *inst) {
  const DesignRow at = instRow(inst);
  oaName name;
  instNames(at.design).getName(at.row, name);
  return name;
}

void requireExplicitInst(DesignDatabase &design, Row inst, oaUInt4 id, const char *changed) {
  if (isImplicitInst(design, inst)) {
    refuse(design, id,
           instNames(design).describe(inst) + " is an implicit bit: only its vector instance can be " + changed);
  }
}

bool passesInstFilter(const DesignDatabase &design, Row inst, oaUInt4 flags) {
  return ((flags & oacInstIterNotImplicit) == 0 || !isImplicitInst(design, inst)) &&
         ((flags & oacInstIterSingleBit) == 0 || design.insts.kind[inst] != oacVectorInstType);
}

} // namespace kit
} // namespace OpenAccess_4
