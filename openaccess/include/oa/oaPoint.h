// A place in database units.
#ifndef OAPOINT_H
#define OAPOINT_H

#include "oa/oaTypes.h"

namespace OpenAccess_4 {

class oaTransform;

/// Arithmetic on coordinates is not checked: what leaves the 32 bits wraps around. This does so without undefined
/// behaviour.
inline oaCoord oaWrapCoord(oaInt8 value) { return static_cast<oaCoord>(static_cast<oaUInt4>(value)); }

class oaPoint {
public:
  oaPoint() : x_(0), y_(0) {}
  oaPoint(oaCoord xValIn, oaCoord yValIn) : x_(xValIn), y_(yValIn) {}
  oaPoint(const oaPoint &point, const oaTransform &xform);

  oaCoord &x() { return x_; }
  oaCoord &y() { return y_; }
  oaCoord x() const { return x_; }
  oaCoord y() const { return y_; }
  void set(oaCoord x, oaCoord y) {
    x_ = x;
    y_ = y;
  }

  void transform(const oaTransform &xform, oaPoint &result) const;
  void transform(const oaTransform &xform);
  /// Scaled and turned about the origin by `angle` radians counter-clockwise, rounded to the nearest database unit.
  void transform(oaDouble scale, oaDouble angle, oaPoint &result) const;
  void transform(oaDouble scale, oaDouble angle) { transform(scale, angle, *this); }
  /// The square of the distance.
  oaDouble distanceFrom2(const oaPoint &point) const {
    const oaDouble dx = oaDouble(x_) - point.x_, dy = oaDouble(y_) - point.y_;
    return dx * dx + dy * dy;
  }

  oaPoint &operator+=(const oaPoint &pt) { return *this = *this + pt; }
  oaPoint &operator-=(const oaPoint &pt) { return *this = *this - pt; }
  oaPoint operator-() const { return oaPoint(oaWrapCoord(-oaInt8(x_)), oaWrapCoord(-oaInt8(y_))); }
  oaPoint operator-(const oaPoint &pt) const {
    return oaPoint(oaWrapCoord(oaInt8(x_) - pt.x_), oaWrapCoord(oaInt8(y_) - pt.y_));
  }
  oaPoint operator+(const oaPoint &pt) const {
    return oaPoint(oaWrapCoord(oaInt8(x_) + pt.x_), oaWrapCoord(oaInt8(y_) + pt.y_));
  }
  oaBoolean operator==(const oaPoint &pt) const { return x_ == pt.x_ && y_ == pt.y_; }
  oaBoolean operator!=(const oaPoint &pt) const { return !(*this == pt); }

private:
  oaCoord x_;
  oaCoord y_;
};

} // namespace OpenAccess_4

#include "oa/oaTransform.h"

#endif
