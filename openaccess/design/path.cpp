#include "oa/oaPath.h"

#include "boundaries.h"
#include "oa/oaPolygon.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &pathsOf(const DesignDatabase &design) { return design.paths; }

// What a walk asks of every path takes this way; NULL: see readyPayload.
inline const PathTable::Path *readyPath(const oaPath *object) {
  return readyPayload<PathTable::Path>(
      object, oacPathType,
      [](const DesignDatabase &design) -> const LongColumn<PathTable::Path> & { return design.paths.paths; });
}

std::string countText(const oaPointArray &points) { return std::to_string(points.getNumElements()); }

void checkPoints(const std::string &label, const oaPointArray &points) {
  if (points.getNumElements() < 2) {
    raiseDesign(oacPathTooFewPoints, label + "a path needs 2 points or more, not " + countText(points));
  }
}

void checkPath(const DesignDatabase &design, const oaPointArray &points) {
  checkPoints(design.label() + ": ", points);
  if (points.hasExtraPoints(false)) {
    raiseDesign(oacPathHasExtraPoints, newShapeLabel(design, "path of ") + countText(points) +
                                           " points: neighbours coincide, or three in a row lie on one line");
  }
}

void checkExtensions(const std::string &label, oaPathStyleEnum style, oaDist beginExt, oaDist endExt) {
  if (style != oacVariablePathStyle && (beginExt != 0 || endExt != 0)) {
    raiseDesign(oacInvalidPathExtensionValue,
                label + "path with extensions " + std::to_string(beginExt) + " and " + std::to_string(endExt) +
                    ", but of style \"" + std::string(oaPathStyle(style).getName()) + "\" instead of \"variable\"");
  }
}

struct PathRow : ShapeRow {
  PathTable::Path path;
  oaPathStyleEnum style;

  explicit PathRow(const oaPath *object)
      : ShapeRow(shapeRow(object, oacPathType, pathsOf)), path(design.paths.paths[payload]),
        style(checkedEnum<oaPathStyleEnum>(design.paths, payload, path.style, oacVariablePathStyle + 1, "the style")) {}

  void boundary(const oaPointArray &points, oaPointArray &outline) const {
    pathBoundary(points, path.widthDbu, style, path.beginExtDbu, path.endExtDbu, outline);
  }
  // Writes the changed attributes back.
  void store() {
    oaPointArray points, outline;
    kit::getPoints(design, path.points, points);
    boundary(points, outline);
    design.paths.paths.set(payload, path);
    setShapeBox(design, row, boxOf(outline));
  }
};

} // namespace

oaPath *oaPath::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, oaDist width,
                       const oaPointArray &points, oaPathStyle style, oaDist beginExt, oaDist endExt) {
  DesignDatabase &design = designOfShapes(block);
  checkPath(design, points);
  checkExtensions(design.label() + ": ", style, beginExt, endExt);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  oaPointArray outline;
  pathBoundary(points, width, style, beginExt, endExt, outline);
  const PoolSpan span = addPoints(design, points);
  const Row payload = design.paths.addRow();
  design.paths.paths.set(payload, {span, width, beginExt, endExt, std::uint32_t(oaPathStyleEnum(style))});
  return shapeAt<oaPath>(design, addShape(design, layerNum, purposeNum, oacPathType, boxOf(outline), payload));
}

void oaPath::genBoundary(const oaPointArray &points, oaDist width, oaPathStyle style, oaDist beginExt, oaDist endExt,
                         oaPointArray &boundary) {
  checkPoints("", points);
  checkExtensions("", style, beginExt, endExt);
  pathBoundary(points, width, style, beginExt, endExt, boundary);
}

oaDist oaPath::getWidth() const {
  const PathTable::Path *ready = readyPath(this);
  return OA_LIKELY(ready != nullptr) ? ready->widthDbu : PathRow(this).path.widthDbu;
}

oaUInt4 oaPath::getNumPoints() const {
  const PathRow at(this);
  at.design.points.checkSpan(at.path.points.begin, at.path.points.count, "a path");
  return at.path.points.count;
}

void oaPath::getPoints(oaPointArray &points) const {
  const PathTable::Path *ready = readyPath(this);
  if (OA_LIKELY(ready != nullptr)) {
    kit::getPoints(designOf(*tableOf(this)), ready->points, points);
    return;
  }
  const PathRow at(this);
  kit::getPoints(at.design, at.path.points, points);
}

oaPathStyle oaPath::getStyle() const {
  const PathTable::Path *ready = readyPath(this);
  if (OA_LIKELY(ready != nullptr && ready->style <= oacVariablePathStyle)) {
    return static_cast<oaPathStyleEnum>(ready->style);
  }
  return PathRow(this).style;
}

oaDist oaPath::getBeginExt() const {
  const PathRow at(this);
  return at.style == oacVariablePathStyle ? at.path.beginExtDbu : 0;
}

oaDist oaPath::getEndExt() const {
  const PathRow at(this);
  return at.style == oacVariablePathStyle ? at.path.endExtDbu : 0;
}

void oaPath::getBoundary(oaPointArray &boundary) const {
  const PathRow at(this);
  oaPointArray points;
  kit::getPoints(at.design, at.path.points, points);
  at.boundary(points, boundary);
}

oaBoolean oaPath::isOrthogonal() const {
  oaPointArray points;
  getPoints(points);
  return points.isOrthogonal(false);
}

void oaPath::setWidth(oaDist width) {
  PathRow at(this);
  at.path.widthDbu = width;
  at.store();
}

void oaPath::setPoints(const oaPointArray &points) {
  PathRow at(this);
  checkPath(at.design, points);
  at.path.points = replacePoints(at.design, at.path.points, points);
  at.store();
}

void oaPath::setStyle(oaPathStyle style) {
  PathRow at(this);
  at.style = style;
  at.path.style = at.style;
  if (at.style != oacVariablePathStyle) {
    at.path.beginExtDbu = at.path.endExtDbu = 0;
  }
  at.store();
}

void oaPath::setBeginExt(oaDist beginExt) {
  PathRow at(this);
  checkExtensions(at.design.label() + ": ", at.style, beginExt, 0);
  at.path.beginExtDbu = beginExt;
  at.store();
}

void oaPath::setEndExt(oaDist endExt) {
  PathRow at(this);
  checkExtensions(at.design.label() + ": ", at.style, 0, endExt);
  at.path.endExtDbu = endExt;
  at.store();
}

oaPolygon *oaPath::convertToPolygon() {
  const PathRow at(this);
  oaPointArray outline;
  getBoundary(outline);
  outline.compress();
  if (outline.getNumElements() < 3) {
    raiseDesign(oacPolygonTooFewPoints, newShapeLabel(at.design, "path of width ") + std::to_string(at.path.widthDbu) +
                                            " has no area and cannot become a polygon");
  }
  convertShape(at.design, at.row, oacPolygonType, addOutline(at.design, outline), boxOf(outline));
  return shapeAt<oaPolygon>(at.design, at.row);
}

} // namespace OpenAccess_4
