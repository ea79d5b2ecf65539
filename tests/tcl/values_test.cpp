// How values look in Tcl: user units with a unit that is not 1, plain lists, objects, enumerations, integers.

#include "tcltest.h"

namespace {

using namespace tcltest;

struct Case {
  const char *name, *script, *expected;
};

class Values : public TclTest {
protected:
  Values() {
    eval("library; design cell");
    eval("set rect [oa::RectCreate $b 1 1 {{0 0.5} {1.0005 2}}]");
    eval("set polygon [oa::PolygonCreate $b 1 1 {{0 0} {0 3} {2 3} {2 0}}]");
  }
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(eval(c.script), c.expected);
    }
  }
};

TEST_F(Values, LengthsAreUserUnits) {
  const Case cases[] = {
      {"box", "oa::getBBox $rect", "{0.0 0.5} {1.0005 2.0}"},
      {"corner of a box", "lindex [lindex [oa::getBBox $rect] 1] 0", "1.0005"},
      {"points", "oa::getPoints $polygon", "{0.0 0.0} {0.0 3.0} {2.0 3.0} {2.0 0.0}"},
      {"distance", "oa::getWidth [oa::PathCreate $b 1 1 0.5 {{0 0} {9 0}}]", "0.5"},
      {"offset", "oa::getRadius [oa::DonutCreate $b 1 1 {0 0} 2 1.5]", "2.0"},
      {"rounded to the nearest", "oa::getBBox [oa::RectCreate $b 1 1 {{0 0} {0.00074 0.00076}}]",
       "{0.0 0.0} {0.0005 0.001}"},
      {"integers are numbers too", "oa::getBBox [oa::RectCreate $b 1 1 {{-1 -1} {1 1}}]", "{-1.0 -1.0} {1.0 1.0}"},
      {"works in expressions", "expr {[lindex [lindex [oa::getBBox $rect] 0] 1] * 2}", "1.0"},
      {"an argument behind an output",
       "set s [oa::DonutCreate $b 1 1 {0 0} 2 1]\n"
       "expr {[llength [oa::getBoundary $s 12]] < [llength [oa::getBoundary $s]]}",
       "1"},
  };
  check(cases);
}

TEST_F(Values, DesignsWithoutTechnologyHaveTheUnitsOfTheirViewType) {
  const struct {
    const char *viewType, *box; // of 1600 by 4000 database units
  } cases[] = {
      {"maskLayout", "{0.0 0.0} {1.6 4.0}"},        {"schematic", "{0.0 0.0} {10.0 25.0}"},
      {"schematicSymbol", "{0.0 0.0} {10.0 25.0}"}, {"netlist", "{0.0 0.0} {10.0 25.0}"},
      {"oaHierDesign", "{0.0 0.0} {1.6 4.0}"},
  };
  eval("oa::LibCreate ${lib}bare $folder/bare");
  for (const auto &c : cases) {
    SCOPED_TRACE(c.viewType);
    const std::string type = c.viewType;
    eval("set d [oa::DesignOpen ${lib}bare c v" + type + " [oa::ViewTypeGet " + type + "] w]");
    EXPECT_EQ(eval("set b [oa::BlockCreate $d]; oa::getBBox [oa::RectCreate $b 1 1 [oa::Box 0 0 1600 4000]]"), c.box);
    EXPECT_EQ(eval("oa::RectCreate $b 1 1 [list " + std::string(c.box) +
                   "]; lmap s [members [oa::getShapes $b]] {oa::getBBox $s}"),
              "{" + std::string(c.box) + "} {" + c.box + "}");
    eval("oa::purge $d");
  }
  eval("oa::close [oa::LibFind ${lib}bare]");
}

