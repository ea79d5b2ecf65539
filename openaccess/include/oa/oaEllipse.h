#ifndef OAELLIPSE_H
#define OAELLIPSE_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaPolygon;

class oaEllipse : public oaShape {
public:
  // Raises oacEllipseBBoxInvalid for a box that is inverted or flat.
  static oaEllipse *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaBox &bBox);
  // Points at equal angles, counter-clockwise from angle 0. Raises oacEllipseNumSidesInvalid for fewer than 4 sides.
  static void genBoundary(const oaBox &ellipseBBox, oaUInt4 numSides, oaPointArray &boundary);

  void getBoundary(oaPointArray &points, oaUInt4 numSides) const;
  void setBBox(const oaBox &bBox);
  // Changes the class of this object, whose pointer stays the same. Points that coincide on the grid are dropped.
  oaPolygon *convertToPolygon(oaUInt4 numSides = 32);
};

} // namespace OpenAccess_4

#endif
