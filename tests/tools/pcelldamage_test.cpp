// Parametric cells, and what places them, whose checksums are right and whose contents are not.

#include "oachecktest.h"
#include "storedparams.h"
#include "testevaluator.h"

#include <functional>

using namespace oachecktest;

namespace {

using kit::DesignDatabase;
using kit::kNoRow;
using kit::Row;

struct Case {
  const char *name;
  std::function<void(DesignDatabase &)> damage;
  const char *place, *what;
};

class PcellDamage : public OacheckTest {
protected:
  // The super master "pc". In "top" headers: 0 super and 1, 2 subs of "pc", 3 of "leaf"; via headers: 0 super and 1 sub
  // of the custom definition "var".
  PcellDamage() {
    const TestEvaluator boxes("boxes", [](oaDesign *design, const oaParamArray &) { oaBlock::create(design); });
    makeCell("leaf");
    oaBlock *super = newBlock("pc");
    boxes.define(super->getDesign(), paramsOf({oaParam("m", oaInt4(2)), oaParam("model", oaString("nch"))}));
    super->getDesign()->save();
    oaTech *tech = oaTech::create(lib());
    oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "m1", 31, oacMetalMaterial);
    oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "m2", 32, oacMetalMaterial);
    const auto layout = scalar("layout");
    const oaCustomViaDef *def = oaCustomViaDef::create(tech, "var", scalar(libName()), scalar("pc"), layout, m1, m2);
    oaBlock *top = newBlock("top");
    const oaParamArray three = paramsOf({oaParam("m", oaInt4(3))}), four = paramsOf({oaParam("m", oaInt4(4))});
    oaScalarInst::create(top, scalar(libName()), scalar("pc"), layout, scalar("P1"), oaTransform(0, 0), &three);
    oaScalarInst::create(top, scalar(libName()), scalar("pc"), layout, scalar("P2"), oaTransform(0, 0), &four);
    oaScalarInst::create(top, scalar(libName()), scalar("leaf"), layout, scalar("L"), oaTransform(0, 0));
    oaCustomVia::create(top, def, oaTransform(5, 5), &three);
    top->getDesign()->save();
    top->getDesign()->close();
    super->getDesign()->close();
    tech->save();
    tech->close();
  }

  void expectFound(const char *cell, std::initializer_list<Case> cases) const {
    const std::string good = bytesOf(file(cell));
    EXPECT_EQ(checkedFile(file(cell)).text(), "");
    for (const Case &c : cases) {
      SCOPED_TRACE(c.name);
      writeBytes(file(cell), good);
      kit::DatabasePlace place;
      place.label = cell;
      DesignDatabase design(place, cell, "layout");
      design.load(file(cell).string());
      c.damage(design);
      design.writeTo(file(cell).string());
      const Outcome outcome = checkedFile(file(cell));
      EXPECT_NE(outcome.damages, 0U);
      const std::string text = outcome.text();
      const std::size_t found = text.find(c.place);
      ASSERT_NE(found, std::string::npos) << text;
      EXPECT_NE(text.find(c.what, found), std::string::npos) << text;
    }
  }
};

TEST_F(PcellDamage, OfASuperMasterIsFoundAndNamed) {
  expectFound("pc", {{"no such row", [](DesignDatabase &d) { d.attributes.superMaster.set(0, 7); },
                      "column superMaster", "row 7"},
                     {"no evaluator", [](DesignDatabase &d) { d.superMasters.evaluator.set(0, kNoRow); },
                      "table superMasters, row 0, column evaluator", "is empty"},
                     {"text that is no parameters",
                      [](DesignDatabase &d) { d.superMasters.params.set(0, d.superMasters.evaluator[0]); },
                      "table superMasters, row 0, column params", "cannot be read"},
                     {"half of the parameters",
                      [](DesignDatabase &d) {
                        const std::string whole = d.strings().text(d.superMasters.params[0]);
                        d.superMasters.params.set(0, d.strings().add(whole.substr(0, whole.size() - 1)));
                      },
                      "table superMasters, row 0, column params", "cannot be read"},
                     {"type that is none",
                      [](DesignDatabase &d) {
                        std::string text = d.strings().text(d.superMasters.params[0]);
                        text[5] = '\x7f'; // behind the length of "m" and its one letter
                        d.superMasters.params.set(0, d.strings().add(text));
                      },
                      "table superMasters, row 0, column params", "cannot be read"}});
}

TEST_F(PcellDamage, OfPlacementsIsFoundAndNamed) {
  expectFound(
      "top",
      {{"instance on a super header", [](DesignDatabase &d) { d.insts.header.set(0, 0); },
        "table insts, row 0, column header", "is a super header"},
       {"sub header under no super header", [](DesignDatabase &d) { d.instHeaders.super.set(1, 3); },
        "table instHeaders, row 1, column super", "a super header of the same master"},
       {"sub header of a sub header", [](DesignDatabase &d) { d.instHeaders.super.set(2, 1); },
        "table instHeaders, row 2, column super", "a super header of the same master"},
       {"sub header of another master", [](DesignDatabase &d) { d.instHeaders.cell.set(1, d.instHeaders.cell[3]); },
        "table instHeaders, row 1, column super", "a super header of the same master"},
       {"super header that is none", [](DesignDatabase &d) { d.instHeaders.isSuper.set(0, 0); },
        "table instHeaders, row 1, column super", "a super header of the same master"},
       {"truth value", [](DesignDatabase &d) { d.instHeaders.isSuper.set(3, 2); },
        "table instHeaders, row 3, column isSuper", "2"},
       {"the same parameters twice", [](DesignDatabase &d) { d.instHeaders.params.set(2, d.instHeaders.params[1]); },
        "table instHeaders, row 2, column params", "the master and the parameters of row 1"},
       {"damaged parameters", [](DesignDatabase &d) { d.instHeaders.params.set(1, d.strings().add("nonsense")); },
        "table instHeaders, row 1, column params", "cannot be read"},
       {"via on a super header", [](DesignDatabase &d) { d.vias.header.set(0, 0); }, "table vias, row 0, column header",
        "places no vias"},
       {"custom super that is none", [](DesignDatabase &d) { d.viaHeaders.isCustomSuper.set(0, 0); },
        "table viaHeaders, row 1, column super", "a super header of the same kind"},
       {"custom super below another", [](DesignDatabase &d) { d.viaHeaders.isCustomSuper.set(1, 1); },
        "table viaHeaders, row 1, column isCustomSuper", "is 1"},
       {"damaged parameters of a via",
        [](DesignDatabase &d) { d.viaHeaders.customParams.set(1, d.strings().add("nonsense")); },
        "table viaHeaders, row 1, column customParams", "cannot be read"}});
}

} // namespace
