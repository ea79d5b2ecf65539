// The order in which cells arrive, and what a hierarchy that is not whole does.

#include <pthread.h>

#include <fstream>

#include "layouttest.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class HierarchyTest : public LayoutTest {};

const Lines kCells{"addCell", "existCell", "addCellRef", "addCellRefArray", "endCell", "setCurrentCell", "reportError"};

TEST_F(HierarchyTest, WholeStreamOfASmallLayout) {
  {
    CellBuilder inv("lib", "inv");
    inv.rect(4, 0, 0, 0, 10, 5);
  }
  {
    CellBuilder top("lib", "top");
    top.rect(1, 2, -5, -5, 5, 5);
    top.inst("I1", "inv", 100, 200, oacR90);
  }
  EXPECT_THAT(read("top"),
              ElementsAre("setUnits 0.001 1e-09", "addCell \"top\"", "addCellNumData 1 \"lib\"",
                          "addCellNumData 3 \"top\"", "addCellNumData 4 \"layout\"", "addBox -5 -5 10 10 1 2",
                          "existCell \"inv\"", "addCell \"inv\"", "addCellNumData 1 \"lib\"",
                          "addCellNumData 3 \"inv\"", "addCellNumData 4 \"layout\"", "addBox 0 0 10 5 4 0", "endCell",
                          "addCellRef \"inv\" (100 200) \"R270\" \"I1\"", "endCell", "setCurrentCell \"top\""));
}

TEST_F(HierarchyTest, UnitsInMetres) {
  const struct {
    const char *name;
    oaUserUnitsTypeEnum unit;
    int dbuPerUserUnit;
    const char *line;
  } cases[] = {
      {"nanometre", oacNanometer, 1000, "setUnits 0.001 1e-12"},
      {"micron", oacMicron, 2000, "setUnits 0.0005 5e-10"},
      {"millimetre", oacMillimeter, 1000, "setUnits 0.001 1e-06"},
      {"centimetre", oacCentimeter, 100, "setUnits 0.01 0.0001"},
      {"metre", oacMeter, 10, "setUnits 0.1 0.1"},
      {"mil", oacMil, 100, "setUnits 0.01 2.54e-07"},
      {"inch", oacInch, 160, "setUnits 0.00625 0.00015875"},
  };
  { CellBuilder cell("lib", "cell"); }
  oaTech *tech = oaTech::create(scalar("lib"));
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    tech->setUserUnits(oaViewType::get(oacMaskLayout), c.unit);
    tech->setDBUPerUU(oaViewType::get(oacMaskLayout), oaUInt4(c.dbuPerUserUnit));
    EXPECT_THAT(read("cell", Lines{"setUnits"}), ElementsAre(c.line));
  }
}

// The first reference to a master follows the master; the truth about cells that came already keeps each from coming
// twice.
TEST_F(HierarchyTest, MastersComeBeforeTheirFirstReferenceAndOnce) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder mid("lib", "mid");
    mid.inst("A", "leaf");
  }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "mid");
    top.inst("I2", "leaf");
    top.inst("I3", "mid", 5, 6, oacMX);
  }
  EXPECT_THAT(read("top", kCells),
              ElementsAre("addCell \"top\"", "existCell \"mid\"", "addCell \"mid\"", "existCell \"leaf\"",
                          "addCell \"leaf\"", "endCell", "addCellRef \"leaf\" (0 0) \"\" \"A\"", "endCell",
                          "addCellRef \"mid\" (0 0) \"\" \"I1\"", "existCell \"leaf\"",
                          "addCellRef \"leaf\" (0 0) \"\" \"I2\"", "existCell \"mid\"",
                          "addCellRef \"mid\" (5 6) \"M\" \"I3\"", "endCell", "setCurrentCell \"top\""));
}

TEST_F(HierarchyTest, HostDecidesWhatIsRead) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "leaf");
    top.inst("I2", "leaf");
  }
  recorder.answerExistCell([](const QString &) { return true; });
  EXPECT_THAT(
      read("top", Lines{"addCell", "addCellRef"}),
      ElementsAre("addCell \"top\"", "addCellRef \"leaf\" (0 0) \"\" \"I1\"", "addCellRef \"leaf\" (0 0) \"\" \"I2\""));
  recorder.answerExistCell([](const QString &) { return false; });
  EXPECT_THAT(read("top", Lines{"addCell"}), ElementsAre("addCell \"top\"", "addCell \"leaf\"", "addCell \"leaf\""));
}

