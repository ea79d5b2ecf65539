#include "schematicgeometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
// The corners of a whole ellipse; its line is off by a 500th of the radius at most.
constexpr int kCornersOfEllipse = 72;

QPolygonF lineBetween(const QPointF &from, const QPointF &to) { return QPolygonF() << from << to; }

QPolygonF boxOutline(const QPointF &corner, const QPointF &opposite) {
  return QPolygonF({corner, QPointF(opposite.x(), corner.y()), opposite, QPointF(corner.x(), opposite.y()), corner});
}

// From one angle to another of an ellipse with axes along x and y.
QPolygonF ellipseLine(const QPointF &centre, double radiusX, double radiusY, double fromAngle, double toAngle) {
  const int steps = std::max(2, static_cast<int>(std::ceil(kCornersOfEllipse * (toAngle - fromAngle) / (2 * kPi))));
  QPolygonF line;
  line.reserve(steps + 1);
  for (int step = 0; step <= steps; ++step) {
    const double angle = fromAngle + (toAngle - fromAngle) * step / steps;
    line += centre + QPointF(radiusX * std::cos(angle), radiusY * std::sin(angle));
  }
  return line;
}

// The radii of the ellipse about the origin with axes along x and y through two points: the solution of
// x² / rx² + y² / ry² = 1 for both. False when the points do not fix one.
bool ellipseThrough(const QPointF &first, const QPointF &last, double *radiusX, double *radiusY) {
  const double x1 = first.x() * first.x(), y1 = first.y() * first.y();
  const double x2 = last.x() * last.x(), y2 = last.y() * last.y();
  const double determinant = x1 * y2 - x2 * y1;
  const double kSmallest = 1e-6;
  if (std::fabs(determinant) <= kSmallest * (x1 + y1) * (x2 + y2))
    return false;
  const double inverseX = (y2 - y1) / determinant, inverseY = (x1 - x2) / determinant;
  if (inverseX <= 0 || inverseY <= 0)
    return false;
  *radiusX = 1 / std::sqrt(inverseX);
  *radiusY = 1 / std::sqrt(inverseY);
  return true;
}

QPolygonF arcLine(const QPointF &centre, const QPointF &firstPoint, const QPointF &lastPoint) {
  const QPointF first = firstPoint - centre, last = lastPoint - centre;
  double radiusX = std::hypot(first.x(), first.y()), radiusY = radiusX;
  const double lastRadius = std::hypot(last.x(), last.y());
  if (radiusX <= 0 || lastRadius <= 0)
    return lineBetween(firstPoint, lastPoint);
  // The ends of a circle's arc are rounded to whole units, which would bend an ellipse badly.
  const double kRounding = 1.5;
  if (std::fabs(radiusX - lastRadius) <= kRounding)
    radiusX = radiusY = (radiusX + lastRadius) / 2;
  else if (!ellipseThrough(first, last, &radiusX, &radiusY))
    return lineBetween(firstPoint, lastPoint);
  const double fromAngle = std::atan2(first.y() / radiusY, first.x() / radiusX);
  double toAngle = std::atan2(last.y() / radiusY, last.x() / radiusX);
  if (toAngle <= fromAngle)
    toAngle += 2 * kPi; // an arc that ends where it began is the whole ellipse
  return ellipseLine(centre, radiusX, radiusY, fromAngle, toAngle);
}

// `points` are lengths to `side` and, across it, to the left of that direction.
QPolygonF turned(const QPolygonF &points, const QPointF &position, Side side) {
  const QPointF along = unitVector(side), across(-along.y(), along.x());
  QPolygonF result;
  result.reserve(points.size());
  for (const QPointF &point : points)
    result += position + point.x() * along + point.y() * across;
  return result;
}

} // namespace

QPointF unitVector(Side side) {
  switch (side) {
  case Side::Left:
    return {-1, 0};
  case Side::Right:
    return {1, 0};
  case Side::Up:
    return {0, 1};
  case Side::Down:
    return {0, -1};
  }
  return {0, 0};
}

