// Parametric cells in files whose contents are not what they should be: a named exception or a master that is not
// there, no crash and no endless walk.

#include "designaccess.h"
#include "pcelltest.h"
#include "storedparams.h"

using namespace pcelltest;
using testing::HasSubstr;

namespace {

using kit::DesignDatabase;

class DamagedPcells : public Pcells {
protected:
  // "top" with three instances: headers 0 super, 1 (w = 1), 2 (none given).
  void fill() {
    oaDesign *top = open("top", 'w');
    oaBlock *block = oaBlock::create(top);
    place(block, "a", one("w", 1));
    place(block, "b", one("w", 1));
    place(block, "c");
    top->openHier();
    top->save();
    top->close();
  }
  template <typename Damage> void damage(const char *cell, Damage damage) {
    oaDesign *design = open(cell, 'a');
    damage(kit::designOf(design));
    design->save();
    design->purge();
  }
  // What the first exception says.
  std::string useAll() {
    std::string message;
    try {
      oaDesign *top = open("top", 'a');
      oaBlock *block = top->getTopBlock();
      std::vector<oaInst *> all;
      oaIter<oaInstHeader> headers(block->getInstHeaders());
      while (oaInstHeader *header = headers.getNext()) {
        oaParamArray params;
        header->getParams(params);
        header->getMaster();
        header->getSuperHeader();
        header->getSubHeaders().getCount();
        header->getInsts().getCount();
      }
      oaIter<oaInst> insts(block->getInsts());
      while (oaInst *inst = insts.getNext()) {
        paramsOf(inst);
        inst->getMaster();
        boxOf(inst);
        all.push_back(inst);
      }
      place(block, "new", one("w", 1));
      for (oaInst *inst : all) {
        inst->setParams(one("l", 1));
        inst->copy(oaTransform());
        inst->destroy();
      }
      top->save();
    } catch (const oaException &exception) {
      message = exception.getMsg();
    }
    if (oaDesign *top = oaDesign::find(scalar(libName()), scalar("top"), scalar("layout"))) {
      top->purge();
    }
    return message;
  }
};

TEST_F(DamagedPcells, WrongRowsAreFoundWhenTheyAreUsed) {
  makeBox();
  const auto setText = [](kit::Column<kit::Row> kit::InstHeaderTable::*column, const char *bytes, std::size_t size) {
    return [=](DesignDatabase &d) { (d.instHeaders.*column).set(1, d.strings().add(std::string(bytes, size))); };
  };
  const struct {
    const char *name;
    std::function<void(DesignDatabase &)> damage;
    const char *found; // in the message; empty when nothing raises
  } cases[] = {
      {"nothing", [](DesignDatabase &) {}, ""},
      {"super out of range", [](DesignDatabase &d) { d.instHeaders.super.set(1, 99); }, "table instHeaders"},
      {"above itself", [](DesignDatabase &d) { d.instHeaders.super.set(1, 1); }, ""},
      {"super under its sub header", [](DesignDatabase &d) { d.instHeaders.super.set(0, 1); }, ""},
      {"no super header", [](DesignDatabase &d) { d.instHeaders.isSuper.set(0, 0); }, ""},
      {"instance on the super header", [](DesignDatabase &d) { d.insts.header.set(0, 0); }, ""},
      {"counts",
       [](DesignDatabase &d) {
         d.instHeaders.insts.set(0, 0);
         d.instHeaders.insts.set(1, 77);
       },
       ""},
      {"parameters cut short", setText(&kit::InstHeaderTable::params, "\1\0\0\0w\0\1", 7), "end in byte"},
      {"long name",
       setText(&kit::InstHeaderTable::params,
               "\xff\xff\xff\xff"
               "w",
               5),
       "are needed"},
      {"unknown type", setText(&kit::InstHeaderTable::params, "\1\0\0\0w\x63", 6), "type 99"},
      {"parameters out of range", [](DesignDatabase &d) { d.instHeaders.params.set(1, 9999); }, "9999"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    fill();
    damage("top", c.damage);
    const std::string message = useAll();
    EXPECT_THAT(message, HasSubstr(c.found));
    EXPECT_EQ(message.empty(), *c.found == '\0') << message;
  }
}

TEST_F(DamagedPcells, ASuperMasterThatIsWrongHasNoVariants) {
  const struct {
    const char *name;
    std::function<void(DesignDatabase &)> damage;
    const char *found;
  } cases[] = {
      {"row out of range", [](DesignDatabase &d) { d.attributes.superMaster.set(0, 7); }, "table superMasters"},
      {"parameters", [](DesignDatabase &d) { d.superMasters.params.set(0, d.strings().add("xx")); }, "are needed"},
      {"evaluator out of range", [](DesignDatabase &d) { d.superMasters.evaluator.set(0, 9999); }, "9999"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    makeBox();
    damage("box", c.damage);
    std::string message;
    try {
      drawn(variant(one("w", 1)));
    } catch (const oaException &exception) {
      message = exception.getMsg();
    }
    EXPECT_THAT(message, HasSubstr(c.found));
    if (oaDesign *box = oaDesign::find(scalar(libName()), scalar("box"), scalar("layout"))) {
      box->purge();
    }
  }

  makeBox();
  damage("box", [](DesignDatabase &d) { d.superMasters.data.set(0, d.strings().add(std::string("\5\0\0\0ab", 6))); });
  Errors errors;
  EXPECT_EQ(drawn(variant(one("w", 1))), "no block");
  EXPECT_THAT(errors.kinds, testing::ElementsAre(int(oacPcellReadError)));
  EXPECT_THAT(errors.texts[0], HasSubstr("damaged"));
}

TEST_F(DamagedPcells, NamesOfEvaluatorsDoNotLeadOutOfTheirDirectories) {
  for (const char *name : {"../../lib/liboaBase", "/bin/true", ".hidden", "", "a/b"}) {
    EXPECT_EQ(oaPcellLink::find(name), nullptr) << name;
  }
}

} // namespace
