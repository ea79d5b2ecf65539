// A rectangle along the axes, in database units. Constructors and setters keep the values as they come, also inverted
// ones; the box that init() makes is the neutral element of merge().
#ifndef OABOX_H
#define OABOX_H

#include <algorithm>

#include "oa/oaSegment.h"

namespace OpenAccess_4 {

class oaBox {
public:
  oaBox() { init(); }
  oaBox(oaCoord leftIn, oaCoord bottomIn, oaCoord rightIn, oaCoord topIn)
      : lowerLeft_(leftIn, bottomIn), upperRight_(rightIn, topIn) {}
  oaBox(const oaPoint &lowerLeftIn, const oaPoint &upperRightIn) : lowerLeft_(lowerLeftIn), upperRight_(upperRightIn) {}
  /// Every side at the distance `size` from the centre.
  oaBox(const oaPoint &center, const oaUInt4 size) { set(center, size); }
  oaBox(const oaBox &box, const oaTransform &xform) { set(box, xform); }

  oaPoint &lowerLeft() { return lowerLeft_; }
  oaPoint &upperRight() { return upperRight_; }
  oaCoord &left() { return lowerLeft_.x(); }
  oaCoord &bottom() { return lowerLeft_.y(); }
  oaCoord &right() { return upperRight_.x(); }
  oaCoord &top() { return upperRight_.y(); }
  const oaPoint &lowerLeft() const { return lowerLeft_; }
  const oaPoint &upperRight() const { return upperRight_; }
  oaCoord left() const { return lowerLeft_.x(); }
  oaCoord bottom() const { return lowerLeft_.y(); }
  oaCoord right() const { return upperRight_.x(); }
  oaCoord top() const { return upperRight_.y(); }

  void set(oaCoord leftIn = INT_MAX, oaCoord bottomIn = INT_MAX, oaCoord rightIn = INT_MIN, oaCoord topIn = INT_MIN) {
    lowerLeft_.set(leftIn, bottomIn);
    upperRight_.set(rightIn, topIn);
  }
  void set(const oaPoint &lowerLeftIn, const oaPoint &upperRightIn) { *this = oaBox(lowerLeftIn, upperRightIn); }
  void set(const oaPoint &center, const oaUInt4 size) {
    set(oaWrapCoord(oaInt8(center.x()) - size), oaWrapCoord(oaInt8(center.y()) - size),
        oaWrapCoord(oaInt8(center.x()) + size), oaWrapCoord(oaInt8(center.y()) + size));
  }
  void set(const oaBox &box, const oaTransform &xform) { box.transform(xform, *this); }
  void init() { set(); }
  void makeZero() { set(0, 0, 0, 0); }
  /// Inverted by one unit about the origin.
  void makeInvertedZero() { set(1, 1, -1, -1); }

  oaUInt4 getWidth() const { return oaUInt4(right()) - oaUInt4(left()); }
  oaUInt4 getHeight() const { return oaUInt4(top()) - oaUInt4(bottom()); }
  /// Rounded down.
  void getCenter(oaPoint &result) const {
    result.set(oaCoord((oaInt8(left()) + right()) >> 1), oaCoord((oaInt8(bottom()) + top()) >> 1));
  }
  void getLowerRight(oaPoint &result) const { result.set(right(), bottom()); }
  void getUpperLeft(oaPoint &result) const { result.set(left(), top()); }
  oaBoolean hasNoArea() const { return left() == right() || bottom() == top(); }
  oaBoolean isInverted() const { return left() > right() || bottom() > top(); }

  oaBoolean overlaps(const oaBox &box, oaBoolean incEdges = true) const {
    if (incEdges)
      return left() <= box.right() && box.left() <= right() && bottom() <= box.top() && box.bottom() <= top();
    return left() < box.right() && box.left() < right() && bottom() < box.top() && box.bottom() < top();
  }
  oaBoolean overlaps(const oaSegment &seg, oaBoolean incEdges = true) const;
  oaBoolean contains(const oaBox &box, oaBoolean incEdges = true) const {
    return contains(box.lowerLeft_, incEdges) && contains(box.upperRight_, incEdges);
  }
  oaBoolean contains(const oaPoint &point, oaBoolean incEdges = true) const {
    if (incEdges)
      return left() <= point.x() && point.x() <= right() && bottom() <= point.y() && point.y() <= top();
    return left() < point.x() && point.x() < right() && bottom() < point.y() && point.y() < top();
  }
  /// The square of the distance, 0 inside.
  oaDouble distanceFrom2(const oaPoint &point) const;

  /// Swaps sides that are the wrong way round.
  void fix(oaBox &result) const {
    result = oaBox(std::min(left(), right()), std::min(bottom(), top()), std::max(left(), right()),
                   std::max(bottom(), top()));
  }
  void fix() { fix(*this); }
  /// Both corners, then ordered. The box that init() makes stays as it is, so that nothing stays nothing.
  void transform(const oaTransform &xform, oaBox &result) const {
    if (isEmpty())
      result.init();
    else
      oaBox(oaPoint(lowerLeft_, xform), oaPoint(upperRight_, xform)).fix(result);
  }
  void transform(const oaTransform &xform) { transform(xform, *this); }
  void transform(const oaPoint &offset, oaBox &result) const { transform(oaTransform(offset), result); }
  void transform(const oaPoint &offset) { transform(offset, *this); }
  /// The box around the four corners, scaled and turned about the origin by `angle` radians.
  void transform(oaDouble scale, oaDouble angle, oaBox &result) const;
  void transform(oaDouble scale, oaDouble angle) { transform(scale, angle, *this); }
  /// Scales about the centre.
  void scale(oaFloat scale);

  void merge(const oaBox &box, oaBox &result) const {
    result = oaBox(std::min(left(), box.left()), std::min(bottom(), box.bottom()), std::max(right(), box.right()),
                   std::max(top(), box.top()));
  }
  void merge(const oaBox &box) { merge(box, *this); }
  void merge(const oaPoint &point, oaBox &result) const { merge(oaBox(point, point), result); }
  void merge(const oaPoint &point) { merge(point, *this); }
  /// Inverted when they are apart.
  void intersection(const oaBox &box, oaBox &result) const {
    result = oaBox(std::max(left(), box.left()), std::max(bottom(), box.bottom()), std::min(right(), box.right()),
                   std::min(top(), box.top()));
  }
  void intersection(const oaBox &box) { intersection(box, *this); }

  /// The four corners clockwise from the lower left.
  void toPoints(oaPoint *points) const {
    points[0] = lowerLeft_;
    points[1].set(left(), top());
    points[2] = upperRight_;
    points[3].set(right(), bottom());
  }
  oaBoolean operator==(const oaBox &bBox) const {
    return lowerLeft_ == bBox.lowerLeft_ && upperRight_ == bBox.upperRight_;
  }
  oaBoolean operator!=(const oaBox &bBox) const { return !(*this == bBox); }

private:
  oaBoolean isEmpty() const {
    return left() == INT_MAX && bottom() == INT_MAX && right() == INT_MIN && top() == INT_MIN;
  }

  oaPoint lowerLeft_;
  oaPoint upperRight_;
};

} // namespace OpenAccess_4

#endif
