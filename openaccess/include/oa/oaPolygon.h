#ifndef OAPOLYGON_H
#define OAPOLYGON_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaRect;

// A closed outline, which may cross itself. The first point is not repeated at the end.
class oaPolygon : public oaShape {
public:
  // Raises oacPolygonTooFewPoints for fewer than three points, oacPolygonHasExtraPoints when neighbours (also last and
  // first) coincide or three in a row are collinear.
  static oaPolygon *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPointArray &points);
  oaUInt4 getNumPoints() const;
  // Allocates only when the array has no room.
  void getPoints(oaPointArray &points) const;
  void setPoints(const oaPointArray &points);
  oaBoolean isOrthogonal() const;
  // Changes the class of this object, whose pointer stays the same. Raises oacCannotConvertPolygonToRect.
  oaRect *convertToRect();
};

} // namespace OpenAccess_4

#endif
