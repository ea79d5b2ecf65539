#include "oa/oaEllipse.h"

#include "boundaries.h"
#include "oa/oaPolygon.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

bool isUsable(const oaBox &box) { return box.left() < box.right() && box.bottom() < box.top(); }

void checkBox(const DesignDatabase &design, const oaBox &box) {
  if (!isUsable(box)) {
    raiseDesign(oacEllipseBBoxInvalid, newShapeLabel(design, "the box of an ellipse is inverted or flat"));
  }
}

} // namespace

oaEllipse *oaEllipse::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaBox &bBox) {
  DesignDatabase &design = designOfShapes(block);
  checkBox(design, bBox);
  return shapeAt<oaEllipse>(design, addShape(design, layerNum, purposeNum, oacEllipseType, bBox));
}

void oaEllipse::genBoundary(const oaBox &ellipseBBox, oaUInt4 numSides, oaPointArray &boundary) {
  if (numSides < 4) {
    raiseDesign(oacEllipseNumSidesInvalid, "an ellipse needs 4 sides or more, not " + std::to_string(numSides));
  }
  ellipseBoundary(ellipseBBox, numSides, boundary);
}

void oaEllipse::getBoundary(oaPointArray &points, oaUInt4 numSides) const {
  const ShapeRow at = plainShapeRow(this, oacEllipseType);
  genBoundary(at.design.shapes.box[at.row], numSides, points);
}

void oaEllipse::setBBox(const oaBox &bBox) {
  const ShapeRow at = plainShapeRow(this, oacEllipseType);
  checkBox(at.design, bBox);
  setShapeBox(at.design, at.row, bBox);
}

oaPolygon *oaEllipse::convertToPolygon(oaUInt4 numSides) {
  const ShapeRow at = plainShapeRow(this, oacEllipseType);
  oaPointArray outline;
  getBoundary(outline, numSides);
  outline.compress();
  if (outline.getNumElements() < 3) {
    // So flat that its points lie on a line: what is left of it is its box.
    outline = oaPointArray(at.design.shapes.box[at.row]);
  }
  convertShape(at.design, at.row, oacPolygonType, addOutline(at.design, outline), boxOf(outline));
  return shapeAt<oaPolygon>(at.design, at.row);
}

} // namespace OpenAccess_4
