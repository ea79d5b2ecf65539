#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "oa/oaBox.h"

namespace OpenAccess_4 {
void PrintTo(const oaPoint &point, std::ostream *out) { *out << '(' << point.x() << ", " << point.y() << ')'; }
void PrintTo(const oaBox &box, std::ostream *out) {
  *out << '(' << box.left() << ", " << box.bottom() << ", " << box.right() << ", " << box.top() << ')';
}
void PrintTo(const oaTransform &transform, std::ostream *out) {
  *out << transform.orient().getName() << " + " << transform.xOffset() << ", " << transform.yOffset();
}
} // namespace OpenAccess_4

using namespace OpenAccess_4;

namespace {

oaSegment segment(oaCoord headX, oaCoord headY, oaCoord tailX, oaCoord tailY) {
  return oaSegment(oaPoint(headX, headY), oaPoint(tailX, tailY));
}

oaOrient orientOf(unsigned number) { return static_cast<oaOrientEnum>(number); }

TEST(Geometry, OrientationsMovePointsAsDefined) {
  const struct {
    oaOrientEnum orient;
    oaPoint image; // of (3, 1)
    oaOrientEnum inverse;
  } cases[] = {{oacR0, {3, 1}, oacR0},     {oacR90, {-1, 3}, oacR270},  {oacR180, {-3, -1}, oacR180},
               {oacR270, {1, -3}, oacR90}, {oacMY, {-3, 1}, oacMY},     {oacMYR90, {-1, -3}, oacMYR90},
               {oacMX, {3, -1}, oacMX},    {oacMXR90, {1, 3}, oacMXR90}};
  for (const auto &c : cases) {
    SCOPED_TRACE(oaOrient(c.orient).getName());
    EXPECT_EQ(oaPoint(oaPoint(3, 1), oaTransform(c.orient)), c.image);
    EXPECT_EQ(oaOrient(c.orient).getRelativeOrient(oacR0), c.inverse);
  }
}

// Composition and inverse against what they do to points.
TEST(Geometry, TransformAlgebraAgreesWithPoints) {
  const oaPoint point(70, -11);
  for (unsigned i = 0; i < 8; ++i) {
    for (unsigned j = 0; j < 8; ++j) {
      const oaTransform a(oaPoint(5, -300), orientOf(i)), b(oaPoint(-42, 7), orientOf(j));
      oaTransform both;
      a.concat(b, both);
      EXPECT_EQ(oaPoint(point, both), oaPoint(oaPoint(point, a), b));
      EXPECT_EQ(both.orient(), orientOf(i).concat(orientOf(j)));
      EXPECT_EQ(both, oaTransform(a, b));
      EXPECT_EQ(orientOf(i).concat(orientOf(i).getRelativeOrient(orientOf(j))), orientOf(j));
      oaTransform inverse(a);
      inverse.invert();
      EXPECT_TRUE(oaTransform(a, inverse).isIdentity());
      EXPECT_TRUE(oaTransform(inverse, a).isIdentity());
      oaTransform self(a);
      self.concat(self);
      EXPECT_EQ(self, oaTransform(a, a));
    }
  }
}

TEST(Geometry, ArithmeticWrapsAtTheLimits) {
  const oaPoint least(INT_MIN, INT_MIN), most(INT_MAX, INT_MAX);
  EXPECT_EQ(most + oaPoint(1, 1), least);
  EXPECT_EQ(least - oaPoint(1, 1), most);
  EXPECT_EQ(-least, least);
  EXPECT_EQ(oaPoint(least, oaTransform(oaPoint(-1, 0), oacR180)), oaPoint(INT_MAX, INT_MIN));
  EXPECT_EQ(least.distanceFrom2(most), 2 * std::pow(4294967295.0, 2));
  EXPECT_EQ(oaBox(least, most).getWidth(), UINT_MAX);
  EXPECT_EQ(oaVector(least).getLength(), INT_MAX); // the nearest there is
  EXPECT_TRUE(oaVector(INT_MIN, INT_MAX).leftOf(oaVector(INT_MIN, INT_MIN)) !=
              oaVector(INT_MIN, INT_MAX).rightOf(oaVector(INT_MIN, INT_MIN)));
  oaPoint far(INT_MAX, 5);
  far.transform(1e300, 0);
  EXPECT_EQ(far, most);
  oaVector long1(INT_MIN, INT_MIN);
  long1.setLength(INT_MAX);
  EXPECT_EQ(long1, oaVector(-1518500249, -1518500249));
}

TEST(Geometry, ScaleAndAngleRound) {
  oaPoint point(10, 0);
  point.transform(1, M_PI / 6);
  EXPECT_EQ(point, oaPoint(9, 5));
  point.set(-3, -3);
  point.transform(0.5, 0);
  EXPECT_EQ(point, oaPoint(-2, -2)); // halves away from 0
  oaBox box(0, 0, 10, 20);
  box.transform(1, M_PI / 2);
  EXPECT_EQ(box, oaBox(-20, 0, 0, 10));
}

TEST(Geometry, Vectors) {
  const oaVector east(10, 0), north(0, 3);
  EXPECT_TRUE(north.leftOf(east));
  EXPECT_TRUE(east.rightOf(north));
  EXPECT_FALSE(east.leftOf(oaVector(-1, 0)));
  EXPECT_DOUBLE_EQ(oaVector(1, 1).getCosAngle(east), std::sqrt(0.5));
  EXPECT_EQ(oaVector().getCosAngle(east), 0);
  oaVector vector(30, -40);
  EXPECT_EQ(vector.getLength(), 50);
  vector.setLength(5);
  EXPECT_EQ(vector, oaVector(3, -4));
  vector.rotate90();
  EXPECT_EQ(vector, oaVector(4, 3));
  vector.rotate270();
  EXPECT_EQ(vector, oaVector(3, -4));
  vector.normalize();
  EXPECT_EQ(vector, oaVector(1, -1));

  oaPoint meeting(7, 7);
  EXPECT_TRUE(east.intersects(oaPoint(0, 5), oaVector(1, 2), oaPoint(0, 0), meeting));
  EXPECT_EQ(meeting, oaPoint(3, 5)); // 2.5 rounded
  EXPECT_FALSE(east.intersects(oaPoint(0, 5), oaVector(-7, 0), oaPoint(), meeting));
  EXPECT_EQ(meeting, oaPoint(3, 5));
  // Nearly parallel: they meet far outside.
  EXPECT_FALSE(oaVector(INT_MAX, 1).intersects(oaPoint(), oaVector(INT_MAX, 0), oaPoint(0, 1000), meeting));
}

TEST(Geometry, Boxes) {
  const oaBox box(0, 0, 10, 20);
  EXPECT_TRUE(oaBox().isInverted());
  EXPECT_EQ(oaBox(oaPoint(5, 5), 3), oaBox(2, 2, 8, 8));
  oaBox inverted(10, 20, 0, 0);
  EXPECT_TRUE(inverted.isInverted());
  inverted.fix();
  EXPECT_EQ(inverted, box);

  oaPoint centre;
  oaBox(-3, 0, 0, 5).getCenter(centre);
  EXPECT_EQ(centre, oaPoint(-2, 2));
  oaBox(INT_MAX - 1, INT_MIN, INT_MAX, INT_MIN).getCenter(centre);
  EXPECT_EQ(centre, oaPoint(INT_MAX - 1, INT_MIN));

  EXPECT_TRUE(box.overlaps(oaBox(10, 20, 30, 30)));
  EXPECT_FALSE(box.overlaps(oaBox(10, 20, 30, 30), false));
  EXPECT_TRUE(box.contains(oaPoint(0, 20)));
  EXPECT_FALSE(box.contains(oaPoint(0, 20), false));
  EXPECT_EQ(box.distanceFrom2(oaPoint(13, -4)), 25);
  EXPECT_EQ(box.distanceFrom2(oaPoint(5, 5)), 0);

  oaBox merged;
  merged.merge(oaPoint(4, 9));
  merged.merge(oaBox(-1, 0, 0, 1));
  merged.merge(oaBox());
  EXPECT_EQ(merged, oaBox(-1, 0, 4, 9));
  merged.intersection(oaBox(100, 100, 200, 200));
  EXPECT_TRUE(merged.isInverted());

  EXPECT_EQ(oaBox(box, oaTransform(oaPoint(100, 0), oacR90)), oaBox(80, 0, 100, 10));
  EXPECT_EQ(oaBox(oaBox(), oaTransform(oaPoint(100, 0), oacR90)), oaBox()) << "nothing must not become everything";
  oaBox scaled(0, 0, 10, 21);
  scaled.scale(2);
  EXPECT_EQ(scaled, oaBox(-5, -11, 15, 32)); // about (5, 10.5)
}

TEST(Geometry, BoxesAndSegments) {
  const oaBox box(0, 0, 10, 10);
  const struct {
    const char *name;
    oaSegment segment;
    bool touches, enters;
  } cases[] = {{"inside", segment(2, 2, 3, 3), true, true},
               {"across", segment(-5, 5, 15, 6), true, true},
               {"along an edge", segment(0, -5, 0, 15), true, false},
               {"corner cut", segment(-4, 5, 5, -4), true, true},
               {"corner passed at a distance", segment(-5, 4, 4, -5), false, false},
               {"corner touched", segment(-5, 5, 5, -5), true, false},
               {"ends on an edge", segment(5, 15, 5, 10), true, false},
               {"point inside", segment(5, 5, 5, 5), true, true},
               {"point on an edge", segment(10, 5, 10, 5), true, false},
               {"outside", segment(11, 0, 11, 9), false, false},
               {"as long as possible", segment(INT_MIN, INT_MIN, INT_MAX, INT_MAX), true, true}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(box.overlaps(c.segment), c.touches);
    EXPECT_EQ(box.overlaps(c.segment, false), c.enters);
  }
}

TEST(Geometry, SegmentsMeet) {
  const oaSegment base(segment(0, 0, 10, 10));
  const struct {
    const char *name;
    oaSegment other;
    bool shares, sharesInside, sharesWithoutOverlap; // any point; not only an end; any point, but overlaps do not count
  } cases[] = {{"crossing", segment(0, 10, 10, 0), true, true, true},
               {"ends on it", segment(5, 5, 9, 0), true, false, true},
               {"common end", segment(10, 10, 20, 0), true, false, true},
               {"apart", segment(11, 0, 20, 9), false, false, false},
               {"parallel", segment(1, 0, 11, 10), false, false, false},
               {"overlapping", segment(5, 5, 20, 20), true, true, false},
               {"following on one line", segment(10, 10, 20, 20), true, false, true},
               {"apart on one line", segment(11, 11, 20, 20), false, false, false},
               {"its line is crossed beyond it", segment(11, 20, 20, 11), false, false, false},
               {"point on it", segment(3, 3, 3, 3), true, false, true},
               {"point beside it", segment(3, 4, 3, 4), false, false, false}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    for (const oaSegment &other : {c.other, oaSegment(c.other.tail(), c.other.head())}) {
      EXPECT_EQ(base.intersects(other), c.shares);
      EXPECT_EQ(other.intersects(base), c.shares);
      EXPECT_EQ(base.intersects(other, false), c.sharesInside);
      EXPECT_EQ(base.intersects(other, true, false), c.sharesWithoutOverlap);
    }
  }
}

TEST(Geometry, MeetingPointsOfSegments) {
  const oaSegment base(segment(0, 0, 10, 0));
  oaPoint point(7, 7);
  EXPECT_TRUE(base.intersects(segment(2, -1, 5, 5), point));
  EXPECT_EQ(point, oaPoint(3, 0)); // 2.5
  EXPECT_FALSE(base.intersects(segment(12, 1, 12, 5), point));
  EXPECT_EQ(point, oaPoint(3, 0));
  EXPECT_TRUE(base.intersects(segment(12, 1, 12, 5), point, false));
  EXPECT_EQ(point, oaPoint(12, 0));
  EXPECT_TRUE(base.intersects(segment(10, 0, 20, 0), point));
  EXPECT_EQ(point, oaPoint(10, 0));
  EXPECT_FALSE(base.intersects(segment(5, 0, 20, 0), point)) << "more than one";
}

TEST(Geometry, DistancesFromSegments) {
  const oaSegment base = segment(10, 0, 0, 0);
  oaPoint nearest;
  EXPECT_EQ(base.distanceFrom2(oaPoint(4, 3), nearest), 9);
  EXPECT_EQ(nearest, oaPoint(4, 0));
  EXPECT_EQ(base.distanceFrom2(oaPoint(13, 4), nearest), 25);
  EXPECT_EQ(nearest, oaPoint(10, 0));
  EXPECT_EQ(segment(5, 5, 5, 5).distanceFrom2(oaPoint(5, 6)), 1);
  EXPECT_DOUBLE_EQ(segment(INT_MIN, INT_MIN, INT_MAX, INT_MAX).distanceFrom2(oaPoint(0, 2)), 2);
  EXPECT_TRUE(base.contains(oaPoint(10, 0)));
  EXPECT_FALSE(base.contains(oaPoint(10, 0), false));
  EXPECT_TRUE(base.contains(oaPoint(9, 0), false));
  EXPECT_FALSE(base.contains(oaPoint(9, 1)));
}

} // namespace
