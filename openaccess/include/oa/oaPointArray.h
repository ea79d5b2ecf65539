// Point lists as polygons (closed) and lines (open).
#ifndef OAPOINTARRAY_H
#define OAPOINTARRAY_H

#include "oa/oaArray.h"
#include "oa/oaBox.h"

namespace OpenAccess_4 {

class oaPointArray : public oaArray<oaPoint> {
public:
  using oaArray<oaPoint>::oaArray;
  oaPointArray(const oaPointArray &pointsIn, const oaTransform &xform) { pointsIn.transform(xform, *this); }
  oaPointArray(const oaPointArray &pointsIn, const oaPoint &offset) { pointsIn.transform(offset, *this); }
  /// The four corners clockwise from the lower left.
  oaPointArray(const oaBox &rectIn) : oaArray<oaPoint>(4) {
    rectIn.toPoints(elements_.get());
    numElements_ = 4;
  }

  /// Whether two edges cross; touching and overlapping edges do not.
  oaBoolean isSelfIntersecting(oaBoolean isClosed = true) const;
  /// Whether all edges are horizontal or vertical.
  oaBoolean isOrthogonal(oaBoolean isClosed = true) const;
  /// Whether it is, once compressed, a rectangle along the axes.
  oaBoolean isRectangle() const;
  oaBoolean onEdge(const oaPoint &point, oaBoolean isClosed = true) const;
  /// Whether the closed polygon (even-odd) holds the point.
  oaBoolean contains(const oaPoint &point, oaBoolean includeEdges = true) const;
  /// Whether the closed polygon holds the whole box; it may touch the edges.
  oaBoolean contains(const oaBox &box) const;
  /// Whether polygon or line share a point with the box.
  oaBoolean overlaps(const oaBox &box, oaBoolean closed = true) const;
  /// The square of the distance to the closed polygon, 0 inside; infinite without points.
  oaDouble distanceFrom2(const oaPoint &point) const;
  /// In square database units, whatever the direction.
  oaDouble getArea() const;

  /// Whether compress() would change the array: neighbours that coincide or three of them on one line. In a closed one
  /// the ends are neighbours.
  oaBoolean hasExtraPoints(oaBoolean isClosed = true) const;
  /// Drops points that equal their neighbour and the middle one of three neighbours on one line, until there are no
  /// more. A tip at which an outline turns back on itself is such a middle one.
  void compress(oaPointArray &pointsOut, oaBoolean isClosed = true) const;
  void compress(oaBoolean isClosed = true) { compress(*this, isClosed); }

  void transform(const oaTransform &xform, oaPointArray &result) const;
  void transform(const oaTransform &xform) { transform(xform, *this); }
  void transform(const oaPoint &offset, oaPointArray &result) const { transform(oaTransform(offset), result); }
  void transform(const oaPoint &offset) { transform(offset, *this); }
  void transform(oaDouble scale, oaDouble angle, oaPointArray &result) const;
  void transform(oaDouble scale, oaDouble angle) { transform(scale, angle, *this); }
  /// Inverted when there are no points.
  void getBBox(oaBox &bBox) const;
};

class oaBoxArray : public oaArray<oaBox> {
public:
  using oaArray<oaBox>::oaArray;
};

} // namespace OpenAccess_4

#endif
