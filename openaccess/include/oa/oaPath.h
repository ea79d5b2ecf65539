#ifndef OAPATH_H
#define OAPATH_H

#include "oa/oaDesignEnums.h"
#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaPolygon;

// A centre line with a width. The extensions are 0 unless the style is variable.
class oaPath : public oaShape {
public:
  // Raises oacPathTooFewPoints for fewer than two points, oacPathHasExtraPoints when neighbours coincide or three in a
  // row are collinear, oacInvalidPathExtensionValue for an extension with another style than variable.
  static oaPath *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, oaDist width,
                        const oaPointArray &points, oaPathStyle style = oacTruncatePathStyle, oaDist beginExt = 0,
                        oaDist endExt = 0);
  // The outline: left side from begin to end, then the right side back, neighbours mitred. For odd widths the left side
  // has the smaller half. Segments shorter than half the width give odd outlines.
  static void genBoundary(const oaPointArray &points, oaDist width, oaPathStyle style, oaDist beginExt, oaDist endExt,
                          oaPointArray &boundary);

  oaDist getWidth() const;
  oaUInt4 getNumPoints() const;
  void getPoints(oaPointArray &points) const;
  oaPathStyle getStyle() const;
  oaDist getBeginExt() const;
  oaDist getEndExt() const;
  void getBoundary(oaPointArray &boundary) const;
  oaBoolean isOrthogonal() const;
  void setWidth(oaDist width);
  void setPoints(const oaPointArray &points);
  // Any style but variable clears the extensions.
  void setStyle(oaPathStyle style);
  void setBeginExt(oaDist beginExt);
  void setEndExt(oaDist endExt);
  // Changes the class of this object, whose pointer stays the same. Raises oacPolygonHasExtraPoints or
  // oacPolygonTooFewPoints when the outline has no area.
  oaPolygon *convertToPolygon();
};

} // namespace OpenAccess_4

#endif
