#ifndef OADOT_H
#define OADOT_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

// A mark at a place. Its box is centred on the location; of odd sizes the larger half lies above and to the right.
class oaDot : public oaShape {
public:
  static oaDot *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &location,
                       oaDist width = 0, oaDist height = 0);
  void getLocation(oaPoint &point) const;
  oaDist getWidth() const;
  oaDist getHeight() const;
  void setLocation(const oaPoint &location);
  void setWidth(oaDist width);
  void setHeight(oaDist height);
};

} // namespace OpenAccess_4

#endif
