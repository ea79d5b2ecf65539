#include "oa/oaDot.h"

#include "boundaries.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &dotsOf(const DesignDatabase &design) { return design.dots; }

struct DotRow : ShapeRow {
  DotTable::Dot dot;

  explicit DotRow(const oaDot *object)
      : ShapeRow(shapeRow(object, oacDotType, dotsOf)), dot(design.dots.dots[payload]) {}
  void store() const {
    design.dots.dots.set(payload, dot);
    setShapeBox(design, row, dotBox(dot));
  }
};

} // namespace

oaDot *oaDot::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &location,
                     oaDist width, oaDist height) {
  DesignDatabase &design = designOfShapes(block);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  const DotTable::Dot dot = {location, width, height};
  const Row payload = design.dots.addRow();
  design.dots.dots.set(payload, dot);
  return shapeAt<oaDot>(design, addShape(design, layerNum, purposeNum, oacDotType, dotBox(dot), payload));
}

void oaDot::getLocation(oaPoint &point) const {
  const DotTable::Dot *ready = readyPayload<DotTable::Dot>(
      this, oacDotType,
      [](const DesignDatabase &design) -> const LongColumn<DotTable::Dot> & { return design.dots.dots; });
  point = OA_LIKELY(ready != nullptr) ? ready->location : DotRow(this).dot.location;
}

oaDist oaDot::getWidth() const { return DotRow(this).dot.widthDbu; }
oaDist oaDot::getHeight() const { return DotRow(this).dot.heightDbu; }

void oaDot::setLocation(const oaPoint &location) {
  DotRow at(this);
  at.dot.location = location;
  at.store();
}

void oaDot::setWidth(oaDist width) {
  DotRow at(this);
  at.dot.widthDbu = width;
  at.store();
}

void oaDot::setHeight(oaDist height) {
  DotRow at(this);
  at.dot.heightDbu = height;
  at.store();
}

} // namespace OpenAccess_4
