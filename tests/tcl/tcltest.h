#ifndef TCLTEST_H
#define TCLTEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tcl.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tcltest {

// An interpreter with the package, in a temporary folder of its own ($folder in scripts). `library` makes a library
// named $lib with an open technology $tech: 2,000 database units per user unit of layouts, layers m1 (1), m2 (2) and
// cut (3), a purpose label (1). `design CELL` opens a new layout and sets $d and $b.
class TclTest : public testing::Test {
protected:
  TclTest();
  ~TclTest() override;

  // The result of a script that must succeed.
  std::string eval(const std::string &script);
  // The message of a script that must fail with TCL_ERROR.
  std::string failure(const std::string &script);
  std::string errorCode();

  Tcl_Interp *interp() const { return interp_; }
  const std::filesystem::path &folder() const { return folder_; }

private:
  std::filesystem::path folder_;
  Tcl_Interp *interp_;
};

struct Ended {
  int exitCode; // -1: killed by a signal
  std::string output;
  std::string errors;
};

// Runs tclsh in a folder, which is also its HOME, with TCLLIBPATH set to the folder of the package.
Ended runShell(const std::filesystem::path &folder, const std::vector<std::string> &arguments,
               const std::string &packageFolder = PACKAGE_FOLDER);

void writeFile(const std::filesystem::path &path, const std::string &text);
std::string readFile(const std::filesystem::path &path);

} // namespace tcltest

#endif
