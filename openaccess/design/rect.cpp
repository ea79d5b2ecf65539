#include "oa/oaRect.h"

#include "oa/oaPolygon.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

std::string textOf(const oaBox &box) {
  return "(" + std::to_string(box.left()) + " " + std::to_string(box.bottom()) + ") to (" +
         std::to_string(box.right()) + " " + std::to_string(box.top()) + ")";
}

[[noreturn]] void raiseBox(const DesignDatabase &design, const oaBox &box) {
  raiseDesign(oacRectBBoxInvalid, newShapeLabel(design, "rectangle ") + textOf(box) + " is inverted or flat");
}

bool isUsable(const oaBox &box) { return box.left() < box.right() && box.bottom() < box.top(); }

} // namespace

oaRect *oaRect::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaBox &bBox) {
  DesignDatabase &design = designOfShapes(block);
  if (OA_UNLIKELY(!isUsable(bBox))) {
    raiseBox(design, bBox);
  }
  return newShapeAt<oaRect>(design, addShape(design, layerNum, purposeNum, oacRectType, bBox), oacRectType);
}

void oaRect::setBBox(const oaBox &bBox) {
  const ShapeRow at = plainShapeRow(this, oacRectType);
  if (!isUsable(bBox)) {
    raiseBox(at.design, bBox);
  }
  setShapeBox(at.design, at.row, bBox);
}

oaPolygon *oaRect::convertToPolygon() {
  const ShapeRow at = plainShapeRow(this, oacRectType);
  const oaBox box = at.design.shapes.box[at.row];
  convertShape(at.design, at.row, oacPolygonType, addOutline(at.design, oaPointArray(box)), box);
  return shapeAt<oaPolygon>(at.design, at.row);
}

} // namespace OpenAccess_4
