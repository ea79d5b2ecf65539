#ifndef OADONUT_H
#define OADONUT_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaPolygon;

// A circle with a round hole.
class oaDonut : public oaShape {
public:
  // Raises oacDonutRadiiInvalid unless the hole's radius is below the outer one.
  static oaDonut *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &center,
                         oaDist radius, oaDist holeRadius);
  // One outline for both rings: the outer one counter-clockwise from angle 0 back to it, then the inner one clockwise:
  // 2 (numSides + 1) points. Raises oacDonutNumSidesInvalid for fewer than 4 sides.
  static void genBoundary(const oaPoint &center, oaDist radius, oaDist holeRadius, oaUInt4 numSides,
                          oaPointArray &boundary);

  void getHoleBBox(oaBox &bBox) const;
  void getCenter(oaPoint &point) const;
  oaDist getRadius() const;
  oaDist getHoleRadius() const;
  void getBoundary(oaPointArray &points, oaUInt4 numSides = 20) const;
  void setCenter(const oaPoint &center);
  void setRadius(oaDist radius);
  void setHoleRadius(oaDist holeRadius);
  void setRadii(oaDist radius, oaDist holeRadius);
  // Changes the class of this object, whose pointer stays the same. Points that coincide on the grid are dropped.
  oaPolygon *convertToPolygon(oaUInt4 numSides = 20);
};

} // namespace OpenAccess_4

#endif
