#include "oa/oaDonut.h"

#include "boundaries.h"
#include "oa/oaPolygon.h"
#include "shapeaccess.h"

namespace OpenAccess_4 {

using namespace kit;

namespace {

const Table &donutsOf(const DesignDatabase &design) { return design.donuts; }

void checkRadii(const std::string &label, oaDist radius, oaDist holeRadius) {
  if (holeRadius >= radius) {
    raiseDesign(oacDonutRadiiInvalid, label + "a donut's hole of radius " + std::to_string(holeRadius) +
                                          " must be smaller than its radius " + std::to_string(radius));
  }
}

void checkSides(oaUInt4 sides) {
  // The outline has two points for each side and two more.
  if (sides < 4 || sides > (oacNullIndex - 2) / 2) {
    raiseDesign(oacDonutNumSidesInvalid, "a donut needs 4 sides or more, not " + std::to_string(sides));
  }
}

struct DonutRow : ShapeRow {
  DonutTable::Donut donut;

  explicit DonutRow(const oaDonut *object)
      : ShapeRow(shapeRow(object, oacDonutType, donutsOf)), donut(design.donuts.donuts[payload]) {}
  void store() const {
    checkRadii(design.label() + ": ", donut.radiusDbu, donut.holeRadiusDbu);
    design.donuts.donuts.set(payload, donut);
    setShapeBox(design, row, donutBox(donut, donut.radiusDbu));
  }
};

} // namespace

oaDonut *oaDonut::create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaPoint &center,
                         oaDist radius, oaDist holeRadius) {
  DesignDatabase &design = designOfShapes(block);
  checkRadii(design.label() + ": ", radius, holeRadius);
  design.lppFor(layerNum, purposeNum); // refuses purposes before a payload is made
  const DonutTable::Donut donut = {center, radius, holeRadius};
  const Row payload = design.donuts.addRow();
  design.donuts.donuts.set(payload, donut);
  return shapeAt<oaDonut>(design,
                          addShape(design, layerNum, purposeNum, oacDonutType, donutBox(donut, radius), payload));
}

void oaDonut::genBoundary(const oaPoint &center, oaDist radius, oaDist holeRadius, oaUInt4 numSides,
                          oaPointArray &boundary) {
  checkRadii("", radius, holeRadius);
  checkSides(numSides);
  donutBoundary({center, radius, holeRadius}, numSides, boundary);
}

void oaDonut::getHoleBBox(oaBox &bBox) const {
  const DonutRow at(this);
  bBox = donutBox(at.donut, at.donut.holeRadiusDbu);
}

void oaDonut::getCenter(oaPoint &point) const { point = DonutRow(this).donut.centre; }
oaDist oaDonut::getRadius() const { return DonutRow(this).donut.radiusDbu; }
oaDist oaDonut::getHoleRadius() const { return DonutRow(this).donut.holeRadiusDbu; }

void oaDonut::getBoundary(oaPointArray &points, oaUInt4 numSides) const {
  const DonutRow at(this);
  checkSides(numSides);
  donutBoundary(at.donut, numSides, points);
}

void oaDonut::setCenter(const oaPoint &center) {
  DonutRow at(this);
  at.donut.centre = center;
  at.store();
}

void oaDonut::setRadius(oaDist radius) {
  DonutRow at(this);
  at.donut.radiusDbu = radius;
  at.store();
}

void oaDonut::setHoleRadius(oaDist holeRadius) {
  DonutRow at(this);
  at.donut.holeRadiusDbu = holeRadius;
  at.store();
}

void oaDonut::setRadii(oaDist radius, oaDist holeRadius) {
  DonutRow at(this);
  at.donut.radiusDbu = radius;
  at.donut.holeRadiusDbu = holeRadius;
  at.store();
}

oaPolygon *oaDonut::convertToPolygon(oaUInt4 numSides) {
  const DonutRow at(this);
  oaPointArray outline;
  getBoundary(outline, numSides);
  outline.compress();
  convertShape(at.design, at.row, oacPolygonType, addOutline(at.design, outline), boxOf(outline));
  return shapeAt<oaPolygon>(at.design, at.row);
}

} // namespace OpenAccess_4
