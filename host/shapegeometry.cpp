#include "shapegeometry.h"

#include <cmath>
#include <limits>

namespace {

// Differences of coordinates take 33 bits, their products 66.
__extension__ using Wide = __int128;

struct Vector {
  qint64 x;
  qint64 y;
};

Vector difference(const QPoint &from, const QPoint &to) {
  return {static_cast<qint64>(to.x()) - from.x(), static_cast<qint64>(to.y()) - from.y()};
}

bool isOnLine(const QPoint &a, const QPoint &b, const QPoint &c) {
  const Vector u = difference(a, b);
  const Vector v = difference(b, c);
  return static_cast<Wide>(u.x) * v.y == static_cast<Wide>(u.y) * v.x;
}

// For three points on a line: c lies on the side of b that a is on.
bool turnsBack(const QPoint &a, const QPoint &b, const QPoint &c) {
  const Vector u = difference(a, b);
  const Vector v = difference(b, c);
  return static_cast<Wide>(u.x) * v.x + static_cast<Wide>(u.y) * v.y < 0;
}

struct Direction {
  double x;
  double y;
};

Direction unitDirection(const QPoint &from, const QPoint &to) {
  const Vector d = difference(from, to);
  const double length = std::hypot(static_cast<double>(d.x), static_cast<double>(d.y));
  return {static_cast<double>(d.x) / length, static_cast<double>(d.y) / length};
}

// The points of one side of a path, the left one for a positive `offset`.
class SideBuilder {
public:
  explicit SideBuilder(double offset) : offset_(offset) {}

  void addEnd(const QPoint &point, Direction along, double extension) {
    add(point.x() + along.x * extension - along.y * offset_, point.y() + along.y * extension + along.x * offset_);
  }

  void addCorner(const QPoint &point, Direction before, Direction after) {
    // The mitre's tip lies on the bisector of the normals, at offset / cos(half the turn).
    const double cosTurn = before.x * after.x + before.y * after.y;
    const double cosHalfSquared = (1 + cosTurn) / 2;
    constexpr double kMitreLimit = 4;
    if (cosHalfSquared * kMitreLimit * kMitreLimit < 1) {
      addEnd(point, before, 0);
      addEnd(point, after, 0);
      return;
    }
    const double scale = offset_ / (2 * cosHalfSquared);
    add(point.x() - (before.y + after.y) * scale, point.y() + (before.x + after.x) * scale);
  }

  const QPolygon &points() const { return points_; }

private:
  void add(double x, double y) { points_.append(QPoint(roundToDbu(x), roundToDbu(y))); }

  double offset_;
  QPolygon points_;
};

QPolygon side(const QPolygon &line, double offset, int beginExtension, int endExtension) {
  SideBuilder builder(offset);
  Direction before = unitDirection(line[0], line[1]);
  builder.addEnd(line[0], before, -static_cast<double>(beginExtension));
  for (int i = 1; i + 1 < line.size(); ++i) {
    const Direction after = unitDirection(line[i], line[i + 1]);
    builder.addCorner(line[i], before, after);
    before = after;
  }
  builder.addEnd(line.last(), before, endExtension);
  return builder.points();
}

// Moves `end` away from its neighbour by `extension`, when the segment is parallel to an axis and stays one.
bool moveEnd(QPoint &end, const QPoint &neighbour, int extension) {
  if (extension == 0)
    return true;
  const Vector d = difference(neighbour, end);
  if (d.x != 0 && d.y != 0)
    return false;
  const qint64 length = std::abs(d.x) + std::abs(d.y);
  if (length + extension <= 0)
    return false;
  const qint64 signX = d.x == 0 ? 0 : d.x / std::abs(d.x);
  const qint64 signY = d.y == 0 ? 0 : d.y / std::abs(d.y);
  end = QPoint(narrowedToDbu(end.x() + signX * extension), narrowedToDbu(end.y() + signY * extension));
  return true;
}

} // namespace

