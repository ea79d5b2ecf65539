#include "designtest.h"

#include <cmath>
#include <functional>

// What shapes may not look like, with the message ids that clients know.
namespace designtest {

class ShapeChecks : public DesignTest {};

TEST_F(ShapeChecks, RefusalsHaveTheirIdsAndLeaveNothingBehind) {
  oaBlock *block = newBlock();
  const oaBox box(0, 0, 10, 10);
  const oaPointArray triangle = pointsOf({{0, 0}, {10, 0}, {0, 10}});
  const oaPointArray bend = pointsOf({{0, 0}, {10, 0}, {10, 10}});
  const oaSegStyle plain(4, oacTruncateEndStyle, oacTruncateEndStyle);
  const struct {
    const char *name;
    oaUInt4 id;
    std::function<void()> call;
  } cases[] = {
      {"rectangle, inverted", oacRectBBoxInvalid, [&] { oaRect::create(block, 1, 2, oaBox(20, 0, 0, 10)); }},
      {"rectangle, flat", oacRectBBoxInvalid, [&] { oaRect::create(block, 1, 2, oaBox(0, 0, 10, 0)); }},
      {"purpose oaAny", oacInvalidPurposeNumber, [&] { oaRect::create(block, 1, oavPurposeNumberAny, box); }},
      {"purpose oaNo", oacInvalidPurposeNumber, [&] { oaPolygon::create(block, 1, oavPurposeNumberNo, triangle); }},
      {"polygon of two points", oacPolygonTooFewPoints,
       [&] {
         oaPolygon::create(block, 1, 2, pointsOf({{0, 0}, {5, 5}}));
       }},
      {"polygon, neighbours coincide", oacPolygonHasExtraPoints,
       [&] {
         oaPolygon::create(block, 1, 2, pointsOf({{0, 0}, {10, 0}, {10, 0}, {0, 10}}));
       }},
      {"polygon, collinear", oacPolygonHasExtraPoints,
       [&] {
         oaPolygon::create(block, 1, 2, pointsOf({{0, 0}, {5, 0}, {10, 0}, {0, 10}}));
       }},
      {"polygon, collinear around the end", oacPolygonHasExtraPoints,
       [&] {
         oaPolygon::create(block, 1, 2, pointsOf({{5, 0}, {10, 0}, {10, 10}, {0, 0}}));
       }},
      {"polygon, closed", oacPolygonHasExtraPoints,
       [&] {
         oaPolygon::create(block, 1, 2, pointsOf({{0, 0}, {10, 0}, {0, 10}, {0, 0}}));
       }},
      {"path of one point", oacPathTooFewPoints,
       [&] {
         oaPath::create(block, 1, 2, 4, pointsOf({{0, 0}}));
       }},
      {"path, collinear", oacPathHasExtraPoints,
       [&] {
         oaPath::create(block, 1, 2, 4, pointsOf({{0, 0}, {5, 0}, {10, 0}}));
       }},
      {"path, coinciding", oacPathHasExtraPoints,
       [&] {
         oaPath::create(block, 1, 2, 4, pointsOf({{0, 0}, {0, 0}, {9, 0}}));
       }},
      {"path, extension without variable style", oacInvalidPathExtensionValue,
       [&] { oaPath::create(block, 1, 2, 4, bend, oacExtendPathStyle, 0, 1); }},
      {"line of one point", oacLineTooFewPoints,
       [&] {
         oaLine::create(block, 1, 2, pointsOf({{0, 0}}));
       }},
      {"ellipse, flat", oacEllipseBBoxInvalid, [&] { oaEllipse::create(block, 1, 2, oaBox(0, 0, 0, 10)); }},
      {"ellipse outline of 3 sides", oacEllipseNumSidesInvalid,
       [&] {
         oaPointArray points;
         oaEllipse::genBoundary(box, 3, points);
       }},
      {"donut without a ring", oacDonutRadiiInvalid, [&] { oaDonut::create(block, 1, 2, oaPoint(0, 0), 5, 5); }},
      {"donut outline of 3 sides", oacDonutNumSidesInvalid,
       [&] {
         oaPointArray points;
         oaDonut::genBoundary(oaPoint(0, 0), 5, 2, 3, points);
       }},
      {"arc, inverted ellipse", oacArcEllipseBBoxInvalid,
       [&] { oaArc::create(block, 1, 2, oaBox(10, 0, 0, 10), 0, 1); }},
      {"arc, equal angles after a turn", oacArcAnglesInvalid, [&] { oaArc::create(block, 1, 2, box, 0, 2 * M_PI); }},
      {"arc, no number", oacArcAnglesInvalid, [&] { oaArc::create(block, 1, 2, box, 0, std::nan("")); }},
      {"arc of 2 edges", oacArcNumSidesInvalid,
       [&] {
         oaPointArray points;
         oaArc::genPoints(box, 0, 1, 2, points);
       }},
      {"arc over collinear points", oacArcPointsColinear,
       [&] {
         oaBox ellipse;
         oaDouble start, stop;
         oaArc::calcArc(oaPoint(0, 0), oaPoint(5, 5), oaPoint(9, 9), ellipse, start, stop);
       }},
      {"arc of more than half a turn", oacArcTooLarge,
       [&] {
         oaBox ellipse;
         oaDouble start, stop;
         oaArc::calcArc(oaPoint(10, 1), oaPoint(-10, 0), oaPoint(10, -1), ellipse, start, stop);
       }},
      {"arc in a box apart from its ellipse", oacArcWrongNumIntercepts,
       [&] {
         oaBox away(100, 100, 200, 200);
         oaDouble start, stop;
         oaArc::calcArc(box, away, start, stop);
       }},
      {"segment, neither straight nor diagonal", oacInvalidPathSegPoints,
       [&] { oaPathSeg::create(block, 1, 2, oaPoint(0, 0), oaPoint(10, 5), plain); }},
      {"segment without length", oacInvalidPathSegPoints,
       [&] { oaPathSeg::create(block, 1, 2, oaPoint(3, 3), oaPoint(3, 3), plain); }},
      {"segment of odd width", oacEvenWidthRequiredForSegStyle,
       [&] {
         oaPathSeg::create(block, 1, 2, oaPoint(0, 0), oaPoint(9, 0),
                           oaSegStyle(5, oacTruncateEndStyle, oacExtendEndStyle));
       }},
      {"begin extension of a truncated end", oacInvalidSegStyleBeginExtValue,
       [&] { oaSegStyle(4, oacTruncateEndStyle, oacTruncateEndStyle, 1, 0); }},
      {"end extension of an extended end", oacInvalidSegStyleEndExtValue,
       [&] { oaSegStyle(4, oacVariableEndStyle, oacExtendEndStyle, 1, 1); }},
      {"second block", oacTopBlockAlreadyExists, [&] { oaBlock::create(block->getDesign()); }},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy(c.call), c.id);
  }
  EXPECT_TRUE(block->getShapes().isEmpty());
  EXPECT_TRUE(block->getLPPHeaders().isEmpty());
  EXPECT_EQ(boxOf(block), "none");
}

