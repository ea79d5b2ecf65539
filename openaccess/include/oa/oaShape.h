#ifndef OASHAPE_H
#define OASHAPE_H

#include "oa/oaFig.h"

namespace OpenAccess_4 {

class oaLPPHeader;

// A figure on a pair of layer and purpose, which need not exist in any technology. Creation and setters raise
// oacInvalidPurposeNumber for the purposes "oaAny" and "oaNo".
class oaShape : public oaPinFig {
public:
  oaLayerNum getLayerNum() const;
  oaPurposeNum getPurposeNum() const;
  oaLPPHeader *getHeader() const;
  void setLPP(oaLayerNum layerNum, oaPurposeNum purposeNum);
  void setLayerNum(oaLayerNum layerNum);
  void setPurposeNum(oaPurposeNum purposeNum);
  // Scales about the origin and turns by the angle (radians). Points are rounded to the grid. Rectangles and ellipses
  // take the box around the turned one; texts, dots and arcs turn by the nearest quarter. Raises
  // oacInvalidPointsAfterTransform or oacInvalidBBoxAfterTransform when the shape would degenerate.
  void transform(oaDouble scale, oaDouble angle);
};

} // namespace OpenAccess_4

#endif
