// The turns of phrase of existing scripts.

#include "tcltest.h"

namespace {

using namespace tcltest;

class Habits : public TclTest {
protected:
  Habits() {
    eval("library; design cell");
    eval("oa::RectCreate $b 1 1 {{0 0.25} {1 1}}; oa::PolygonCreate $b 1 1 {{0 0} {0 1} {1 1}}");
    eval("oa::save $d; oa::close $d");
  }
};

TEST_F(Habits, Work) {
  const struct {
    const char *name, *script, *expected;
  } cases[] = {
      {"boolean in braces", "if {[oa::DesignExists $lib cell layout]} {set r yes}", "yes"},
      {"boolean without braces", "if [oa::DesignExists $lib none layout] {set r yes} else {set r no}", "no"},
      {"find, then open",
       "set d [oa::DesignFind $lib cell layout]\nif {$d == \"\"} {set d [oa::DesignOpen $lib cell layout "
       "r]}\noa::getMode $d",
       "r"},
      {"loop with !=",
       "set n 0; set c [oa::getShapes [oa::getTopBlock $d]]; while {[set x [oa::getNext $c]] != \"\"} {incr n}; set n",
       "2"},
      {"loop with the empty string first",
       "set n 0; set c [oa::getShapes [oa::getTopBlock $d]]; while {\"\" != [set x [oa::getNext $c]]} {incr n}; set n",
       "2"},
      {"type in a switch",
       "set r {}; foreach s [members [oa::getShapes [oa::getTopBlock $d]]] {switch [oa::getType $s] {Rect {lappend r "
       "R} Polygon - Path {lappend r P}}}; set r",
       "R P"},
      {"opened again for writing words",
       "oa::close $d; set d [oa::DesignOpen $lib cell layout readOnly]; oa::getMode $d", "r"},
      {"view type found by name",
       "set e [oa::DesignOpen $lib cell layout [oa::ViewTypeFind maskLayout] r]; expr {$d eq $e}", "1"},
      {"corner", "lindex [lindex [oa::getBBox [oa::getNext [oa::getShapes [oa::getTopBlock $d]]]] 0] 1", "0.25"},
      {"arithmetic",
       "expr {[lindex [oa::getPoints [lindex [members [oa::getShapes [oa::getTopBlock $d]]] 1]] 1 1] * 2}", "2.0"},
      {"message in the result", "catch {oa::DesignOpen nolib a b r} msg; string match *nolib* $msg", "1"},
      {"handles as keys", "array set seen [list $d 1]; info exists seen([oa::DesignFind $lib cell layout])", "1"},
      {"null as an argument",
       "oa::ScalarInstCreate [oa::BlockCreate [oa::DesignOpen $lib top layout [oa::ViewTypeGet maskLayout] w]]"
       " $lib cell layout i [oa::Transform 0 0 R0] NULL; set ok 1",
       "1"},
      {"help", "oa::help oa::RectCreate",
       "oa::RectCreate block:Block {layerNum:unsigned integer} {purposeNum:unsigned integer} bBox:Box"},
      {"all commands", "expr {{oa::getNext} in [oa::help]}", "1"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(eval(c.script), c.expected);
  }
}

} // namespace
