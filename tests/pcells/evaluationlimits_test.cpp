// Variants that place ever other variants: evaluating them and finding their boxes comes to an end, and what has an end
// by itself is whole.

#include "evaluationlimits.h"
#include "pcelltest.h"

using namespace oa;
using namespace pcelltest;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class EvaluationLimits : public Pcells {
protected:
  // Draws a box of w by 1 and places `cell` with w one larger, until w is `last`; that one places `end`, if any.
  BoxEvaluator::Draw chain(const char *cell, int last, const char *end = nullptr) {
    return [=](oaDesign *design, const oaParamArray &params) {
      const int width = params[0].getIntVal();
      oaBlock *block = oaBlock::create(design);
      oaRect::create(block, 1, 2, oaBox(0, 0, width, 1));
      if (width < last) {
        place(block, "I", one("w", oaInt4(width + 1)), cell);
      } else if (end != nullptr) {
        place(block, "I", oaParamArray(), end);
      }
    };
  }
};

TEST_F(EvaluationLimits, ACellThatNeedsEverMoreOfItselfComesToAnEnd) {
  makeBox();
  Errors errors;
  boxes_.draw = [this](oaDesign *design, const oaParamArray &params) {
    oaBlock *block = oaBlock::create(design);
    place(block, "I1", one("w", params[0].getIntVal() + 1))->getMaster();
    place(block, "I2", params)->getMaster(); // equal to itself but for the defaults
  };
  oaDesign *sub = variant(one("w", 1));
  EXPECT_NE(sub->getTopBlock(), nullptr);
  EXPECT_FALSE(errors.texts.empty());
  EXPECT_THAT(errors.texts[0], HasSubstr("64 evaluations"));
}

// Each evaluation is over before the box of what it drew is asked for.
TEST_F(EvaluationLimits, BoxesOfCellsThatPlaceEverMoreOfThemselvesComeToAnEnd) {
  makeBox();
  Errors errors;
  boxes_.draw = [this](oaDesign *design, const oaParamArray &params) {
    oaBlock *block = oaBlock::create(design);
    oaRect::create(block, 1, 2, oaBox(0, 0, 10, 20));
    for (unsigned i = 0; i < 2; ++i) { // 2 to the power of the depth of them
      place(block, i == 0 ? "I0" : "I1", one("w", oaInt4(unsigned(params[0].getIntVal()) * 2U + i)));
    }
  };
  oaBlock *top = oaBlock::create(open("top", 'w'));
  place(top, "I", one("w", 1));
  EXPECT_EQ(boxOf(top), "0 0 10 20");
  EXPECT_LT(boxes_.calls.size(), 70u);
  ASSERT_FALSE(errors.texts.empty());
  EXPECT_THAT(errors.texts[0], HasSubstr("64 evaluations"));
}

// Two cells by turns, each within the other as often as one may be within itself.
TEST_F(EvaluationLimits, EachSuperMasterIsCountedByItself) {
  makeBox("a");
  makeBox("b");
  Errors errors;
  boxes_.draw = [this](oaDesign *design, const oaParamArray &params) {
    oaString cell;
    design->getCellName(oaNativeNS(), cell);
    chain(cell == "a" ? "b" : "a", 120)(design, params);
  };
  oaBlock *top = oaBlock::create(open("top", 'w'));
  place(top, "I", one("w", 1), "a");
  EXPECT_EQ(boxOf(top), "0 0 120 1");
  EXPECT_THAT(errors.texts, IsEmpty());
}

TEST_F(EvaluationLimits, WhatStoredCellsPlaceIsNotCounted) {
  makeBox();
  Errors errors;
  place(oaBlock::create(open("stored", 'w')), "I", one("w", 101));
  boxes_.draw = [this](oaDesign *design, const oaParamArray &params) {
    const bool isInStored = params[0].getIntVal() > 100;
    (isInStored ? chain("box", 150) : chain("box", 50, "stored"))(design, params);
  };
  oaBlock *top = oaBlock::create(open("top", 'w'));
  place(top, "I", one("w", 1));
  EXPECT_EQ(boxOf(top), "0 0 150 1");
  EXPECT_THAT(errors.texts, IsEmpty());

  // Afterwards the count goes on where it was.
  boxes_.draw = [this](oaDesign *design, const oaParamArray &params) {
    chain("box", 1 << 30)(design, params);
    place(design->getTopBlock(), "stored", oaParamArray(), "stored");
  };
  oaBlock *endless = oaBlock::create(open("endless", 'w'));
  place(endless, "I", one("w", 1001));
  EXPECT_EQ(boxOf(endless), "0 0 1064 1");
  EXPECT_THAT(errors.texts, ElementsAre(HasSubstr("64 evaluations of the cell are under way already")));
}

TEST_F(EvaluationLimits, WhatWasRefusedIsEvaluatedWhenItIsOpenedLater) {
  makeBox();
  Errors errors;
  boxes_.draw = chain("box", 100);
  oaBlock *top = oaBlock::create(open("top", 'w'));
  place(top, "I", one("w", 1));
  EXPECT_EQ(boxOf(top), "0 0 64 1");
  ASSERT_THAT(errors.texts, ElementsAre(AllOf(HasSubstr("(w=65)"), HasSubstr("64 evaluations"))));
  EXPECT_EQ(boxOf(top), "0 0 64 1");

  oaDesign *refused = variant(one("w", 65));
  EXPECT_EQ(drawn(refused), "0 0 100 1");
  EXPECT_EQ(boxOf(top), "0 0 100 1") << "it is the master there";
  EXPECT_EQ(variant(one("w", 65)), refused);
  EXPECT_EQ(boxes_.calls.size(), 101u) << "each once; the first call binds the definition";
  EXPECT_EQ(errors.texts.size(), 1u);
}

// Of what is needed for the sake of one variant, that which others need is counted: what one evaluation places itself
// has an end.
TEST_F(EvaluationLimits, VariantsForOneAreLimited) {
  const int most = 10000;
  const char memory[3] = {};
  const auto super = [&](int number) { return reinterpret_cast<const kit::DesignDatabase *>(&memory[number]); };
  const auto evaluate = [&](int count) { // of so many, how many are allowed
    int allowed = 0;
    while (allowed < count && kit::Evaluation::whyNoMore(super(2)).empty()) {
      const kit::Evaluation evaluation(super(2));
      ++allowed;
    }
    return allowed;
  };
  EXPECT_EQ(evaluate(most + 1), most + 1) << "none is for the sake of another";
  for (int round = 0; round < 2; ++round) {
    const kit::Evaluation outermost(super(0));
    EXPECT_EQ(evaluate(most + 1), most + 1);
    const kit::Evaluation inner(super(1));
    EXPECT_EQ(evaluate(most + 1), most);
    EXPECT_THAT(kit::Evaluation::whyNoMore(super(2)), HasSubstr("10000 evaluations were needed already"));
  }
}

} // namespace
