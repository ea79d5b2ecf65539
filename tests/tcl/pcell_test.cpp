// Parametric cells in Tcl: those that scripts make and use, and those that scripts draw.

#include "tcltest.h"

#include "oa/oaDesignDB.h"
#include "oa/oaTcl.h"

#include <cstdlib>
#include <set>

namespace {

using namespace tcltest;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

class ErrorList : public oa::oaPcellObserver {
public:
  ErrorList() : oaPcellObserver(5) {}
  void onError(oa::oaDesign *, const oa::oaString &message, oa::oaPcellErrorTypeEnum type) override {
    kinds.push_back(type);
    messages.push_back(std::string(message));
  }
  void onPostEval(oa::oaDesign *, oa::oaPcellDef *) override { ++evaluations; }

  std::vector<int> kinds;
  std::vector<std::string> messages;
  int evaluations = 0;
};

// `pcell CELL PARAMS SCRIPT ?NAME VALUE ...?` makes a super master whose procedure has the argument d; `draw CELL
// ?PARAMS?` gives the sub master.
class TclPcell : public TclTest {
protected:
  TclPcell() {
    eval("library; oa::setPcellErrorLogging 0");
    eval(R"(
      proc pcell {cell params script args} {
        design $cell
        set def [oa::PcellLinkGetPcellDef tclPcell]
        foreach {name value} [list GenCellProc [list d $script] {*}$args] {oa::addData $def $name $value}
        oa::defineSuperMaster $::d $def $params
      }
      proc draw {cell {params {}}} {oa::DesignOpen $::lib $cell layout [oa::ParamArray $params]}
      proc boxes {design} {lmap s [members [oa::getShapes [oa::getTopBlock $design]]] {oa::getBBox $s}}
    )");
  }
  // What the observers are told of a cell with this script, after which there must be no block.
  std::string fault(const std::string &script, const std::string &more = "") {
    const std::string cell = "f" + std::to_string(++faults_);
    errors_.messages.clear();
    eval("pcell " + cell + " {} {" + script + "} " + more + "; set sub [draw " + cell + "]");
    EXPECT_EQ(eval("oa::getTopBlock $sub"), "");
    EXPECT_EQ(errors_.messages.size(), 1u);
    return errors_.messages.empty() ? "" : errors_.messages[0];
  }

