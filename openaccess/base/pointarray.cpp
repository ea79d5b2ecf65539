#include "oa/oaPointArray.h"

#include <limits>
#include <vector>

#include "geometry.h"

namespace OpenAccess_4 {

using kit::areCollinear;
using kit::Wide;

namespace {

// Calls `visit` with each edge until it answers true, and says whether it did. A single point is an edge without
// length.
template <class Visit> bool anyEdge(const oaPointArray &points, bool isClosed, Visit visit) {
  const oaUInt4 n = points.getNumElements();
  if (n == 1)
    return visit(points[0], points[0]);
  for (oaUInt4 i = 1; i < n; ++i) {
    if (visit(points[i - 1], points[i]))
      return true;
  }
  return isClosed && n > 1 && visit(points[n - 1], points[0]);
}

enum class Place { outside, onEdge, inside };

// Where the point (x2 / 2, y2 / 2) lies with respect to the closed polygon: counts the edges that cross the ray to its
// right.
Place placeOf(const oaPointArray &points, oaInt8 x2, oaInt8 y2) {
  bool isInside = false;
  const bool isOnEdge = anyEdge(points, true, [&](const oaPoint &from, const oaPoint &to) {
    const oaInt8 fromX = 2 * oaInt8(from.x()) - x2, fromY = 2 * oaInt8(from.y()) - y2;
    const oaInt8 toX = 2 * oaInt8(to.x()) - x2, toY = 2 * oaInt8(to.y()) - y2;
    const Wide turn = Wide(fromX) * toY - Wide(fromY) * toX;
    if (turn == 0 && std::min(fromX, toX) <= 0 && std::max(fromX, toX) >= 0 && std::min(fromY, toY) <= 0 &&
        std::max(fromY, toY) >= 0)
      return true;
    if ((fromY > 0) != (toY > 0) && (turn > 0) == (toY > fromY))
      isInside = !isInside;
    return false;
  });
  return isOnEdge ? Place::onEdge : isInside ? Place::inside : Place::outside;
}

Place placeOf(const oaPointArray &points, const oaPoint &point) {
  return placeOf(points, 2 * oaInt8(point.x()), 2 * oaInt8(point.y()));
}

} // namespace

// Only edges whose x ranges overlap are compared, in the order of their left ends.
oaBoolean oaPointArray::isSelfIntersecting(oaBoolean isClosed) const {
  std::vector<oaSegment> edges;
  anyEdge(*this, isClosed, [&](const oaPoint &from, const oaPoint &to) {
    edges.push_back(from.x() <= to.x() ? oaSegment(from, to) : oaSegment(to, from)); // the head is the left end
    return false;
  });
  std::sort(edges.begin(), edges.end(), [](const oaSegment &a, const oaSegment &b) { return a.x1() < b.x1(); });
  for (size_t i = 0; i < edges.size(); ++i) {
    for (size_t j = i + 1; j < edges.size() && edges[j].x1() <= edges[i].x2(); ++j) {
      if (edges[i].intersects(edges[j], false, false))
        return true;
    }
  }
  return false;
}

oaBoolean oaPointArray::isOrthogonal(oaBoolean isClosed) const {
  return !anyEdge(*this, isClosed,
                  [](const oaPoint &from, const oaPoint &to) { return from.x() != to.x() && from.y() != to.y(); });
}

oaBoolean oaPointArray::isRectangle() const {
  oaPointArray corners;
  compress(corners, true);
  return corners.getNumElements() == 4 && corners.isOrthogonal(true);
}

oaBoolean oaPointArray::onEdge(const oaPoint &point, oaBoolean isClosed) const {
  return anyEdge(*this, isClosed,
                 [&](const oaPoint &from, const oaPoint &to) { return oaSegment(from, to).contains(point); });
}

oaBoolean oaPointArray::contains(const oaPoint &point, oaBoolean includeEdges) const {
  const Place place = placeOf(*this, point);
  return place == Place::inside || (place == Place::onEdge && includeEdges);
}

oaBoolean oaPointArray::contains(const oaBox &box) const {
  if (box.isInverted())
    return false;
  const Place centre = placeOf(*this, oaInt8(box.left()) + box.right(), oaInt8(box.bottom()) + box.top());
  if (box.hasNoArea()) {
    const oaSegment flat(box.lowerLeft(), box.upperRight());
    return centre != Place::outside && contains(flat.head()) && contains(flat.tail()) &&
           !anyEdge(*this, true, [&](const oaPoint &from, const oaPoint &to) {
             return flat.intersects(oaSegment(from, to), false, false);
           });
  }
  // No edge enters the box, so all of it is on the side of its centre.
  return centre == Place::inside && !anyEdge(*this, true, [&](const oaPoint &from, const oaPoint &to) {
           return box.overlaps(oaSegment(from, to), false);
         });
}

oaBoolean oaPointArray::overlaps(const oaBox &box, oaBoolean closed) const {
  if (box.isInverted() || numElements_ == 0)
    return false;
  if (anyEdge(*this, closed, [&](const oaPoint &from, const oaPoint &to) { return box.overlaps(oaSegment(from, to)); }))
    return true;
  return closed && contains(box.lowerLeft());
}

oaDouble oaPointArray::distanceFrom2(const oaPoint &point) const {
  if (contains(point))
    return 0;
  oaDouble least = std::numeric_limits<oaDouble>::infinity();
  anyEdge(*this, true, [&](const oaPoint &from, const oaPoint &to) {
    least = std::min(least, oaSegment(from, to).distanceFrom2(point));
    return false;
  });
  return least;
}

oaDouble oaPointArray::getArea() const {
  Wide doubled = 0;
  anyEdge(*this, true, [&](const oaPoint &from, const oaPoint &to) {
    doubled += Wide(from.x()) * to.y() - Wide(from.y()) * to.x();
    return false;
  });
  return static_cast<oaDouble>(doubled < 0 ? -doubled : doubled) / 2;
}

oaBoolean oaPointArray::hasExtraPoints(oaBoolean isClosed) const {
  const oaUInt4 n = numElements_;
  for (oaUInt4 i = 1; i < n; ++i) {
    if (elements_[i - 1] == elements_[i] || (i >= 2 && areCollinear(elements_[i - 2], elements_[i - 1], elements_[i])))
      return true;
  }
  if (!isClosed || n < 2)
    return false;
  return elements_[n - 1] == elements_[0] ||
         (n > 2 && (areCollinear(elements_[n - 2], elements_[n - 1], elements_[0]) ||
                    areCollinear(elements_[n - 1], elements_[0], elements_[1])));
}

void oaPointArray::compress(oaPointArray &pointsOut, oaBoolean isClosed) const {
  pointsOut = *this;
  oaPoint *const points = pointsOut.elements_.get();
  // points[begin] to points[end - 1] are what stays. A point that goes makes new neighbours, which are looked at again.
  oaUInt4 begin = 0, end = 0;
  for (oaUInt4 i = 0; i < numElements_; ++i) {
    const oaPoint point = points[i];
    while (end >= 2 && areCollinear(points[end - 2], points[end - 1], point))
      --end;
    if (end == 0 || points[end - 1] != point)
      points[end++] = point;
  }
  while (isClosed && end - begin >= 2) {
    if (points[end - 1] == points[begin] ||
        (end - begin > 2 && areCollinear(points[end - 2], points[end - 1], points[begin])))
      --end;
    else if (end - begin > 2 && areCollinear(points[end - 1], points[begin], points[begin + 1]))
      ++begin;
    else
      break;
  }
  std::move(points + begin, points + end, points);
  pointsOut.numElements_ = end - begin;
}

void oaPointArray::transform(const oaTransform &xform, oaPointArray &result) const {
  result.setNumElements(numElements_);
  for (oaUInt4 i = 0; i < numElements_; ++i)
    elements_[i].transform(xform, result.elements_[i]);
}

void oaPointArray::transform(oaDouble scale, oaDouble angle, oaPointArray &result) const {
  result.setNumElements(numElements_);
  for (oaUInt4 i = 0; i < numElements_; ++i)
    elements_[i].transform(scale, angle, result.elements_[i]);
}

void oaPointArray::getBBox(oaBox &bBox) const {
  bBox.init();
  for (oaUInt4 i = 0; i < numElements_; ++i)
    bBox.merge(elements_[i]);
}

} // namespace OpenAccess_4
