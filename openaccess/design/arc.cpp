#include "oa/oaArc.h"

#include "boundaries.h"
#include "oa/oaLine.h"
#include "shapeaccess.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &arcsOf(const DesignDatabase &design) { return design.arcs; }

void checkArc(const std::string &label, const oaBox &ellipse, double start, double stop) {
  if (ellipse.left() >= ellipse.right() || ellipse.bottom() >= ellipse.top()) {
    raiseDesign(oacArcEllipseBBoxInvalid, label + "the box of an arc's ellipse is inverted or flat");
  }
  if (!std::isfinite(start) || !std::isfinite(stop) || reducedAngle(start) == reducedAngle(stop)) {
    raiseDesign(oacArcAnglesInvalid, label + "arc from " + std::to_string(start) + " to " + std::to_string(stop) +
                                         " radians: the angles must be numbers and lie apart");
  }
}

void checkEdges(oaUInt4 edges) {
  if (edges < 3 || edges == oacNullIndex) {
    raiseDesign(oacArcNumSidesInvalid, "an arc needs 3 edges or more, not " + std::to_string(edges));
  }
}

struct ArcRow : ShapeRow {
  ArcTable::Arc arc;

  explicit ArcRow(const oaArc *object)
      : ShapeRow(shapeRow(object, oacArcType, arcsOf)), arc(design.arcs.arcs[payload]) {
    if (!std::isfinite(arc.startRadians) || !std::isfinite(arc.stopRadians)) {
      raiseCorrupted(design.arcs, payload, "an angle is no number");
    }
  }
};

// The part of an ellipse that lies in a box, when it is one piece.
class EllipseInBox {
public:
  EllipseInBox(const oaBox &ellipse, const oaBox &box, double slackDbu)
      : left_(box.left() - slackDbu), bottom_(box.bottom() - slackDbu), right_(box.right() + slackDbu),
        top_(box.top() + slackDbu), x_((double(ellipse.left()) + ellipse.right()) / 2),
        y_((double(ellipse.bottom()) + ellipse.top()) / 2), radiusX_((double(ellipse.right()) - ellipse.left()) / 2),
        radiusY_((double(ellipse.top()) - ellipse.bottom()) / 2) {
    // Between the angles at which the ellipse meets the lines through the edges it stays inside or outside.
    for (const double cosine : {(left_ - x_) / radiusX_, (right_ - x_) / radiusX_}) {
      if (std::abs(cosine) <= 1) {
        angles_.push_back(reducedAngle(std::acos(cosine)));
        angles_.push_back(reducedAngle(-std::acos(cosine)));
      }
    }
    for (const double sine : {(bottom_ - y_) / radiusY_, (top_ - y_) / radiusY_}) {
      if (std::abs(sine) <= 1) {
        angles_.push_back(reducedAngle(std::asin(sine)));
        angles_.push_back(reducedAngle(M_PI - std::asin(sine)));
      }
    }
    std::sort(angles_.begin(), angles_.end());
    findPassages();
  }
  // Points at which the ellipse enters or leaves the box.
  std::size_t passages() const { return entries_.size() + exits_.size(); }
  bool isOnePiece() const { return entries_.size() == 1 && exits_.size() == 1; }
  double start() const { return entries_.front(); }
  double stop() const { return exits_.front(); }

private:
  bool isInside(double angle) const {
    const double x = x_ + radiusX_ * std::cos(angle), y = y_ + radiusY_ * std::sin(angle);
    return x > left_ && x < right_ && y > bottom_ && y < top_;
  }
  void findPassages() {
    constexpr double kSame = 1e-9;
    if (angles_.empty()) {
      return;
    }
    bool isInsideBefore = isInside((angles_.back() - 2 * M_PI + angles_.front()) / 2);
    for (std::size_t i = 0; i < angles_.size(); ++i) {
      const double next = i + 1 < angles_.size() ? angles_[i + 1] : angles_.front() + 2 * M_PI;
      if (next - angles_[i] < kSame) {
        continue; // the corner of a box, or an edge that only touches
      }
      const bool isInsideAfter = isInside((angles_[i] + next) / 2);
      if (isInsideAfter != isInsideBefore) {
        (isInsideAfter ? entries_ : exits_).push_back(angles_[i]);
      }
      isInsideBefore = isInsideAfter;
    }
  }

  double left_, bottom_, right_, top_;
  double x_, y_, radiusX_, radiusY_;
  std::vector<double> angles_, entries_, exits_;
};

// Rounding to the grid may make half an ellipse a little more.
constexpr double kHalfTurnSlack = 1e-2;

} // namespace

oaArc *oaArc::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaBox &ellipseBBox,
                     oaDouble startAngle, oaDouble stopAngle) {
  DesignDatabase &design = designOfShapes(block);
  checkArc(design.label() + ": ", ellipseBBox, startAngle, stopAngle);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  const ArcTable::Arc arc = {ellipseBBox, startAngle, stopAngle};
  const Row payload = design.arcs.addRow();
  design.arcs.arcs.set(payload, arc);
  return shapeAt<oaArc>(design, addShape(design, layerNum, purposeNum, oacArcType, arcBox(arc), payload));
}

