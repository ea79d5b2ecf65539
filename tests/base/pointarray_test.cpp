#include "oa/oaPointArray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace OpenAccess_4;

namespace {

typedef std::vector<std::pair<int, int>> Points;

oaPointArray arrayOf(const Points &points) {
  oaPointArray array;
  for (const auto &point : points)
    array.append(oaPoint(point.first, point.second));
  return array;
}

std::string textOf(const oaPointArray &array) {
  std::string text;
  for (oaUInt4 i = 0; i < array.getNumElements(); ++i)
    text += (i ? " " : "") + std::to_string(array[i].x()) + "," + std::to_string(array[i].y());
  return text;
}

TEST(PointArray, CompressDropsExtraPoints) {
  const struct {
    const char *name;
    Points points;
    const char *closed, *open;
  } cases[] = {
      {"nothing", {}, "", ""},
      {"one point", {{1, 2}}, "1,2", "1,2"},
      {"one point twice", {{1, 2}, {1, 2}}, "1,2", "1,2"},
      {"two points", {{0, 0}, {5, 0}}, "0,0 5,0", "0,0 5,0"},
      {"square", {{0, 0}, {0, 9}, {9, 9}, {9, 0}}, "0,0 0,9 9,9 9,0", "0,0 0,9 9,9 9,0"},
      {"closing point", {{0, 0}, {0, 9}, {9, 9}, {0, 0}}, "0,0 0,9 9,9", "0,0 0,9 9,9 0,0"},
      {"collinear inside", {{0, 0}, {0, 4}, {0, 9}, {9, 9}}, "0,0 0,9 9,9", "0,0 0,9 9,9"},
      {"collinear at the ends", {{0, 4}, {0, 9}, {9, 9}, {0, 0}}, "0,9 9,9 0,0", "0,4 0,9 9,9 0,0"},
      {"coincident run", {{0, 0}, {0, 9}, {0, 9}, {0, 9}, {9, 9}}, "0,0 0,9 9,9", "0,0 0,9 9,9"},
      {"spike", {{0, 0}, {0, 9}, {9, 9}, {20, 9}, {9, 9}, {9, 0}}, "0,0 0,9 9,9 9,0", "0,0 0,9 9,9 9,0"},
      {"spike over the ends", {{0, 0}, {0, 9}, {9, 9}, {9, 0}, {-5, 0}}, "0,0 0,9 9,9 9,0", "0,0 0,9 9,9 9,0 -5,0"},
      {"all on one line", {{0, 0}, {5, 5}, {9, 9}, {2, 2}}, "0,0 2,2", "0,0 2,2"},
      {"there and back", {{0, 0}, {5, 5}, {0, 0}}, "0,0", "0,0"},
      {"as large as possible",
       {{INT_MIN, INT_MIN}, {0, 0}, {INT_MAX, INT_MAX}, {INT_MAX, INT_MIN}},
       "-2147483648,-2147483648 2147483647,2147483647 2147483647,-2147483648",
       "-2147483648,-2147483648 2147483647,2147483647 2147483647,-2147483648"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const oaPointArray points = arrayOf(c.points);
    for (bool isClosed : {true, false}) {
      oaPointArray compressed;
      points.compress(compressed, isClosed);
      EXPECT_EQ(textOf(compressed), isClosed ? c.closed : c.open);
      EXPECT_EQ(points.hasExtraPoints(isClosed), compressed != points);
      EXPECT_FALSE(compressed.hasExtraPoints(isClosed));
      oaPointArray inPlace(points);
      inPlace.compress(isClosed);
      EXPECT_EQ(inPlace, compressed);
    }
  }
}

// Small grids make coincident and collinear points frequent.
TEST(PointArray, CompressedRandomArraysHaveNoExtraPoints) {
  std::mt19937 random(20240229);
  for (int run = 0; run < 20000; ++run) {
    oaPointArray points;
    for (unsigned i = random() % 9; i > 0; --i)
      points.append(oaPoint(static_cast<int>(random() % 3), static_cast<int>(random() % 3)));
    for (bool isClosed : {true, false}) {
      oaPointArray compressed;
      points.compress(compressed, isClosed);
      ASSERT_FALSE(compressed.hasExtraPoints(isClosed)) << textOf(points);
      ASSERT_EQ(points.hasExtraPoints(isClosed), compressed != points) << textOf(points);
      ASSERT_TRUE(!isClosed || points.getArea() == compressed.getArea()) << textOf(points);
    }
  }
}

TEST(PointArray, ShapesAreRecognised) {
  const struct {
    const char *name;
    Points points;
    bool isOrthogonal, isRectangle, isSelfIntersecting;
    double area;
  } cases[] = {
      {"nothing", {}, true, false, false, 0},
      {"rectangle", {{0, 0}, {0, 5}, {8, 5}, {8, 0}}, true, true, false, 40},
      {"rectangle from above with a point too many", {{0, 0}, {4, 0}, {8, 0}, {8, 5}, {0, 5}}, true, true, false, 40},
      {"rhombus", {{0, 5}, {5, 0}, {10, 5}, {5, 10}}, false, false, false, 50},
      {"L", {{0, 0}, {0, 9}, {3, 9}, {3, 3}, {9, 3}, {9, 0}}, true, false, false, 45},
      {"bow tie", {{0, 0}, {10, 10}, {10, 0}, {0, 10}}, false, false, true, 0},
      {"touching itself in a corner",
       {{0, 0}, {0, 5}, {5, 5}, {5, 9}, {9, 9}, {9, 5}, {5, 5}, {5, 0}},
       true,
       false,
       false,
       41},
      {"keyhole",
       {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {3, 3}, {3, 6}, {6, 6}, {6, 3}, {3, 3}},
       false,
       false,
       false,
       72},
      {"as large as possible",
       {{INT_MIN, INT_MIN}, {INT_MIN, INT_MAX}, {INT_MAX, INT_MAX}, {INT_MAX, INT_MIN}},
       true,
       true,
       false,
       18446744065119617025.0},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const oaPointArray points = arrayOf(c.points);
    EXPECT_EQ(points.isOrthogonal(), c.isOrthogonal);
    EXPECT_EQ(points.isRectangle(), c.isRectangle);
    EXPECT_EQ(points.isSelfIntersecting(), c.isSelfIntersecting);
    EXPECT_DOUBLE_EQ(points.getArea(), c.area);
  }
  const oaPointArray hook = arrayOf({{0, 0}, {10, 10}, {10, 0}, {0, 10}});
  EXPECT_TRUE(hook.isSelfIntersecting(false));
  EXPECT_FALSE(arrayOf({{0, 0}, {5, 0}, {5, 5}}).isOrthogonal());
  EXPECT_TRUE(arrayOf({{0, 0}, {5, 0}, {5, 5}}).isOrthogonal(false));
}

TEST(PointArray, PointsInAPolygon) {
  // A U, open above.
  const oaPointArray u = arrayOf({{0, 0}, {0, 9}, {3, 9}, {3, 3}, {6, 3}, {6, 9}, {9, 9}, {9, 0}});
  const struct {
    const char *name;
    oaPoint point;
    bool contains, containsInside;
    double distance2;
  } cases[] = {{"in the left arm", {1, 8}, true, true, 0},
               {"between the arms", {4, 8}, false, false, 1},
               {"on the floor of the gap", {4, 3}, true, false, 0},
               {"on a corner", {0, 0}, true, false, 0},
               {"level with the tops, left", {-1, 9}, false, false, 1},
               {"level with the floor, right", {12, 3}, false, false, 9},
               {"below", {4, -2}, false, false, 4}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(u.contains(c.point), c.contains);
    EXPECT_EQ(u.contains(c.point, false), c.containsInside);
    EXPECT_EQ(u.onEdge(c.point), c.contains && !c.containsInside);
    EXPECT_EQ(u.distanceFrom2(c.point), c.distance2);
  }
  EXPECT_FALSE(u.onEdge(oaPoint(5, 0), false)) << "the closing edge";
  EXPECT_TRUE(std::isinf(oaPointArray().distanceFrom2(oaPoint())));
}

TEST(PointArray, BoxesInAPolygon) {
  const oaPointArray u = arrayOf({{0, 0}, {0, 9}, {3, 9}, {3, 3}, {6, 3}, {6, 9}, {9, 9}, {9, 0}});
  const struct {
    const char *name;
    oaBox box;
    bool contains, overlaps;
  } cases[] = {{"left arm", {0, 0, 3, 9}, true, true},
               {"gap exactly", {3, 3, 6, 9}, false, true},
               {"inside the gap", {4, 4, 5, 9}, false, false},
               {"across the arms", {1, 5, 8, 6}, false, true},
               {"flat across the arms", {1, 5, 8, 5}, false, true},
               {"flat along the floor", {0, 3, 9, 3}, true, true},
               {"around everything", {-1, -1, 10, 10}, false, true},
               {"touching from outside", {9, 9, 12, 12}, false, true},
               {"inverted", {}, false, false}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(u.contains(c.box), c.contains);
    EXPECT_EQ(u.overlaps(c.box), c.overlaps);
  }
  const oaPointArray line = arrayOf({{0, 0}, {9, 0}, {9, 9}});
  EXPECT_FALSE(line.overlaps(oaBox(4, 2, 7, 5), false));
  EXPECT_TRUE(line.overlaps(oaBox(4, 2, 7, 5), true));
}

TEST(PointArray, TransformsAndBoundingBox) {
  oaPointArray points(oaBox(0, 0, 4, 2));
  EXPECT_EQ(textOf(points), "0,0 0,2 4,2 4,0");
  EXPECT_EQ(textOf(oaPointArray(points, oaTransform(oaPoint(10, 0), oacR90))), "10,0 8,0 8,4 10,4");
  points.transform(oaPoint(1, 1));
  EXPECT_EQ(textOf(points), "1,1 1,3 5,3 5,1");
  points.transform(2, 0);
  oaBox box;
  points.getBBox(box);
  EXPECT_EQ(box, oaBox(2, 2, 10, 6));
  oaPointArray().getBBox(box);
  EXPECT_TRUE(box.isInverted());
}

} // namespace