QPolygon withoutRedundantPoints(const QPolygon &outline) {
  QPolygon corners;
  corners.reserve(outline.size());
  const auto dropRedundantEnd = [&corners](const QPoint &next) {
    while (corners.size() >= 2 && isOnLine(corners[corners.size() - 2], corners.last(), next))
      corners.removeLast();
    if (!corners.isEmpty() && corners.last() == next)
      corners.removeLast();
  };
  for (const QPoint &point : outline) {
    dropRedundantEnd(point);
    corners.append(point);
  }
  // Around the place where the list closes, points may be redundant at both ends, and each removal may make another so.
  int first = 0;
  bool changed = true;
  while (changed && corners.size() - first >= 2) {
    changed = false;
    const int last = corners.size() - 1;
    if (corners[first] == corners[last] ||
        (last - first >= 2 && isOnLine(corners[last - 1], corners[last], corners[first]))) {
      corners.removeLast();
      changed = true;
    } else if (last - first >= 2 && isOnLine(corners[last], corners[first], corners[first + 1])) {
      ++first;
      changed = true;
    }
  }
  if (first > 0)
    corners.remove(0, first);
  return corners.size() < 3 ? QPolygon() : corners;
}

std::optional<QRect> asRectangle(const QPolygon &corners) {
  if (corners.size() != 4)
    return std::nullopt;
  const bool startsUpright = corners[0].x() == corners[1].x() && corners[1].y() == corners[2].y() &&
                             corners[2].x() == corners[3].x() && corners[3].y() == corners[0].y();
  const bool startsFlat = corners[0].y() == corners[1].y() && corners[1].x() == corners[2].x() &&
                          corners[2].y() == corners[3].y() && corners[3].x() == corners[0].x();
  if (!startsUpright && !startsFlat)
    return std::nullopt;
  const QPoint &a = corners[0];
  const QPoint &c = corners[2];
  return QRect(QPoint(qMin(a.x(), c.x()), qMax(a.y(), c.y())), QPoint(qMax(a.x(), c.x()), qMin(a.y(), c.y())));
}

std::vector<QPolygon> pathPieces(const QPolygon &line) {
  std::vector<QPolygon> pieces;
  QPolygon piece;
  for (const QPoint &point : line) {
    if (!piece.isEmpty() && piece.last() == point)
      continue;
    if (piece.size() >= 2 && isOnLine(piece[piece.size() - 2], piece.last(), point)) {
      if (turnsBack(piece[piece.size() - 2], piece.last(), point)) {
        const QPoint turn = piece.last();
        pieces.push_back(piece);
        piece = QPolygon();
        piece.append(turn);
      } else {
        piece.removeLast();
      }
    }
    piece.append(point);
  }
  if (piece.size() >= 2)
    pieces.push_back(piece);
  return pieces;
}

WritablePath expressPath(const QPolygon &line, int width, int beginExtension, int endExtension) {
  if (beginExtension == 0 && endExtension == 0)
    return {line, 0, false};
  if (beginExtension == endExtension && static_cast<qint64>(beginExtension) * 2 == width)
    return {line, 2, false};
  WritablePath path{line, 0, false};
  // One after the other, since the two ends of a single segment may be cut back by more than its length.
  if (moveEnd(path.points.first(), QPoint(path.points[1]), beginExtension) &&
      moveEnd(path.points.last(), QPoint(path.points[path.points.size() - 2]), endExtension))
    return path;
  return {pathOutline(line, width, beginExtension, endExtension), 0, true};
}

QPolygon pathOutline(const QPolygon &line, int width, int beginExtension, int endExtension) {
  QPolygon outline = side(line, width / 2.0, beginExtension, endExtension);
  const QPolygon right = side(line, -width / 2.0, beginExtension, endExtension);
  for (int i = right.size() - 1; i >= 0; --i)
    outline.append(right[i]);
  return outline;
}

int roundToDbu(double value) {
  const double rounded = std::round(value);
  if (!(rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max()))
    throw CoordinateError(QStringLiteral("coordinate %1 does not fit in 32 bits").arg(rounded, 0, 'g', 17));
  return static_cast<int>(rounded);
}

int narrowedToDbu(qint64 value) {
  if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
    throw CoordinateError(QStringLiteral("coordinate %1 does not fit in 32 bits").arg(value));
  return static_cast<int>(value);
}
