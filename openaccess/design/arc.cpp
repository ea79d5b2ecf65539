#include "oa/oaArc.h"

#include "boundaries.h"
#include "oa/oaLine.h"
#include "shapeaccess.h"

#include <cmath>

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

  explicit ArcRow(const oaArc *object) : ShapeRow(shapeRow(object, oacArcType, arcsOf)), arc(design.arcs.arcs[payload]) {
    if (!std::isfinite(arc.startRadians) || !std::isfinite(arc.stopRadians)) {
      raiseCorrupted(design.arcs, payload, "an angle is no number");
    }
  }
};

// Where the ellipse crosses the edges of a box: the angle, and whether it goes in or out there.
struct Crossing {
  double angle;
  bool isEntry;
};

class BoxCrossings {
public:
  BoxCrossings(const oaBox &ellipse, const oaBox &box) : box_(box) {
    x_ = (double(ellipse.left()) + ellipse.right()) / 2;
    y_ = (double(ellipse.bottom()) + ellipse.top()) / 2;
    radiusX_ = (double(ellipse.right()) - ellipse.left()) / 2;
    radiusY_ = (double(ellipse.top()) - ellipse.bottom()) / 2;
    for (const double edge : {double(box.left()), double(box.right())}) {
      const double cosine = (edge - x_) / radiusX_;
      if (std::abs(cosine) <= 1) {
        consider(std::acos(cosine));
        consider(-std::acos(cosine));
      }
    }
    for (const double edge : {double(box.bottom()), double(box.top())}) {
      const double sine = (edge - y_) / radiusY_;
      if (std::abs(sine) <= 1) {
        consider(std::asin(sine));
        consider(M_PI - std::asin(sine));
      }
    }
  }
  const std::vector<Crossing> &crossings() const { return crossings_; }

private:
  bool isInside(double angle) const {
    const double x = x_ + radiusX_ * std::cos(angle), y = y_ + radiusY_ * std::sin(angle);
    // An arc may run along an edge of its own box; the grid is coarser than this slack.
    constexpr double kSlackDbu = 1e-3;
    return x >= box_.left() - kSlackDbu && x <= box_.right() + kSlackDbu && y >= box_.bottom() - kSlackDbu &&
           y <= box_.top() + kSlackDbu;
  }
  void consider(double angle) {
    constexpr double kStep = 1e-3, kSame = 1e-6;
    const bool isInsideBefore = isInside(angle - kStep), isInsideAfter = isInside(angle + kStep);
    if (isInsideBefore == isInsideAfter) {
      return; // touches the edge
    }
    const double reduced = reducedAngle(angle);
    for (const Crossing &known : crossings_) {
      const double apart = std::abs(known.angle - reduced);
      if (apart < kSame || 2 * M_PI - apart < kSame) {
        return;
      }
    }
    crossings_.push_back({reduced, isInsideAfter});
  }

  oaBox box_;
  double x_, y_, radiusX_, radiusY_;
  std::vector<Crossing> crossings_;
};

// Rounding of the points to the grid may make half a circle a little more.
constexpr double kHalfTurnSlack = 1e-9;

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
  const BoxCrossings found(ellipseBBox, bBox);
  const std::vector<Crossing> &crossings = found.crossings();
  if (crossings.size() != 2 || crossings[0].isEntry == crossings[1].isEntry) {
    raiseDesign(oacArcWrongNumIntercepts, "the box cuts the ellipse at " + std::to_string(crossings.size()) +
                                              " points, expected 2");
  }
  const Crossing &entry = crossings[0].isEntry ? crossings[0] : crossings[1];
  const Crossing &exit = crossings[0].isEntry ? crossings[1] : crossings[0];
  if (sweepOf(entry.angle, exit.angle) > M_PI + kHalfTurnSlack) {
    raiseDesign(oacArcTooLarge, "an arc of more than half a turn");
  }
  startAngle = entry.angle;
  stopAngle = exit.angle;
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
