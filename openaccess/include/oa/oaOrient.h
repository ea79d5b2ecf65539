// The eight orientations. R90 turns counter-clockwise; MX mirrors about the x axis (y changes sign), MY about the y
// axis; in MXR90 and MYR90 the mirror comes first.
#ifndef OAORIENT_H
#define OAORIENT_H

#include "oa/oaEnumWrapper.h"

namespace OpenAccess_4 {

// The lowest two bits count quarter turns; the third says that MY comes before them.
enum oaOrientEnum { oacR0 = 0, oacR90 = 1, oacR180 = 2, oacR270 = 3, oacMY = 4, oacMYR90 = 5, oacMX = 6, oacMXR90 = 7 };

const oaEnumNames &oaEnumNamesOf(oaOrientEnum);

class oaOrient : public oaEnumWrapper<oaOrientEnum> {
public:
  oaOrient(oaOrientEnum valueIn = oacR0) : oaEnumWrapper(valueIn) {}
  /// Raises oacInvalidOrientName.
  oaOrient(const oaString &name) : oaEnumWrapper(name) {}

  /// This orientation first, then `orient`.
  oaOrient concat(const oaOrient &orient) const {
    const unsigned first = oaOrientEnum(*this), second = oaOrientEnum(orient);
    const unsigned turns = second & 4U ? second - first : first + second;
    return static_cast<oaOrientEnum>(((first ^ second) & 4U) | (turns & 3U));
  }
  /// The orientation r with concat(r) == orient; for R0 the inverse.
  oaOrient getRelativeOrient(const oaOrient &orient) const { return inverse().concat(orient); }

private:
  oaOrient inverse() const {
    const unsigned value = oaOrientEnum(*this);
    return static_cast<oaOrientEnum>(value & 4U ? value : (0U - value) & 3U);
  }
};

} // namespace OpenAccess_4

#endif
