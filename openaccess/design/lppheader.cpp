#include "oa/oaLPPHeader.h"

#include "collection.h"
#include "designaccess.h"
#include "figureindexes.h"
#include "oa/oaBlock.h"
#include "oa/oaDesignDB.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

LPPTable &lppsOf(const oaLPPHeader *header) { return tableAs<LPPTable>(header, kLPPTable, "layer-purpose header"); }

LayerHeaderTable &layerHeadersOf(const oaLayerHeader *header) {
  return tableAs<LayerHeaderTable>(header, kLayerHeaderTable, "layer header");
}

DesignDatabase &designOfBlockObject(const oaBlock *block) {
  return designOf(tableAs<BlockTable>(block, kBlockTable, "block"));
}

// The pairs of a layer; the question's owner is the row of the layer's header.
class LppsOfLayerKind : public WholeTableKind {
protected:
  bool accepts(const CollectionQuestion &question, Row row) const override {
    const DesignDatabase &design = designOf(*question.table);
    return design.lpps.layer[row] == design.layerHeaders.layer[question.owner];
  }
  bool isFiltered(const CollectionQuestion &) const override { return true; }
};

oaLayer *layerOf(DesignDatabase &design, oaLayerNum number) {
  const oaTech *tech = design.tech();
  return tech == nullptr ? nullptr : oaLayer::find(tech, number);
}

} // namespace

oaLayerHeader *oaLayerHeader::find(const oaBlock *block, oaLayerNum layerNum) {
  DesignDatabase &design = designOfBlockObject(block);
  return objectOf<oaLayerHeader>(design.layerHeaders, design.findLayerHeader(layerNum));
}

oaLayerNum oaLayerHeader::getLayerNum() const { return layerHeadersOf(this).layer[rowOf(this)]; }

oaLayer *oaLayerHeader::getLayer() const {
  const oaLayerNum number = getLayerNum();
  return layerOf(designOf(this), number);
}

oaBoolean oaLayerHeader::isBound() const { return getLayer() != nullptr; }

oaCollection<oaLPPHeader, oaLayerHeader> oaLayerHeader::getLPPHeaders() const {
  static const LppsOfLayerKind kind;
  DesignDatabase &design = designOf(layerHeadersOf(this));
  return CollectionAccess::make<oaCollection<oaLPPHeader, oaLayerHeader>>(kind, &design.lpps, rowOf(this));
}

oaLPPHeader *oaLPPHeader::find(const oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum) {
  DesignDatabase &design = designOfBlockObject(block);
  return objectOf<oaLPPHeader>(design.lpps, design.findLpp(layerNum, purposeNum));
}

oaLayerNum oaLPPHeader::getLayerNum() const { return lppsOf(this).layer[rowOf(this)]; }

oaPurposeNum oaLPPHeader::getPurposeNum() const { return lppsOf(this).purpose[rowOf(this)]; }

oaLayer *oaLPPHeader::getLayer() const {
  const oaLayerNum number = getLayerNum();
  return layerOf(designOf(this), number);
}

oaPurpose *oaLPPHeader::getPurpose() const {
  const oaPurposeNum number = getPurposeNum();
  const oaTech *tech = designOf(this).tech();
  return tech == nullptr ? nullptr : oaPurpose::find(tech, number);
}

oaLayerHeader *oaLPPHeader::getLayerHeader() const {
  DesignDatabase &design = designOf(lppsOf(this));
  return objectOf<oaLayerHeader>(design.layerHeaders, design.findLayerHeader(getLayerNum()));
}

oaBoolean oaLPPHeader::isBound() const { return getLayer() != nullptr && getPurpose() != nullptr; }

oaCollection<oaShape, oaLPPHeader> oaLPPHeader::getShapes() const {
  return shapesOnLpp(designOf(lppsOf(this)), rowOf(this));
}

void oaLPPHeader::getShapeBBox(oaBox &bBox) const {
  bBox.init();
  oaIter<oaShape> shapes(getShapes());
  while (const oaShape *shape = shapes.getNext()) {
    oaBox box;
    shape->getBBox(box);
    bBox.merge(box);
  }
}

} // namespace OpenAccess_4
