#include "oapluginmain.h"

#include <gtest/gtest.h>

#include "ownprocess.h"

using namespace oa;

namespace {

QString text(const std::filesystem::path &path) { return QString::fromStdString(path.string()); }

oaScalarName scalar(const char *name) { return oaScalarName(oaConvert::ns, name); }

void saveLayout(const char *lib, const char *cell, const char *view) {
  oaDesign *design = oaDesign::open(scalar(lib), scalar(cell), scalar(view), oaViewType::get(oacMaskLayout), 'w');
  oaBlock::create(design, true);
  design->save();
  design->close();
}

// The library "chip" at <folder>/chip with three cells, known to the running process.
void makeChip(const ScratchFolder &folder) {
  ASSERT_TRUE(oaConvert::checkLib("chip", text(folder.path() / "chip"), true));
  saveLayout("chip", "inv", "layout");
  saveLayout("chip", "inv", "abstract");
  saveLayout("chip", "Buf", "layout");
  saveLayout("chip", "and2", "layout");
}

bool holdsNoAccess(const char *lib) { return oaLib::find(scalar(lib))->getAccessLevel() == oacNoLibAccessLevel; }

TEST(Queries, NamesAreSortedByCharacterCode) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    makeChip(folder);
    EXPECT_EQ(plugIn.getCellNames("chip").join(" ").toStdString(), "Buf and2 inv");
    EXPECT_EQ(plugIn.getViewNames("chip", "inv").join(" ").toStdString(), "abstract layout");
    EXPECT_TRUE(holdsNoAccess("chip"));
  }));
}

TEST(Queries, LibraryDefinedInTwoListsIsNamedTwice) {
  const ScratchFolder folder;
  writeFile(folder.home() / "lib.defs", "DEFINE tech /proj/tech\nDEFINE Chip /proj/chip\nINCLUDE more.defs\n");
  writeFile(folder.home() / "more.defs", "DEFINE tech /proj/other\n");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    EXPECT_EQ(plugIn.getLibs().join(" ").toStdString(), "Chip tech tech");
  }));
}

TEST(Queries, UnknownNamesGiveEmptyAnswers) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    makeChip(folder);
    const std::string notFound = "lib not found nolib\n";
    EXPECT_EQ(printedBy([&] { EXPECT_TRUE(plugIn.getCellNames("nolib").isEmpty()); }), notFound);
    EXPECT_EQ(printedBy([&] { EXPECT_TRUE(plugIn.getViewNames("nolib", "inv").isEmpty()); }), notFound);
    EXPECT_EQ(printedBy([&] { EXPECT_TRUE(plugIn.getViewType("nolib", "inv", "layout").isEmpty()); }), "");
    EXPECT_TRUE(plugIn.getViewNames("chip", "INV").isEmpty());
    EXPECT_TRUE(plugIn.getViewNames("chip", "nocell").isEmpty());
    EXPECT_TRUE(plugIn.getViewType("chip", "inv", "noview").isEmpty());
    EXPECT_TRUE(holdsNoAccess("chip"));
  }));
}

TEST(Queries, ProgressLinesAppearInDiagnosticModeOnly) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    makeChip(folder);
    EXPECT_EQ(printedBy([&] { plugIn.getViewNames("chip", "Buf"); }), "");
    oaConvert::debug = true;
    EXPECT_EQ(printedBy([&] { plugIn.getViewNames("chip", "Buf"); }), "check chip\nview: layout\n");
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(plugIn.getViewType("chip", "inv", "layout"), QString("maskLayout")); }),
              "check view type chip/inv/layout\ntype is maskLayout\n");
  }));
}

TEST(Queries, AccessHeldByTheCallerIsKept) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    makeChip(folder);
    oaLib *lib = oaLib::find(scalar("chip"));
    ASSERT_TRUE(lib->getAccess(oaLibAccess("write"), 0));
    EXPECT_EQ(plugIn.getCellNames("chip").size(), 3);
    // The kit counts a new cell last as long as the access lasts.
    oaCell::get(lib, scalar("a"));
    EXPECT_EQ(plugIn.getCellNames("chip").join(" ").toStdString(), "Buf a and2 inv");
    EXPECT_EQ(plugIn.getViewType("chip", "inv", "layout"), QString("maskLayout"));
    EXPECT_EQ(lib->getAccessLevel(), oacWriteLibAccessLevel);
    lib->releaseAccess();
  }));
}

TEST(IsOaLibrary, MakesTheLibraryOfADesignFileKnown) {
  const ScratchFolder folder;
  const ScratchFolder maker;
  ASSERT_TRUE(inOwnProcess(maker, [&] { makeChip(folder); }));
  const QString design = text(folder.path() / "chip" / "inv" / "layout" / "layout.oa");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    QString lib, path;
    EXPECT_TRUE(plugIn.isOaLibrary(design, &lib, &path));
    EXPECT_EQ(lib.toStdString(), "chip");
    EXPECT_EQ(path.toStdString(), (folder.path() / "chip").string());
    EXPECT_EQ(plugIn.getLibs(), QStringList("chip"));
    EXPECT_TRUE(plugIn.isOaLibrary(design, nullptr, nullptr));
  }));
}

TEST(IsOaLibrary, DesignThatIsNotThereIsLookedUpByLibraryName) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    makeChip(folder);
    QString lib, path;
    EXPECT_TRUE(plugIn.isOaLibrary("/nowhere/chip/new/layout/layout.oa", &lib, &path));
    EXPECT_EQ(lib.toStdString(), "chip");
    EXPECT_EQ(path.toStdString(), (folder.path() / "chip").string());
    EXPECT_FALSE(plugIn.isOaLibrary("/nowhere/other/new/layout/layout.oa", &lib, &path));
  }));
}

TEST(IsOaLibrary, RefusesWhatIsNoDesignFile) {
  const ScratchFolder folder;
  std::filesystem::create_directories(folder.path() / "plain" / "cell" / "view");
  writeFile(folder.path() / "plain" / "cell" / "view" / "layout.oa", "");
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    oaPlugInMain plugIn;
    const QString cases[] = {
        "",
        ".oa",
        "layout.oa",
        "cell/view/layout.oa",
        "/cell/view/layout.oa",
        "/lib/cell/view/layout.OA",
        "/lib/cell/view/layout.oa.gz",
        text(folder.path() / "plain" / "cell" / "view" / "layout.oa"),
    };
    for (const QString &file : cases) {
      SCOPED_TRACE(file.toStdString());
      QString lib, path;
      EXPECT_FALSE(plugIn.isOaLibrary(file, &lib, &path));
    }
  }));
}

} // namespace
