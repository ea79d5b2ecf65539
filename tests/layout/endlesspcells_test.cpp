// Parametric cells that place ever other variants: every reading comes to an end.

#include "layouttest.h"
#include "testevaluator.h"
#include "variantlimits.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class EndlessPcellsTest : public LayoutTest {
protected:
  // The parameters of a cell "tree": `level` counts down, `path` tells apart what is on the same level.
  static oaParamArray treeParams(int level, unsigned path) {
    return paramsOf({oaParam("level", oaInt4(level)), oaParam("path", oaInt4(path))});
  }

  static void place(oaBlock *block, const char *cell, const std::string &name, const oaParamArray &params) {
    oaScalarInst::create(block, scalar("lib"), scalar(cell), scalar("layout"), scalar(name), oaTransform(), &params);
  }

  static void createPcell(const std::string &cell, const TestEvaluator &evaluator, const oaParamArray &defaults) {
    evaluator.define(CellBuilder(std::string("lib"), cell).design(), defaults);
  }

  // An evaluator that places `branches` variants of the cell, each with a level less, until the level is 0.
  static TestEvaluator::Draw tree(const char *cell, int branches) {
    return [=](oaDesign *design, const oaParamArray &params) {
      oaBlock *block = oaBlock::create(design);
      const int level = intValueOf(params, "level");
      for (int i = 0; i < branches && level != 0; ++i) {
        const unsigned path = unsigned(intValueOf(params, "path")) * unsigned(branches) + unsigned(i);
        place(block, cell, "I" + std::to_string(i), treeParams(level - 1, path));
      }
    };
  }

  size_t sentCells() const { return recorder.lines({"addCell"}).size(); }
};

TEST_F(EndlessPcellsTest, VariantsWithinEachOtherAreLimited) {
  const struct {
    const char *name;
    const char *first, *second; // what each of the two cells places
    int branches;
    size_t cells;
  } cases[] = {
      {"one in each", "a", "a", 1, 64},
      {"two in each", "a", "a", 2, 64},
      {"many in each", "a", "a", 50, 64},
      {"by turns with another cell", "b", "a", 1, 128},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const TestEvaluator first("first", tree(c.first, c.branches));
    const TestEvaluator second("second", tree(c.second, c.branches));
    createPcell("a", first, treeParams(-1, 1));
    createPcell("b", second, treeParams(-1, 1));
    SignalRecorder fresh(&plugIn); // holds no cells of the case before
    read("a");
    EXPECT_THAT(fresh.lines({"reportError"}),
                ElementsAre(HasSubstr("Parametric cell"),
                            "reportError \"recursive cell reference, the cell is not read again\" 1 \"64 variants of "
                            "lib/a/layout contain each other, none of them gets a further one\""));
    EXPECT_EQ(fresh.lines({"addCell"}).size(), c.cells);
    EXPECT_EQ(fresh.lines({"endCell"}).size(), c.cells);
    EXPECT_EQ(fresh.lines({"addCellRef"}).size(), c.cells - 1) << "no reference to a cell that was not sent";
    EXPECT_EQ(fresh.lines({"setCurrentCell"}).size(), 1u);
    EXPECT_LE(first.evaluationCount(), 65);
  }
}

TEST_F(EndlessPcellsTest, VariantsForOneAreLimited) {
  TestEvaluator wide("wide", tree("wide", 10));
  createPcell("wide", wide, treeParams(5, 1)); // with 111110 others
  const int most = VariantLimits::kMostForOne;
  EXPECT_THAT(
      read("wide", Lines{"reportError"}),
      ElementsAre(HasSubstr("Parametric cell"),
                  "reportError \"too many variants of parametric cells place each other, the rest is left out\" 1 "
                  "\"what the variants inside one of lib/wide/layout place, after " +
                      std::to_string(most) + " others: lib/wide/layout\""));
  EXPECT_EQ(sentCells(), size_t(1 + 10 + most)) << "what the first one places itself is not counted";
  EXPECT_EQ(recorder.lines({"addCellRef"}).size(), size_t(10 + most));
}

