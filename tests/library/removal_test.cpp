#include "oapluginmain.h"

#include <chrono>

#include <signal.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ownprocess.h"

using namespace oa;

namespace {

QString text(const std::filesystem::path &path) { return QString::fromStdString(path.string()); }

oaScalarName scalar(const char *name) { return oaScalarName(oaConvert::ns, name); }

oaDesign *openLayout(const char *cell, const char *view, char mode) {
  return oaDesign::open(scalar("chip"), scalar(cell), scalar(view), oaViewType::get(oacMaskLayout), mode);
}

void saveLayout(const char *cell, const char *view) {
  oaDesign *design = openLayout(cell, view, 'w');
  oaBlock::create(design, true);
  design->save();
  design->close();
}

// A library "chip", made by a process of its own and defined in lib.defs, so that each body below sees what is on disk.
class Removal : public testing::Test {
protected:
  Removal() {
    EXPECT_TRUE(inOwnProcess(folder, [&] {
      oaPlugInMain plugIn;
      ASSERT_TRUE(plugIn.checkLib("chip", text(chip()), true));
      saveLayout("inv", "layout");
      saveLayout("inv", "abstract");
      saveLayout("buf", "layout");
      plugIn.writeLayoutData("chip", "buf", "data");
    }));
  }
  std::filesystem::path chip() const { return folder.path() / "chip"; }
  // Cells and views as another process lists them.
  std::string contents() const {
    EXPECT_TRUE(inOwnProcess(folder, [&] {
      oaPlugInMain plugIn;
      plugIn.init(false);
      std::string all;
      for (const QString &cell : plugIn.getCellNames("chip")) {
        all += cell.toStdString() + ":" + plugIn.getViewNames("chip", cell).join(",").toStdString() + " ";
      }
      writeFile(folder.path() / "contents", all);
    }));
    return readFile(folder.path() / "contents");
  }
  ScratchFolder folder;
};

oaLib *chipLib() { return oaLib::find(scalar("chip")); }

TEST_F(Removal, ViewsAndCellsLeaveTheDisk) {
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    EXPECT_EQ(printedBy([&] { plugIn.removeView("chip", "inv", "abstract"); }), "");
    EXPECT_EQ(printedBy([&] { plugIn.removeCell("chip", "buf"); }), "");
    EXPECT_EQ(chipLib()->getAccessLevel(), oacNoLibAccessLevel);
  }));
  EXPECT_EQ(contents(), "inv:layout ");
  EXPECT_FALSE(std::filesystem::exists(chip() / "buf"));
  EXPECT_FALSE(std::filesystem::exists(chip() / "inv" / "abstract"));
}

// Each operation starts OpenAccess when it is the first.
TEST_F(Removal, TheFirstCallStartsOpenAccess) {
  EXPECT_TRUE(inOwnProcess(
      folder, [] { EXPECT_EQ(printedBy([] { oaPlugInMain().removeView("chip", "inv", "abstract"); }), ""); }));
  EXPECT_TRUE(inOwnProcess(folder, [] { EXPECT_EQ(printedBy([] { oaPlugInMain().removeCell("chip", "buf"); }), ""); }));
  EXPECT_EQ(contents(), "inv:layout ");
}

TEST_F(Removal, WhatDoesNotExistIsSilentAndKeepsTheAccess) {
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    EXPECT_EQ(printedBy([&] { plugIn.removeView("chip", "inv", "none"); }), "");
    EXPECT_EQ(chipLib()->getAccessLevel(), oacWriteLibAccessLevel);
    EXPECT_EQ(plugIn.getCellNames("chip").size(), 2) << "reading goes on under the kept access";
    EXPECT_EQ(printedBy([&] { plugIn.removeCell("chip", "none"); }), "");
    chipLib()->releaseAccess();
    EXPECT_EQ(chipLib()->getAccessLevel(), oacWriteLibAccessLevel) << "each kept its own";
    chipLib()->releaseAccess();
    EXPECT_EQ(chipLib()->getAccessLevel(), oacNoLibAccessLevel);
  }));
  EXPECT_EQ(contents(), "buf:layout inv:abstract,layout ");
}

TEST_F(Removal, UnknownLibraryIsTheLetterE) {
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    EXPECT_EQ(printedBy([&] { plugIn.removeView("none", "inv", "layout"); }), "ERROR (removeView): e \n");
    EXPECT_EQ(printedBy([&] { plugIn.removeCell("none", "inv"); }), "ERROR (removeCell): e \n");
  }));
}

TEST_F(Removal, ReadOnlyLibraryIsLeftAsItIs) {
  writeFile(folder.home() / "lib.defs", "DEFINE chip " + chip().string() + "\nASSIGN chip libMode readOnly\n");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    ASSERT_FALSE(chipLib()->isWritable());
    const oaLib *before = chipLib();
    EXPECT_THAT(printedBy([&] { plugIn.removeCell("chip", "inv"); }),
                testing::MatchesRegex("ERROR \\(removeCell\\): .*chip.* is read-only \n"));
    EXPECT_FALSE(before->isValid()) << "it was opened again, in case it had become writable";
    EXPECT_NE(chipLib(), nullptr);
  }));
  EXPECT_EQ(contents(), "buf:layout inv:abstract,layout ");
}

