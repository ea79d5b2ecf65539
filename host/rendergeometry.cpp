#include "rendergeometry.h"

#include <algorithm>
#include <cmath>

void Extent::add(double x, double y) {
  left = std::min(left, x);
  bottom = std::min(bottom, y);
  right = std::max(right, x);
  top = std::max(top, y);
}

void Extent::add(const Extent &other) {
  if (other.isEmpty())
    return;
  add(other.left, other.bottom);
  add(other.right, other.top);
}

QPointF Placement::map(double cellX, double cellY) const {
  const double mirroredY = orientation.isMirrored() ? -cellY : cellY;
  switch (orientation.quarterTurns()) {
  case 1:
    return {x - mirroredY, y + cellX};
  case 2:
    return {x - cellX, y - mirroredY};
  case 3:
    return {x + mirroredY, y - cellX};
  default:
    return {x + cellX, y + mirroredY};
  }
}

Extent Placement::map(const Extent &extent) const {
  Extent mapped;
  if (extent.isEmpty())
    return mapped;
  const QPointF first = map(extent.left, extent.bottom);
  const QPointF second = map(extent.right, extent.top);
  mapped.add(first.x(), first.y());
  mapped.add(second.x(), second.y());
  return mapped;
}

Placement Placement::of(Orientation childOrientation, double childX, double childY) const {
  const QPointF shift = map(childX, childY);
  return {childOrientation.then(orientation), shift.x(), shift.y()};
}

View::View(const Extent &shown, const QRectF &area)
    : centre((shown.left + shown.right) / 2, (shown.bottom + shown.top) / 2), middle(area.center()) {
  // A layout without any size is shown as if it were this large.
  const double kNominalDbu = 1000;
  const double width = shown.width(), height = shown.height();
  if (width <= 0 && height <= 0)
    scale = std::min(area.width(), area.height()) / kNominalDbu;
  else if (width <= 0)
    scale = area.height() / height;
  else if (height <= 0)
    scale = area.width() / width;
  else
    scale = std::min(area.width() / width, area.height() / height);
}

QRectF View::map(const Extent &extent) const {
  return QRectF(map(QPointF(extent.left, extent.top)), map(QPointF(extent.right, extent.bottom)));
}

CellToPicture::CellToPicture(const View &view, const Placement &placement) {
  const QPointF origin = view.map(QPointF(placement.x, placement.y));
  const Placement turn{placement.orientation, 0, 0};
  const QPointF xAxis = turn.map(1, 0), yAxis = turn.map(0, 1);
  xx = xAxis.x() * view.scale;
  yx = -xAxis.y() * view.scale;
  xy = yAxis.x() * view.scale;
  yy = -yAxis.y() * view.scale;
  dx = origin.x();
  dy = origin.y();
}