// More masters than stay open together; a host that holds nothing gets every one of them as often as it is placed.
TEST_F(HierarchyTest, MastersAreOpenedAgainForAHostThatWantsThemTwice) {
  const int count = 300;
  {
    CellBuilder top("lib", "top");
    for (int round = 0; round < 2; ++round) {
      for (int i = 0; i < count; ++i) {
        const std::string name = "c" + std::to_string(i);
        top.inst("I" + std::to_string(round) + "_" + std::to_string(i), name);
        if (round == 0) {
          CellBuilder cell("lib", name);
          cell.rect(1, 1, 0, 0, i + 1, 1);
        }
      }
    }
  }
  recorder.answerExistCell([](const QString &) { return false; });
  const Lines boxes = read("top", Lines{"addBox", "reportError"});
  ASSERT_EQ(boxes.size(), 2u * count);
  EXPECT_EQ(boxes[0], "addBox 0 0 1 1 1 1");
  EXPECT_EQ(boxes[count], "addBox 0 0 1 1 1 1");
  EXPECT_EQ(boxes.back(), "addBox 0 0 300 1 1 1");
  EXPECT_EQ(oaDesign::getOpenDesigns().getCount(), 0u);
}

TEST_F(HierarchyTest, NamesAreRelativeToTheLibraryBeingRead) {
  createLib("cells");
  { CellBuilder other("cells", "inv", "abstract"); }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "inv", 0, 0, oacR0, "cells", "abstract");
  }
  EXPECT_THAT(read("top", Lines{"existCell", "addCellRef"}),
              ElementsAre("existCell \"inv_abstract~cells\"", "addCellRef \"inv_abstract~cells\" (0 0) \"\" \"I1\""));
}

TEST_F(HierarchyTest, ArrayKeepsPitchAndCounts) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder top("lib", "top");
    oaArrayInst::create(*top, scalar("lib"), scalar("leaf"), scalar("layout"), scalar("A"), oaTransform(1, 2, oacMY),
                        10, -20, 2, 3);
  }
  EXPECT_THAT(read("top", Lines{"addCellRefArray", "addCellRef"}),
              ElementsAre("addCellRefArray \"leaf\" (1 2) 10 -20 3 2 \"R180M\" \"A\""));
}

TEST_F(HierarchyTest, CellsThatPlaceEachOtherAreEachReadOnce) {
  {
    CellBuilder a("lib", "a");
    a.inst("I1", "b");
    a.inst("I2", "b");
  }
  {
    CellBuilder b("lib", "b");
    b.inst("I1", "a");
  }
  for (const bool holdsCells : {false, true}) {
    SCOPED_TRACE(holdsCells);
    if (!holdsCells) {
      recorder.answerExistCell([](const QString &) { return false; });
    } else {
      recorder.answerExistCell([](const QString &cell) { return cell == "a"; });
    }
    const Lines sent = read("a", kCells);
    EXPECT_THAT(reports(), testing::Each(HasSubstr("lib/b/layout places lib/a/layout")));
    EXPECT_GE(reports().size(), 1u);
    EXPECT_EQ(std::count(sent.begin(), sent.end(), "addCellRef \"a\" (0 0) \"\" \"I1\""), 2);
    EXPECT_EQ(std::count(sent.begin(), sent.end(), "addCell \"a\""), 1);
    EXPECT_EQ(sent.back(), "setCurrentCell \"a\"");
  }
}

struct DeepRead {
  oaPlugInMain *plugIn;
  QString top;
};

void *readDeep(void *argument) {
  auto *deep = static_cast<DeepRead *>(argument);
  deep->plugIn->openLayout("lib", deep->top, "layout", QString());
  return nullptr;
}

// 600 levels on a small call stack: the depth of a hierarchy costs memory, not stack.
TEST_F(HierarchyTest, DepthNeedsNoCallStack) {
  const int depth = 600;
  for (int level = 0; level < depth; ++level) {
    CellBuilder cell("lib", "d" + std::to_string(level));
    if (level > 0) {
      cell.inst("I", "d" + std::to_string(level - 1));
    }
  }
  DeepRead deep{&plugIn, "d" + QString::number(depth - 1)};
  recorder.clear();
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, size_t(192) * 1024);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, readDeep, &deep), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  EXPECT_EQ(recorder.lines({"addCell"}).size(), size_t(depth));
  EXPECT_EQ(recorder.lines({"addCellRef"}).size(), size_t(depth - 1));
  EXPECT_THAT(reports(), ElementsAre());
}

