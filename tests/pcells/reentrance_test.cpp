// Evaluators and observers run in the middle of what the kit does, and may close or change whatever they like.

#include "pcelltest.h"

using namespace pcelltest;

namespace {

oaUInt4 openDesigns() { return oaDesign::getOpenDesigns().getCount(); }

// Calls what it is given at the events of its choice.
class Meddler : public oaPcellObserver {
public:
  Meddler() : oaPcellObserver(1) {}
  void onPreEval(oaDesign *design, oaPcellDef *) override { call(before, design); }
  void onPostEval(oaDesign *design, oaPcellDef *) override { call(after, design); }
  std::function<void(oaDesign *)> before, after;

private:
  static void call(const std::function<void(oaDesign *)> &action, oaDesign *design) {
    if (action) {
      action(design);
    }
  }
};

// Does something when it is unbound or has to store.
class LateEvaluator : public BoxEvaluator {
public:
  void getName(oaString &name) override { name = "late"; }
  void onUnbind(oaDesign *design, oaPcellDef *) override { act(unbinding, design); }
  void onWrite(oaDesign *design, oaByte *, oaUInt4, oaPcellDef *) override { act(writing, design); }
  void onRead(oaDesign *design, const oaByte *, oaUInt4, oaPcellDef *) override { act(reading, design); }
  std::function<void(oaDesign *)> unbinding, writing, reading;

private:
  static void act(const std::function<void(oaDesign *)> &action, oaDesign *design) {
    if (action) {
      action(design);
    }
  }
};

class Reentrance : public Pcells {
protected:
  Reentrance() {
    makeBox();
    makeLeaf("leaf", oaBox(0, 0, 5, 5));
    oaDesign *top = open("top", 'w');
    oaBlock *block = oaBlock::create(top);
    place(block, "a", one("w", 1));
    place(block, "b", one("w", 2));
    place(block, "c", one("w", 3));
    top->save();
    top->close();
  }
  // Binds and measures everything, whatever is left of it.
  void useTop() {
    oaDesign *top = open("top", 'r');
    (void)idRaisedBy([&] { top->openHier(); });
    (void)idRaisedBy([&] { boxOf(top->getTopBlock()); });
    (void)idRaisedBy([&] {
      oaIter<oaInst> insts(top->getTopBlock()->getInsts());
      while (oaInst *inst = insts.getNext()) {
        inst->getMaster();
        boxOf(inst);
      }
    });
    closeAll();
  }
  void closeAll() {
    boxes_.draw = BoxEvaluator::drawBox;
    while (oaDesign *design = oaIter<oaDesign>(oaDesign::getOpenDesigns()).getNext()) {
      design->purge();
    }
  }
  oaDesign *find(const char *cell) { return oaDesign::find(scalar(libName()), scalar(cell), scalar("layout")); }
};

TEST_F(Reentrance, EvaluatorsMayCloseAnything) {
  const struct {
    const char *name;
    std::function<void(oaDesign *)> action;
  } cases[] = {
      {"its own design", [](oaDesign *sub) { sub->purge(); }},
      {"its super master", [](oaDesign *sub) { sub->getSuperMaster()->purge(); }},
      {"the placing design", [this](oaDesign *) { find("top")->purge(); }},
      {"the placing design, in order", [this](oaDesign *) { find("top")->close(); }},
      {"contents of the placing design", [this](oaDesign *) { find("top")->revert(); }},
      {"instances",
       [this](oaDesign *) { oaIter<oaInst>(find("top")->getTopBlock()->getInsts()).getNext()->destroy(); }},
      {"the super master's contents", [](oaDesign *sub) { sub->getSuperMaster()->reopen('w'); }},
      {"its link",
       [this](oaDesign *) {
         link_->destroy();
         link_ = oaPcellLink::create(&boxes_);
       }},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    boxes_.draw = [&](oaDesign *sub, const oaParamArray &params) {
      BoxEvaluator::drawBox(sub, params);
      if (find("top") != nullptr) {
        c.action(sub);
      }
    };
    useTop();
    EXPECT_EQ(openDesigns(), 0u);
  }
  Meddler meddler;
  meddler.before = [](oaDesign *sub) { sub->purge(); };
  useTop();
  meddler.before = nullptr;
  meddler.after = [this](oaDesign *) { find("top")->openHier(); };
  oaDesign *top = open("top", 'r');
  top->openHier();
  EXPECT_EQ(boxOf(top->getTopBlock()), "0 0 3 20");
  top->close();
  EXPECT_EQ(openDesigns(), 0u) << "bound twice, counted once";
}

TEST_F(Reentrance, LastCallsMayOpenAndClose) {
  LateEvaluator late;
  oaPcellLink *link = oaPcellLink::create(&late);
  const std::function<void(oaDesign *)> actions[] = {
      [this](oaDesign *) { open("leaf", 'r'); },
      [this](oaDesign *) {
        if (oaDesign *leaf = find("leaf")) {
          leaf->purge();
        }
      },
      [this](oaDesign *) { (void)idRaisedBy([&] { variant(one("w", 9), "later"); }); },
      [](oaDesign *design) { design->purge(); },
      [](oaDesign *design) { design->getPcellDef(); },
  };
  for (const auto &action : actions) {
    const std::function<void(oaDesign *)> ways[] = {
        [](oaDesign *design) { design->close(); },
        [](oaDesign *design) { design->revert(); },
        [](oaDesign *design) { design->undefineSuperMaster(); },
        [](oaDesign *design) { design->save(); },
        [&](oaDesign *) {
          link->destroy();
          link = oaPcellLink::create(&late);
        },
    };
    for (const auto &way : ways) {
      late.unbinding = late.writing = late.reading = action;
      oaDesign *design = open("later", 'w');
      design->defineSuperMaster(oaPcellLink::getPcellDef("late"), defaults());
      (void)idRaisedBy([&] { variant(one("w", 1), "later"); });
      (void)idRaisedBy([&] { way(design); });
      (void)idRaisedBy([&] { variant(one("w", 1), "later"); });
      late.unbinding = late.writing = late.reading = nullptr;
      closeAll();
      EXPECT_EQ(openDesigns(), 0u);
    }
  }
  link->destroy();
}

TEST_F(Reentrance, ClosingTooOftenHarmsNobody) {
  oaDesign *top = open("top", 'r');
  top->openHier();
  oaDesign *super = find("box");
  super->close();
  top->close();
  EXPECT_EQ(openDesigns(), 0u);
  EXPECT_FALSE(super->isValid());
}

TEST_F(Reentrance, ACellInItselfIsNotBound) {
  oaDesign *super = open("box", 'a');
  oaScalarInst *inst = place(oaBlock::create(super), "self", one("w", 1));
  EXPECT_EQ(inst->getMaster(), nullptr);
  super->close();
  EXPECT_EQ(openDesigns(), 0u);
}

} // namespace
