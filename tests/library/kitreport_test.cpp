#include "oapluginmain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ownprocess.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

TEST(KitReport, ListsPackagesDirectoriesAndLibDefs) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    const std::string report = plugIn.info().toStdString();
    EXPECT_EQ(report.rfind("OpenAccess Version:\r\n", 0), 0u);
    for (const char *package : {"oaBase", "oaDM", "oaTech", "oaDesign"}) {
      EXPECT_THAT(report, ContainsRegex(std::string(package) + " 22\\.50\\.1 \r\n\t\\([^\n]+, [^\n]+\\)\r\n"));
    }
    EXPECT_THAT(report, HasSubstr("\r\n\r\nInstall Dir:\t/"));
    EXPECT_THAT(report, ContainsRegex("Library Dir:\t/[^\n]*\r\n"));
    const std::string lastLine = "lib.defs file:\t" + (folder.home() / "lib.defs").string() + "\r\n";
    EXPECT_THAT(report, testing::EndsWith(lastLine));
    for (size_t feed = report.find('\n'); feed != std::string::npos; feed = report.find('\n', feed + 1)) {
      EXPECT_EQ(report[feed - 1], '\r') << "line feed without carriage return at " << feed;
    }
  }));
}

TEST(KitReport, TellsThatThereIsNoLibDefs) {
  const ScratchFolder folder;
  std::filesystem::remove(folder.home());
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    printedBy([&] { plugIn.init(false); });
    EXPECT_THAT(plugIn.info().toStdString(), testing::EndsWith("lib.defs file not found\r\n"));
  }));
}

} // namespace