// Nothing that people draw is cut: not what stored cells place, however much it is, nor what is met again.
TEST_F(EndlessPcellsTest, WhatEndsByItselfIsReadWhole) {
  TestEvaluator chain("chain", tree("chain", 1));
  TestEvaluator bush("bush", tree("bush", 3));
  createPcell("chain", chain, treeParams(0, 1));
  createPcell("bush", bush, treeParams(0, 1));
  {
    const CellBuilder top("lib", "top");
    place(*top, "chain", "deep", treeParams(63, 1)); // 64 with itself
    for (unsigned i = 0; i < 300; ++i) {
      place(*top, "bush", "B" + std::to_string(i), treeParams(3, 1000 * (i + 1))); // each with 39 others
    }
  }
  EXPECT_THAT(read("top", Lines{"reportError"}), IsEmpty());
  EXPECT_EQ(sentCells(), 1u + 64u + 300u * 40u);
}

// A cell of which one variant has no end still has others.
TEST_F(EndlessPcellsTest, OtherVariantsOfAnEndlessCellAreRead) {
  TestEvaluator chain("chain", tree("chain", 1));
  createPcell("chain", chain, treeParams(0, 1));
  {
    const CellBuilder top("lib", "top");
    place(*top, "chain", "I1", treeParams(1000, 1));
    place(*top, "chain", "I2", treeParams(900, 2)); // among those that were left out
    place(*top, "chain", "I3", treeParams(0, 7));
  }
  EXPECT_THAT(read("top", Lines{"reportError"}), ElementsAre(HasSubstr("recursive cell reference")));
  EXPECT_EQ(sentCells(), 1u + 64u + 1u + 1u);
  const Lines references = recorder.lines({"addCellRef"});
  EXPECT_THAT(Lines(references.end() - 2, references.end()), ElementsAre(HasSubstr("\"I2\""), HasSubstr("\"I3\"")));
}

class VariantLimitsTest : public testing::Test {
protected:
  // Only compared.
  const oaDesign *superMaster(int number) const { return reinterpret_cast<const oaDesign *>(&memory_[number]); }

  // How many a variant of `root` in a stored cell may have inside its own ones, at most `needed`.
  std::string allowedInside(const oaDesign *root, int needed) {
    limits_.begin(root);
    limits_.begin(superMaster(0));
    int allowed = 0;
    VariantLimits::Answer answer{VariantLimits::kAllowed, false};
    while (allowed < needed && (answer = limits_.ask(superMaster(1))).verdict == VariantLimits::kAllowed) {
      ++allowed;
    }
    EXPECT_EQ(limits_.root(), root);
    EXPECT_EQ(limits_.evaluations(), allowed);
    const bool isToldAgain = answer.verdict != VariantLimits::kAllowed && limits_.ask(superMaster(1)).isNew;
    limits_.end();
    limits_.end();
    return std::to_string(allowed) + (answer.isNew ? " told" : "") + (isToldAgain ? " told again" : "");
  }

  bool areAllAllowed(int count) {
    while (count > 0 && limits_.ask(superMaster(1)).verdict == VariantLimits::kAllowed) {
      --count;
    }
    return count == 0;
  }

  VariantLimits limits_;
  const char memory_[4] = {};
};

TEST_F(VariantLimitsTest, OnlySuperMastersThatNeedTooManyGetFewerAfterwards) {
  const int most = VariantLimits::kMostForOne;
  const std::string all = std::to_string(most);
  const std::string few = std::to_string(VariantLimits::kMostAfterwards);
  const oaDesign *endless = superMaster(2);
  const oaDesign *big = superMaster(3);
  limits_.begin(nullptr);
  EXPECT_EQ(allowedInside(big, most), all) << "the limit is reached, but nothing is missing";
  EXPECT_EQ(allowedInside(big, most), all);
  EXPECT_EQ(allowedInside(endless, most + 1), all + " told");
  EXPECT_EQ(allowedInside(endless, most + 1), few + " told");
  EXPECT_EQ(allowedInside(endless, most + 1), few + " told");
  EXPECT_EQ(allowedInside(big, most), all);
}

TEST_F(VariantLimitsTest, WhatOneCellPlacesItselfHasAnEnd) {
  const int many = VariantLimits::kMostForOne + 1;
  limits_.begin(nullptr);
  EXPECT_TRUE(areAllAllowed(many)) << "a stored cell";
  limits_.begin(superMaster(2));
  EXPECT_TRUE(areAllAllowed(many)) << "a variant in it";
  EXPECT_EQ(limits_.evaluations(), 0);
  limits_.begin(superMaster(3));
  limits_.begin(nullptr);
  EXPECT_TRUE(areAllAllowed(many)) << "a stored cell inside variants";
  limits_.end();
  EXPECT_FALSE(areAllAllowed(many)) << "a variant inside a variant";
}

} // namespace
