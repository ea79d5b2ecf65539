#ifndef OASHAPE_H
#define OASHAPE_H

#include "oa/oaFig.h"

namespace OpenAccess_4 {

class oaLPPHeader;

// A figure on a pair of layer and purpose, which need not exist in any technology. Creation and setters raise oacInvalidPurposeNumber
// for the purposes "oaAny" and "oaNo".
class oaShape : public oaPinFig {
public:
  oaLayerNum getLayerNum() const;
  oaPurposeNum getPurposeNum() const;
  oaLPPHeader *getHeader() const;
  void setLPP(oaLayerNum layerNum, oaPurposeNum purposeNum);
  void setLayerNum(oaLayerNum layerNum);
  void setPurposeNum(oaPurposeNum purposeNum);
  // Scales about the origin, then turns by the angle (radians, a multiple of pi/2 for all but polygons, lines and paths; others raise
  // oacInvalidPointsAfterTransform). Results are rounded to the grid. Raises oacInvalidBBoxAfterTransform when a shape degenerates.
  void transform(oaDouble scale, oaDouble angle);
};

} // namespace OpenAccess_4

#endif
