#include "tcltest.h"

#include "oa/oaTcl.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tcltest {

namespace {

const char kPrelude[] = R"(
  proc library {} {
    uplevel #0 {
      set lib [file tail $folder]
      oa::LibCreate $lib $folder/lib
      set tech [oa::TechCreate $lib]
      oa::setDBUPerUU $tech [oa::ViewTypeGet maskLayout] 2000
      oa::PhysicalLayerCreate $tech m1 1 metal
      oa::PhysicalLayerCreate $tech m2 2 metal
      oa::PhysicalLayerCreate $tech cut 3 cut
      oa::PurposeCreate $tech label 1
      oa::save $tech
    }
  }
  proc design {cell {view layout} {type maskLayout}} {
    uplevel #0 [list set d [oa::DesignOpen $::lib $cell $view [oa::ViewTypeGet $type] w]]
    uplevel #0 {set b [oa::BlockCreate $d]}
  }
  proc members {collection} {
    set list {}
    while {[set member [oa::getNext $collection]] ne ""} {lappend list $member}
    return $list
  }
  proc names {collection} {lmap member [members $collection] {oa::getName $member}}
  proc types {collection} {lmap member [members $collection] {oa::getType $member}}
)";

} // namespace

TclTest::TclTest() : interp_(Tcl_CreateInterp()) {
  std::string pattern = (std::filesystem::temp_directory_path() / "tcl-XXXXXX").string();
  folder_ = ::mkdtemp(pattern.data());
  if (Tcl_Init(interp_) != TCL_OK || Oa_Init(interp_) != TCL_OK) {
    throw std::runtime_error(Tcl_GetStringResult(interp_));
  }
  Tcl_SetVar(interp_, "folder", folder_.c_str(), TCL_GLOBAL_ONLY);
  eval(kPrelude);
}

TclTest::~TclTest() {
  Tcl_Eval(interp_, "foreach d [members [oa::DesignGetOpenDesigns]] {oa::purge $d}\n"
                    "if {[info exists lib]} {oa::close [oa::LibFind $lib]}");
  Tcl_DeleteInterp(interp_);
  std::filesystem::remove_all(folder_);
}

std::string TclTest::eval(const std::string &script) {
  const int code = Tcl_Eval(interp_, script.c_str());
  EXPECT_EQ(code, TCL_OK) << script << "\n" << Tcl_GetStringResult(interp_);
  return Tcl_GetStringResult(interp_);
}

std::string TclTest::failure(const std::string &script) {
  EXPECT_EQ(Tcl_Eval(interp_, script.c_str()), TCL_ERROR) << script << "\ngave " << Tcl_GetStringResult(interp_);
  return Tcl_GetStringResult(interp_);
}

std::string TclTest::errorCode() { return Tcl_GetVar(interp_, "errorCode", TCL_GLOBAL_ONLY); }

void writeFile(const std::filesystem::path &path, const std::string &text) { std::ofstream(path) << text; }

std::string readFile(const std::filesystem::path &path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

Ended runShell(const std::filesystem::path &folder, const std::vector<std::string> &arguments,
               const std::string &packageFolder) {
  const std::filesystem::path output = folder / "stdout.txt", errors = folder / "stderr.txt";
  const pid_t child = ::fork();
  if (child == 0) {
    std::vector<char *> words{const_cast<char *>(TCLSH)};
    for (const std::string &argument : arguments) {
      words.push_back(const_cast<char *>(argument.c_str()));
    }
    words.push_back(nullptr);
#ifdef SANITIZER_RUNTIME
    ::setenv("LD_PRELOAD", SANITIZER_RUNTIME, 1);
    ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1); // the shell's own
#else
    const rlimit memory{rlim_t(4) << 30, rlim_t(4) << 30}; // a script that runs wild must not take the machine along
    ::setrlimit(RLIMIT_AS, &memory);
#endif
    ::setenv("TCLLIBPATH", packageFolder.c_str(), 1);
    ::setenv("HOME", folder.c_str(), 1);
    ::unsetenv("LD_LIBRARY_PATH");
    if (::chdir(folder.c_str()) == 0 && std::freopen(output.c_str(), "w", stdout) != nullptr &&
        std::freopen(errors.c_str(), "w", stderr) != nullptr && std::freopen("/dev/null", "r", stdin) != nullptr) {
      ::execv(TCLSH, words.data());
    }
    ::_exit(127);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) {
    throw std::runtime_error("cannot run " TCLSH);
  }
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(output), readFile(errors)};
}

} // namespace tcltest
