#ifndef OARECT_H
#define OARECT_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaPolygon;

class oaRect : public oaShape {
public:
  // Raises oacRectBBoxInvalid for a box that is inverted or flat.
  static oaRect *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaBox &bBox);
  void setBBox(const oaBox &bBox);
  // Changes the class of this object, whose pointer stays the same.
  oaPolygon *convertToPolygon();
};

} // namespace OpenAccess_4

#endif