TEST_F(Values, PlainValuesAreObjectsToo) {
  const Case cases[] = {
      {"area of a result", "oa::getArea [oa::getPoints $polygon]", "6.0"},
      {"the same after Tcl took it apart", "set p [oa::getPoints $polygon]; lindex $p 0; oa::getArea $p", "6.0"},
      {"of a list", "oa::getArea {{0 0} {0 1.5} {1 1.5} {1 0}}", "1.5"},
      {"box of points", "oa::getBBox [oa::getPoints $polygon]", "{0.0 0.0} {2.0 3.0}"},
      {"contains", "oa::contains [oa::getPoints $polygon] {1.9995 0.1}", "1"},
      {"contains not", "oa::contains [oa::getBBox $rect] {1.001 1}", "0"},
      {"merge gives a new box", "oa::merge {{0 0} {1 1}} {{0.5 -1} {3 0}}", "{0.0 -1.0} {3.0 1.0}"},
      {"contains a finer point", "oa::contains {{0 0} {1 1}} {1.4 0.5}", "0"},
      {"merge of two results", "set m [oa::getBBox $rect]; oa::merge $m [oa::getBBox $polygon]", "{0.0 0.0} {2.0 3.0}"},
      {"transform of points", "oa::transform {1.5 0} {{1 1} R90}", "1.0 2.5"},
      {"transform of a box", "oa::transform {{0 0} {2 1}} {{0 0} R90}", "{-1.0 0.0} {0.0 2.0}"},
      {"concat", "oa::concat {{1 0} R90} {{0 1} R90}", "{0.0 2.0} R180"},
      {"elements", "oa::getElement [oa::getPoints $polygon] 2", "2.0 3.0"},
      {"number of elements", "oa::getNumElements [oa::getPoints $polygon]", "4"},
      {"into another design",
       "design small schematic schematic; oa::getPoints [oa::PolygonCreate $b 1 1 [oa::getPoints $polygon]]",
       "{0.0 0.0} {0.0 3.0} {2.0 3.0} {2.0 0.0}"},
  };
  check(cases);
}

// Lists have no unit of their own, and what is computed from them may lie between two database units.
TEST_F(Values, ListsAreComputedWithExactly) {
  const Case cases[] = {
      {"odd width", "oa::getCenter {{0 0} {3 5}}", "1.5 2.5"},
      {"odd width of a shape", "oa::getCenter [oa::getBBox [oa::RectCreate $b 1 1 {{0 0} {3 5}}]]", "1.5 2.5"},
      {"odd database units", "oa::getCenter [oa::getBBox [oa::RectCreate $b 1 1 {{0 0} {0.1705 0.3505}}]]",
       "0.08525 0.17525"},
      {"256 units", "oa::getCenter {{0 0} {0.01171875 0.01953125}}", "0.005859375 0.009765625"},
      {"256 units far away", "oa::getCenter {{1000 0} {1000.01171875 1}}", "1000.005859375 0.5"},
      {"25400 units", "oa::getCenter [list {0 0} [list [expr {3 / 25400.}] 1]]", "5.905511811023622e-5 0.5"},
      {"many decimals", "oa::getCenter {{0 0} {0.333333333333 1}}", "0.16666666666666666 0.5"},
      {"little room", "oa::getCenter {{-500000.0005 0} {500000.0015 0.5}}", "0.0005 0.25"},
      {"area", "oa::getArea {{0 0} {0.3 0} {0.3 0.5}}", "0.075"},
      {"just outside", "oa::contains {{0 0} {3 5}} {3.0000001 2.5}", "0"},
      {"just outside of a result", "oa::contains [oa::getPoints $polygon] {2.0001 1}", "0"},
      {"result by half a unit", "oa::transform [oa::getPoints $polygon] {{0.00025 0} R0}",
       "{0.00025 0.0} {0.00025 3.0} {2.00025 3.0} {2.00025 0.0}"},
      {"of a list first",
       "oa::transform {0.00025 0} [oa::getTransform [oa::ScalarInstCreate $b $lib x layout i {{2 1} "
       "R90}]]",
       "2.0 1.00025"},
      {"taken over by an object", "oa::xOffset [oa::Transform [oa::offset [oa::concat {{3 0} R90} {{0 0} R0}]] R0]",
       "3"},
  };
  check(cases);
}

TEST_F(Values, LengthsThatWouldVanishAreRefused) {
  for (const char *script : {"oa::SegStyle 0.2 truncate truncate", "oa::setCutWidth [oa::ViaParam] 0.2",
                             "oa::setCutSpacing [oa::ViaParam] {0.2 0.2}"}) {
    SCOPED_TRACE(script);
    EXPECT_THAT(failure(script), testing::HasSubstr("is less than half a database unit"));
    EXPECT_EQ(errorCode(), "OA VALUE");
  }
  eval("oa::setCutSpacing [oa::ViaParam] {0 0.6}; oa::setCutWidth [oa::ViaParam] 0; oa::setCutWidth [oa::ViaParam] "
       "1e-9");
  eval("oa::PathCreate $b 1 1 0.0001 {{0 0} {1 0}}"); // a design says what the unit is
}

