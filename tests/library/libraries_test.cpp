#include "oapluginmain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ownprocess.h"

using namespace oa;

namespace {

QString text(const std::filesystem::path &path) { return QString::fromStdString(path.string()); }

// A library directory that the running process does not know: made in a process of its own.
void makeLibrary(const std::string &name, const std::filesystem::path &path) {
  const ScratchFolder folder;
  ASSERT_TRUE(
      inOwnProcess(folder, [&] { EXPECT_TRUE(oaConvert::checkLib(QString::fromStdString(name), text(path), true)); }));
}

std::string defineLine(const std::string &name, const std::filesystem::path &path) {
  return "DEFINE " + name + " " + path.string();
}

TEST(CheckLib, CreatesAndDefinesAMissingLibraryOnce) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    const std::filesystem::path path = folder.path() / "chip";
    EXPECT_TRUE(plugIn.checkLib("chip", text(path), true));
    EXPECT_TRUE(std::filesystem::exists(path / ".oalib"));
    const std::string defined = readFile(folder.home() / "lib.defs");
    EXPECT_THAT(defined, testing::HasSubstr(defineLine("chip", path)));
    EXPECT_EQ(plugIn.getLibPath("chip").toStdString(), path.string());
    // Known by now: neither created nor defined again.
    EXPECT_TRUE(plugIn.checkLib("chip", text(folder.path() / "elsewhere"), true));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "elsewhere"));
    EXPECT_EQ(readFile(folder.home() / "lib.defs"), defined);
  }));
}

TEST(CheckLib, OpensAndDefinesAnExistingLibraryDirectory) {
  const ScratchFolder folder;
  makeLibrary("chip", folder.path() / "chip");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    oaConvert::debug = true;
    const std::string printed =
        printedBy([&] { EXPECT_TRUE(plugIn.checkLib("chip", text(folder.path() / "chip"), false)); });
    EXPECT_THAT(printed, testing::EndsWith("lib.defs add chip (" + (folder.path() / "chip").string() + ") at " +
                                           (folder.home() / "lib.defs").string() + "\n"));
    EXPECT_NE(oaLib::find(oaScalarName(oaConvert::ns, "chip")), nullptr);
  }));
}

TEST(CheckLib, LeavesAnEntryOfTheSameNameAsItIs) {
  const ScratchFolder folder;
  const std::string defined = defineLine("chip", folder.path() / "gone") + "\n";
  writeFile(folder.home() / "lib.defs", defined);
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_TRUE(plugIn.checkLib("chip", text(folder.path() / "chip"), true));
    EXPECT_EQ(readFile(folder.home() / "lib.defs"), defined);
  }));
}

TEST(CheckLib, RelativePathIsDefinedAbsolutely) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    EXPECT_TRUE(oaConvert::checkLib("chip", "chip", true));
    EXPECT_THAT(readFile(folder.home() / "lib.defs"), testing::HasSubstr(defineLine("chip", folder.work() / "chip")));
  }));
}

TEST(CheckLib, RefusesWithoutAMessage) {
  const ScratchFolder folder;
  std::filesystem::create_directory(folder.path() / "plain");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    const struct {
      const char *name;
      std::filesystem::path path;
      bool create;
    } cases[] = {
        {"unknown library, no path", "", false},
        {"missing directory", folder.path() / "missing", false},
        {"directory without .oalib", folder.path() / "plain", false},
        {"parent directory missing", folder.path() / "no" / "such" / "lib", true},
    };
    for (const auto &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(printedBy([&] { EXPECT_FALSE(plugIn.checkLib("lib", text(c.path), c.create)); }), "");
    }
    EXPECT_THAT(readFile(folder.home() / "lib.defs"), testing::Not(testing::HasSubstr("DEFINE")));
  }));
}

TEST(CheckLib, DesignManagementComesFromTheEnvironment) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    setenv("DMSystem", "noSuchSystem", 1);
    EXPECT_FALSE(plugIn.checkLib("one", text(folder.path() / "one"), true));
    setenv("DMSystem", "oaDMFileSys", 1);
    EXPECT_TRUE(plugIn.checkLib("two", text(folder.path() / "two"), true));
  }));
}

TEST(ExistLib, NeedsTheMarkerAndNeverTakesTheHome) {
  const ScratchFolder folder;
  makeLibrary("chip", folder.path() / "chip");
  std::filesystem::create_directory(folder.path() / "plain");
  std::filesystem::copy_file(folder.path() / "chip" / ".oalib", folder.home() / ".oalib");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    const struct {
      const char *name;
      std::filesystem::path path;
      bool isLibrary;
    } cases[] = {
        {"library", folder.path() / "chip", true},
        {"library, slash behind", folder.path() / "chip/", true},
        {"plain directory", folder.path() / "plain", false},
        {"missing directory", folder.path() / "missing", false},
        {"home", folder.home(), false},
        {"home by a detour", folder.work() / ".." / "home", false},
        {"empty path", "", false},
    };
    for (const auto &c : cases) {
      SCOPED_TRACE(c.name);
      EXPECT_EQ(plugIn.existLib(text(c.path)), c.isLibrary);
    }
  }));
}

TEST(RegisterLibrary, NamesTheLibraryAfterItsDirectory) {
  const ScratchFolder folder;
  makeLibrary("anything", folder.path() / "cells");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(plugIn.registerLibrary(text(folder.path() / "cells")), QString());
    EXPECT_EQ(plugIn.getLibs(), QStringList("cells"));
  }));
}

TEST(RegisterLibrary, PathWithoutADirectoryIsPrintedOnly) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    for (const char *path : {"cells", "/cells", ""}) {
      SCOPED_TRACE(path);
      EXPECT_EQ(printedBy([&] { EXPECT_TRUE(plugIn.registerLibrary(path).isEmpty()); }),
                "error " + std::string(path) + "\n");
    }
  }));
}

TEST(RegisterLibrary, ReturnsTheReasonOfAFailure) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(
        printedBy([&] { EXPECT_FALSE(plugIn.registerLibrary(text(folder.path() / "no" / "such" / "lib")).isEmpty()); }),
        "");
  }));
}

TEST(GetLib, SeesALibraryDefinedAfterTheStart) {
  const ScratchFolder folder;
  makeLibrary("late", folder.path() / "late");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    EXPECT_EQ(plugIn.getLibPath("late"), QString());
    writeFile(folder.home() / "lib.defs", defineLine("late", folder.path() / "late") + "\n");
    EXPECT_EQ(plugIn.getLibPath("late").toStdString(), (folder.path() / "late").string());
  }));
}

TEST(GetLib, OpensAnUndefinedLibraryAtItsPath) {
  const ScratchFolder folder;
  makeLibrary("chip", folder.path() / "chip");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaConvert::init();
    const oaScalarName name(oaConvert::ns, "chip");
    oaLib *lib = oaConvert::getLib(name, (folder.path() / "chip").c_str());
    ASSERT_NE(lib, nullptr);
    EXPECT_EQ(oaConvert::getLib(name, ""), lib);
    // Opening alone writes no definition.
    EXPECT_THAT(readFile(folder.home() / "lib.defs"), testing::Not(testing::HasSubstr("DEFINE")));
  }));
}

} // namespace
