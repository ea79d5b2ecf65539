// What is wrong is a Tcl error, with a message that says so and an errorCode; nothing else happens.

#include "tcltest.h"

namespace {

using namespace tcltest;
using testing::HasSubstr;

struct Case {
  const char *name, *script, *message, *code;
};

class Errors : public TclTest {
protected:
  Errors() { eval("library; design cell; set rect [oa::RectCreate $b 1 1 {{0 0} {1 1}}]"); }
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_THAT(failure(c.script), HasSubstr(c.message));
      EXPECT_EQ(errorCode(), c.code);
    }
  }
};

TEST_F(Errors, ArgumentsThatDoNotFit) {
  const Case cases[] = {
      {"too few", "oa::RectCreate $b 1", "wrong # args: should be \"oa::RectCreate block layerNum purposeNum bBox\"",
       "TCL WRONGARGS"},
      {"too many", "oa::LibFind a b", "wrong # args: should be \"oa::LibFind name\"", "TCL WRONGARGS"},
      {"optional ones are shown", "oa::PinCreate", "?accessDir?", "TCL WRONGARGS"},
      {"forms of this object only", "oa::getBBox $rect 1 2 3", "oa::getBBox fig", "TCL WRONGARGS"},
      {"no box", "oa::RectCreate $b 1 1 {{0 0} {1 x}}", "oa::RectCreate: bBox: expected Box but got \"{0 0} {1 x}\"",
       "OA VALUE"},
      {"deeply nested list", "set s {1 2}; for {set i 0} {$i < 20000} {incr i} {set s \"1 {$s}\"}; oa::getArea $s",
       "expected PointArray but got \"1 {1 {", "OA VALUE"},
      {"no list", "oa::RectCreate $b 1 1 \"\\{\"", "expected Box", "OA VALUE"},
      {"no number", "oa::RectCreate $b one 1 {{0 0} {1 1}}", "layerNum: expected unsigned integer", "OA VALUE"},
      {"negative unsigned", "oa::RectCreate $b -1 1 {{0 0} {1 1}}", "from 0 to 4294967295 but got \"-1\"", "OA VALUE"},
      {"too large", "oa::IntPropCreate $rect i 3000000000", "from -2147483648 to 2147483647", "OA VALUE"},
      {"no enumerator", "oa::ViewTypeGet layout", "ReservedViewType (maskLayout, schematic", "OA VALUE"},
      {"coordinate out of range", "oa::RectCreate $b 1 1 {{0 0} {2e6 1}}", "out of range", "OA VALUE"},
      {"negative distance", "oa::PathCreate $b 1 1 -0.5 {{0 0} {1 0}}", "out of range", "OA VALUE"},
      {"not a number", "oa::PathCreate $b 1 1 nan {{0 0} {1 0}}", "", "OA VALUE"},
      {"object of another class", "oa::getTopBlock $rect", "expected Design but got \"oa:0x", "OA VALUE"},
      {"NULL", "oa::getTopBlock null", "expected Design", "OA VALUE"},
      {"no object", "oa::getName nonsense", "expected an object with this function but got \"nonsense\"", "OA VALUE"},
      {"plain list where an object is changed", "oa::set {1 2} 3 4", "expected", "OA VALUE"},
      {"place outside of an array", "oa::get [oa::PointArray {{0 0} {1 1}}] 2", "which has 2 elements", "OA VALUE"},
      {"place after room was made", "oa::get [oa::PointArray 5] 0", "which has 0 elements", "OA VALUE"},
      {"help on nothing", "oa::help nonsense", "there is no command \"nonsense\"", "OA VALUE"},
      {"empty name space stack", "oa::popNameSpace", "no name space was pushed", "OA NAMESPACE"},
  };
  check(cases);
}

TEST_F(Errors, ExceptionsOfTheDatabase) {
  const Case cases[] = {
      {"library", "oa::DesignOpen nolib a b r", "nolib", "OA 1025"},
      {"flat rectangle", "oa::RectCreate $b 1 1 {{0 0} {0 1}}", "", "OA 1046"},
      {"property twice", "oa::IntPropCreate $rect p 1; oa::IntPropCreate $rect p 1", "p", "OA 17"},
      {"undefined mode", "oa::DesignOpen $lib cell layout x", "", "OA 1004"},
      {"net twice", "oa::NetCreate $b a; oa::NetCreate $b a", "a", "OA 1098"},
  };
  check(cases);
}

TEST_F(Errors, DeadObjects) {
  eval("set net [oa::NetCreate $b a]; set shapes [oa::getShapes $b]; oa::destroy $rect");
  const Case cases[] = {
      {"destroyed", "oa::getBBox $rect", "was destroyed, or its database has been closed", "OA 12"},
      {"destroyed, by text", "oa::getBBox [string trim \" $rect\"]", "was destroyed", "OA 12"},
      {"destroyed, as an argument", "oa::addToNet $rect $net", "was destroyed", "OA 12"},
      {"destroyed twice", "oa::destroy $rect", "was destroyed", "OA 12"},
      {"closed", "oa::save $d; oa::purge $d; oa::getTopBlock $d", "was destroyed", "OA 12"},
      {"in a closed design", "oa::getName $net", "was destroyed", "OA 12"},
      {"collection of a closed design", "oa::getNext $shapes", "collection belongs to was destroyed", "OA 12"},
      {"count of it", "oa::getCount $shapes", "collection belongs to was destroyed", "OA 12"},
  };
  check(cases);
}

TEST_F(Errors, ForgedHandles) {
  const std::string rect = eval("set rect");
  const std::string handles[] = {"oa:0x0",
                                 "oa:0x10",
                                 "oa:0x7fffffffffff",
                                 "oa:0xffffffffffffffff",
                                 "oa:0x",
                                 "oa:0xg",
                                 "oa:",
                                 rect + "1",
                                 rect.substr(0, rect.size() - 1) + "8",
                                 rect + " ",
                                 "oa:0x-1",
                                 "oa:0x11111111111111111111111111",
                                 rect.substr(3)};
  for (const std::string &handle : handles) {
    SCOPED_TRACE(handle);
    EXPECT_THAT(failure("oa::getBBox {" + handle + "}"), HasSubstr("expected"));
  }
  // An address in the kit's memory where no object lives.
  const std::string beside = rect.substr(0, rect.size() - 2) + "f0";
  EXPECT_THAT(failure("oa::getBBox " + beside), testing::AnyOf(HasSubstr("destroyed"), HasSubstr("expected")));
}

TEST_F(Errors, LeaveTheDesignAsItWas) {
  eval("foreach script {{oa::RectCreate $b 1 1 {{0 0} {0 0}}} {oa::RectCreate $b 1 1 x} {oa::PolygonCreate $b 1 1 {{0 "
       "0}}}"
       " {oa::TextCreate $b 1 1 t {0 0} nowhere R0 stick 1}} {catch $script}");
  EXPECT_EQ(eval("types [oa::getShapes $b]"), "Rect");
}

} // namespace