void oaArc::calcArc(const oaPoint &p1, const oaPoint &p2, const oaPoint &p3, oaBox &ellipseBBox, oaDouble &startAngle,
                    oaDouble &stopAngle) {
  // The circle's centre, seen from p1 (Cramer's rule on the two perpendicular bisectors).
  const double ax = double(p2.x()) - p1.x(), ay = double(p2.y()) - p1.y();
  const double bx = double(p3.x()) - p1.x(), by = double(p3.y()) - p1.y();
  const double cross = ax * by - ay * bx;
  if (cross == 0) {
    raiseDesign(oacArcPointsColinear, "an arc over three points on one line");
  }
  const double aa = ax * ax + ay * ay, bb = bx * bx + by * by;
  const double x = (by * aa - ay * bb) / (2 * cross), y = (ax * bb - bx * aa) / (2 * cross);
  const double radius = std::hypot(x, y);
  double first = std::atan2(-y, -x), last = std::atan2(by - y, bx - x);
  if (cross < 0) {
    std::swap(first, last);
  }
  if (sweepOf(first, last) > M_PI + kHalfTurnSlack) {
    raiseDesign(oacArcTooLarge, "an arc of more than half a turn");
  }
  ellipseBBox = oaBox(toCoord(p1.x() + x - radius), toCoord(p1.y() + y - radius), toCoord(p1.x() + x + radius),
                      toCoord(p1.y() + y + radius));
  startAngle = reducedAngle(first);
  stopAngle = reducedAngle(last);
}

void oaArc::calcArc(const oaBox &ellipseBBox, oaBox &bBox, oaDouble &startAngle, oaDouble &stopAngle) {
  if (ellipseBBox.left() >= ellipseBBox.right() || ellipseBBox.bottom() >= ellipseBBox.top()) {
    raiseDesign(oacArcEllipseBBoxInvalid, "the box of an arc's ellipse is inverted or flat");
  }
  EllipseInBox arc(ellipseBBox, bBox, 0);
  if (!arc.isOnePiece()) {
    // A box that was rounded to the grid may cut off the extremes.
    arc = EllipseInBox(ellipseBBox, bBox, 0.5);
  }
  if (!arc.isOnePiece()) {
    raiseDesign(oacArcWrongNumIntercepts,
                "the box cuts the ellipse at " + std::to_string(arc.passages()) + " points, expected 2");
  }
  if (sweepOf(arc.start(), arc.stop()) > M_PI + kHalfTurnSlack) {
    raiseDesign(oacArcTooLarge, "an arc of more than half a turn");
  }
  startAngle = arc.start();
  stopAngle = arc.stop();
}

void oaArc::calcBBox(const oaBox &ellipseBBox, oaDouble startAngle, oaDouble stopAngle, oaBox &bBox) {
  checkArc("", ellipseBBox, startAngle, stopAngle);
  bBox = arcBox({ellipseBBox, startAngle, stopAngle});
}

void oaArc::genPoints(const oaBox &ellipseBBox, oaDouble startAngle, oaDouble stopAngle, oaUInt4 numEdges,
                      oaPointArray &boundary) {
  checkArc("", ellipseBBox, startAngle, stopAngle);
  checkEdges(numEdges);
  ellipsePoints(ellipseBBox, startAngle, stopAngle, numEdges, boundary);
}

void oaArc::getEllipseBBox(oaBox &bBox) const { bBox = ArcRow(this).arc.ellipse; }
oaDouble oaArc::getStartAngle() const { return ArcRow(this).arc.startRadians; }
oaDouble oaArc::getStopAngle() const { return ArcRow(this).arc.stopRadians; }

void oaArc::getPoints(oaPointArray &points, oaUInt4 numSegs) const {
  const ArcRow at(this);
  checkEdges(numSegs);
  ellipsePoints(at.arc.ellipse, at.arc.startRadians, at.arc.stopRadians, numSegs, points);
}

void oaArc::set(const oaBox &ellipseBBox, oaDouble startAngle, oaDouble stopAngle) {
  ArcRow at(this);
  checkArc(at.design.label() + ": ", ellipseBBox, startAngle, stopAngle);
  at.arc = {ellipseBBox, startAngle, stopAngle};
  at.design.arcs.arcs.set(at.payload, at.arc);
  setShapeBox(at.design, at.row, arcBox(at.arc));
}

oaLine *oaArc::convertToLine(oaUInt4 numSides) {
  const ArcRow at(this);
  oaPointArray points;
  getPoints(points, numSides);
  convertShape(at.design, at.row, oacLineType, addOutline(at.design, points), boxOf(points));
  return shapeAt<oaLine>(at.design, at.row);
}

} // namespace OpenAccess_4
