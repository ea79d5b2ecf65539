#ifndef OALINE_H
#define OALINE_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

// An open chain of points without width. Points may coincide.
class oaLine : public oaShape {
public:
  // Raises oacLineTooFewPoints for fewer than two points.
  static oaLine *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPointArray &points);
  oaUInt4 getNumPoints() const;
  void getPoints(oaPointArray &points) const;
  void setPoints(const oaPointArray &points);
};

} // namespace OpenAccess_4

#endif
