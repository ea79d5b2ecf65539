#include "tcltest.h"

#include "oa/oaTcl.h"

#include <fstream>

namespace {

using namespace tcltest;

class Loading : public TclTest {};

TEST_F(Loading, InitialisesTwice) {
  eval("set box [oa::Box 1 2 3 4]");
  EXPECT_EQ(Oa_Init(interp()), TCL_OK);
  EXPECT_EQ(eval("oa::getWidth $box"), "2"); // what scripts hold stays usable
  EXPECT_EQ(eval("package require oa 2.2"), "2.2");
}

TEST(EngineFactory, MakesAnEngineBeforeThePackage) {
  Tcl_Interp *interp = Tcl_CreateInterp();
  oaTcl::oaTclEngine *engine = oaTcl::oaTclEngineFactory::create(interp);
  ASSERT_NE(engine, nullptr);
  EXPECT_EQ(engine->getInterp(), interp);
  EXPECT_EQ(oaTcl::oaTclEngineFactory::create(interp), engine);
  EXPECT_EQ(engine->release(), 1u);
  EXPECT_EQ(engine->release(), 0u);
  EXPECT_EQ(Oa_Init(interp), TCL_OK);
  EXPECT_EQ(oaTcl::oaTclEngineFactory::create(interp), engine); // the interpreter kept it
  Tcl_DeleteInterp(interp);
  EXPECT_EQ(engine->getInterp(), nullptr);
  EXPECT_EQ(engine->release(), 0u);
}

TEST(EngineFactory, RefusesNoInterpreter) {
  try {
    oaTcl::oaTclEngineFactory::create(nullptr);
    FAIL();
  } catch (const oaLang::oaLangException &exception) {
    EXPECT_THAT(std::string(exception.getMsg()), testing::HasSubstr("interpreter is NULL"));
  }
  EXPECT_EQ(Oa_Init(nullptr), TCL_ERROR);
}

TEST_F(Loading, InterpretersKeepTheirNameSpacesApart) {
  Tcl_Interp *other = Tcl_CreateInterp();
  ASSERT_EQ(Oa_Init(other), TCL_OK);
  eval("library; design a; set n [oa::NetCreate $b {D[1]}]; oa::pushNameSpace [oa::CdbaNS]");
  const std::string net = eval("set n");
  EXPECT_EQ(eval("oa::getName $n"), "D<1>");
  ASSERT_EQ(Tcl_Eval(other, ("oa::getName " + net).c_str()), TCL_OK) << Tcl_GetStringResult(other);
  EXPECT_STREQ(Tcl_GetStringResult(other), "D[1]");
  Tcl_DeleteInterp(other);
}

TEST_F(Loading, AllCommandsAreExportedAndNoneImported) {
  EXPECT_EQ(eval("info commands ::getName"), "");
  EXPECT_EQ(eval("namespace eval other {namespace import ::oa::*; info commands getName}"), "getName");
}

// The folder of the package may be moved: nothing but its neighbours is needed.
TEST_F(Loading, WorksFromAnyFolder) {
  const std::filesystem::path moved = folder() / "moved folder";
  std::filesystem::create_directory(moved);
  for (const char *file :
       {"pkgIndex.tcl", "liboaTcl.so", "liboaDesign.so", "liboaTech.so", "liboaDM.so", "liboaBase.so"}) {
    std::filesystem::copy(std::filesystem::path(PACKAGE_FOLDER) / file, moved / file);
  }
  writeFile(folder() / "load.tcl", "lappend auto_path [file join [pwd] {moved folder}]\n"
                                   "puts [package require oa]\n"
                                   "puts [file tail [file dirname [lindex [info loaded {}] end 0]]]\n");
  const Ended ended = runShell(folder(), {"load.tcl"}, "");
  EXPECT_EQ(ended.exitCode, 0) << ended.errors;
  EXPECT_EQ(ended.output, "2.2\nmoved folder\n");
}

} // namespace
