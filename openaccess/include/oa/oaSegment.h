// The straight piece between two points.
#ifndef OASEGMENT_H
#define OASEGMENT_H

#include "oa/oaVector.h"

namespace OpenAccess_4 {

class oaSegment {
public:
  oaSegment() {}
  oaSegment(const oaPoint &headIn, const oaPoint &tailIn) : head_(headIn), tail_(tailIn) {}
  /// From `ref` (the tail) along `vec` (to the head).
  oaSegment(const oaVector &vec, const oaPoint &ref) { set(vec, ref); }

  // (x1, y1) is the head, (x2, y2) the tail.
  oaPoint &head() { return head_; }
  oaPoint &tail() { return tail_; }
  oaCoord &x1() { return head_.x(); }
  oaCoord &x2() { return tail_.x(); }
  oaCoord &y1() { return head_.y(); }
  oaCoord &y2() { return tail_.y(); }
  const oaPoint &head() const { return head_; }
  const oaPoint &tail() const { return tail_; }
  oaCoord x1() const { return head_.x(); }
  oaCoord x2() const { return tail_.x(); }
  oaCoord y1() const { return head_.y(); }
  oaCoord y2() const { return tail_.y(); }
  void set(const oaPoint &head, const oaPoint &tail) {
    head_ = head;
    tail_ = tail;
  }
  void set(const oaVector &vec, const oaPoint &ref) {
    vec.addToPoint(ref, head_);
    tail_ = ref;
  }

  oaBoolean isHorizontal() const { return head_.y() == tail_.y(); }
  oaBoolean isVertical() const { return head_.x() == tail_.x(); }
  oaBoolean isOrthogonal() const { return isHorizontal() || isVertical(); }
  /// From the tail to the head.
  oaOffset getDeltaX() const { return (head_ - tail_).x(); }
  oaOffset getDeltaY() const { return (head_ - tail_).y(); }

  /// The square of the distance to the nearest place of the segment, which `loc` receives rounded.
  oaDouble distanceFrom2(const oaPoint &point) const;
  oaDouble distanceFrom2(const oaPoint &point, oaPoint &loc) const;
  oaBoolean contains(const oaPoint &point, oaBoolean includeEnds = true) const;
  /// As contains(), for a point that is known to lie on the endless line through the segment.
  oaBoolean collinearContains(const oaPoint &point, oaBoolean includeEnds = true) const;
  /// Whether the segments share a point; without ends, a touch at an end of either does not count. Segments that
  /// overlap on one line count as well, unless `includeOverlap` is false.
  oaBoolean intersects(const oaSegment &seg, oaBoolean includeEnds = true) const {
    return intersects(seg, includeEnds, true);
  }
  oaBoolean intersects(const oaSegment &seg, oaBoolean includeEnds, oaBoolean includeOverlap) const;
  /// The point where they meet, rounded; with `mustIntersect` false, where the endless lines through both meet. False,
  /// with iPt untouched, when there is no such point or more than one.
  oaBoolean intersects(const oaSegment &seg, oaPoint &iPt, oaBoolean mustIntersect = true) const;

  oaBoolean operator==(const oaSegment &segment) const { return head_ == segment.head_ && tail_ == segment.tail_; }
  oaBoolean operator!=(const oaSegment &segment) const { return !(*this == segment); }

private:
  oaPoint head_;
  oaPoint tail_;
};

} // namespace OpenAccess_4

#endif