TEST_F(Removal, LibraryThatBecameWritableIsOpenedAgain) {
  const std::string defines = "DEFINE chip " + chip().string() + "\n";
  writeFile(folder.home() / "lib.defs", defines + "ASSIGN chip libMode readOnly\n");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    ASSERT_FALSE(chipLib()->isWritable());
    writeFile(folder.home() / "lib.defs", defines);
    EXPECT_EQ(printedBy([&] { plugIn.removeView("chip", "inv", "layout"); }), "");
    EXPECT_EQ(chipLib()->getAccessLevel(), oacWriteLibAccessLevel) << "asked twice, given back once";
  }));
  EXPECT_EQ(contents(), "buf:layout inv:abstract ");
}

TEST_F(Removal, LibraryThatLeftLibDefsIsTheLetterE) {
  writeFile(folder.home() / "lib.defs", "DEFINE chip " + chip().string() + "\nASSIGN chip libMode readOnly\n");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    writeFile(folder.home() / "lib.defs", "\n");
    EXPECT_EQ(printedBy([&] { plugIn.removeView("chip", "inv", "layout"); }), "ERROR (removeView): e \n");
  }));
}

TEST_F(Removal, OpenDesignStaysUsableInMemoryAndCannotBringTheCellBack) {
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    oaDesign *edited = openLayout("inv", "layout", 'a');
    oaDesign *shown = openLayout("buf", "layout", 'r');
    EXPECT_EQ(printedBy([&] { plugIn.removeCell("chip", "inv"); }), "");
    EXPECT_EQ(printedBy([&] { plugIn.removeView("chip", "buf", "layout"); }), "");
    EXPECT_TRUE(edited->getTopBlock()->isValid());
    EXPECT_NO_THROW(oaRect::create(edited->getTopBlock(), 1, 1, oaBox(0, 0, 10, 10)));
    try {
      edited->save();
      ADD_FAILURE() << "saved into a removed cell";
    } catch (const oaException &exception) {
      EXPECT_EQ(exception.getMsgId(), oacDesignNoLongerExists);
    }
    EXPECT_TRUE(shown->getTopBlock()->isValid());
    edited->close();
    shown->close();
  }));
  EXPECT_FALSE(std::filesystem::exists(chip() / "inv"));
  EXPECT_EQ(contents(), "buf: ");
}

TEST_F(Removal, AccessThatTheCallerHoldsForReadingIsInTheWay) {
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    ASSERT_TRUE(chipLib()->getAccess(oacReadLibAccess));
    EXPECT_THAT(printedBy([&] { plugIn.removeCell("chip", "inv"); }), testing::HasSubstr("holds read access"));
    EXPECT_EQ(chipLib()->getAccessLevel(), oacReadLibAccessLevel);
  }));
  EXPECT_EQ(contents(), "buf:layout inv:abstract,layout ");
}

// Another process that has write access to the library, for so many seconds.
class Writer {
public:
  Writer(const ScratchFolder &folder, unsigned seconds) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    process_ = fork();
    if (process_ == 0) {
      setenv("HOME", folder.home().c_str(), 1);
      std::filesystem::current_path(folder.work());
      oaConvert::init();
      const bool isHeld = chipLib() && chipLib()->getAccess(oacWriteLibAccess, 0);
      const char answer = isHeld ? 'y' : 'n';
      const bool isTold = write(ends[1], &answer, 1) == 1;
      sleep(isTold ? seconds : 0);
      _exit(0);
    }
    close(ends[1]);
    EXPECT_GT(process_, 0);
    char answer = 'n';
    isReady_ = read(ends[0], &answer, 1) == 1 && answer == 'y';
    close(ends[0]);
  }
  ~Writer() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
  }
  bool isReady() const { return isReady_; }

private:
  pid_t process_;
  bool isReady_;
};

TEST_F(Removal, WaitsForAnotherWriterAndThenGoesOn) {
  const Writer writer(folder, 1);
  ASSERT_TRUE(writer.isReady());
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    plugIn.init(false);
    EXPECT_EQ(printedBy([&] { plugIn.removeView("chip", "inv", "layout"); }), "");
  }));
  EXPECT_EQ(contents(), "buf:layout inv:abstract ");
}

TEST_F(Removal, LoserOfTwoWritersIsToldAfterTenSeconds) {
  {
    const Writer writer(folder, 60);
    ASSERT_TRUE(writer.isReady());
    EXPECT_TRUE(inOwnProcess(folder, [&] {
      oaPlugInMain plugIn;
      plugIn.init(false);
      const auto begin = std::chrono::steady_clock::now();
      EXPECT_THAT(printedBy([&] { plugIn.removeView("chip", "inv", "layout"); }),
                  testing::MatchesRegex("ERROR \\(removeView\\): library chip: another process holds access.* \n"));
      EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    }));
  }
  EXPECT_EQ(contents(), "buf:layout inv:abstract,layout ");
}

} // namespace
