#include "oapluginmain.h"

#include <gtest/gtest.h>

#include "ownprocess.h"

using namespace oa;

namespace {

const std::string kFirstLines = "init oa! (5 506)\nopen libs, get top list";

TEST(StartUp, CreatesLibDefsInHomeWhenThereIsNone) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    const std::string printed = printedBy([&] { plugIn.init(true); });
    EXPECT_EQ(printed, kFirstLines + ", create 'lib.defs'create lib.defs at " + folder.home().string() +
                           "\n.\noa init plugin done\n");
    EXPECT_TRUE(std::filesystem::exists(folder.home() / "lib.defs"));
    plugIn.init(false);
    EXPECT_EQ(plugIn.getLibDefsFilename().toStdString(), (folder.home() / "lib.defs").string());
    EXPECT_EQ(plugIn.currentTech, nullptr);
  }));
}

TEST(StartUp, UsesAnExistingLibDefsAndCreatesNone) {
  const ScratchFolder folder;
  writeFile(folder.work() / "lib.defs", "# nothing yet\n");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(printedBy([&] { plugIn.init(true); }), kFirstLines + ".\noa init plugin done\n");
    EXPECT_FALSE(std::filesystem::exists(folder.home() / "lib.defs"));
    EXPECT_EQ(readFile(folder.work() / "lib.defs"), "# nothing yet\n");
    plugIn.init(false);
    EXPECT_EQ(plugIn.getLibDefsFilename().toStdString(), (folder.work() / "lib.defs").string());
  }));
}

TEST(StartUp, SecondInitOnlySwitchesProgressLines) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(printedBy([&] { plugIn.init(false); }), "");
    plugIn.currentTech = reinterpret_cast<oaTech *>(&plugIn);
    EXPECT_EQ(printedBy([&] { plugIn.init(true); }), "oa init plugin done\n");
    EXPECT_EQ(plugIn.currentTech, nullptr);
    EXPECT_EQ(printedBy([&] { oaConvert::createLibDefs(); }),
              "use lib.defs: " + (folder.home() / "lib.defs").string() + "\n");
    EXPECT_EQ(printedBy([&] { plugIn.init(false); }), "");
  }));
}

TEST(StartUp, OperationsStartOpenAccessThemselves) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(plugIn.getLibs(), QStringList());
    EXPECT_TRUE(oaConvert::initDone);
  }));
}

TEST(StartUp, HomeThatCannotHoldLibDefsIsToldByEachOperation) {
  const ScratchFolder folder;
  std::filesystem::remove(folder.home());
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(printedBy([&] { plugIn.init(false); }).rfind("ERROR (init): ", 0), 0u);
    EXPECT_TRUE(oaConvert::initDone);
    // Two blanks behind the colon, in this operation alone.
    EXPECT_EQ(printedBy([&] { plugIn.getLibs(); }).rfind("ERROR (getLibraries):  ", 0), 0u);
    EXPECT_TRUE(plugIn.getLibDefsFilename().isEmpty());
    EXPECT_FALSE(plugIn.getLibDefsFilename().isNull());
  }));
}

TEST(StartUp, DamagedLibDefsIsLeftAsItIs) {
  const ScratchFolder folder;
  const std::string damaged = "DEFINE\n\x01\x02 nonsense";
  writeFile(folder.home() / "lib.defs", damaged);
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    printedBy([&] { plugIn.init(false); });
    EXPECT_EQ(readFile(folder.home() / "lib.defs"), damaged);
  }));
}

} // namespace
