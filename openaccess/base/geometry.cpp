// Points, vectors, segments and boxes, as far as they are not inline.
#include "geometry.h"

#include "oa/oaBox.h"

namespace OpenAccess_4 {

namespace kit {

namespace {

Wide roundedQuotient(Wide numerator, Wide denominator) {
  if (denominator < 0) {
    numerator = -numerator;
    denominator = -denominator;
  }
  const Wide doubled = 2 * numerator + denominator;
  Wide quotient = doubled / (2 * denominator);
  if (doubled < 0 && doubled % (2 * denominator) != 0)
    --quotient;
  return quotient;
}

bool isCoord(Wide value) { return value >= INT_MIN && value <= INT_MAX; }

} // namespace

bool meetingOf(const oaPoint &a, oaInt8 adx, oaInt8 ady, const oaPoint &b, oaInt8 bdx, oaInt8 bdy, oaPoint &point) {
  const Wide denominator = Wide(adx) * bdy - Wide(ady) * bdx;
  if (denominator == 0)
    return false;
  const Wide numerator = Wide(oaInt8(b.x()) - a.x()) * bdy - Wide(oaInt8(b.y()) - a.y()) * bdx;
  const Wide x = a.x() + roundedQuotient(numerator * adx, denominator);
  const Wide y = a.y() + roundedQuotient(numerator * ady, denominator);
  if (!isCoord(x) || !isCoord(y))
    return false;
  point.set(static_cast<oaCoord>(x), static_cast<oaCoord>(y));
  return true;
}

} // namespace kit

using kit::cross;
using kit::roundedCoord;
using kit::signOf;

void oaPoint::transform(oaDouble scale, oaDouble angle, oaPoint &result) const {
  const oaDouble cosine = scale * std::cos(angle), sine = scale * std::sin(angle);
  result.set(roundedCoord(x_ * cosine - y_ * sine), roundedCoord(x_ * sine + y_ * cosine));
}

oaInt4 oaVector::getLength() const { return roundedCoord(std::hypot(oaDouble(x_), oaDouble(y_))); }

void oaVector::setLength(const oaInt4 length) {
  const oaDouble current = std::hypot(oaDouble(x_), oaDouble(y_));
  if (current > 0)
    *this = oaVector(roundedCoord(x_ * (length / current)), roundedCoord(y_ * (length / current)));
}

oaBoolean oaVector::leftOf(const oaVector &ref) const {
  return cross(oaPoint(), oaPoint(ref.x_, ref.y_), oaPoint(x_, y_)) > 0;
}

oaBoolean oaVector::rightOf(const oaVector &ref) const { return ref.leftOf(*this); }

oaBoolean oaVector::intersects(const oaPoint &ref, const oaVector &other, const oaPoint &otherRef, oaPoint &iPt) const {
  return kit::meetingOf(ref, x_, y_, otherRef, other.x_, other.y_, iPt);
}

oaDouble oaVector::getCosAngle(const oaVector &v) const {
  const oaDouble lengths = std::hypot(oaDouble(x_), oaDouble(y_)) * std::hypot(oaDouble(v.x_), oaDouble(v.y_));
  return lengths > 0 ? *this * v / lengths : 0;
}

oaDouble oaSegment::distanceFrom2(const oaPoint &point) const {
  oaPoint loc;
  return distanceFrom2(point, loc);
}

oaDouble oaSegment::distanceFrom2(const oaPoint &point, oaPoint &loc) const {
  const oaDouble dx = oaDouble(head_.x()) - tail_.x(), dy = oaDouble(head_.y()) - tail_.y();
  const oaDouble length2 = dx * dx + dy * dy;
  const oaDouble along = (oaDouble(point.x()) - tail_.x()) * dx + (oaDouble(point.y()) - tail_.y()) * dy;
  if (along <= 0 || along >= length2) {
    loc = along <= 0 ? tail_ : head_;
    return point.distanceFrom2(loc);
  }
  loc.set(roundedCoord(tail_.x() + dx * (along / length2)), roundedCoord(tail_.y() + dy * (along / length2)));
  const oaDouble area = static_cast<oaDouble>(cross(tail_, head_, point));
  return area * area / length2;
}

oaBoolean oaSegment::contains(const oaPoint &point, oaBoolean includeEnds) const {
  return kit::areCollinear(head_, tail_, point) && collinearContains(point, includeEnds);
}

oaBoolean oaSegment::collinearContains(const oaPoint &point, oaBoolean includeEnds) const {
  if (point == head_ || point == tail_)
    return includeEnds;
  oaBox box(head_, tail_);
  box.fix();
  return box.contains(point);
}

oaBoolean oaSegment::intersects(const oaSegment &seg, oaBoolean includeEnds, oaBoolean includeOverlap) const {
  oaBox box(head_, tail_), other(seg.head_, seg.tail_);
  box.fix();
  other.fix();
  if (!box.overlaps(other))
    return false;
  const int segHead = signOf(cross(head_, tail_, seg.head_)), segTail = signOf(cross(head_, tail_, seg.tail_));
  const int head = signOf(cross(seg.head_, seg.tail_, head_)), tail = signOf(cross(seg.head_, seg.tail_, tail_));
  if (segHead == 0 && segTail == 0 && head == 0 && tail == 0) {
    box.intersection(other);
    return box.lowerLeft() == box.upperRight() ? includeEnds : includeOverlap;
  }
  if (segHead * segTail > 0 || head * tail > 0)
    return false;
  return includeEnds || (segHead * segTail < 0 && head * tail < 0);
}

oaBoolean oaSegment::intersects(const oaSegment &seg, oaPoint &iPt, oaBoolean mustIntersect) const {
  if (mustIntersect && !intersects(seg, true, false))
    return false;
  if (kit::meetingOf(tail_, oaInt8(head_.x()) - tail_.x(), oaInt8(head_.y()) - tail_.y(), seg.tail_,
                     oaInt8(seg.head_.x()) - seg.tail_.x(), oaInt8(seg.head_.y()) - seg.tail_.y(), iPt))
    return true;
  if (!mustIntersect)
    return false;
  // On one line, or a single point: what they share is an end.
  for (const oaPoint &end : {head_, tail_}) {
    if (seg.contains(end)) {
      iPt = end;
      return true;
    }
  }
  iPt = seg.head_;
  return true;
}

// Both are convex, so they are apart exactly when a line along one of their edges has them on different sides.
oaBoolean oaBox::overlaps(const oaSegment &seg, oaBoolean incEdges) const {
  oaBox box(seg.head(), seg.tail());
  box.fix();
  if (isInverted() || (!incEdges && hasNoArea()) || !overlaps(box, incEdges))
    return false;
  if (seg.head() == seg.tail())
    return true;
  oaPoint corners[4];
  toPoints(corners);
  int least = 1, most = -1;
  for (const oaPoint &corner : corners) {
    const int side = signOf(cross(seg.head(), seg.tail(), corner));
    least = std::min(least, side);
    most = std::max(most, side);
  }
  return incEdges ? least <= 0 && most >= 0 : least < 0 && most > 0;
}

oaDouble oaBox::distanceFrom2(const oaPoint &point) const {
  const oaPoint nearest(std::max(left(), std::min(point.x(), right())), std::max(bottom(), std::min(point.y(), top())));
  return point.distanceFrom2(nearest);
}

void oaBox::transform(oaDouble scale, oaDouble angle, oaBox &result) const {
  if (isEmpty()) {
    result.init();
    return;
  }
  oaPoint corners[4];
  toPoints(corners);
  oaBox around;
  for (oaPoint &corner : corners) {
    corner.transform(scale, angle);
    around.merge(corner);
  }
  result = around;
}

void oaBox::scale(oaFloat scale) {
  if (isEmpty())
    return;
  const oaDouble x = (oaDouble(left()) + right()) / 2, y = (oaDouble(bottom()) + top()) / 2;
  set(roundedCoord(x + (left() - x) * scale), roundedCoord(y + (bottom() - y) * scale),
      roundedCoord(x + (right() - x) * scale), roundedCoord(y + (top() - y) * scale));
}

} // namespace OpenAccess_4