TEST_F(Values, ObjectsHoldDatabaseUnits) {
  const Case cases[] = {
      {"constructor", "set p [oa::Point 3 4]; list [oa::x $p] [oa::y $p]", "3 4"},
      {"rounded", "oa::x [oa::Point 2.6 0]", "3"},
      {"in a design", "oa::getBBox [oa::RectCreate $b 1 1 [oa::Box 0 0 2000 1000]]", "{0.0 0.0} {1.0 0.5}"},
      {"point objects in a list", "oa::getBBox [oa::RectCreate $b 1 1 [list [oa::Point 0 0] {1 1}]]",
       "{0.0 0.0} {1.0 1.0}"},
      {"taking over a result", "oa::getBBox [oa::PointArray [oa::getPoints $polygon]]", "{0 0} {4000 6000}"},
      {"box members", "set box [oa::Box 0 0 10 20]; list [oa::getCenter $box] [oa::getWidth $box]", "{5 10} 10"},
      {"changed in place", "set box [oa::Box 0 0 1 1]; oa::merge $box [oa::Point 5 5]; oa::right $box", "5"},
      {"and given back", "set box [oa::Box 0 0 1 1]; expr {[oa::merge $box [oa::Point 5 5]] eq $box}", "1"},
      {"output object", "set box [oa::Box]; oa::getBBox $rect $box; oa::right $box", "2001"},
      {"several output objects",
       "set s [oa::PathSegCreate $b 1 1 {0 0} {1 0} [oa::SegStyle 200 truncate extend]]\n"
       "set p [oa::Point]; set q [oa::Point]; oa::getPoints $s $p $q; oa::x $q",
       "2000"},
      {"two points are no box", "oa::getNumElements [oa::PointArray {{0 0} {1 1}}]", "2"},
      {"corners of a box", "oa::getNumElements [oa::PointArray [oa::Box 0 0 1 1]]", "4"},
      {"several outputs as a list", "oa::getPoints $s", "{0.0 0.0} {1.0 0.0}"},
      {"outputs without objects", "lindex [oa::ArcCalcArc {0 0} {1 1} {2 0}] 0", "{0.0 -1.0} {2.0 1.0}"},
      {"array", "set a [oa::PointArray]; oa::append $a {1 2}; oa::append $a [oa::Point 3 4]; oa::getNumElements $a",
       "2"},
      {"array element", "oa::get $a 1", "3 4"},
      {"transform", "set x [oa::Transform 10 20 R90]; list [oa::offset $x] [oa::orient $x]", "{10 20} R90"},
      {"transform of a point", "set x [oa::Transform {10 20} R90]; oa::xOffset $x", "10"},
      {"two references are one object", "set p [oa::Point 1 2]; set q $p; oa::set $q 7 8; oa::x $p", "7"},
      {"by its text", "set p [oa::Point 1 2]; oa::x \"[set p]\"", "1"},
      {"prints its class", "regexp {^oa:Point:0x[0-9a-f]+$} [oa::Point 1 2]", "1"},
  };
  check(cases);
}

