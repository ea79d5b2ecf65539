// The package in tclsh, a process that knows nothing of us.

#include "tcltest.h"

namespace {

using namespace tcltest;

class Shell : public TclTest {};

TEST_F(Shell, ARunFromNothingToAnotherSession) {
  writeFile(folder() / "write.tcl", R"(
    package require oa
    oa::LibCreate shell [pwd]/shell
    set tech [oa::TechCreate shell]
    oa::PhysicalLayerCreate $tech metal 1
    oa::save $tech
    set design [oa::DesignOpen shell cell layout [oa::ViewTypeGet maskLayout] w]
    set block [oa::BlockCreate $design]
    foreach x {1 2 3} {oa::RectCreate $block 1 $oa::oavPurposeNumberDrawing [list {0 0} [list $x 1]]}
    oa::save $design
    set list [oa::LibDefListGet [pwd]/lib.defs w]
    oa::LibDefCreate $list shell [pwd]/shell
    oa::save $list
  )");
  writeFile(folder() / "read.tcl", R"(
    lappend auto_path [lindex $argv 0]
    package require oa 2.2
    oa::LibDefListOpenLibs
    set block [oa::getTopBlock [oa::DesignOpen shell cell layout r]]
    set widths {}
    set shapes [oa::getShapes $block]
    while {[set shape [oa::getNext $shapes]] != ""} {lappend widths [lindex [oa::getBBox $shape] 1 0]}
    puts $widths
    puts [catch {oa::save [oa::getDesign $block]} message],$errorCode
    oa::getBBox nonsense
  )");
  const Ended written = runShell(folder(), {"write.tcl"});
  EXPECT_EQ(written.exitCode, 0) << written.errors;
  EXPECT_EQ(written.output, "");
  const Ended read = runShell(folder(), {"read.tcl", PACKAGE_FOLDER}, "");
  EXPECT_EQ(read.exitCode, 1);
  EXPECT_EQ(read.output, "1.0 2.0 3.0\n1,OA 1002\n");
  EXPECT_THAT(read.errors, testing::HasSubstr("expected"));
}

} // namespace
