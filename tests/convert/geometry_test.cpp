#include "oaconvert.h"

#include <climits>

#include <gtest/gtest.h>

using namespace oa;

namespace {

TEST(Points, PassUnscaledAtTheEndsOfTheRange) {
  for (const QPoint &point : {QPoint(0, 0), QPoint(-20, 35), QPoint(INT_MIN, INT_MAX)}) {
    const oaPoint stored = oaConvert::toOaPoint(point);
    EXPECT_EQ(stored.x(), point.x());
    EXPECT_EQ(stored.y(), point.y());
    EXPECT_EQ(oaConvert::toPoint(stored), point);
  }
}

TEST(PointLists, KeepEveryPointInOrder) {
  const struct {
    const char *name;
    QPolygon points;
  } cases[] = {
      {"empty", QPolygon()},
      {"one point", QPolygon() << QPoint(1, 2)},
      {"triangle stays open", QPolygon() << QPoint(0, 0) << QPoint(10, 0) << QPoint(0, 10)},
      {"repeated and closing points stay", QPolygon() << QPoint(0, 0) << QPoint(0, 0) << QPoint(5, 5) << QPoint(0, 0)},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const oaPointArray array = oaConvert::toOaPointArray(c.points);
    ASSERT_EQ(array.getNumElements(), oaUInt4(c.points.size()));
    for (int i = 0; i < c.points.size(); ++i) {
      EXPECT_EQ(oaConvert::toPoint(array[oaUInt4(i)]), c.points[i]);
    }
    EXPECT_EQ(oaConvert::toPointArray(array), c.points);
  }
}

TEST(PointText, IsReadWithZerosForWhatIsNoNumber) {
  EXPECT_EQ(oaConvert::toPointString(QPoint(100, -250)), QString("100 -250"));
  EXPECT_EQ(oaConvert::toPointString(QPoint(0, -5)), QString("0 -5"));
  const struct {
    const char *text;
    QPoint point;
  } cases[] = {
      {"100 -250", QPoint(100, -250)},
      {"7 ", QPoint(7, 0)},
      {"x 5", QPoint(0, 5)},
      {" 5", QPoint(0, 0)}, // nothing in front of the blank
      {"12", QPoint(0, 0)},
      {"", QPoint(0, 0)},
      {"1/2", QPoint(0, 0)},
      {"1.5 2", QPoint(0, 2)},
      {"4294967296 3", QPoint(0, 3)},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(oaConvert::stringToPoint(c.text), c.point);
  }
}

TEST(VectorText, IsReadWithZerosForWhatIsNoNumber) {
  EXPECT_EQ(oaConvert::toString(oaVector(-20, 35)), QString("-20/35"));
  const struct {
    const char *text;
    oaOffset x, y;
  } cases[] = {
      {"-20/35", -20, 35}, {"/7", 0, 7}, {"3/x", 3, 0},   {"3/", 3, 0},
      {"12", 0, 0},        {"", 0, 0},   {"1/2/3", 1, 0}, {"0x10/010", 0, 10},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    const oaVector vector = oaConvert::toOaVector(c.text);
    EXPECT_EQ(vector.x(), c.x);
    EXPECT_EQ(vector.y(), c.y);
  }
}

} // namespace
