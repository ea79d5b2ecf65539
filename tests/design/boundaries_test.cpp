#include "designtest.h"

#include <cmath>

// Outlines against points found by hand.
namespace designtest {

class Boundaries : public DesignTest {};

TEST_F(Boundaries, OfPathsRunAlongTheLeftSideAndBackOnTheRight) {
  const struct {
    const char *name;
    Places points;
    oaDist width;
    oaPathStyleEnum style;
    oaDist beginExt, endExt;
    Places outline;
  } cases[] = {
      {"truncated", {{0, 0}, {10, 0}}, 4, oacTruncatePathStyle, 0, 0, {{0, 2}, {10, 2}, {10, -2}, {0, -2}}},
      {"extended by half the width",
       {{0, 0}, {10, 0}},
       4,
       oacExtendPathStyle,
       0,
       0,
       {{-2, 2}, {12, 2}, {12, -2}, {-2, -2}}},
      {"extensions of its own",
       {{0, 0}, {0, 10}},
       4,
       oacVariablePathStyle,
       3,
       1,
       {{-2, -3}, {-2, 11}, {2, 11}, {2, -3}}},
      {"odd width: the right side has more",
       {{0, 0}, {10, 0}},
       5,
       oacTruncatePathStyle,
       0,
       0,
       {{0, 2}, {10, 2}, {10, -3}, {0, -3}}},
      {"mitred bend to the left",
       {{0, 0}, {10, 0}, {10, 10}},
       4,
       oacTruncatePathStyle,
       0,
       0,
       {{0, 2}, {8, 2}, {8, 10}, {12, 10}, {12, -2}, {0, -2}}},
      {"mitred bend to the right",
       {{0, 0}, {10, 0}, {10, -10}},
       4,
       oacTruncatePathStyle,
       0,
       0,
       {{0, 2}, {12, 2}, {12, -10}, {8, -10}, {8, -2}, {0, -2}}},
      {"round ends are octagons",
       {{0, 0}, {20, 0}},
       6,
       oacRoundPathStyle,
       0,
       0,
       {{-2, 1}, {0, 3}, {20, 3}, {22, 1}, {22, -1}, {20, -3}, {0, -3}, {-2, -1}}},
      {"diagonal", {{0, 0}, {100, 100}}, 20, oacTruncatePathStyle, 0, 0, {{-7, 7}, {93, 107}, {107, 93}, {7, -7}}},
      {"back on itself",
       {{0, 0}, {10, 0}, {5, 0}},
       4,
       oacTruncatePathStyle,
       0,
       0,
       {{0, 2}, {10, 2}, {10, -2}, {5, -2}, {5, 2}, {10, 2}, {10, -2}, {0, -2}}},
      {"repeated point",
       {{0, 0}, {0, 0}, {10, 0}},
       4,
       oacTruncatePathStyle,
       0,
       0,
       {{0, 2}, {10, 2}, {10, -2}, {0, -2}}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaPointArray outline;
    oaPath::genBoundary(pointsOf(c.points), c.width, c.style, c.beginExt, c.endExt, outline);
    EXPECT_EQ(textOf(outline), textOf(c.outline));
  }
}

TEST_F(Boundaries, OfSegmentsUseDiagonalUnitsOnDiagonals) {
  const oaEndStyle truncate(oacTruncateEndStyle), extend(oacExtendEndStyle), variable(oacVariableEndStyle),
      chamfer(oacChamferEndStyle), custom(oacCustomEndStyle);
  const struct {
    const char *name;
    oaPoint begin, end;
    oaSegStyle style;
    Places outline;
  } cases[] = {
      {"truncated", {0, 0}, {10, 0}, {4, truncate, truncate}, {{0, 2}, {10, 2}, {10, -2}, {0, -2}}},
      {"downwards, extended and variable",
       {0, 10},
       {0, 0},
       {4, extend, variable, 0, 5},
       {{2, 12}, {2, -5}, {-2, -5}, {-2, 12}}},
      {"diagonal of width 12", {4, 5}, {24, 25}, {12, truncate, truncate}, {{1, 8}, {21, 28}, {27, 22}, {7, 2}}},
      {"diagonal downwards, extended",
       {0, 0},
       {20, -20},
       {8, extend, truncate},
       {{0, 4}, {22, -18}, {18, -22}, {-4, 0}}},
      {"chamfered",
       {0, 0},
       {20, 0},
       {8, chamfer, chamfer},
       {{-4, 2}, {-2, 4}, {22, 4}, {24, 2}, {24, -2}, {22, -4}, {-2, -4}, {-4, -2}}},
      {"chamfered diagonal",
       {0, 0},
       {60, 60},
       {12, truncate, chamfer},
       {{-3, 3}, {58, 64}, {62, 64}, {64, 62}, {64, 58}, {3, -3}}},
      {"custom end: left and right apart",
       {0, 0},
       {20, 0},
       {truncate, custom, 5, 6, 8, 4, 0},
       {{0, 4}, {22, 4}, {25, 1}, {25, -3}, {24, -4}, {0, -4}}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaPointArray outline;
    oaPathSeg::genBoundary(c.begin, c.end, c.style, outline);
    EXPECT_EQ(textOf(outline), textOf(c.outline));
  }
  oaBlock *block = newBlock();
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const oaPathSeg *segment = oaPathSeg::create(block, 1, 2, c.begin, c.end, c.style);
    oaBox box;
    pointsOf(c.outline).getBBox(box);
    EXPECT_EQ(boxOf(segment), textOf(box));
    oaSegStyle style;
    segment->getStyle(style);
    EXPECT_TRUE(style == c.style);
  }
}

TEST_F(Boundaries, OfEllipsesAndDonutsBeginAtAngleZero) {
  oaPointArray points;
  oaEllipse::genBoundary(oaBox(0, 0, 200, 100), 4, points);
  EXPECT_EQ(textOf(points), "(200 50) (100 100) (0 50) (100 0)");
  oaEllipse::genBoundary(oaBox(-100, -100, 100, 100), 8, points);
  EXPECT_EQ(textOf(points), "(100 0) (71 71) (0 100) (-71 71) (-100 0) (-71 -71) (0 -100) (71 -71)");
  // The outer ring back to its beginning, then the inner one the other way round.
  oaDonut::genBoundary(oaPoint(10, 0), 100, 50, 4, points);
  EXPECT_EQ(textOf(points), "(110 0) (10 100) (-90 0) (10 -100) (110 0) (60 0) (10 -50) (-40 0) (10 50) (60 0)");
}

TEST_F(Boundaries, OfArcsRunFromStartToStop) {
  const oaBox ellipse(-100, -50, 100, 50);
  const struct {
    const char *name;
    double start, stop;
    const char *box, *points; // three edges
  } cases[] = {
      {"a quarter", 0, M_PI / 2, "(0 0) (100 50)", "(100 0) (87 25) (50 43) (0 50)"},
      {"over the beginning", -M_PI / 2, 0, "(0 -50) (100 0)", "(0 -50) (50 -43) (87 -25) (100 0)"},
      {"three quarters", M_PI / 2, 2 * M_PI, "(-100 -50) (100 50)", "(0 50) (-100 0) (0 -50) (100 0)"},
      {"stop before start", M_PI, M_PI / 2, "(-100 -50) (100 50)", "(-100 0) (0 -50) (100 0) (0 50)"},
  };
  oaBlock *block = newBlock();
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    oaArc *arc = oaArc::create(block, 1, 2, ellipse, c.start, c.stop);
    EXPECT_EQ(boxOf(arc), c.box);
    oaPointArray points;
    arc->getPoints(points, 3);
    EXPECT_EQ(textOf(points), c.points);
    arc->getPoints(points);
    EXPECT_EQ(points.getNumElements(), 11U);
  }
}

TEST_F(Boundaries, ArcsAreFoundFromPointsAndBoxes) {
  oaBox ellipse;
  oaDouble start, stop;
  oaArc::calcArc(oaPoint(100, 0), oaPoint(80, 60), oaPoint(0, 100), ellipse, start, stop);
  EXPECT_EQ(textOf(ellipse), "(-100 -100) (100 100)");
  EXPECT_NEAR(start, 0, 1e-2);
  EXPECT_NEAR(stop, M_PI / 2, 1e-2);
  oaArc::calcArc(oaPoint(0, 100), oaPoint(80, 60), oaPoint(100, 0), ellipse, start, stop);
  EXPECT_NEAR(stop, M_PI / 2, 1e-2) << "the sense is counter-clockwise whatever the order of the points";

  // The box of an arc finds the arc again.
  const oaBox whole(-1000, -500, 1000, 500);
  for (const double from : {0.3, 1.0, 2.5, 4.0}) {
    for (const double sweep : {0.5, 1.5, 3.0}) {
      SCOPED_TRACE(std::to_string(from) + " + " + std::to_string(sweep));
      oaBox box;
      oaArc::calcBBox(whole, from, from + sweep, box);
      oaArc::calcArc(whole, box, start, stop);
      EXPECT_NEAR(start, from, 1e-2);
      EXPECT_NEAR(std::fmod(stop - start + 2 * M_PI, 2 * M_PI), sweep, 1e-2);
    }
  }
}

TEST_F(Boundaries, DotsAreCentredWithTheLargerHalfAbove) {
  oaBlock *block = newBlock();
  EXPECT_EQ(boxOf(oaDot::create(block, 1, 2, oaPoint(10, 10), 3, 4)), "(9 8) (12 12)");
  EXPECT_EQ(boxOf(oaDot::create(block, 1, 2, oaPoint(5, 5))), "(5 5) (5 5)");
}

} // namespace designtest
