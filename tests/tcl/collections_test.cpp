// A collection is its own iterator.

#include "tcltest.h"

namespace {

using namespace tcltest;

class Collections : public TclTest {
protected:
  Collections() {
    eval("library; design cell");
    eval("foreach x {0 1 2 3} {oa::RectCreate $b 1 1 [list [list $x 0] [list [expr {$x + 1}] 1]]}");
    eval("set shapes [oa::getShapes $b]");
  }
};

TEST_F(Collections, WalkAndCount) {
  EXPECT_EQ(eval("list [oa::getCount $shapes] [oa::isEmpty $shapes] [oa::isEmpty [oa::getNets $b]]"), "4 0 1");
  EXPECT_EQ(eval("lmap s [members $shapes] {lindex [oa::getBBox $s] 0 0}"), "0.0 1.0 2.0 3.0");
  EXPECT_EQ(eval("oa::getNext $shapes"), ""); // stays at the end
  EXPECT_EQ(eval("oa::reset $shapes; expr {[oa::getNext $shapes] ne {}}"), "1");
  EXPECT_EQ(eval("oa::reset $shapes; oa::includes $shapes [lindex [members [oa::getShapes $b]] 2]"), "1");
  EXPECT_EQ(eval("oa::includes [oa::getNets $b] $b"), "0");
}

TEST_F(Collections, MembersMayGoDuringTheWalk) {
  EXPECT_EQ(eval("set n 0; while {[set s [oa::getNext $shapes]] ne {}} {oa::destroy $s; incr n}; list $n [oa::getCount "
                 "$shapes]"),
            "4 0");
}

TEST_F(Collections, TwoWalksAreIndependent) {
  EXPECT_EQ(eval("set other [oa::getShapes $b]; oa::getNext $other; oa::getNext $other; llength [members $shapes]"),
            "4");
}

TEST_F(Collections, OfTheSession) {
  EXPECT_EQ(eval("expr {{maskLayout} in [names [oa::ViewTypeGetViewTypes]]}"), "1");
  EXPECT_EQ(eval("expr {[oa::LibFind $lib] in [members [oa::LibGetOpenLibs]]}"), "1");
}

TEST_F(Collections, OnlyCollections) {
  EXPECT_THAT(failure("oa::getNext $b"), testing::HasSubstr("expected collection"));
  EXPECT_THAT(failure("oa::getNext oa:Collection:0xfffffff"), testing::HasSubstr("does not exist any more"));
}

} // namespace
