#ifndef RENDERGEOMETRY_H
#define RENDERGEOMETRY_H

// Plane geometry of drawings in double precision, so that coordinates of the full 32-bit range keep every unit.

#include <limits>

#include <QPolygonF>
#include <QRectF>

#include "orientation.h"

// A rectangle that grows; empty until the first point. y grows upwards.
struct Extent {
  double left = std::numeric_limits<double>::infinity();
  double bottom = std::numeric_limits<double>::infinity();
  double right = -std::numeric_limits<double>::infinity();
  double top = -std::numeric_limits<double>::infinity();

  bool isEmpty() const { return left > right; }
  double width() const { return isEmpty() ? 0 : right - left; }
  double height() const { return isEmpty() ? 0 : top - bottom; }
  void add(double x, double y);
  void add(const Extent &other);
};

// Where a cell lies in the top cell: orientation about its origin, then the shift.
struct Placement {
  Orientation orientation;
  double x = 0;
  double y = 0;

  QPointF map(double cellX, double cellY) const;
  Extent map(const Extent &extent) const;
  // The placement of a cell that is placed so in the cell of this placement.
  Placement of(Orientation childOrientation, double childX, double childY) const;
};

// From the top cell's database units to the picture, where y grows downwards.
struct View {
  // Shows `shown` in the rectangle `area` of the picture: whole, centred, its aspect ratio kept. `shown` must not be
  // empty; it may have no width, no height or neither.
  View(const Extent &shown, const QRectF &area);

  QPointF map(const QPointF &dbu) const {
    return {(dbu.x() - centre.x()) * scale + middle.x(), (centre.y() - dbu.y()) * scale + middle.y()};
  }
  QRectF map(const Extent &extent) const;

  double scale; // pixels a database unit
  QPointF centre;
  QPointF middle;
};

// A placement and a view in one step; made once for each cell that is painted.
struct CellToPicture {
  CellToPicture(const View &view, const Placement &placement);

  QPointF map(double x, double y) const { return {xx * x + xy * y + dx, yx * x + yy * y + dy}; }
  QRectF map(double left, double bottom, double right, double top) const;

  double xx, xy, yx, yy, dx, dy;
};

// What a path does beyond its first and last point.
struct PathEnds {
  bool isRound = false;
  double begin = 0; // lengths by which flat ends are extended; may be negative
  double end = 0;
};

// The outline of a path: mitred corners, bevelled where they are sharp. `width` must be positive. Any repeated points
// are skipped; a path that is a single point gives a square or circle of its width, as its ends ask, and nothing where
// they are flush.
QPolygonF pathOutline(const QPolygonF &centreLine, double width, const PathEnds &ends);

// The part of a polygon inside a rectangle; may run along the rectangle's sides.
QPolygonF clippedPolygon(const QPolygonF &polygon, const QRectF &area);

// The part of a line inside a rectangle; false when there is none.
bool clipLine(QPointF *from, QPointF *to, const QRectF &area);

#endif
