#ifndef OALPPHEADER_H
#define OALPPHEADER_H

#include "oa/oaDesignObject.h"

namespace OpenAccess_4 {

class oaLPPHeader;
class oaShape;

// A layer that shapes of the block lie on. Appears with the first shape of the layer and vanishes with the last.
class oaLayerHeader : public oaBlockObject {
public:
  // NULL when the block has nothing on the layer.
  static oaLayerHeader *find(const oaBlock *block, oaLayerNum layerNum);

  oaLayerNum getLayerNum() const;
  // NULL unless the design's technology has the layer.
  oaLayer *getLayer() const;
  oaBoolean isBound() const;
  oaCollection<oaLPPHeader, oaLayerHeader> getLPPHeaders() const;
};

// A pair of layer and purpose that shapes of the block lie on.
class oaLPPHeader : public oaBlockObject {
public:
  static oaLPPHeader *find(const oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum);

  oaLayerNum getLayerNum() const;
  oaPurposeNum getPurposeNum() const;
  oaLayer *getLayer() const;
  oaPurpose *getPurpose() const;
  oaLayerHeader *getLayerHeader() const;
  // Whether the design's technology has both layer and purpose.
  oaBoolean isBound() const;
  oaCollection<oaShape, oaLPPHeader> getShapes() const;
  void getShapeBBox(oaBox &bBox) const;
};

} // namespace OpenAccess_4

#endif
