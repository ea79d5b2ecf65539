#include "oa/oaPolygon.h"

#include "oa/oaLine.h"
#include "oa/oaRect.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &outlinesOf(const DesignDatabase &design) { return design.outlines; }

void checkPolygon(const DesignDatabase &design, const oaPointArray &points) {
  if (points.getNumElements() < 3) {
    raiseDesign(oacPolygonTooFewPoints, newShapeLabel(design, "a polygon needs 3 points or more, not ") +
                                            std::to_string(points.getNumElements()));
  }
  if (points.hasExtraPoints()) {
    raiseDesign(oacPolygonHasExtraPoints,
                newShapeLabel(design, "polygon of ") + std::to_string(points.getNumElements()) +
                    " points: neighbours coincide (also last and first), or three in a row lie on one line");
  }
}

void checkLine(const DesignDatabase &design, const oaPointArray &points) {
  if (points.getNumElements() < 2) {
    raiseDesign(oacLineTooFewPoints,
                newShapeLabel(design, "a line needs 2 points or more, not ") + std::to_string(points.getNumElements()));
  }
}

// What a walk asks of every polygon and line takes this way; NULL: see readyPayload.
inline const PoolSpan *readySpan(const oaShape *object, oaTypeEnum kind) {
  return readyPayload<PoolSpan>(object, kind, [](const DesignDatabase &design) -> const LongColumn<PoolSpan> & {
    return design.outlines.points;
  });
}

PoolSpan spanOf(const ShapeRow &at) { return at.design.outlines.points[at.payload]; }

oaUInt4 countPoints(const ShapeRow &at) {
  const PoolSpan span = spanOf(at);
  at.design.points.checkSpan(span.begin, span.count, "a shape");
  return span.count;
}

void setOutline(const ShapeRow &at, const oaPointArray &points) {
  at.design.outlines.points.set(at.payload, replacePoints(at.design, spanOf(at), points));
  setShapeBox(at.design, at.row, boxOf(points));
}

} // namespace

oaPolygon *oaPolygon::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPointArray &points) {
  DesignDatabase &design = designOfShapes(block);
  checkPolygon(design, points);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  return shapeAt<oaPolygon>(
      design, addShape(design, layerNum, purposeNum, oacPolygonType, boxOf(points), addOutline(design, points)));
}

oaUInt4 oaPolygon::getNumPoints() const { return countPoints(shapeRow(this, oacPolygonType, outlinesOf)); }

void oaPolygon::getPoints(oaPointArray &points) const {
  const PoolSpan *ready = readySpan(this, oacPolygonType);
  if (OA_LIKELY(ready != nullptr)) {
    kit::getPoints(designOf(*tableOf(this)), *ready, points);
    return;
  }
  const ShapeRow at = shapeRow(this, oacPolygonType, outlinesOf);
  kit::getPoints(at.design, spanOf(at), points);
}

void oaPolygon::setPoints(const oaPointArray &points) {
  const ShapeRow at = shapeRow(this, oacPolygonType, outlinesOf);
  checkPolygon(at.design, points);
  setOutline(at, points);
}

oaBoolean oaPolygon::isOrthogonal() const {
  oaPointArray points;
  getPoints(points);
  return points.isOrthogonal();
}

oaRect *oaPolygon::convertToRect() {
  const ShapeRow at = shapeRow(this, oacPolygonType, outlinesOf);
  oaPointArray points;
  getPoints(points);
  if (points.getNumElements() != 4 || !points.isRectangle()) {
    raiseDesign(oacCannotConvertPolygonToRect, newShapeLabel(at.design, "polygon of ") +
                                                   std::to_string(points.getNumElements()) +
                                                   " points is no rectangle along the axes");
  }
  convertShape(at.design, at.row, oacRectType, kNoRow, boxOf(points));
  return shapeAt<oaRect>(at.design, at.row);
}

oaLine *oaLine::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPointArray &points) {
  DesignDatabase &design = designOfShapes(block);
  checkLine(design, points);
  design.lppFor(layerNum, purposeNum);
  return shapeAt<oaLine>(
      design, addShape(design, layerNum, purposeNum, oacLineType, boxOf(points), addOutline(design, points)));
}

oaUInt4 oaLine::getNumPoints() const { return countPoints(shapeRow(this, oacLineType, outlinesOf)); }

void oaLine::getPoints(oaPointArray &points) const {
  const PoolSpan *ready = readySpan(this, oacLineType);
  if (OA_LIKELY(ready != nullptr)) {
    kit::getPoints(designOf(*tableOf(this)), *ready, points);
    return;
  }
  const ShapeRow at = shapeRow(this, oacLineType, outlinesOf);
  kit::getPoints(at.design, spanOf(at), points);
}

void oaLine::setPoints(const oaPointArray &points) {
  const ShapeRow at = shapeRow(this, oacLineType, outlinesOf);
  checkLine(at.design, points);
  setOutline(at, points);
}

} // namespace OpenAccess_4
