// Arithmetic shared by the geometry classes. Differences of coordinates take 33 bits and products of two of them 66, so
// predicates are computed in 128 bits and are exact for all input.
#ifndef OPENACCESS_GEOMETRY_H
#define OPENACCESS_GEOMETRY_H

#include <algorithm>
#include <cmath>

#include "oa/oaPoint.h"

namespace OpenAccess_4 {
namespace kit {

__extension__ typedef __int128 Wide;

/// The nearest coordinate; what is out of range becomes the nearest limit, and NaN 0.
inline oaCoord roundedCoord(double value) {
  return std::isnan(value) ? 0 : static_cast<oaCoord>(std::lround(std::clamp<double>(value, INT_MIN, INT_MAX)));
}

/// Positive when o, a, b turn to the left, 0 when they are on one line.
inline Wide cross(const oaPoint &o, const oaPoint &a, const oaPoint &b) {
  return Wide(oaInt8(a.x()) - o.x()) * (oaInt8(b.y()) - o.y()) - Wide(oaInt8(a.y()) - o.y()) * (oaInt8(b.x()) - o.x());
}

inline bool areCollinear(const oaPoint &a, const oaPoint &b, const oaPoint &c) { return cross(a, b, c) == 0; }

inline int signOf(Wide value) { return (value > 0) - (value < 0); }

/// Where the endless line through `a` with the direction (adx, ady) meets the one through `b` with (bdx, bdy), rounded;
/// directions may take 33 bits. False, with `point` untouched, when they are parallel or the place is no coordinate.
bool meetingOf(const oaPoint &a, oaInt8 adx, oaInt8 ady, const oaPoint &b, oaInt8 bdx, oaInt8 bdy, oaPoint &point);

} // namespace kit
} // namespace OpenAccess_4

#endif
