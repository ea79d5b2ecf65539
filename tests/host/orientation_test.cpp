#include "orientation.h"

#include "oaconvert.h"

#include <gtest/gtest.h>

namespace {

struct Case {
  Orientation orientation;
  QPoint image; // of (3, 7), drawn by hand
};

const Case kCases[] = {
    {Orientation(false, 0), {3, 7}},  {Orientation(false, 1), {-7, 3}}, {Orientation(false, 2), {-3, -7}},
    {Orientation(false, 3), {7, -3}}, {Orientation(true, 0), {3, -7}},  {Orientation(true, 1), {7, 3}},
    {Orientation(true, 2), {-3, 7}},  {Orientation(true, 3), {-7, -3}},
};

TEST(HostOrientation, MapsAsGdsiiDefinesIt) {
  for (const Case &c : kCases) {
    EXPECT_EQ(c.orientation.map(QPoint(3, 7)), c.image);
  }
  EXPECT_EQ(Orientation(true, -1), Orientation(true, 3));
  EXPECT_EQ(Orientation(false, 6), Orientation(false, 2));
}

TEST(HostOrientation, CompositionMapsLikeOneAfterTheOther) {
  for (const Case &first : kCases) {
    for (const Case &second : kCases) {
      EXPECT_EQ(first.orientation.then(second.orientation).map(QPoint(3, 7)), second.orientation.map(first.image));
    }
  }
}

// The texts are checked by what the database does to a point, through the plug-in's own conversions.
TEST(HostOrientation, TextFormsMeanTheSameGeometryInTheDatabase) {
  for (const Case &c : kCases) {
    const QString written = c.orientation.toWriterText();
    SCOPED_TRACE(written.toStdString());
    bool isKnown = false;
    oa::oaOrient stored = oaConvert::toOaOrient(written, &isKnown);
    ASSERT_TRUE(isKnown);
    oa::oaPoint image(3, 7);
    image.transform(oa::oaTransform(0, 0, stored));
    EXPECT_EQ(QPoint(image.x(), image.y()), c.image);
    const std::optional<Orientation> read = Orientation::fromSignalText(oaConvert::toTrans(stored));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(*read, c.orientation);
  }
}

TEST(HostOrientation, OtherTextsAreRefused) {
  for (const char *text : {"R0", "R45", "r90", "MR90", " ", "R90 "}) {
    EXPECT_FALSE(Orientation::fromSignalText(text).has_value()) << text;
  }
}

} // namespace
