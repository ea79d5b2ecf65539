// Designs through scripts: shapes of each class, what they say, changes, saving and reading again.

#include "tcltest.h"

namespace {

using namespace tcltest;

struct Case {
  const char *name, *script, *expected;
};

class Designs : public TclTest {
protected:
  Designs() { eval("library; design cell"); }
  template <std::size_t N> void check(const Case (&cases)[N]) {
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(eval(c.script), c.expected);
    }
  }
};

TEST_F(Designs, ShapesOfEachClass) {
  const Case cases[] = {
      {"rectangle", "set s [oa::RectCreate $b 1 1 {{0 0} {2 1}}]; list [oa::getType $s] [oa::getLayerNum $s]",
       "Rect 1"},
      {"set box", "oa::setBBox $s {{0 0} {3 3}}; oa::getBBox $s", "{0.0 0.0} {3.0 3.0}"},
      {"layer and purpose", "oa::setLPP $s 2 1; list [oa::getLayerNum $s] [oa::getPurposeNum $s]", "2 1"},
      {"convert", "set s [oa::convertToPolygon $s]; list [oa::getType $s] [oa::getNumPoints $s]", "Polygon 4"},
      {"path",
       "set s [oa::PathCreate $b 1 1 0.5 {{0 0} {4 0}} variable 0.25 1]; list [oa::getStyle $s] [oa::getEndExt $s]",
       "variable 1.0"},
      {"boundary", "oa::getBBox [oa::getBoundary $s]", "{-0.25 -0.25} {5.0 0.25}"},
      {"path by defaults", "oa::getStyle [oa::PathCreate $b 1 1 0.5 {{0 0} {4 0}}]", "truncate"},
      {"line", "oa::getPoints [oa::LineCreate $b 1 1 {{0 0} {4 0} {4 1}}]", "{0.0 0.0} {4.0 0.0} {4.0 1.0}"},
      {"path segment",
       "set s [oa::PathSegCreate $b 1 1 {0 0} {1 0} [oa::SegStyle 400 extend truncate]]; oa::getBBox $s",
       "{-0.1 -0.1} {1.0 0.1}"},
      {"its style", "set style [oa::getStyle $s]; list [oa::getWidth $style] [oa::getBeginStyle $style]", "400 extend"},
      {"ellipse", "oa::getBBox [oa::EllipseCreate $b 1 1 {{0 0} {2 1}}]", "{0.0 0.0} {2.0 1.0}"},
      {"donut", "set s [oa::DonutCreate $b 1 1 {1 1} 1 0.5]; list [oa::getCenter $s] [oa::getHoleRadius $s]",
       "{1.0 1.0} 0.5"},
      {"dot", "set s [oa::DotCreate $b 1 1 {1 1} 0.5]; list [oa::getLocation $s] [oa::getWidth $s] [oa::getHeight $s]",
       "{1.0 1.0} 0.5 0.0"},
      {"arc", "set s [oa::ArcCreate $b 1 1 {{0 0} {2 2}} 0 1.5]; list [oa::getEllipseBBox $s] [oa::getStopAngle $s]",
       "{{0.0 0.0} {2.0 2.0}} 1.5"},
      {"text",
       "set s [oa::TextCreate $b 1 1 {hello you} {1 2} centerLeft R90 roman 0.5 1]\n"
       "list [oa::getText $s] [oa::getOrigin $s] [oa::getAlignment $s] [oa::getFont $s] [oa::hasOverbar $s]",
       "{hello you} {1.0 2.0} centerLeft roman 1"},
      {"evaluated text", "oa::getType [oa::EvalTextCreate $b 1 1 {[@x]} {0 0} lowerLeft R0 stick 1 {} 0 1 0]",
       "EvalText"},
      {"move", "oa::move $s {{1 1} R0}; oa::getOrigin $s", "2.0 3.0"},
      {"copy", "set c [oa::copy $s [oa::Transform 2000 0]]; oa::getOrigin $c", "3.0 3.0"},
      {"displays",
       "set p [oa::StringPropCreate $s name value]\n"
       "set t [oa::PropDisplayCreate $p 1 1 {0 0} lowerLeft R0 stick 0.5 $oa::oacNameValueTextDisplayFormat]\n"
       "list [oa::getText $t] [expr {[oa::getProp $t] eq $p}] [oa::getCount [oa::TextDisplayGetTextDisplays $s]]",
       "name=value 1 0"},
      {"owner's displays", "oa::getCount [oa::TextDisplayGetTextDisplays $p]", "1"},
      {"headers",
       "lsort [lmap h [members [oa::getLPPHeaders $b]] {list [oa::getLayerNum $h] [oa::getCount [oa::getShapes $h]]}]",
       "{1 12} {2 1}"},
  };
  check(cases);
}