TEST_F(HierarchyTest, WhatIsMissingIsReportedAndTheRestArrives) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "leaf", 0, 0, oacR0, "nolib");
    top.inst("I2", "nocell");
    top.inst("I3", "nmos", 0, 0, oacR0, "lib", "TarnwickdaleComponent");
    top.inst("I4", "nocell");
    top.inst("I5", "leaf");
  }
  read("top");
  const Lines sent = recorder.lines({"addCellRef", "reportError"});
  ASSERT_EQ(sent.size(), 5u);
  EXPECT_EQ(sent[0], "reportError \"library not found\" 1 \"nolib\"");
  EXPECT_THAT(sent[1], testing::StartsWith("reportError \"cell not found\" 1 \"lib/nocell/layout"));
  EXPECT_EQ(
      sent[2],
      "reportError \"schematic devices cannot be loaded into layout window\" 1 \"lib/nmos/TarnwickdaleComponent\"");
  EXPECT_EQ(sent[3], sent[1]);
  EXPECT_EQ(sent[4], "addCellRef \"leaf\" (0 0) \"\" \"I5\"");
}

TEST_F(HierarchyTest, MissingTopIsAborted) {
  read("nothing");
  EXPECT_THAT(recorder.lines(), ElementsAre(testing::StartsWith("reportError \"Aborted.\" 1 \"")));
  recorder.clear();
  plugIn.openLayout("nolib", "cell", "layout", QString());
  EXPECT_THAT(recorder.lines(), ElementsAre(testing::StartsWith("reportError \"Aborted.\" 1 \"")));
}

TEST_F(HierarchyTest, DesignWithoutBlockIsAnEmptyCell) {
  oaDesign *design =
      oaDesign::open(scalar("lib"), scalar("bare"), scalar("layout"), oaViewType::get(oacMaskLayout), 'w');
  design->save();
  design->close();
  EXPECT_THAT(read("bare", kCells),
              ElementsAre("addCell \"bare\"",
                          "reportError \"no layout data or parametic cell can not be created\" 1 \"lib/bare/layout\"",
                          "endCell", "setCurrentCell \"bare\""));
}

TEST_F(HierarchyTest, FileThatIsNoDesignIsReportedByName) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "leaf");
  }
  std::ofstream(pathOf("leaf") + "/layout.oa", std::ios::trunc) << "this is no design";
  EXPECT_THAT(read("top", Lines{"addCellRef", "reportError"}),
              ElementsAre(testing::AllOf(testing::StartsWith("reportError \"cell not found\" 1 \"lib/leaf/layout: "),
                                         HasSubstr("layout.oa"))));
}

TEST_F(HierarchyTest, FurtherCellComesWithoutUnits) {
  { CellBuilder leaf("lib", "leaf"); }
  recorder.clear();
  EXPECT_EQ(plugIn.openLayout("lib", "leaf", "layout", "", QStringList(), QStringList()), "leaf");
  EXPECT_EQ(plugIn.openLayout("lib", "leaf", "layout", folder().filePath("lib"), QStringList("w"), QStringList()),
            "leaf");
  EXPECT_THAT(recorder.lines(),
              ElementsAre("existCell \"leaf\"", "addCell \"leaf\"", "addCellNumData 1 \"lib\"",
                          "addCellNumData 3 \"leaf\"", "addCellNumData 4 \"layout\"", "endCell", "existCell \"leaf\""));
}

// What a slot throws ends the operation, and nothing stays open behind it.
TEST_F(HierarchyTest, ExceptionFromASlotLeavesNothingOpen) {
  { CellBuilder leaf("lib", "leaf"); }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "leaf");
  }
  recorder.onSignal([](const std::string &name) {
    if (name == "addCellRef") {
      throw 'e';
    }
  });
  EXPECT_THAT(read("top", Lines{"reportError"}), ElementsAre("reportError \"Aborted.\" 1 \"e\""));
  EXPECT_EQ(oaDesign::getOpenDesigns().getCount(), 0u);
}

} // namespace
