#include "oa/oaPathSeg.h"

#include "boundaries.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &segmentsOf(const DesignDatabase &design) { return design.pathSegs; }

void checkPoints(const std::string &label, const oaPoint &begin, const oaPoint &end) {
  if (!isSegDirection(begin, end)) {
    raiseDesign(oacInvalidPathSegPoints, label + "path segment from (" + std::to_string(begin.x()) + " " +
                                             std::to_string(begin.y()) + ") to (" + std::to_string(end.x()) + " " +
                                             std::to_string(end.y()) +
                                             ") is not horizontal, vertical or at 45 degrees, or has no length");
  }
}

void checkStyle(const std::string &label, const oaSegStyle &style) {
  if (style.getWidth() % 2 != 0) {
    raiseDesign(oacEvenWidthRequiredForSegStyle, label + "the width of a path segment must be even, and " +
                                                     std::to_string(style.getWidth()) + " is not");
  }
}

struct SegRow : ShapeRow {
  PathSegTable::Segment segment;

  explicit SegRow(const oaPathSeg *object)
      : ShapeRow(shapeRow(object, oacPathSegType, segmentsOf)), segment(design.pathSegs.segments[payload]) {
    for (const PathSegTable::End *end : {&segment.beginStyle, &segment.endStyle}) {
      checkedEnum<oaEndStyleEnum>(design.pathSegs, payload, end->style, oacCustomEndStyle + 1, "an end style");
    }
  }
  std::string label() const { return design.label() + ": "; }
  void store() const {
    oaPointArray outline;
    segBoundary(segment, outline);
    design.pathSegs.segments.set(payload, segment);
    setShapeBox(design, row, boxOf(outline));
  }
};

} // namespace

oaPathSeg *oaPathSeg::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &beginPoint,
                             const oaPoint &endPoint, const oaSegStyle &style) {
  DesignDatabase &design = designOfShapes(block);
  checkPoints(design.label() + ": ", beginPoint, endPoint);
  checkStyle(design.label() + ": ", style);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  const PathSegTable::Segment segment = toSegment(beginPoint, endPoint, style);
  oaPointArray outline(8);
  segBoundary(segment, outline);
  const Row payload = design.pathSegs.addRow();
  design.pathSegs.segments.set(payload, segment);
  return shapeAt<oaPathSeg>(design, addShape(design, layerNum, purposeNum, oacPathSegType, boxOf(outline), payload));
}

void oaPathSeg::genBoundary(const oaPoint &beginPoint, const oaPoint &endPoint, const oaSegStyle &style,
                            oaPointArray &boundary) {
  checkPoints("", beginPoint, endPoint);
  checkStyle("", style);
  segBoundary(toSegment(beginPoint, endPoint, style), boundary);
}

void oaPathSeg::getPoints(oaPoint &beginPoint, oaPoint &endPoint) const {
  const SegRow at(this);
  beginPoint = at.segment.begin;
  endPoint = at.segment.end;
}

void oaPathSeg::getStyle(oaSegStyle &style) const {
  const SegRow at(this);
  const auto kindOf = [](const PathSegTable::End &end) { return static_cast<oaEndStyleEnum>(end.style); };
  const PathSegTable::End &begin = at.segment.beginStyle, &end = at.segment.endStyle;
  style = oaSegStyle();
  style.setWidth(at.segment.widthDbu);
  if (kindOf(begin) == oacCustomEndStyle) {
    style.setBeginStyle(kindOf(begin), begin.extDbu, begin.leftDiagExtDbu, begin.rightDiagExtDbu,
                        begin.rightHalfWidthDbu);
  } else {
    style.setBeginStyle(kindOf(begin), kindOf(begin) == oacVariableEndStyle ? begin.extDbu : 0);
  }
  if (kindOf(end) == oacCustomEndStyle) {
    style.setEndStyle(kindOf(end), end.extDbu, end.leftDiagExtDbu, end.rightDiagExtDbu, end.rightHalfWidthDbu);
  } else {
    style.setEndStyle(kindOf(end), kindOf(end) == oacVariableEndStyle ? end.extDbu : 0);
  }
}

void oaPathSeg::getBoundary(oaPointArray &boundary) const { segBoundary(SegRow(this).segment, boundary); }

oaBoolean oaPathSeg::isOrthogonal() const {
  const SegRow at(this);
  return at.segment.begin.x() == at.segment.end.x() || at.segment.begin.y() == at.segment.end.y();
}

void oaPathSeg::setPoints(const oaPoint &beginPoint, const oaPoint &endPoint) {
  SegRow at(this);
  checkPoints(at.label(), beginPoint, endPoint);
  at.segment.begin = beginPoint;
  at.segment.end = endPoint;
  at.store();
}

void oaPathSeg::setStyle(const oaSegStyle &style) {
  SegRow at(this);
  checkStyle(at.label(), style);
  at.segment = toSegment(at.segment.begin, at.segment.end, style);
  at.store();
}

} // namespace OpenAccess_4
