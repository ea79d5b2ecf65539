// An orientation followed by an offset.
#ifndef OATRANSFORM_H
#define OATRANSFORM_H

#include "oa/oaOrient.h"
#include "oa/oaPoint.h"

namespace OpenAccess_4 {

class oaTransform {
public:
  /// The identity.
  oaTransform() {}
  oaTransform(const oaPoint &offsetIn, oaOrient orientIn = oacR0) : offset_(offsetIn), orient_(orientIn) {}
  oaTransform(oaOffset xOffsetIn, oaOffset yOffsetIn, oaOrient orientIn = oacR0)
      : offset_(xOffsetIn, yOffsetIn), orient_(orientIn) {}
  oaTransform(oaOrient orientIn) : orient_(orientIn) {}
  /// First `xform1`, then `xform2`.
  oaTransform(const oaTransform &xform1, const oaTransform &xform2) { set(xform1, xform2); }

  oaPoint &offset() { return offset_; }
  oaOffset &xOffset() { return offset_.x(); }
  oaOffset &yOffset() { return offset_.y(); }
  oaOrient &orient() { return orient_; }
  const oaPoint &offset() const { return offset_; }
  oaOffset xOffset() const { return offset_.x(); }
  oaOffset yOffset() const { return offset_.y(); }
  oaOrient orient() const { return orient_; }

  void set(const oaPoint &offsetIn, oaOrient orientIn = oacR0) {
    offset_ = offsetIn;
    orient_ = orientIn;
  }
  void set(oaOffset xOffsetIn, oaOffset yOffsetIn, oaOrient orientIn = oacR0) {
    set(oaPoint(xOffsetIn, yOffsetIn), orientIn);
  }
  void set(oaOrient orientIn) { set(oaPoint(), orientIn); }
  void set(const oaTransform &xform1, const oaTransform &xform2) {
    set(oaPoint(xform1.offset_, xform2), xform1.orient_.concat(xform2.orient_));
  }
  void init() { *this = oaTransform(); }

  void invert(oaTransform &result) const {
    const oaTransform inverse(orient_.getRelativeOrient(oacR0));
    result.set(-oaPoint(offset_, inverse), inverse.orient_);
  }
  void invert() { invert(*this); }
  /// This transform first, then `xform`.
  void concat(const oaTransform &xform, oaTransform &result) const { result.set(*this, xform); }
  void concat(const oaTransform &xform) { concat(xform, *this); }
  oaBoolean isIdentity() const { return *this == oaTransform(); }

  oaBoolean operator==(const oaTransform &xform) const { return offset_ == xform.offset_ && orient_ == xform.orient_; }
  oaBoolean operator!=(const oaTransform &xform) const { return !(*this == xform); }

private:
  oaPoint offset_;
  oaOrient orient_;
};

inline void oaPoint::transform(const oaTransform &xform, oaPoint &result) const {
  const unsigned orient = oaOrientEnum(xform.orient());
  oaInt8 x = orient & 4U ? -oaInt8(x_) : oaInt8(x_), y = y_;
  if (orient & 2U) {
    x = -x;
    y = -y;
  }
  if (orient & 1U) {
    const oaInt8 oldX = x;
    x = -y;
    y = oldX;
  }
  result.set(oaWrapCoord(x + xform.xOffset()), oaWrapCoord(y + xform.yOffset()));
}

inline void oaPoint::transform(const oaTransform &xform) { transform(xform, *this); }

inline oaPoint::oaPoint(const oaPoint &point, const oaTransform &xform) { point.transform(xform, *this); }

} // namespace OpenAccess_4

#endif