  ErrorList errors_;

private:
  int faults_ = 0;
};

TEST_F(TclPcell, ScriptDrawsEachSetOfParametersOnce) {
  eval("pcell c {{w double 1.5} {n int 2}} {"
       "  set b [oa::BlockCreate $d]; set w [lindex [oa::getParams $d] 0 2]; set n [lindex [oa::getParams $d] 1 2]\n"
       "  for {set i 0} {$i < $n} {incr i} {oa::RectCreate $b 1 1 [list [list 0 $i] [list $w [expr {$i + 0.5}]]]}}");
  eval("design top; foreach {name params} {a {} b {{w double 0.25}} c {{w double 0.25}} d {{n int 1}}} {"
       "  oa::ScalarInstCreate $b $lib c layout $name {{0 0} R0} $params}");
  EXPECT_EQ(eval("lmap i {a b c d} {llength [boxes [oa::getMaster [oa::InstFind $b $i]]]}"), "2 2 2 1");
  EXPECT_EQ(errors_.evaluations, 3);
  EXPECT_EQ(eval("boxes [oa::getMaster [oa::InstFind $b b]]"), "{{0.0 0.0} {0.25 0.5}} {{0.0 1.0} {0.25 1.5}}");
  // User units are those of the library's technology: 2,000 database units.
  EXPECT_EQ(eval("set m [oa::getMaster [oa::InstFind $b b]]; oa::uuToDBU $tech [oa::getViewType $m] 0.25"), "500");
  EXPECT_EQ(eval("expr {[oa::getMaster [oa::InstFind $b b]] eq [oa::getMaster [oa::InstFind $b c]]}"), "1");
  EXPECT_EQ(eval("list [oa::isSubMaster $m] [oa::isSuperMaster $m]"), "1 0");
}

TEST_F(TclPcell, IsStoredWithTheDesign) {
  eval("pcell c {{w double 2.0}} {oa::RectCreate [oa::BlockCreate $d] 1 1 [list {0 0} [list [lindex [oa::getParams $d] "
       "0 "
       "2] 1]]} TimeLimit 20 note {\303\244 \\{ $x}; oa::save $d; oa::close $d");
  eval("set d [oa::DesignOpen $lib c layout r]");
  EXPECT_EQ(eval("list [oa::isSuperMaster $d] [oa::getPcellEvaluatorName $d] [oa::getParams $d]"),
            "1 tclPcell {{w double 2.0}}");
  EXPECT_EQ(eval("set def [oa::getPcellDef $d]; oa::getDataValue $def TimeLimit"), "20");
  EXPECT_EQ(eval("oa::getDataValue $def note"), "\303\244 \\{ $x");
  EXPECT_EQ(eval("boxes [draw c {{w double 3.0}}]"), "{{0.0 0.0} {3.0 1.0}}");
  EXPECT_EQ(eval("lmap s [members [oa::getSubMasters $d]] {expr {[oa::getSuperMaster $s] eq $d}}"), "1");
}

TEST_F(TclPcell, DefinitionsBelongToTheScriptOrToTheDesign) {
  eval("design c; set def [oa::PcellLinkGetPcellDef tclPcell]");
  EXPECT_EQ(
      eval("list [oa::addData $def a 1] [oa::addData $def a 2] [oa::getDataValue $def a] [oa::setDataValue $def a 3] "
           "[oa::setDataValue $def b 3] [oa::removeData $def b] [oa::removeData $def a]"),
      "1 0 1 1 0 0 1");
  EXPECT_THAT(failure("oa::getDataValue $def a"), HasSubstr("has no data \"a\""));
  EXPECT_EQ(eval("oa::getPcellDef $d"), "");
  EXPECT_THAT(failure("oa::PcellLinkGetPcellDef none"), HasSubstr("none"));
  EXPECT_EQ(errorCode(), "OA " + std::to_string(oa::oacPcellEvaluatorNotFound));
  // A refused definition stays the script's; one that was taken is good for one design.
  failure("oa::defineSuperMaster $d $def {{a int 1} {a int 2}}");
  eval("oa::defineSuperMaster $d $def {{a int 1}}; oa::defineSuperMaster $d $def {}; oa::addData $def x 1");
  EXPECT_EQ(eval("set first $d; design e; oa::getDataValue $def x"), "1");
  failure("oa::defineSuperMaster $d $def {}");
  eval("oa::purge $first");
  EXPECT_THAT(failure("oa::addData $def y 1"), HasSubstr("was closed"));
}

TEST_F(TclPcell, BothNamesAreFound) {
  eval("design c; set def [oa::PcellLinkGetPcellDef oaPcellScript]; oa::addData $def ScriptEngineName oaTclEngine\n"
       "oa::addData $def GenCellProc {design {oa::BlockCreate $design}}; oa::defineSuperMaster $d $def {}");
  EXPECT_EQ(eval("oa::getPcellEvaluatorName $d"), "oaPcellScript");
  EXPECT_EQ(eval("oa::getType [oa::getTopBlock [draw c]]"), "Block");
}

TEST_F(TclPcell, FailuresAreToldAndLeaveNoBlock) {
  const struct {
    const char *name, *script, *more, *message;
  } cases[] = {
      {"error", "oa::BlockCreate $d\nerror {too narrow}", "", "cannot be evaluated: too narrow (line 2)"},
      {"of the database", "set b [oa::BlockCreate $d]; oa::RectCreate $b 1 1 {{0 0} {0 1}}", "", "(line 1)"},
      {"inside a procedure", "proc p {} {error deep}\n\np", "", "deep (line 3)"},
      {"unknown command", "nonsense", "", "invalid command name \"nonsense\""},
      {"long message", "error [string repeat a 100000]", "", "aaa... (line 1)"},
      {"break", "break", "", "invoked \"break\" outside of a loop"},
      {"engine", "", "ScriptEngineName python", "its script is for the engine \"python\""},
      {"time limit that is none", "", "TimeLimit soon",
       "TimeLimit: expected a number of seconds above 0, but got \"soon\""},
      {"endless time limit", "", "TimeLimit inf", "but got \"inf\""},
      {"time limit that is not a number", "", "TimeLimit nan", "but got \"nan\""},
      {"negative time limit", "", "TimeLimit -1", "but got \"-1\""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_THAT(fault(c.script, c.more), AllOf(HasSubstr("/layout"), HasSubstr(c.message)));
    EXPECT_EQ(errors_.kinds.back(), oa::oacPcellEvalError);
  }
  for (const char *data : {"", "d", "a b c", "\\{", "{a b} {}"}) {
    SCOPED_TRACE(data);
    eval("design g; set def [oa::PcellLinkGetPcellDef tclPcell]; oa::addData $def GenCellProc \"" + std::string(data) +
         "\"; oa::defineSuperMaster $d $def {}; set sub [draw g]");
    EXPECT_EQ(eval("oa::getTopBlock $sub"), "");
    EXPECT_THAT(errors_.messages.back(), testing::AnyOf(HasSubstr("GenCellProc"), HasSubstr("wrong # args")));
  }
}

TEST_F(TclPcell, AFailureDoesNotSpoilTheNextEvaluation) {
  fault("proc foreach args {error spoilt}; set ::left 1; rename set {}; namespace delete ::oa; error x");
  eval("pcell c {} {oa::BlockCreate $d; foreach x {1 2} {}; if {[info exists ::left]} {error left}}");
  EXPECT_EQ(eval("oa::getType [oa::getTopBlock [draw c]]"), "Block");
}

TEST_F(TclPcell, EndlessScriptsAreStopped) {
  const struct {
    const char *name, *script, *message;
  } cases[] = {
      {"loop", "while 1 {}", "the script was stopped after 0.3 s"},
      {"of commands", "while 1 {set x [list a b]; lindex $x 0}", "stopped after 0.3 s"},
      {"that catches", "while 1 {catch {while 1 {}}}", "stopped after 0.3 s"},
      {"that tries", "while 1 {try {while 1 {}} on error {} {} finally {while 1 {}}}", "stopped after 0.3 s"},
      {"of figures", "set b [oa::BlockCreate $d]; while 1 {oa::RectCreate $b 1 1 {{0 0} {1 1}}}",
       "stopped after 0.3 s"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_THAT(fault(c.script, "TimeLimit 0.3"), HasSubstr(c.message));
  }
  EXPECT_THAT(fault("proc p {} {p}\np", "TimeLimit 60"), HasSubstr("too many nested evaluations"));
}

// Which would end the program otherwise.
TEST_F(TclPcell, AValueBeyondWhatTclCanHoldFailsTheScript) {
  EXPECT_THAT(fault("set x [string repeat a 100000000]; set y [join [lrepeat 25 {$x}] {}]; subst $y", "TimeLimit 60"),
              HasSubstr("the script was stopped: max size for a Tcl value"));
  EXPECT_THAT(fault("error again"), HasSubstr("again"));
}

TEST_F(TclPcell, WhoRunsTheProgramLimitsTheTime) {
  ::setenv("OA_PCELL_TIME_LIMIT", "0.2", 1);
  EXPECT_THAT(fault("while 1 {}", "TimeLimit 50"), HasSubstr("stopped after 0.2 s"));
  ::setenv("OA_PCELL_TIME_LIMIT", "0", 1);
  EXPECT_THAT(fault("oa::BlockCreate $d"), HasSubstr("scripts are switched off by OA_PCELL_TIME_LIMIT=0"));
  ::setenv("OA_PCELL_TIME_LIMIT", "none", 1);
  EXPECT_THAT(fault("while 1 {}"), HasSubstr("OA_PCELL_TIME_LIMIT: expected a number of seconds"));
  ::unsetenv("OA_PCELL_TIME_LIMIT");
}

TEST_F(TclPcell, ScriptsReachNothingButTheirDesign) {
  const char *const names[] = {"open",
                               "file",
                               "exec",
                               "socket",
                               "load",
                               "exit",
                               "source",
                               "cd",
                               "pwd",
                               "glob",
                               "puts",
                               "gets",
                               "read",
                               "close",
                               "fconfigure",
                               "chan",
                               "after",
                               "vwait",
                               "update",
                               "interp",
                               "package",
                               "unload",
                               "encoding",
                               "fileevent",
                               "zlib",
                               "oo::class",
                               "trace",
                               "clock",
                               "tcl::unsupported::inject",
                               "tcl::file::delete",
                               "oa::LibOpen",
                               "oa::LibCreate",
                               "oa::LibDefListOpenLibs",
                               "oa::DesignOpen",
                               "oa::DesignGetOpenDesigns",
                               "oa::DesignDestroy",
                               "oa::CellFind",
                               "oa::DMFileCreate",
                               "oa::PcellLinkGetPcellDef",
                               "oa::defineSuperMaster",
                               "oa::setPcellErrorLogging"};
  for (const char *name : names) {
    SCOPED_TRACE(name);
    EXPECT_THAT(fault(name), HasSubstr(std::string("invalid command name \"") + name + "\""));
  }
  EXPECT_EQ(fault("if {[info exists ::env] || [info exists ::tcl_library] || [info exists ::auto_path]} {error open}; "
                  "error [lsort [info vars ::*]]")
                .find("open"),
            std::string::npos);
}

TEST_F(TclPcell, ScriptsChangeNothingButTheirDesign) {
  eval("design other; set rect [oa::RectCreate $b 1 1 {{0 0} {1 1}}]; oa::StringPropCreate $rect p old; set box "
       "[oa::Box 0 "
       "0 4 4]");
  eval("design master; oa::RectCreate $b 1 1 {{0 0} {1 1}}; oa::save $d");
  const std::string refused = "may change only the design that it draws";
  const std::string other = eval("set rect"), otherBlock = eval("oa::getBlock $rect"),
                    layer = eval("oa::LayerFind $tech m1");
  const std::string cases[] = {
      "oa::destroy " + other,
      "oa::setBBox " + other + " {{0 0} {2 2}}",
      "oa::setValue [oa::PropFind " + other + " p] new",
      "oa::RectCreate " + otherBlock + " 1 1 {{0 0} {1 1}}",
      "oa::copy " + other + " {{5 5} R0}",
      "oa::copy [oa::RectCreate [oa::BlockCreate $d] 1 1 {{0 0} {1 1}}] {{0 0} R0} " + otherBlock,
      "oa::copyTo [oa::IntPropCreate $d q 1] " + other,
      "oa::StringPropCreate " + layer + " p x",
      "oa::setMaterial " + layer + " poly",
      "oa::PhysicalLayerCreate [oa::getTech $d] m9 9",
      "oa::save [oa::getTech $d]",
      "oa::destroy [oa::LayerFind [oa::getTech $d] m2]",
      "oa::save [oa::getSuperMaster $d]",
      "oa::purge $d",
      "oa::close $d",
      "oa::reopen $d a",
      "oa::StringPropCreate [oa::getSuperMaster $d] p x",
      "set i [oa::ScalarInstCreate [oa::BlockCreate $d] " + eval("set lib") +
          " master layout i {{0 0} R0}]; oa::destroy [oa::getTopBlock [oa::getMaster $i]]",
  };
  for (const std::string &script : cases) {
    SCOPED_TRACE(script);
    EXPECT_THAT(fault(script), HasSubstr(refused));
  }
  EXPECT_THAT(fault("oa::set " + eval("set box") + " 0 0 9 9"), HasSubstr("does not exist any more"));
  EXPECT_EQ(eval("list [oa::getBBox $rect] [oa::getValue [oa::PropFind $rect p]] [oa::right $box]"),
            "{{0.0 0.0} {1.0 1.0}} old 4");
  // What else it may do: look at the others, and copy from them.
  eval("pcell c {} {set b [oa::BlockCreate $d]; oa::copy " + other + " {{2 0} R0} $b; set i [oa::ScalarInstCreate $b " +
       eval("set lib") +
       " master layout i {{0 3} R0}]; oa::getBBox [oa::getTopBlock [oa::getMaster $i]]; oa::setOrigin $i {0 5}; "
       "oa::IntPropCreate "
       "$i p 1; oa::destroy [oa::PropFind $i p]; oa::RectCreate $b [oa::getNumber [oa::LayerFind [oa::getTech $d] m2]] "
       "1 "
       "[oa::Box 0 0 2 2]}");
  EXPECT_EQ(eval("boxes [draw c]"), "{{2.0 0.0} {3.0 1.0}} {{0.0 0.0} {0.001 0.001}}");
}

TEST_F(TclPcell, ErrorsAreLoggedWhileACommandRuns) {
  writeFile(folder() / "log.tcl", R"(
    package require oa
    set tech [oa::TechCreate [oa::LibCreate l log]]
    proc make {cell} {
      set def [oa::PcellLinkGetPcellDef tclPcell]
      oa::addData $def GenCellProc {d {error wrong}}
      set design [oa::DesignOpen l $cell layout [oa::ViewTypeGet maskLayout] w]
      oa::defineSuperMaster $design $def {{w int 1}}
      oa::DesignOpen l $cell layout [oa::ParamArray]
    }
    make c
    oa::setPcellErrorLogging false
    make d
  )");
  const Ended ended = runShell(folder(), {(folder() / "log.tcl").string()});
  EXPECT_EQ(ended.errors, "oa: design l/c/layout (default parameters): cannot be evaluated: wrong (line 1)\n");
  EXPECT_EQ(ended.exitCode, 0);
}

// The figures of a design by layer and purpose, in database units.
std::multiset<std::string> figuresOf(oa::oaDesign *design) {
  std::multiset<std::string> figures;
  oa::oaIter<oa::oaShape> shapes(design->getTopBlock()->getShapes());
  while (oa::oaShape *shape = shapes.getNext()) {
    oa::oaBox box;
    shape->getBBox(box);
    figures.emplace(std::to_string(shape->getLayerNum()) + "/" + std::to_string(shape->getPurposeNum()) + " " +
                    std::to_string(box.left()) + " " + std::to_string(box.bottom()) + " " +
                    std::to_string(box.right()) + " " + std::to_string(box.top()));
  }
  return figures;
}

// The example draws what the C++ evaluator of the same name draws.
TEST_F(TclPcell, ExampleDrawsTheResistor) {
  const Ended made = runShell(folder(), {EXAMPLES_FOLDER "/../pcells/resistor.tcl", "r", "rlib"});
  EXPECT_EQ(made.exitCode, 0) << made.errors;
  EXPECT_EQ(made.errors, "");
  EXPECT_THAT(made.output, HasSubstr("short: 9 shapes in {0.0 -0.8} {1.0 10.8}\n"));
  EXPECT_THAT(made.output, EndsWith("library r is in rlib\n"));
  eval("oa::LibOpen r $folder/rlib; set d [oa::DesignOpen r resistor layout a]; set params [oa::getParams $d]");
  eval("set e [oa::DesignOpen r compiled layout [oa::ViewTypeGet maskLayout] w]; oa::defineSuperMaster $e "
       "[oa::PcellLinkGetPcellDef resistor] $params");
  const oa::oaNativeNS ns;
  const oa::oaScalarName lib(ns, "r"), layout(ns, "layout");
  for (const char *set : {"", "{segments int 1} {w double 4.0}", "{w double 0.4} {segments int 12} {l double 15.0}"}) {
    SCOPED_TRACE(set);
    eval("set set [oa::ParamArray {" + std::string(set) + "}]");
    std::multiset<std::string> drawn[2];
    for (const char *cell : {"resistor", "compiled"}) {
      eval("oa::DesignOpen r " + std::string(cell) + " layout $set");
    }
    for (int i = 0; i < 2; ++i) {
      oa::oaDesign *super = oa::oaDesign::find(lib, oa::oaScalarName(ns, i == 0 ? "resistor" : "compiled"), layout);
      oa::oaIter<oa::oaDesign> subs(super->getSubMasters());
      while (oa::oaDesign *sub = subs.getNext()) {
        ASSERT_NE(sub->getTopBlock(), nullptr);
        drawn[i] = figuresOf(sub); // of the latest
      }
    }
    EXPECT_EQ(drawn[0], drawn[1]);
    EXPECT_GT(drawn[0].size(), 8u);
  }
  EXPECT_EQ(eval("lsort [names [oa::getTerms [oa::getTopBlock [lindex [members [oa::getSubMasters $d]] 0]]]]"), "A B");
  eval("foreach x [list $d $e] {oa::purge $x}; oa::close [oa::LibFind r]");
}

} // namespace
