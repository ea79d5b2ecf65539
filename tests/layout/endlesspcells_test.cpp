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
  createPcell("wide", wide, treeParams(4, 1)); // with 11110 others
  EXPECT_THAT(
      read("wide", Lines{"reportError"}),
      ElementsAre(HasSubstr("Parametric cell"),
                  "reportError \"too many variants of parametric cells place each other, the rest is left out\" 1 "
                  "\"what one variant of lib/wide/layout places, after 10000 others: lib/wide/layout\""));
  EXPECT_EQ(sentCells(), 10001u);
  EXPECT_EQ(recorder.lines({"addCellRef"}).size(), 10000u);
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

TEST_F(EndlessPcellsTest, EachVariantThatNeedsTooManyGetsFewerThanTheOneBefore) {
  VariantLimits limits;
  const auto *super = reinterpret_cast<const oaDesign *>(&limits); // only compared
  const auto *other = reinterpret_cast<const oaDesign *>(&recorder);
  Lines answers;
  limits.begin(nullptr);
  for (int root = 0; root < 3; ++root) {
    limits.begin(super);
    int allowed = 0;
    VariantLimits::Answer answer = limits.ask(other);
    for (; answer.verdict == VariantLimits::kAllowed; answer = limits.ask(other)) {
      ++allowed;
    }
    EXPECT_EQ(limits.root(), super);
    answers.push_back(std::to_string(allowed) + (answer.isNew ? " told" : "") +
                      (limits.ask(other).isNew ? " told again" : ""));
    limits.end();
  }
  EXPECT_THAT(answers, ElementsAre("10000 told", "5000 told", "2500 told"));
  for (int i = 0; i < VariantLimits::kMostForOne + 1; ++i) {
    EXPECT_EQ(limits.ask(other).verdict, VariantLimits::kAllowed) << "what stored cells place is finite";
  }
}

} // namespace
