#include "oa/oaShape.h"

#include "figureindexes.h"
#include "oa/oaLPPHeader.h"
#include "shapeaccess.h"
#include "shapecontents.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

// The row of the shape's layer-purpose header.
Row lppOf(const ShapeTable &shapes, Row shape) {
  return checkedRow(designOf(shapes).lpps, shapes.lpp[shape], "a shape");
}

// The first time that a header is asked for, and segments of a file that are not verified yet. Out of line, so that the
// usual way needs no stack.
[[gnu::noinline]] const DesignDatabase::LppNumbers &findNumbers(const oaShape *shape) {
  const ShapeTable &shapes = shapesOf(shape);
  return designOf(shapes).numbersOf(shapes.lpp[rowOf(shape)]);
}

inline const DesignDatabase::LppNumbers &numbersOf(const oaShape *shape) {
  const Table *table = tableOf(shape);
  const std::uint16_t aside = asideOf(shape);
  if (OA_LIKELY(aside != 0 && shape->getType() <= oacInstAttrDisplayType)) { // only living objects have one
    return designOf(*table).numbersByAside(aside);
  }
  if (OA_LIKELY(table != nullptr && table->id() == kShapeTable)) {
    const Row *lpp = static_cast<const ShapeTable *>(table)->lpp.ready(rowOf(shape));
    if (OA_LIKELY(lpp != nullptr)) {
      const DesignDatabase::LppNumbers *known = designOf(*table).knownNumbers(*lpp);
      if (OA_LIKELY(known != nullptr)) {
        return *known;
      }
    }
  }
  return findNumbers(shape);
}

} // namespace

oaLayerNum oaShape::getLayerNum() const { return numbersOf(this).layer; }

oaPurposeNum oaShape::getPurposeNum() const { return numbersOf(this).purpose; }

oaLPPHeader *oaShape::getHeader() const {
  const ShapeTable &shapes = shapesOf(this);
  return objectOf<oaLPPHeader>(designOf(shapes).lpps, lppOf(shapes, rowOf(this)));
}

void oaShape::setLPP(oaLayerNum layerNum, oaPurposeNum purposeNum) {
  ShapeTable &shapes = shapesOf(this);
  DesignDatabase &design = designOf(shapes);
  const Row shape = rowOf(this);
  const Row old = lppOf(shapes, shape);
  const Row lpp = design.lppFor(layerNum, purposeNum);
  if (lpp == old) {
    return;
  }
  design.lpps.shapes.set(lpp, design.lpps.shapes[lpp] + 1);
  shapes.lpp.set(shape, lpp);
  Table::dropAside(this);
  shapeJoinsLpp(design, shape, lpp);
  design.leaveLpp(old);
  design.touch();
}

void oaShape::setLayerNum(oaLayerNum layerNum) { setLPP(layerNum, getPurposeNum()); }

void oaShape::setPurposeNum(oaPurposeNum purposeNum) { setLPP(getLayerNum(), purposeNum); }

void oaShape::transform(oaDouble scale, oaDouble angle) {
  DesignDatabase &design = designOf(shapesOf(this));
  ShapeContents contents = readShape(design, rowOf(this));
  contents.transform(scale, angle, design.label());
  writeShape(design, rowOf(this), contents);
}

} // namespace OpenAccess_4
