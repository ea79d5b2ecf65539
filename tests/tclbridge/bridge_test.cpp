// tclInit, tclExecFile and tclExec on interpreters of the test's own.

#include "oapluginmain.h"

#include <cstdio>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oaTclException.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <tcl.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

template <typename Call> std::string printedBy(Call call) {
  testing::internal::CaptureStdout();
  call();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

// What the command `escape KIND` of the tests throws through the evaluation.
int escape(ClientData, Tcl_Interp *, int, Tcl_Obj *const words[]) {
  const std::string kind = Tcl_GetString(words[1]);
  if (kind == "oa") {
    throw oa::oaException("from the database");
  }
  if (kind == "lang") {
    throw oaLang::oaLangException("from a binding");
  }
  if (kind == "tcl") {
    throw oaTcl::oaTclException("from the Tcl binding");
  }
  throw std::runtime_error("from elsewhere");
}

class TclBridge : public testing::Test {
protected:
  TclBridge() : interp_(Tcl_CreateInterp()) {
    static const QTemporaryDir folder;
    qputenv("HOME", folder.path().toLocal8Bit());
    QDir::setCurrent(folder.path());
    plugIn_.init(false);
  }
  // An interpreter that an exception has left in the middle of an evaluation cannot be deleted.
  ~TclBridge() override {
    if (!hasEscaped_) {
      Tcl_DeleteInterp(interp_);
    }
    QDir::setCurrent(QDir::rootPath());
  }

  oaPlugInCore &core() { return plugIn_; }
  int exec(const char *command) { return core().tclExec(interp_, QString::fromLatin1(command)); }
  std::string result() const { return Tcl_GetStringResult(interp_); }

  oaPlugInMain plugIn_;
  Tcl_Interp *interp_;
  bool hasEscaped_ = false;
};

TEST_F(TclBridge, CodesAndResultsAreThoseOfTheEvaluation) {
  EXPECT_EQ(printedBy([this] { core().tclInit(interp_); }), "");
  const struct {
    const char *command;
    int code;
    const char *result;
  } cases[] = {
      {"", TCL_OK, ""},
      {"expr {6 * 7}", TCL_OK, "42"},
      {"package present oa", TCL_OK, "2.2"},
      {"oa::getName [oa::ViewTypeGet maskLayout]", TCL_OK, "maskLayout"},
      {"error wrong", TCL_ERROR, "wrong"},
      {"return early", TCL_OK, "early"},
      {"break", TCL_ERROR, "invoked \"break\" outside of a loop"},
      {"oa::noSuchCommand", TCL_ERROR, "invalid command name \"oa::noSuchCommand\""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.command);
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(exec(c.command), c.code); }), "");
    EXPECT_EQ(result(), c.result);
  }
}

TEST_F(TclBridge, FailureOfACommandIsAnErrorOfTheScript) {
  core().tclInit(interp_);
  EXPECT_EQ(printedBy([this] { EXPECT_EQ(exec("oa::DesignOpen nolib nocell noview r"), TCL_ERROR); }), "");
  EXPECT_THAT(result(), HasSubstr("nolib"));
  EXPECT_EQ(exec("catch {oa::DesignOpen nolib nocell noview r}"), TCL_OK);
}

TEST_F(TclBridge, FilesAreEvaluated) {
  const auto write = [](const char *name, const char *text) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  write("good.tcl", "set found [info script]\nexpr {1 + 1}\n");
  write("bad.tcl", "error {in the file}\n");
  const struct {
    const char *file;
    int code;
    const char *result;
  } cases[] = {
      {"good.tcl", TCL_OK, "2"},
      {"bad.tcl", TCL_ERROR, "in the file"},
      {"none.tcl", TCL_ERROR, "couldn't read file \"none.tcl\": no such file or directory"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.file);
    EXPECT_EQ(core().tclExecFile(interp_, QString::fromLatin1(c.file)), c.code);
    EXPECT_EQ(result(), c.result);
  }
  EXPECT_EQ(exec("set found"), TCL_OK);
  EXPECT_EQ(result(), "good.tcl");
}

TEST_F(TclBridge, TextGoesInItsEightBitForm) {
  // Each byte of the UTF-8 text as one character arrives as the text; a character without 8-bit form does not.
  EXPECT_EQ(core().tclExec(interp_, QString::fromLatin1("scan \303\251 %c")), TCL_OK);
  EXPECT_EQ(result(), "233");
  EXPECT_EQ(core().tclExec(interp_, QString::fromUtf8("scan \342\202\254 %c")), TCL_OK);
  EXPECT_EQ(result(), "63");
}

TEST_F(TclBridge, StartMayBeRepeated) {
  EXPECT_EQ(printedBy([this] {
              core().tclInit(interp_);
              EXPECT_EQ(exec("set type [oa::ViewTypeGet maskLayout]"), TCL_OK);
              core().tclInit(interp_);
            }),
            "");
  EXPECT_EQ(exec("oa::getName $type"), TCL_OK);
  EXPECT_EQ(result(), "maskLayout");
}

TEST_F(TclBridge, FailedStartIsOnlyPrinted) {
  // A constant of the binding cannot be set where a script has an array of its name.
  ASSERT_EQ(exec("namespace eval oa {array set oacNullIndex {}; array set oacMaskLayout {a b}}"), TCL_OK);
  EXPECT_EQ(printedBy([this] { core().tclInit(interp_); }), "tcl oa init error: 1\n");
  EXPECT_THAT(printedBy([this] { core().tclInit(nullptr); }), StartsWith("oaTclException: "));
}

TEST_F(TclBridge, EscapedExceptionsOfOpenAccessArePrinted) {
  Tcl_CreateObjCommand(interp_, "escape", escape, nullptr, nullptr);
  hasEscaped_ = true;
  const struct {
    const char *command, *printed;
  } cases[] = {
      {"escape oa", "OpenAccess Exception: from the database\n"},
      {"escape lang", "oaTclException: from a binding\n"},
      {"escape tcl", "oaTclException: from the Tcl binding\n"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.command);
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(exec(c.command), -1); }), c.printed);
  }
  EXPECT_EQ(printedBy([this] { EXPECT_THROW(exec("escape other"), std::runtime_error); }), "");
}

} // namespace