Side oppositeOf(Side side) {
  switch (side) {
  case Side::Left:
    return Side::Right;
  case Side::Right:
    return Side::Left;
  case Side::Up:
    return Side::Down;
  case Side::Down:
    return Side::Up;
  }
  return side;
}

QPolygonF strokeOf(const SchematicShape &shape) {
  const QPolygonF points(shape.points);
  if (points.isEmpty())
    return {};
  switch (shape.kind) {
  case SchematicShape::Kind::Rect:
    return boxOutline(points.first(), points.last());
  case SchematicShape::Kind::Circle: {
    const QPointF centre = (points.first() + points.last()) / 2, radii = (points.last() - points.first()) / 2;
    return ellipseLine(centre, std::fabs(radii.x()), std::fabs(radii.y()), 0, 2 * kPi);
  }
  case SchematicShape::Kind::Polygon: {
    QPolygonF outline = points;
    outline += points.first();
    return outline;
  }
  case SchematicShape::Kind::Polyline:
    return points;
  case SchematicShape::Kind::Arc:
    return points.size() < 3 ? points : arcLine(points[0], points[1], points[2]);
  case SchematicShape::Kind::Text:
  case SchematicShape::Kind::EvalText:
    break;
  }
  return {};
}

Extent extentOf(const QPolygonF &points) {
  Extent extent;
  for (const QPointF &point : points)
    extent.add(point.x(), point.y());
  return extent;
}

bool isInput(const SchematicPort &port) { return port.type.contains(QLatin1String("input")); }

bool isOutput(const SchematicPort &port) { return port.type.contains(QLatin1String("output")); }

std::vector<QPolygonF> portStrokes(const SchematicPort &port, Side side, double unit) {
  const double half = 5 * unit, tip = 6 * unit, length = kPortLength * unit;
  QPolygonF outline;
  if (port.isGlobal) {
    const double stem = length - 4 * unit;
    return {turned(lineBetween(QPointF(0, 0), QPointF(stem, 0)), port.position, side),
            turned(lineBetween(QPointF(stem, -2 * half), QPointF(stem, 2 * half)), port.position, side)};
  }
  // From the place of the connection outwards: pointed where the signal leaves the arrow.
  if (isInput(port))
    outline << QPointF(tip, half) << QPointF(0, 0) << QPointF(tip, -half);
  else
    outline << QPointF(0, half) << QPointF(0, -half);
  if (isOutput(port))
    outline << QPointF(length - tip, -half) << QPointF(length, 0) << QPointF(length - tip, half);
  else
    outline << QPointF(length, -half) << QPointF(length, half);
  outline += outline.first();
  return {turned(outline, port.position, side)};
}

QPolygonF pinStroke(const SchematicPort &pin, Side body, double unit) {
  const double half = 4 * unit;
  QPolygonF outline;
  if (isInput(pin) && isOutput(pin))
    outline << QPointF(half, 0) << QPointF(0, half) << QPointF(-half, 0) << QPointF(0, -half);
  else if (isInput(pin))
    outline << QPointF(half, 0) << QPointF(-half, half) << QPointF(-half, -half);
  else if (isOutput(pin))
    outline << QPointF(-half, 0) << QPointF(half, half) << QPointF(half, -half);
  else
    outline << QPointF(half, half) << QPointF(-half, half) << QPointF(-half, -half) << QPointF(half, -half);
  outline += outline.first();
  return turned(outline, pin.position, body);
}

std::vector<QPolygonF> groundStrokes(const QPointF &position, double unit) {
  const double stem = 10 * unit, gap = 4 * unit;
  std::vector<QPolygonF> strokes{lineBetween(position, position + QPointF(0, -stem))};
  double half = 10 * unit, y = -stem;
  for (int bar = 0; bar < 3; ++bar, half -= gap, y -= gap)
    strokes.push_back(lineBetween(position + QPointF(-half, y), position + QPointF(half, y)));
  return strokes;
}
