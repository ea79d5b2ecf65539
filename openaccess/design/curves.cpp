#include "boundaries.h"

#include "shapeaccess.h"

#include <cmath>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr double kTwoPi = 6.283185307179586476925286766559;

struct Ellipse {
  double x, y, radiusX, radiusY;

  explicit Ellipse(const oaBox &box)
      : x((double(box.left()) + box.right()) / 2), y((double(box.bottom()) + box.top()) / 2),
        radiusX((double(box.right()) - box.left()) / 2), radiusY((double(box.top()) - box.bottom()) / 2) {}
  oaPoint at(double angle) const {
    return oaPoint(toCoord(x + radiusX * std::cos(angle)), toCoord(y + radiusY * std::sin(angle)));
  }
};

} // namespace

void ellipsePoints(const oaBox &box, double start, double stop, oaUInt4 edges, oaPointArray &points) {
  const Ellipse ellipse(box);
  const double sweep = sweepOf(start, stop);
  points.setNumElements(edges + 1);
  for (oaUInt4 i = 0; i <= edges; ++i) {
    points[i] = ellipse.at(start + sweep * i / edges);
  }
}

void ellipseBoundary(const oaBox &box, oaUInt4 sides, oaPointArray &points) {
  const Ellipse ellipse(box);
  points.setNumElements(sides);
  for (oaUInt4 i = 0; i < sides; ++i) {
    points[i] = ellipse.at(kTwoPi * i / sides);
  }
}

void donutBoundary(const DonutTable::Donut &donut, oaUInt4 sides, oaPointArray &points) {
  points.setNumElements(2 * (sides + 1));
  const auto at = [&](double radius, oaUInt4 side) {
    const double angle = kTwoPi * (side % sides) / sides;
    return oaPoint(toCoord(donut.centre.x() + radius * std::cos(angle)),
                   toCoord(donut.centre.y() + radius * std::sin(angle)));
  };
  for (oaUInt4 i = 0; i <= sides; ++i) {
    points[i] = at(donut.radiusDbu, i);
    points[sides + 1 + i] = at(donut.holeRadiusDbu, sides - i);
  }
}

oaBox donutBox(const DonutTable::Donut &donut, std::uint32_t radius) {
  const std::int64_t reach = radius;
  return boxAround(donut.centre, -reach, -reach, reach, reach);
}

oaBox dotBox(const DotTable::Dot &dot) {
  const std::int64_t left = -std::int64_t(dot.widthDbu / 2), bottom = -std::int64_t(dot.heightDbu / 2);
  return boxAround(dot.location, left, bottom, left + dot.widthDbu, bottom + dot.heightDbu);
}

double reducedAngle(double angle) {
  const double reduced = std::fmod(angle, kTwoPi);
  if (reduced >= 0) {
    return reduced;
  }
  // A tiny negative angle may come out as the full circle.
  return reduced + kTwoPi < kTwoPi ? reduced + kTwoPi : 0;
}

double sweepOf(double start, double stop) {
  const double sweep = reducedAngle(stop) - reducedAngle(start);
  return sweep > 0 ? sweep : sweep + kTwoPi;
}

oaBox arcBox(const ArcTable::Arc &arc) {
  const Ellipse ellipse(arc.ellipse);
  const double start = reducedAngle(arc.startRadians);
  const double stop = start + sweepOf(arc.startRadians, arc.stopRadians);
  const oaPoint first = ellipse.at(start), last = ellipse.at(stop);
  oaBox box(first, first);
  box.merge(last);
  // The extremes of the ellipse that the arc passes, in up to two turns.
  for (int quarter = 0; quarter < 8; ++quarter) {
    const double angle = quarter * kTwoPi / 4;
    if (angle > start && angle < stop) {
      box.merge(ellipse.at(angle));
    }
  }
  return box;
}

} // namespace kit
} // namespace OpenAccess_4