QRectF CellToPicture::map(double left, double bottom, double right, double top) const {
  const QPointF a = map(left, bottom), b = map(right, top);
  return QRectF(QPointF(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                QPointF(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
}

namespace {

QPointF leftNormal(const QPointF &direction) { return {-direction.y(), direction.x()}; }

QPolygonF withoutRepeats(const QPolygonF &points) {
  QPolygonF kept;
  for (const QPointF &point : points)
    if (kept.isEmpty() || kept.last().x() != point.x() || kept.last().y() != point.y())
      kept.append(point);
  return kept;
}

// Half a circle from centre + `from` to centre - `from`, counter-clockwise, without its two ends.
void appendHalfCircle(QPolygonF *outline, const QPointF &centre, const QPointF &from) {
  const int kSteps = 16;
  const double kPi = 3.14159265358979323846;
  for (int step = 1; step < kSteps; ++step) {
    const double angle = kPi * step / kSteps;
    const double c = std::cos(angle), s = std::sin(angle);
    outline->append(centre + QPointF(from.x() * c - from.y() * s, from.x() * s + from.y() * c));
  }
}

QPolygonF pointOutline(const QPointF &point, double half, const PathEnds &ends) {
  QPolygonF outline;
  if (ends.isRound) {
    const QPointF radius(half, 0);
    outline.append(point + radius);
    appendHalfCircle(&outline, point, radius);
    outline.append(point - radius);
    appendHalfCircle(&outline, point, -radius);
  } else if (ends.begin + ends.end > 0) {
    outline = QPolygonF(QRectF(point.x() - ends.begin, point.y() - half, ends.begin + ends.end, 2 * half));
    outline.removeLast(); // the closing point
  }
  return outline;
}

// The corner points of one side, `side` being 1 for left and -1 for right.
void appendCorner(QPolygonF *outline, const QPointF &corner, const QPointF &normalIn, const QPointF &normalOut,
                  double half, int side) {
  const double cosine = QPointF::dotProduct(normalIn, normalOut);
  const double kSharpest = -0.7; // turns of more than about 135 degrees are bevelled
  if (cosine > kSharpest) {
    outline->append(corner + (normalIn + normalOut) * (side * half / (1 + cosine)));
  } else {
    outline->append(corner + normalIn * (side * half));
    outline->append(corner + normalOut * (side * half));
  }
}

} // namespace

QPolygonF pathOutline(const QPolygonF &centreLine, double width, const PathEnds &ends) {
  QPolygonF line = withoutRepeats(centreLine);
  const double half = width / 2;
  if (line.isEmpty())
    return line;
  if (line.size() == 1)
    return pointOutline(line.first(), half, ends);

  QPolygonF directions;
  for (int i = 0; i + 1 < line.size(); ++i) {
    const QPointF step = line[i + 1] - line[i];
    directions.append(step / std::hypot(step.x(), step.y()));
  }
  const QPointF firstNormal = leftNormal(directions.first()), lastNormal = leftNormal(directions.last());
  const QPointF start = ends.isRound ? line.first() : line.first() - directions.first() * ends.begin;
  const QPointF stop = ends.isRound ? line.last() : line.last() + directions.last() * ends.end;

  // Along the right side, around the end, back along the left side: counter-clockwise.
  QPolygonF outline;
  outline.append(start - firstNormal * half);
  for (int i = 1; i + 1 < line.size(); ++i)
    appendCorner(&outline, line[i], leftNormal(directions[i - 1]), leftNormal(directions[i]), half, -1);
  outline.append(stop - lastNormal * half);
  if (ends.isRound)
    appendHalfCircle(&outline, stop, -lastNormal * half);
  outline.append(stop + lastNormal * half);
  for (int i = line.size() - 2; i > 0; --i)
    appendCorner(&outline, line[i], leftNormal(directions[i]), leftNormal(directions[i - 1]), half, 1);
  outline.append(start + firstNormal * half);
  if (ends.isRound)
    appendHalfCircle(&outline, start, firstNormal * half);
  return outline;
}

namespace {

// One step of Sutherland and Hodgman's clipping (Reentrant Polygon Clipping, CACM 17, 1974): keeps what lies at or
// above zero of the signed distance a*x + b*y + c.
QPolygonF clippedByLine(const QPolygonF &polygon, double a, double b, double c) {
  QPolygonF kept;
  for (int i = 0; i < polygon.size(); ++i) {
    const QPointF &from = polygon[i], &to = polygon[(i + 1) % polygon.size()];
    const double distanceFrom = a * from.x() + b * from.y() + c, distanceTo = a * to.x() + b * to.y() + c;
    if (distanceFrom >= 0)
      kept.append(from);
    if ((distanceFrom >= 0) != (distanceTo >= 0))
      kept.append(from + (to - from) * (distanceFrom / (distanceFrom - distanceTo)));
  }
  return kept;
}

} // namespace

QPolygonF clippedPolygon(const QPolygonF &polygon, const QRectF &area) {
  QPolygonF kept = clippedByLine(polygon, 1, 0, -area.left());
  kept = clippedByLine(kept, -1, 0, area.right());
  kept = clippedByLine(kept, 0, 1, -area.top());
  return clippedByLine(kept, 0, -1, area.bottom());
}

bool clipLine(QPointF *from, QPointF *to, const QRectF &area) {
  // Liang and Barsky, A New Concept and Method for Line Clipping, ACM TOG 3, 1984.
  const QPointF step = *to - *from;
  const double directions[] = {-step.x(), step.x(), -step.y(), step.y()};
  const double distances[] = {from->x() - area.left(), area.right() - from->x(), from->y() - area.top(),
                              area.bottom() - from->y()};
  double enter = 0, leave = 1;
  for (int side = 0; side < 4; ++side) {
    if (directions[side] == 0) {
      if (distances[side] < 0)
        return false;
      continue;
    }
    const double at = distances[side] / directions[side];
    if (directions[side] < 0)
      enter = std::max(enter, at);
    else
      leave = std::min(leave, at);
  }
  if (enter > leave)
    return false;
  const QPointF start = *from;
  *from = start + step * enter;
  *to = start + step * leave;
  return true;
}
