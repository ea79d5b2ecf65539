// A direction with a length, in database units.
#ifndef OAVECTOR_H
#define OAVECTOR_H

#include "oa/oaPoint.h"

namespace OpenAccess_4 {

class oaVector {
public:
  oaVector() : x_(0), y_(0) {}
  oaVector(oaOffset xValIn, oaOffset yValIn) : x_(xValIn), y_(yValIn) {}
  /// From the origin to `head`.
  oaVector(const oaPoint &head) : x_(head.x()), y_(head.y()) {}
  oaVector(const oaPoint &tail, const oaPoint &head) { set(tail, head); }

  oaOffset &x() { return x_; }
  oaOffset &y() { return y_; }
  oaOffset x() const { return x_; }
  oaOffset y() const { return y_; }
  void set(const oaPoint &tail, const oaPoint &head) {
    const oaPoint difference = head - tail;
    x_ = difference.x();
    y_ = difference.y();
  }

  /// Keeps the direction, as far as whole numbers can; the zero vector stays as it is.
  void setLength(const oaInt4 length);
  /// Rounded to the nearest database unit.
  oaInt4 getLength() const;
  /// The vector of length 1 with its components rounded, so that diagonals become (+-1, +-1).
  void normalize() { setLength(1); }

  /// Whether it points to the left (right) of `ref` when both start at one place; neither when they are parallel.
  oaBoolean leftOf(const oaVector &ref) const;
  oaBoolean rightOf(const oaVector &ref) const;
  void rotate90() { *this = oaVector(oaWrapCoord(-oaInt8(y_)), x_); }
  void rotate180() { *this = oaVector(oaWrapCoord(-oaInt8(x_)), oaWrapCoord(-oaInt8(y_))); }
  void rotate270() { *this = oaVector(y_, oaWrapCoord(-oaInt8(x_))); }

  void addToPoint(const oaPoint &start, oaPoint &result) const { result = start + oaPoint(x_, y_); }
  void subFromPoint(const oaPoint &start, oaPoint &result) const { result = start - oaPoint(x_, y_); }
  /// Where the endless line through `ref` along this vector meets the one through `otherRef` along `other`, rounded.
  /// False, with iPt untouched, when they are parallel or meet outside the range of coordinates.
  oaBoolean intersects(const oaPoint &ref, const oaVector &other, const oaPoint &otherRef, oaPoint &iPt) const;

  /// The scalar product.
  oaDouble operator*(const oaVector &v) const { return oaDouble(x_) * v.x_ + oaDouble(y_) * v.y_; }
  /// The cosine of the angle between both; 0 when one of them has no length.
  oaDouble getCosAngle(const oaVector &v) const;
  oaBoolean operator==(const oaVector &v) const { return x_ == v.x_ && y_ == v.y_; }
  oaBoolean operator!=(const oaVector &v) const { return !(*this == v); }

private:
  oaOffset x_;
  oaOffset y_;
};

} // namespace OpenAccess_4

#endif
