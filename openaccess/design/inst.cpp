#include "oa/oaInst.h"

#include "connectivityaccess.h"

#include <limits>
#include <typeinfo>

namespace OpenAccess_4 {

OA_ENUM_NAMES(oaPlacementStatus, raiseBase, oacInvalidEnumValue, "placement status", "none", "unplaced", "placed",
              "fixed", "locked")

using namespace kit;

namespace {

// Everything that the eight create functions have in common.
struct NewInst {
  oaTypeEnum kind;
  std::string lib, cell, view; // native names of the master
  std::string name;            // empty: automatic
  oaTransform placement;
  oaBlockDomainVisibility visibility = oacInheritFromTopBlock;
  oaPlacementStatus status = oacNonePlacementStatus;
};

NewInst newInst(oaTypeEnum kind, const oaScalarName &lib, const oaScalarName &cell, const oaScalarName &view,
                const oaTransform &xform, oaBlockDomainVisibility visibility, oaPlacementStatus status) {
  return {kind, nativeText(lib), nativeText(cell), nativeText(view), std::string(), xform, visibility, status};
}

NewInst newInst(oaTypeEnum kind, DesignDatabase &design, const oaDesign *master, const oaTransform &xform,
                oaBlockDomainVisibility visibility, oaPlacementStatus status) {
  if (reachesThroughMasters(designOf(master), design)) {
    refuse(design, oacCannotCreateRecursiveDesign,
           "an instance of " + designOf(master).label() + " would make the design contain itself");
  }
  oaScalarName lib, cell, view;
  master->getLibName(lib);
  master->getCellName(cell);
  master->getViewName(view);
  return newInst(kind, lib, cell, view, xform, visibility, status);
}

std::string checkedInstName(DesignDatabase &design, const oaScalarName &name) {
  const std::string text = checkScalarName(design, name, "instance", oacInvalidNameLength, oacInvalidHierInstName);
  if (instsByName(design).find(text) != kNoRow) {
    refuse(design, oacInstNameExists, "instance " + text + " exists already");
  }
  return text;
}

// Parameters are for parametric masters, which this release of the kit does not know.
void checkParams(const DesignDatabase &design, const NewInst &inst, const oaParamArray *params) {
  if (params == nullptr || params->getNumElements() == 0) {
    return;
  }
  const std::string master = inst.lib + "/" + inst.cell + "/" + inst.view;
  const oaNativeNS ns;
  try {
    oaDesign::open(oaScalarName(ns, inst.lib.c_str()), oaScalarName(ns, inst.cell.c_str()),
                   oaScalarName(ns, inst.view.c_str()), 'r')
        ->close();
  } catch (const oaException &exception) {
    refuse(design, oacPcellMasterNotBound,
           "an instance of " + master +
               " has parameters, but the master cannot be opened: " + std::string(exception.getMsg()));
  }
  refuse(design, oacParamsSuppliedForNonPCellInstMaster,
         "an instance of " + master + " has parameters, but the master is not parametric");
}

Row addInst(DesignDatabase &design, NewInst inst, const oaParamArray *params) {
  checkParams(design, inst, params);
  if (inst.name.empty()) {
    inst.name = automaticName(instsByName(design), "I__", design.nextInstNumber);
  }
  InstTable &insts = design.insts;
  const Row header = instHeaderFor(design, inst.lib, inst.cell, inst.view);
  const Row row = insts.addRow();
  insts.kind.set(row, static_cast<std::uint8_t>(inst.kind));
  insts.header.set(row, header);
  insts.name.set(row, design.strings().add(inst.name));
  insts.origin.set(row, inst.placement.offset());
  insts.orient.set(row, static_cast<std::uint8_t>(inst.placement.orient()));
  insts.placementStatus.set(row, static_cast<std::uint8_t>(inst.status));
  insts.excludedFromModule.set(row, inst.visibility == oacExcludeFromModuleDomain ? 1 : 0);
  design.instHeaders.insts.set(header, design.instHeaders.insts[header] + 1);
  instsByName(design).add(inst.name, row);
  if (design.instsOfHeader.isBuilt()) {
    design.instsOfHeader.add(header, row);
  }
  instsChanged(design);
  return row;
}

oaScalarInst *addScalarInst(DesignDatabase &design, const NewInst &inst, const oaParamArray *params) {
  return objectAt<oaScalarInst>(design.insts, addInst(design, inst, params));
}

struct Matrix {
  oaOffset dX, dY;
  oaUInt4 numRows, numCols;
};

void checkCount(const DesignDatabase &design, oaUInt4 count, oaUInt4 id, const char *what) {
  if (count == 0) {
    refuse(design, id, std::string("an array instance needs at least one ") + what);
  }
}

oaArrayInst *addArrayInst(DesignDatabase &design, const NewInst &inst, const Matrix &matrix,
                          const oaParamArray *params) {
  checkCount(design, matrix.numRows, oacInvalidArrayInstRows, "row");
  checkCount(design, matrix.numCols, oacInvalidArrayInstCols, "column");
  const Row row = addInst(design, inst, params);
  const Row array = design.arrays.addRow();
  design.arrays.arrays.set(array, {matrix.dX, matrix.dY, matrix.numRows, matrix.numCols});
  design.insts.array.set(row, array);
  return objectAt<oaArrayInst>(design.insts, row);
}

void rename(const oaInst *inst, const oaScalarName &name) {
  const DesignRow at = instRow(inst);
  const std::string old = at.design.strings().text(at.design.insts.name[at.row]);
  if (nativeText(name) == old) {
    return;
  }
  const std::string text = checkedInstName(at.design, name);
  at.design.instsByName.remove(old, at.row);
  at.design.instsByName.add(text, at.row);
  at.design.insts.name.set(at.row, at.design.strings().add(text));
  at.design.noteAbandonedRows();
  at.design.touch();
}

oaInst *findInst(DesignDatabase &design, const std::string &name, oaTypeEnum kind) {
  const Row row = instsByName(design).find(name);
  const bool fits = row != kNoRow && (kind == oacUnknownType || design.insts.kind[row] == kind);
  return fits ? objectAt<oaInst>(design.insts, row) : nullptr;
}

ArrayTable::Array matrixOf(const oaArrayInst *inst) {
  const DesignRow at = instRow(inst);
  const Row row = at.design.insts.array[at.row];
  if (row >= at.design.arrays.rowCount()) {
    raiseCorrupted(at.design.insts, at.row, "the array instance lacks its rows and columns");
  }
  return at.design.arrays.arrays[row];
}

void setMatrix(const oaArrayInst *inst, const ArrayTable::Array &array) {
  const DesignRow at = instRow(inst);
  at.design.arrays.arrays.set(at.design.insts.array[at.row], array);
  instsChanged(at.design);
}

void requireElement(const oaArrayInst *inst, oaUInt4 row, oaUInt4 col) {
  const ArrayTable::Array array = matrixOf(inst);
  if (row >= array.rows || col >= array.columns) {
    const DesignRow at = instRow(inst);
    refuse(at.design, oacInvalidBitIndexIntoInst,
           "array instance " + at.design.strings().text(at.design.insts.name[at.row]) + " has " +
               std::to_string(array.rows) + " rows and " + std::to_string(array.columns) + " columns, element (" +
               std::to_string(row) + ", " + std::to_string(col) + ") was asked for");
  }
}

// Every instance is explicit and has one bit so far.
class InstsOfBlock : public WholeTableKind {
public:
  oaObject *next(const CollectionQuestion &question, Row &position, Row &hint) const override {
    const InstTable &insts = static_cast<const InstTable &>(*question.table);
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
  const DesignRow at = instRow(this);
  oaScalarName scalar;
  getStoredName(at.design.strings(), at.design.insts.name[at.row], scalar);
  name = scalar;
}

void oaInst::getName(const oaNameSpace &ns, oaString &name) const {
  const InstTable &insts = instsOf(this);
  const StringTable &strings = insts.database().strings();
  const Row stored = insts.name[rowOf(this)];
  if (typeid(ns) == typeid(oaNativeNS)) { // what is stored, and what a walk asks of every instance
    const std::string_view text = strings.view(stored);
    name.assign(text.data(), static_cast<oaUInt4>(text.size()));
    return;
  }
  getStoredName(strings, stored, ns, name);
}

void oaInst::getParams(oaParamArray &params) const {
  (void)instRow(this);
  params.setNumElements(0);
}

oaBoolean oaInst::findParam(const oaString &, oaParam &) const {
  (void)instRow(this);
  return false;
}

void oaInst::setParams(const oaParamArray &params) {
  const DesignRow at = instRow(this);
  oaScalarName lib, cell, view;
  getLibName(lib);
  getCellName(cell);
  getViewName(view);
  checkParams(
      at.design,
      newInst(oacScalarInstType, lib, cell, view, oaTransform(), oacInheritFromTopBlock, oacNonePlacementStatus),
      &params);
}

oaUInt4 oaInst::getNumBits() const {
  (void)instRow(this);
  return 1;
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
  (void)instRow(this);
  return false;
}

oaBoolean oaInst::usesTermPositions() const {
  const DesignRow at = instRow(this);
  const std::vector<Row> &instTerms = instTermsOfInst(at.design).rows(at.row);
  return !instTerms.empty() && at.design.instTerms.termPosition[instTerms.front()] != oacNullIndex;
}

void oaInst::setMaster(const oaDesign *master) {
  const DesignRow at = instRow(this);
  const NewInst wanted =
      newInst(oacScalarInstType, at.design, master, oaTransform(), oacInheritFromTopBlock, oacNonePlacementStatus);
  const oaNativeNS ns;
  setMaster(oaScalarName(ns, wanted.lib.c_str()), oaScalarName(ns, wanted.cell.c_str()),
            oaScalarName(ns, wanted.view.c_str()));
}

void oaInst::setMaster(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName) {
  const DesignRow at = instRow(this);
  // The new header first: it may be the old one, which must not go.
  const Row header = instHeaderFor(at.design, nativeText(libName), nativeText(cellName), nativeText(viewName));
  at.design.instHeaders.insts.set(header, at.design.instHeaders.insts[header] + 1);
  leaveInstHeader(at.design, at.row);
  at.design.insts.header.set(at.row, header);
  Table::dropAside(this);
  if (at.design.instsOfHeader.isBuilt()) {
    at.design.instsOfHeader.add(header, at.row);
  }
  instsChanged(at.design);
}

void oaInst::setPlacementStatus(oaPlacementStatus status) {
  const DesignRow at = instRow(this);
  at.design.insts.placementStatus.set(at.row, static_cast<std::uint8_t>(status));
  at.design.touch();
}

void oaInst::setPriority(oaUInt4 priority) {
  const DesignRow at = instRow(this);
  at.design.insts.priority.set(at.row, priority);
  at.design.touch();
}

oaCollection<oaInstTerm, oaInst> oaInst::getInstTerms(oaUInt4) const {
  static const MembersKind kind(instTermsOfInst, kInstTermTable);
  const DesignRow at = instRow(this);
  return CollectionAccess::make<oaCollection<oaInstTerm, oaInst>>(kind, &at.design.insts, at.row);
}

oaInst *oaInst::find(const oaBlock *block, const oaSimpleName &name) {
  DesignDatabase &design = designOfBlock(block);
  return name.getType() == oacScalarNameType ? findInst(design, nativeText(name), oacUnknownType) : nullptr;
}

void oaScalarInst::getName(oaScalarName &name) const {
  const DesignRow at = instRow(this);
  getStoredName(at.design.strings(), at.design.insts.name[at.row], name);
}

void oaScalarInst::setName(const oaScalarName &name) { rename(this, name); }

oaScalarInst *oaScalarInst::create(oaBlock *block, oaDesign *master, const oaScalarName &name, const oaTransform &xform,
                                   const oaParamArray *params, oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  NewInst inst = newInst(oacScalarInstType, design, master, xform, view, status);
  inst.name = checkedInstName(design, name);
  return addScalarInst(design, inst, params);
}

oaScalarInst *oaScalarInst::create(oaBlock *block, oaDesign *master, const oaTransform &xform,
                                   const oaParamArray *params, oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  return addScalarInst(design, newInst(oacScalarInstType, design, master, xform, view, status), params);
}

oaScalarInst *oaScalarInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                   const oaScalarName &viewName, const oaScalarName &name, const oaTransform &xform,
                                   const oaParamArray *params, oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  NewInst inst = newInst(oacScalarInstType, libName, cellName, viewName, xform, view, status);
  inst.name = checkedInstName(design, name);
  return addScalarInst(design, inst, params);
}

oaScalarInst *oaScalarInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                   const oaScalarName &viewName, const oaTransform &xform, const oaParamArray *params,
                                   oaBlockDomainVisibility view, oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  return addScalarInst(design, newInst(oacScalarInstType, libName, cellName, viewName, xform, view, status), params);
}

oaScalarInst *oaScalarInst::find(const oaBlock *block, const oaScalarName &name) {
  return static_cast<oaScalarInst *>(findInst(designOfBlock(block), nativeText(name), oacScalarInstType));
}

oaBoolean oaScalarInst::isValidName(const oaBlock *block, const oaScalarName &name) {
  return isUsableScalarName(name) && instsByName(designOfBlock(block)).find(nativeText(name)) == kNoRow;
}

oaOffset oaArrayInst::getDX() const { return matrixOf(this).dxDbu; }
oaOffset oaArrayInst::getDY() const { return matrixOf(this).dyDbu; }
oaUInt4 oaArrayInst::getNumRows() const { return matrixOf(this).rows; }
oaUInt4 oaArrayInst::getNumCols() const { return matrixOf(this).columns; }

void oaArrayInst::getName(oaScalarName &name) const {
  const DesignRow at = instRow(this);
  getStoredName(at.design.strings(), at.design.insts.name[at.row], name);
}

void oaArrayInst::getTransform(oaUInt4 row, oaUInt4 col, oaTransform &xform) const {
  requireElement(this, row, col);
  const ArrayTable::Array array = matrixOf(this);
  getTransform(xform);
  const std::int64_t x = xform.xOffset() + std::int64_t(col) * array.dxDbu;
  const std::int64_t y = xform.yOffset() + std::int64_t(row) * array.dyDbu;
  // Coordinates have no overflow checks in this API; what does not fit wraps around as in any 32-bit sum.
  xform.set(static_cast<oaOffset>(static_cast<oaUInt4>(x)), static_cast<oaOffset>(static_cast<oaUInt4>(y)),
            xform.orient());
}

void oaArrayInst::getBBox(oaUInt4 row, oaUInt4 col, oaBox &bBox) const {
  oaTransform xform;
  getTransform(row, col, xform);
  getHeader()->getMasterBBox(bBox);
  if (!bBox.isInverted()) {
    bBox.transform(xform);
  }
}

void oaArrayInst::setDX(oaOffset dX) {
  ArrayTable::Array array = matrixOf(this);
  array.dxDbu = dX;
  setMatrix(this, array);
}

void oaArrayInst::setDY(oaOffset dY) {
  ArrayTable::Array array = matrixOf(this);
  array.dyDbu = dY;
  setMatrix(this, array);
}

void oaArrayInst::setNumRows(oaUInt4 numRows) {
  checkCount(instRow(this).design, numRows, oacInvalidArrayInstRows, "row");
  ArrayTable::Array array = matrixOf(this);
  array.rows = numRows;
  setMatrix(this, array);
}

void oaArrayInst::setNumCols(oaUInt4 numCols) {
  checkCount(instRow(this).design, numCols, oacInvalidArrayInstCols, "column");
  ArrayTable::Array array = matrixOf(this);
  array.columns = numCols;
  setMatrix(this, array);
}

void oaArrayInst::setName(const oaScalarName &name) { rename(this, name); }

oaArrayInst *oaArrayInst::create(oaBlock *block, oaDesign *master, const oaScalarName &name, const oaTransform &xform,
                                 oaOffset dX, oaOffset dY, oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  NewInst inst = newInst(oacArrayInstType, design, master, xform, oacInheritFromTopBlock, status);
  inst.name = checkedInstName(design, name);
  return addArrayInst(design, inst, {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::create(oaBlock *block, oaDesign *master, const oaTransform &xform, oaOffset dX, oaOffset dY,
                                 oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(oacArrayInstType, design, master, xform, oacInheritFromTopBlock, status);
  return addArrayInst(design, inst, {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName, const oaScalarName &name, const oaTransform &xform,
                                 oaOffset dX, oaOffset dY, oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  NewInst inst = newInst(oacArrayInstType, libName, cellName, viewName, xform, oacInheritFromTopBlock, status);
  inst.name = checkedInstName(design, name);
  return addArrayInst(design, inst, {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName, const oaTransform &xform, oaOffset dX, oaOffset dY,
                                 oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(oacArrayInstType, libName, cellName, viewName, xform, oacInheritFromTopBlock, status);
  return addArrayInst(design, inst, {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::find(const oaBlock *block, const oaScalarName &name) {
  return static_cast<oaArrayInst *>(findInst(designOfBlock(block), nativeText(name), oacArrayInstType));
}

oaBoolean oaArrayInst::isValidName(oaBlock *block, const oaScalarName &name) {
  return oaScalarInst::isValidName(block, name);
}

oaCollection<oaInst, oaBlock> oaBlock::getInsts(oaUInt4) const {
  static const InstsOfBlock kind;
  return CollectionAccess::make<oaCollection<oaInst, oaBlock>>(kind, &designOfBlock(this).insts, 0);
}

} // namespace OpenAccess_4
