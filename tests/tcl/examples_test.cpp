// The scripts of examples/tcl, each run in a shell of its own.

#include "tcltest.h"

namespace {

using namespace tcltest;
using testing::HasSubstr;

class TclExamples : public TclTest {
protected:
  Ended run(const std::string &script, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), std::string(EXAMPLES_FOLDER) + "/" + script);
    return runShell(folder(), arguments);
  }
  void build() const {
    const Ended ended = run("build_library.tcl", {"small", "smalllib"});
    ASSERT_EQ(ended.exitCode, 0) << ended.errors;
    EXPECT_EQ(ended.output, "library small is in smalllib\n");
  }
};

TEST_F(TclExamples, BuildAndListALibrary) {
  build();
  const Ended listed = run("list_library.tcl", {"small", "smalllib"});
  EXPECT_EQ(listed.exitCode, 0) << listed.errors;
  EXPECT_THAT(listed.output, HasSubstr("  layer    5  metal1     metal\n"));
  EXPECT_THAT(listed.output, HasSubstr("  via M1_M2: metal1 - metal2\n  via M1_M2_wide: metal1 - metal2\n"));
  EXPECT_THAT(listed.output, HasSubstr("  cell buf\n    layout (maskLayout)\n    schematic (schematic)\n"
                                       "  cell inv\n    layout (maskLayout)\n    schematic (schematic)\n"
                                       "    symbol (schematicSymbol)\n"));
  EXPECT_EQ(run("build_library.tcl", {"small", "smalllib"}).exitCode, 1); // not over an existing one
}

TEST_F(TclExamples, TheBufferIsConnected) {
  build();
  eval("oa::LibOpen small $folder/smalllib; set d [oa::DesignOpen small buf schematic r]; set b [oa::getTopBlock $d]");
  EXPECT_EQ(eval("lsort [lmap t [members [oa::getInstTerms [oa::NetFind $b mid]]] "
                 "{list [oa::getName [oa::getInst $t]] [oa::getTermName $t] [oa::getTermType [oa::getTerm $t]]}]"),
            "{i1 Z output} {i2 A input}");
  EXPECT_EQ(eval("types [oa::getShapes [oa::NetFind $b mid]]"), "Line");
  eval("oa::purge $d; oa::close [oa::LibFind small]");
}

TEST_F(TclExamples, LabelsAreInTheMiddleOfTheirPins) {
  build();
  eval("oa::LibOpen small $folder/smalllib; set d [oa::DesignOpen small inv layout r]");
  EXPECT_EQ(eval("lsort [lmap s [members [oa::getShapes [oa::getTopBlock $d]]] "
                 "{if {[oa::getType $s] ne {Text}} continue; list [oa::getText $s] [oa::getOrigin $s]}]"),
            "{A {1.0 2.4}} {GND {1.0 -0.25}} {VDD {1.0 5.75}} {Z {1.6 2.75}}");
  eval("oa::purge $d; oa::close [oa::LibFind small]");
}

TEST_F(TclExamples, CountShapesPerLayer) {
  build();
  const Ended counted = run("count_shapes.tcl", {"small", "smalllib", "inv", "layout"});
  EXPECT_EQ(counted.exitCode, 0) << counted.errors;
  EXPECT_EQ(counted.output, "diff           2  Rect 2\n"
                            "metal1         8  Rect 4 Text 4\n"
                            "nwell          1  Rect 1\n"
                            "poly           1  Path 1\n"
                            "total 12\n");
}

TEST_F(TclExamples, SetTheHeightOfTexts) {
  build();
  const Ended changed = run("set_text_height.tcl", {"small", "smalllib", "inv", "layout", "0.5"});
  EXPECT_EQ(changed.exitCode, 0) << changed.errors;
  EXPECT_EQ(changed.output, "changed 4 texts\n");
  eval("oa::LibOpen small $folder/smalllib; set d [oa::DesignOpen small inv layout r]");
  EXPECT_EQ(eval("set r {}; foreach s [members [oa::getShapes [oa::getTopBlock $d]]] "
                 "{if {[oa::getType $s] eq {Text}} {lappend r [oa::getHeight $s]}}; set r"),
            "0.5 0.5 0.5 0.5");
  eval("oa::purge $d; oa::close [oa::LibFind small]");
  EXPECT_EQ(run("set_text_height.tcl", {"small", "smalllib", "inv", "layout", "-1"}).exitCode, 1);
}

// As importers without a layer table make them.
TEST_F(TclExamples, WorkOnLibrariesWithoutATechnology) {
  eval("set lib [oa::LibCreate plain $folder/plain]; set d [oa::DesignOpen plain c schematic [oa::ViewTypeGet "
       "schematic] w]");
  eval("set b [oa::BlockCreate $d]; oa::LineCreate $b 228 1 {{0 0} {1 0.5}}\n"
       "oa::TextCreate $b 230 1 t {0 0} lowerLeft R0 stick 1; oa::save $d; oa::purge $d");
  const Ended listed = run("list_library.tcl", {"plain", "plain"});
  EXPECT_THAT(listed.output, HasSubstr("/plain\n  no technology\n  cell c\n    schematic (schematic)\n"))
      << listed.errors;
  const Ended counted = run("count_shapes.tcl", {"plain", "plain", "c", "schematic"});
  EXPECT_EQ(counted.output, "228            1  Line 1\n230            1  Text 1\ntotal 2\n") << counted.errors;
  const Ended changed = run("set_text_height.tcl", {"plain", "plain", "c", "schematic", "0.125"});
  EXPECT_EQ(changed.output, "changed 1 texts\n") << changed.errors;
  eval("set d [oa::DesignOpen plain c schematic r]");
  EXPECT_EQ(eval("oa::getHeight [lindex [members [oa::getShapes [oa::getTopBlock $d]]] 1]"), "0.125");
  eval("oa::purge $d; oa::close $lib; unset lib");
}

TEST_F(TclExamples, SayHowTheyAreCalled) {
  for (const char *script : {"build_library.tcl", "list_library.tcl", "count_shapes.tcl", "set_text_height.tcl"}) {
    SCOPED_TRACE(script);
    const Ended ended = run(script, {});
    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_THAT(ended.errors, HasSubstr(std::string("usage: tclsh ") + script));
  }
}

} // namespace
