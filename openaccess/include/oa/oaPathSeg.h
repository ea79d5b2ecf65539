#ifndef OAPATHSEG_H
#define OAPATHSEG_H

#include "oa/oaSegStyle.h"
#include "oa/oaShape.h"

namespace OpenAccess_4 {

// One straight piece of wire: horizontal, vertical or at 45 degrees.
class oaPathSeg : public oaShape {
public:
  // Raises oacInvalidPathSegPoints for any other direction or coinciding points, oacEvenWidthRequiredForSegStyle for an
  // odd width.
  static oaPathSeg *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &beginPoint,
                           const oaPoint &endPoint, const oaSegStyle &style);
  // The outline: left side from begin to end, then the right side back; chamfered and custom ends have two points more
  // on each side.
  static void genBoundary(const oaPoint &beginPoint, const oaPoint &endPoint, const oaSegStyle &style,
                          oaPointArray &boundary);

  void getPoints(oaPoint &beginPoint, oaPoint &endPoint) const;
  void getStyle(oaSegStyle &style) const;
  void getBoundary(oaPointArray &boundary) const;
  oaBoolean isOrthogonal() const;
  void setPoints(const oaPoint &beginPoint, const oaPoint &endPoint);
  void setStyle(const oaSegStyle &style);
};

} // namespace OpenAccess_4

#endif
