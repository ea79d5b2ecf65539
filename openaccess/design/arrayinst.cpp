#include "oa/oaInst.h"

#include "instaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

struct Matrix {
  oaOffset dX, dY;
  oaUInt4 numRows, numCols;
};

void checkCount(const DesignDatabase &design, oaUInt4 count, oaUInt4 id, const char *what) {
  if (count == 0) {
    refuse(design, id, std::string("an array instance needs at least one ") + what);
  }
}

oaArrayInst *addArrayInst(DesignDatabase &design, const NewInst &inst, const std::string &name, const Matrix &matrix,
                          const oaParamArray *params) {
  checkCount(design, matrix.numRows, oacInvalidArrayInstRows, "row");
  checkCount(design, matrix.numCols, oacInvalidArrayInstCols, "column");
  const Row row = addInst(design, oacArrayInstType, inst, name, params);
  const Row array = design.arrays.addRow();
  design.arrays.arrays.set(array, {matrix.dX, matrix.dY, matrix.numRows, matrix.numCols});
  design.insts.array.set(row, array);
  return objectAt<oaArrayInst>(design.insts, row);
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

} // namespace

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
  const NewInst inst = newInst(design, master, xform, oacInheritFromTopBlock, status);
  return addArrayInst(design, inst, checkedInstName(design, name), {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::create(oaBlock *block, oaDesign *master, const oaTransform &xform, oaOffset dX, oaOffset dY,
                                 oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(design, master, xform, oacInheritFromTopBlock, status);
  return addArrayInst(design, inst, std::string(), {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName, const oaScalarName &name, const oaTransform &xform,
                                 oaOffset dX, oaOffset dY, oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(libName, cellName, viewName, xform, oacInheritFromTopBlock, status);
  return addArrayInst(design, inst, checkedInstName(design, name), {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::create(oaBlock *block, const oaScalarName &libName, const oaScalarName &cellName,
                                 const oaScalarName &viewName, const oaTransform &xform, oaOffset dX, oaOffset dY,
                                 oaUInt4 numRows, oaUInt4 numCols, const oaParamArray *params,
                                 oaPlacementStatus status) {
  DesignDatabase &design = designOfBlock(block);
  const NewInst inst = newInst(libName, cellName, viewName, xform, oacInheritFromTopBlock, status);
  return addArrayInst(design, inst, std::string(), {dX, dY, numRows, numCols}, params);
}

oaArrayInst *oaArrayInst::find(const oaBlock *block, const oaScalarName &name) {
  return static_cast<oaArrayInst *>(findInst(designOfBlock(block), name, oacArrayInstType));
}

oaBoolean oaArrayInst::isValidName(oaBlock *block, const oaScalarName &name) {
  return oaScalarInst::isValidName(block, name);
}

} // namespace OpenAccess_4
