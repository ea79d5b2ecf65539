#ifndef SHAPEGEOMETRY_H
#define SHAPEGEOMETRY_H

#include "hosterror.h"

#include <QPolygon>
#include <QRect>

#include <optional>
#include <vector>

// Plain geometry on lists of points in database units, over the whole range of 32 bits.

// A coordinate that leaves the 32-bit range. The message does not say where; whoever knows the place adds it.
class CoordinateError : public HostError {
public:
  using HostError::HostError;
};

// The corner points of a closed outline: without a repeated closing point, coincident neighbours, and points on the
// line through their neighbours (spikes included). Fewer than three points are left of an outline without area.
QPolygon withoutRedundantPoints(const QPolygon &outline);

// The rectangle, when the corner points (of withoutRedundantPoints()) form one that is parallel to the axes. Its stored
// corners are left, top, right and bottom as saveBox() wants them: bottom() is the smaller y.
std::optional<QRect> asRectangle(const QPolygon &corners);

// The centre line of a path in pieces without coincident neighbours and without points in the middle of a straight
// line. There is more than one piece only where the line turns straight back. A line that is one point gives no piece.
std::vector<QPolygon> pathPieces(const QPolygon &line);

// A path as the writing operations can express it: flush, round or extended by half the width at both ends, or as its
// outline.
struct WritablePath {
  QPolygon points;
  int caps = 0;
  bool isOutline = false;
};

// Expresses a path whose ends are extended by any lengths (negative: cut back). Ends on an axis-parallel segment are
// moved; other extensions give the outline. `line` is one of pathPieces(). Throws CoordinateError where a point leaves
// the 32-bit range.
WritablePath expressPath(const QPolygon &line, int width, int beginExtension, int endExtension);

// The outline of a path with mitred corners, bevelled where the mitre would reach further than four half widths.
QPolygon pathOutline(const QPolygon &line, int width, int beginExtension, int endExtension);

// The nearest integer. Throws CoordinateError where it does not fit in 32 bits.
int roundToDbu(double value);
// The same value. Throws CoordinateError where it does not fit in 32 bits.
int narrowedToDbu(qint64 value);

#endif