TEST_F(Designs, AttributeDisplays) {
  eval("set net [oa::NetCreate $b a]");
  eval("set s [oa::AttrDisplayCreate $net name 1 1 {0 0} lowerLeft R0 stick 0.5 value]");
  EXPECT_EQ(eval("list [oa::getText $s] [oa::getAttribute $s]"), "a name");
  EXPECT_THAT(failure("oa::AttrDisplayCreate $net cellName 1 1 {0 0} lowerLeft R0 stick 0.5"),
              testing::HasSubstr("attribute: expected attribute of the object but got \"cellName\""));
}

TEST_F(Designs, NamesModesAndLife) {
  eval("oa::save $d");
  const Case cases[] = {
      {"names",
       "expr {[list [oa::getLibName $d] [oa::getCellName $d] [oa::getViewName $d]] eq [list $lib cell layout]}", "1"},
      {"name in a name space", "oa::getCellName $d [oa::UnixNS]", "cell"},
      {"mode after saving", "oa::getMode $d", "a"},
      {"unmodified", "oa::isModified $d", "0"},
      {"modified", "oa::RectCreate $b 1 1 {{0 0} {1 1}}; oa::isModified $d", "1"},
      {"view type", "oa::getName [oa::getViewType $d]", "maskLayout"},
      {"same object, same text", "expr {[oa::DesignFind $lib cell layout] eq $d}", "1"},
      {"block's design", "expr {[oa::getDesign $b] eq $d && [oa::getDatabase $b] eq $d}", "1"},
      {"technology", "expr {[oa::getTech $d] eq $tech}", "1"},
      {"open designs", "expr {$d in [members [oa::DesignGetOpenDesigns]]}", "1"},
      {"save as", "oa::saveAs $d $lib other layout; oa::DesignExists $lib other layout", "1"},
      {"revert",
       "oa::save $d; oa::destroy [lindex [members [oa::getShapes $b]] 0]; oa::revert $d; types [oa::getShapes "
       "[oa::getTopBlock $d]]",
       "Rect"},
      {"cell type", "oa::setCellType $d core; oa::getCellType $d", "core"},
      {"closed", "oa::close $d; oa::DesignFind $lib cell layout", ""},
      {"destroyed", "oa::DesignDestroy $lib other layout; oa::DesignExists $lib other layout", "0"},
  };
  check(cases);
}

TEST_F(Designs, AnotherProcessReadsWhatWasSaved) {
  eval("oa::RectCreate $b 1 1 {{0 0} {1.5 2}}; oa::TextCreate $b 2 1 label {0.5 0.5} lowerLeft R0 stick 0.25");
  eval("oa::StringPropCreate $d note {saved by a script}; oa::save $d");
  writeFile(folder() / "read.tcl", R"(
    package require oa
    set lib [lindex $argv 0]
    oa::LibOpen $lib [pwd]/lib
    set d [oa::DesignFind $lib cell layout]
    if {$d == ""} {set d [oa::DesignOpen $lib cell layout r]}
    set shapes [oa::getShapes [oa::getTopBlock $d]]
    while {"" != [set shape [oa::getNext $shapes]]} {
      switch [oa::getType $shape] {
        Rect {puts "rect [oa::getBBox $shape]"}
        Text {puts "text [oa::getText $shape] [oa::getHeight $shape]"}
      }
    }
    puts [oa::getValue [oa::PropFind $d note]]
  )");
  const Ended ended = runShell(folder(), {"read.tcl", eval("set lib")});
  EXPECT_EQ(ended.exitCode, 0) << ended.errors;
  EXPECT_EQ(ended.output, "rect {0.0 0.0} {1.5 2.0}\ntext label 0.25\nsaved by a script\n");
}

} // namespace