// The text of such a list is that of its element.
TEST_F(Values, ListsOfOneObjectAreArrays) {
  eval("foreach l {x y} {set t$l [oa::TechCreate [oa::LibCreate $lib$l $folder/$l]]}\n"
       "proc refs {} {lmap h [oa::getTechHeaders $::tech] {string index [oa::getRefLibName $h] end}}");
  const Case cases[] = {
      {"handle", "oa::setRefs $tech [list $tx]; refs", "x"},
      {"two handles", "oa::setRefs $tech [list $tx $ty]; refs", "x y"},
      {"array of a handle", "oa::getNumElements [oa::TechArray [list $tx]]", "1"},
      {"none", "oa::setRefs $tech {}; refs", ""},
      {"parameter", "oa::ParamArray [list [oa::Param w 3.0]]; oa::get [oa::ParamArray [list [oa::Param w 3.0]]] 0",
       "w double 3.0"},
      {"optional parameter",
       "set p [oa::Param w 3.0]; set def [oa::PcellLinkGetPcellDef tclPcell]\n"
       "oa::defineSuperMaster $d $def [list $p]; oa::getParams $d",
       "{w double 3.0}"},
      {"parameter of an instance",
       "oa::setPcellErrorLogging 0; design parent\n"
       "set i [oa::ScalarInstCreate $b $lib cell layout i {{0 0} R0} [list [oa::Param w 4.0]]]; oa::getParams $i",
       "{w double 4.0}"},
      {"point", "oa::getNumElements [oa::PointArray [list [oa::Point 1 2]]]", "1"},
      {"box", "oa::get [oa::BoxArray [list [oa::Box 0 1 2 3]]] 0", "{0 1} {2 3}"},
  };
  check(cases);
  EXPECT_THAT(failure("oa::setRefs $tech [list $b]"), testing::HasSubstr("expected TechArray"));
  EXPECT_THAT(failure("oa::ParamArray [list [oa::Point 1 2]]"), testing::HasSubstr("expected ParamArray"));
}

TEST_F(Values, TextsThatOnlyLookLikeObjects) {
  eval("set two \"$d $b\"; oa::StringPropCreate $d t $two");
  EXPECT_EQ(eval("expr {[oa::getValue [oa::PropFind $d t]] eq $two}"), "1");
  for (const char *text : {"oa:Bax:0x1", "oa::0x1", "oa:a b:0x1", "oa:Box:0x"}) {
    EXPECT_EQ(eval(std::string("oa::setValue [oa::PropFind $d t] {") + text + "}; oa::getValue [oa::PropFind $d t]"),
              text);
  }
}

TEST_F(Values, ANumberIsTheSizeOfANewArray) {
  for (const char *type : {"PointArray", "BoxArray", "ByteArray", "StringArray", "ParamArray", "DMAttrArray",
                           "TechArray", "TechHeaderArray"}) {
    SCOPED_TRACE(type);
    const std::string made = std::string("set a [oa::") + type + " 7]; ";
    EXPECT_EQ(eval(made + "list [oa::getSize $a] [oa::getNumElements $a]"), "7 0");
    for (const char *size : {"-1", "200000000"}) {
      EXPECT_THAT(failure(std::string("oa::") + type + " " + size), testing::HasSubstr("unsigned integer from 0 to"));
    }
  }
  // One element is an array of one, and has no allocation to look into.
  EXPECT_EQ(eval("oa::getSize [oa::Box 0 0 1 1]"), "1");
  EXPECT_EQ(eval("oa::getNumElements [oa::ByteArray abc]"), "3");
  EXPECT_EQ(eval("oa::getNumElements [oa::StringArray {7 8}]"), "2");
  // The value of a property stays what it is.
  EXPECT_EQ(eval("oa::getNumElements [oa::ByteArray [oa::getValue [oa::AppPropCreate $d a t 77]]]"), "2");
}

TEST_F(Values, ObjectsDieWithTheLastReference) {
  eval("set p [oa::Point 1 2]; set text {}; append text $p; unset p");
  EXPECT_THAT(failure("oa::x $text"), testing::HasSubstr("does not exist any more"));
  EXPECT_THAT(failure("oa::x oa:Point:0xffffffff"), testing::HasSubstr("does not exist any more"));
}

// Looking at the text of an object must not end it.
TEST_F(Values, ObjectsSurviveBeingReadAsSomethingElse) {
  for (const char *look : {"lindex $p 0", "string length $p", "regexp oa: $p", "string index $p 2", "foreach x $p {}",
                           "expr {$p eq {}}", "catch {dict get $p x}", "split $p :", "set array($p) 1"}) {
    SCOPED_TRACE(look);
    EXPECT_EQ(eval(std::string("set p [oa::Point 3 4]; ") + look + "; oa::y $p"), "4");
  }
  // Nor are all of them kept for ever.
  EXPECT_EQ(eval("set p [oa::Point 3 4]; set text {}; append text $p; string length $p; unset p\n"
                 "for {set i 0} {$i < 70000} {incr i} {string length [oa::Point 1 2]}; catch {oa::y $text}"),
            "1");
}

