// oahost tcl: scripts, commands, what comes from a pipe, and the completion of what is typed.

#include "hostprocess.h"
#include "tclcompletion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tcl.h>

namespace {

using testing::HasSubstr;

class TclCommand : public testing::Test {
protected:
  HostResult runWithInput(const QByteArray &input) const {
    host.write("input.tcl", input);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", host.path(""));
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(host.path("input.tcl"));
    process.start(OAHOST_FILE, {"tcl"});
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError().toStdString()};
  }

  HostProcess host;
};

TEST_F(TclCommand, OneCommand) {
  const struct {
    const char *name, *command;
    int exitCode;
    const char *output, *error;
  } cases[] = {
      {"result is not printed", "expr 1+1", 0, "", ""},
      {"output", "puts hello", 0, "hello\n", ""},
      {"without line feed", "puts -nonewline hello", 0, "hello", ""},
      {"empty", "", 0, "", ""},
      {"kit", "puts [oa::getName [oa::ViewTypeGet schematic]]", 0, "schematic\n", ""},
      {"package", "puts [package require oa]", 0, "2.2\n", ""},
      {"variables", "puts $argc/$argv/$tcl_interactive", 0, "0//0\n", ""},
      {"text beyond Latin-1", "puts [string length \342\202\254]", 0, "1\n", ""},
      {"error", "puts before; error wrong", 1, "before\n", "wrong\n    while executing\n\"error wrong\""},
      {"error of the kit", "oa::DesignOpen nolib c v r", 1, "", "nolib"},
      {"exit", "puts -nonewline x; exit 7", 7, "x", ""},
      {"exit inside", "proc p {} {exit}; p; puts never", 0, "", ""},
      {"return", "return 5", 0, "", ""},
      {"break", "break", 1, "", "invoked \"break\" outside of a loop\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const HostResult result = host.run(QStringList{"tcl", "-c", QString::fromUtf8(c.command)});
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_EQ(result.output, c.output);
    EXPECT_THAT(result.errors, HasSubstr(c.error));
    if (*c.error == '\0') {
      EXPECT_EQ(result.errors, "");
    }
  }
}

TEST_F(TclCommand, ScriptGetsEverythingBehindItsName) {
  host.write("show.tcl", "puts \"$argv0 $argc\"\nforeach word $argv {puts <$word>}\n");
  const HostResult result = host.run(QStringList{"tcl", "show.tcl", "a b", "-c", "--help", "{", "tcl"});
  EXPECT_EQ(result.output, "show.tcl 5\n<a b>\n<-c>\n<--help>\n<{>\n<tcl>\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitCode, 0);
}

TEST_F(TclCommand, FailuresOfScriptsAreTold) {
  host.write("bad.tcl", "proc inner {} {error deep}\ninner\n");
  const struct {
    const char *arguments;
    int exitCode;
    const char *error;
  } cases[] = {
      {"tcl bad.tcl", 1, "deep\n    while executing\n\"error deep\"\n    (procedure \"inner\" line 1)"},
      {"tcl none.tcl", 1, "couldn't read file \"none.tcl\": no such file or directory"},
      {"tcl -c list bad.tcl", 1, "bad.tcl is not expected after -c COMMAND"},
      {"tcl -c", 2, "-c"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.arguments);
    const HostResult result = host.run(c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(c.error));
  }
}

TEST_F(TclCommand, CommandsComeFromAPipe) {
  const HostResult result =
      runWithInput("proc twice {x} {\n  expr {2 * $x}\n}\nputs [twice 4]\nerror wrong\nputs after");
  EXPECT_EQ(result.output, "8\nafter\n");
  EXPECT_THAT(result.errors, HasSubstr("wrong\n"));
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(runWithInput("exit 3\nputs never\n").exitCode, 3);
  EXPECT_EQ(runWithInput("puts {unfinished\n").exitCode, 1);
}

TEST_F(TclCommand, ScriptMakesALibraryThatOtherCommandsKnow) {
  host.write("make.tcl", R"(lassign $argv name directory
oa::LibCreate $name $directory
set library [oa::LibFind $name]
set tech [oa::TechCreate $library]
oa::PhysicalLayerCreate $tech metal1 4
oa::save $tech
set design [oa::DesignOpen $name top layout [oa::ViewTypeGet maskLayout] w]
oa::RectCreate [oa::BlockCreate $design] 4 7 {{0 0} {0.1 0.05}}
oa::save $design
oa::close $design
)");
  const HostResult made = host.run(QStringList{"tcl", "make.tcl", "made", host.path("made")});
  ASSERT_EQ(made.exitCode, 0) << made.errors;
  EXPECT_EQ(host.run(QStringList{"register", host.path("made")}).exitCode, 0);
  EXPECT_THAT(host.run("dump made top layout").output.toStdString(), HasSubstr("rect 4/7 box=(0 0)(100 50)\n"));
}

// The commands of the host ask the plug-in, the scripts the binding.
TEST_F(TclCommand, NamesBeyondAsciiAreTheSameEverywhere) {
  const auto run = [this](const char *arguments) { return host.run(QString::fromUtf8(arguments).split(' ')).output; };
  ASSERT_EQ(host.run(QStringList{"tcl", "-c", "oa::LibCreate lib [pwd]/lib"}).exitCode, 0);
  run("register lib");
  host.write("make.tcl", "set design [oa::DesignOpen lib n\303\251 layout [oa::ViewTypeGet maskLayout] w]\n"
                         "oa::RectCreate [oa::BlockCreate $design] 1 2 {{0 0} {1 1}}; oa::save $design\n");
  ASSERT_EQ(host.run("tcl make.tcl").exitCode, 0);
  EXPECT_EQ(run("cells lib"), "n\303\251\n");
  EXPECT_EQ(run("views lib n\303\251"), "layout\n");
  run("data lib n\303\251 --set s\303\266");
  EXPECT_EQ(run("data lib n\303\251"), "TarnwickdaleData \"s\303\266\"\n");
  EXPECT_EQ(run("copy lib n\303\251 --to \303\274 --path copies"), "");
  EXPECT_EQ(run("cells \303\274"), "n\303\251\n");
  const HostResult found = host.run(QStringList{
      "tcl", "-c",
      QString::fromUtf8("puts [oa::getCellName [oa::DesignOpen \303\274 n\303\251 layout r]]\n"
                        "puts [oa::getValue [oa::getNext [oa::getProps [oa::CellDMDataOpen lib n\303\251 r]]]]")});
  EXPECT_EQ(found.output, "n\303\251\ns\303\266\n") << found.errors;
}

TEST_F(TclCommand, LayersOfAMapKeepTheirNames) {
  host.write("make.tcl", "oa::LibCreate lib [pwd]/lib; set design [oa::DesignOpen lib c layout [oa::ViewTypeGet "
                         "maskLayout] w]\n"
                         "oa::RectCreate [oa::BlockCreate $design] 1 0 {{0 0} {1 1}}; oa::save $design\n");
  ASSERT_EQ(host.run("tcl make.tcl").exitCode, 0);
  host.run("register lib");
  host.write("layers.map", "1 0 m\303\251tal\n");
  ASSERT_EQ(host.run("export-gds lib c -o c.gds").exitCode, 0);
  const HostResult imported =
      host.run(QString::fromUtf8("import-gds c.gds --lib n\303\251 --path new --layers layers.map").split(' '));
  EXPECT_EQ(imported.exitCode, 0) << imported.errors;
  host.write("layers.map", "1 0 \316\251\n");
  const HostResult refused = host.run("import-gds c.gds --lib other --path other --layers layers.map");
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_THAT(refused.errors, HasSubstr("layer map: \"\316\251\" of layer 1/0 has characters"));
  EXPECT_FALSE(QDir(host.path("other")).exists());
  EXPECT_EQ(host.run(QStringList{"layers", QString::fromUtf8("n\303\251")}).output, "1 m\303\251tal\n");
}

// The host opens what lib.defs names before the script runs.
TEST_F(TclCommand, ExamplesWorkOnLibrariesThatAreOpen) {
  const auto example = [this](const QString &script, const QStringList &arguments) {
    return host.run(QStringList{"tcl", EXAMPLES_DIR "/tcl/" + script} + arguments);
  };
  ASSERT_EQ(example("build_library.tcl", {"small", host.path("small")}).exitCode, 0);
  ASSERT_EQ(host.run(QStringList{"register", host.path("small")}).exitCode, 0);
  ASSERT_TRUE(QDir(host.path("")).mkdir("other"));
  const struct {
    const char *script;
    QStringList arguments;
    int exitCode;
    const char *output, *error;
  } cases[] = {
      {"list_library.tcl", {"small"}, 0, "  cell inv\n", ""},
      {"list_library.tcl", {"small", "small"}, 0, "  cell inv\n", ""},
      {"list_library.tcl", {"small", "other"}, 1, "", "library small is open already, but from "},
      {"count_shapes.tcl", {"small", "small", "inv", "layout"}, 0, "total 12\n", ""},
      {"count_shapes.tcl", {"small", "other", "inv", "layout"}, 1, "", "library small is open already, but from "},
      {"set_text_height.tcl", {"small", host.path("small"), "inv", "layout", "0.5"}, 0, "changed 4 texts\n", ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(QString(c.script + c.arguments.join(' ')).toStdString());
    const HostResult result = example(c.script, c.arguments);
    EXPECT_EQ(result.exitCode, c.exitCode);
    EXPECT_THAT(result.output.toStdString(), HasSubstr(c.output));
    EXPECT_THAT(result.errors, HasSubstr(c.error));
    EXPECT_EQ(result.errors.empty(), *c.error == '\0');
  }
}

// Reading uses no interpreter of the program's own.
TEST_F(TclCommand, CellsThatScriptsDrawAreRead) {
  const HostResult made = host.run(QStringList{"tcl", EXAMPLES_DIR "/pcells/resistor.tcl", "made", host.path("made")});
  ASSERT_EQ(made.exitCode, 0) << made.errors;
  EXPECT_EQ(host.run(QStringList{"register", host.path("made")}).exitCode, 0);
  const HostResult read = host.run("read made resistors layout");
  EXPECT_EQ(read.errors, "");
  // The upper head of the resistor with one segment.
  EXPECT_THAT(read.output.toStdString(), HasSubstr("addBox 0 10000 1000 800 5 0\n"));
  EXPECT_EQ(read.output.count("addCell \"resistor~"), 3);
}

TEST_F(TclCommand, HelpHasOneUsageLine) {
  const std::string help = host.run("tcl --help").output.toStdString();
  const std::string usage = "Usage: oahost [OPTIONS] tcl [SCRIPT [ARG ...] | -c COMMAND]\n";
  EXPECT_THAT(help, HasSubstr("\n" + usage));
  EXPECT_EQ(help.find("Usage:"), help.rfind("Usage:"));
  EXPECT_THAT(host.run("--help").output.toStdString(), testing::Not(HasSubstr("[ARG")));
}

TEST(TclCompletion, OfTheLastWord) {
  Tcl_Interp *interp = Tcl_CreateInterp();
  Tcl_Eval(interp, "namespace eval oa {proc RectCreate {} {}; proc RectFind {} {}; variable oacTop 1}\n"
                   "namespace eval oa::inner {}; set library 1; set \"odd*name\" 1; set result kept");
  const struct {
    const char *line, *completions;
  } cases[] = {
      {"oa::Rect", "oa::RectCreate oa::RectFind"},
      {"set x [oa::RectF", "oa::RectFind"},
      {"::oa::RectF", "::oa::RectFind"},
      {"oa", "oa::"},
      {"oa::in", "oa::inner::"},
      {"puts $libr", "library"},
      {"puts $oa::oacT", "oa::oacTop"},
      {"puts ${libr", "library"},
      {"puts $odd*", "odd*name"},
      {"puts $od*n", ""},
      {"lrev", "lreverse"},
      {"nothing-like-it", ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_EQ(tclCompletions(interp, c.line).join(' ').toStdString(), c.completions);
    EXPECT_STREQ(Tcl_GetStringResult(interp), "kept");
  }
  Tcl_DeleteInterp(interp);
}

} // namespace