TEST_F(ShapeChecks, WhatLooksOddButIsLegalIsKept) {
  oaBlock *block = newBlock();
  oaPolygon::create(block, 0, 0, pointsOf({{0, 0}, {10, 10}, {10, 0}, {0, 10}})); // crosses itself
  oaLine::create(block, 0xffffffffU, 0xffffffffU, pointsOf({{1, 1}, {1, 1}}));
  oaDot::create(block, 1, 2, oaPoint(3, 4));
  oaText::create(block, 1, 2, "", oaPoint(0, 0), oacLowerLeftTextAlign, oacR0, oacStickFont, 0);
  oaPath::create(block, 1, 2, 0, pointsOf({{0, 0}, {0, 7}}));
  block = reopened(block);
  EXPECT_EQ(typesOf(block->getShapes()), "Polygon Line Dot Text Path");
}

TEST_F(ShapeChecks, SettersCheckLikeCreateAndChangeNothingWhenTheyRefuse) {
  oaBlock *block = newBlock();
  oaRect *rect = oaRect::create(block, 1, 2, oaBox(0, 0, 10, 10));
  oaPath *path = oaPath::create(block, 1, 2, 4, pointsOf({{0, 0}, {10, 0}}), oacVariablePathStyle, 3, 5);
  oaDonut *donut = oaDonut::create(block, 1, 2, oaPoint(0, 0), 10, 5);
  oaPolygon *polygon = oaPolygon::create(block, 1, 2, pointsOf({{0, 0}, {10, 0}, {0, 10}}));
  const struct {
    const char *name;
    oaUInt4 id;
    std::function<void()> call;
  } cases[] = {
      {"rectangle", oacRectBBoxInvalid, [&] { rect->setBBox(oaBox(5, 5, 5, 9)); }},
      {"purpose", oacInvalidPurposeNumber, [&] { rect->setPurposeNum(oavPurposeNumberAny); }},
      {"path points", oacPathHasExtraPoints,
       [&] {
         path->setPoints(pointsOf({{0, 0}, {0, 0}}));
       }},
      {"donut", oacDonutRadiiInvalid, [&] { donut->setHoleRadius(10); }},
      {"polygon", oacPolygonTooFewPoints,
       [&] {
         polygon->setPoints(pointsOf({{0, 0}}));
       }},
      {"no rectangle", oacCannotConvertPolygonToRect, [&] { polygon->convertToRect(); }},
      {"move beyond the coordinates", oacInvalidBBoxAfterTransform, [&] { rect->move(oaTransform(2147483647, 0)); }},
      {"points beyond the coordinates", oacInvalidPointsAfterTransform,
       [&] { polygon->move(oaTransform(0, 2147483647)); }},
      {"scaled to nothing", oacInvalidBBoxAfterTransform, [&] { rect->transform(0.01, 0); }},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(idRaisedBy(c.call), c.id);
  }
  EXPECT_EQ(boxOf(rect), "(0 0) (10 10)");
  EXPECT_EQ(boxOf(polygon), "(0 0) (10 10)");
  EXPECT_EQ(path->getNumPoints(), 2U);
  EXPECT_EQ(donut->getHoleRadius(), 5U);
  // Any other style has no extensions.
  path->setStyle(oacExtendPathStyle);
  EXPECT_EQ(path->getBeginExt() + path->getEndExt(), 0U);
  EXPECT_EQ(idRaisedBy([&] { path->setEndExt(1); }), oacInvalidPathExtensionValue);
  EXPECT_EQ(boxOf(path), "(-2 -2) (12 2)");
}

} // namespace designtest