TEST_F(Values, Parameters) {
  const Case cases[] = {
      {"int", "set p [oa::Param w 5]; list [oa::getName $p] [oa::getType $p] [oa::getIntVal $p]", "w intParam 5"},
      {"double", "set p [oa::Param w 1.5]; list [oa::getType $p] [oa::getDoubleVal $p]", "doubleParam 1.5"},
      {"string", "set p [oa::Param w abc]; list [oa::getType $p] [oa::getStringVal $p]", "stringParam abc"},
      {"setter", "oa::setBooleanVal $p True; oa::getBooleanVal $p", "1"},
      {"array", "set a [oa::ParamArray]; oa::append $a $p; oa::append $a {n int 3}; oa::getNumElements $a", "2"},
      {"find by name", "set q [oa::Param]; list [oa::find $a n $q] [oa::getIntVal $q] [oa::find $a no $q]", "1 3 0"},
      {"element", "oa::get $a 1", "n int 3"},
      {"array from a list", "oa::getNumElements [oa::ParamArray {{a int 1} {b stringParam x}}]", "2"},
  };
  check(cases);
}

TEST_F(Values, ParametersThatCannotBeReadAreNamed) {
  EXPECT_THAT(failure("oa::ParamArray {{a int 1} {w bogus 5}}"),
              testing::HasSubstr(R"(the type "bogus" of parameter w is none of int, float, double,)"));
  EXPECT_THAT(failure("oa::ScalarInstCreate $b $lib x layout i {{0 0} R0} {{l int much}}"),
              testing::HasSubstr(R"("much" of parameter l is no int)"));
}

TEST_F(Values, Enumerations) {
  const Case cases[] = {
      {"text out", "oa::getOrient [oa::TextCreate $b 1 1 a {0 0} lowerLeft MX stick 1]", "MX"},
      {"number in", "oa::getOrient [oa::TextCreate $b 1 1 a {0 0} 2 $oa::oacR90 $oa::oacStickFont 1]", "R90"},
      {"wrapper in", "oa::getOrient [oa::TextCreate $b 1 1 a {0 0} lowerLeft [oa::Orient R180] stick 1]", "R180"},
      {"name of a wrapper", "oa::getName [oa::LibMode readOnly]", "readOnly"},
      {"wrapper's function", "oa::concat [oa::Orient R90] R180", "R270"},
      {"constants", "list $oa::oacMaskLayout $oa::oacTermIterSingleBit $oa::oacDeletedDatabase", "0 2 12"},
      {"purpose constants", "set oa::oavPurposeNumberDrawing", "4294967295"},
  };
  check(cases);
}

TEST_F(Values, PropertiesOfEachKind) {
  const Case cases[] = {
      {"int", "oa::getValue [oa::IntPropCreate $rect i -7]", "-7"},
      {"double", "oa::getValue [oa::DoublePropCreate $rect d 0.1]", "0.1"},
      {"float", "oa::getValue [oa::FloatPropCreate $rect f 0.1]", "0.1"},
      {"boolean", "oa::getValue [oa::BooleanPropCreate $rect b false]", "0"},
      {"string", "oa::getValue [oa::StringPropCreate $rect s {two words}]", "two words"},
      {"time", "oa::getValue [oa::TimePropCreate $rect t 1000000000]", "1000000000"},
      {"bytes", "string length [oa::getValue [oa::AppPropCreate $rect a type [binary format c3 {0 1 -1}]]]", "3"},
      {"bytes as an array", "oa::get [oa::getValue [oa::PropFind $rect a]] 2", "255"},
      {"enumeration", "set e [oa::EnumPropCreate $rect e low {low high}]; list [oa::getValue $e] [oa::getEnums $e]",
       "low {low high}"},
      {"range", "oa::getUpperBound [oa::IntRangePropCreate $rect r 1 2 3]", "3"},
      {"hierarchical",
       "oa::StringPropCreate [oa::HierPropCreate $rect h] in side; names [oa::getProps [oa::PropFind $rect h]]", "in"},
      {"set", "set i [oa::PropFind $rect i]; oa::setValue $i 8; oa::getValue $i", "8"},
      {"types", "oa::getType $i", "IntProp"},
  };
  check(cases);
}

} // namespace
