// Parametric symbols: read and loaded as they are with their default parameters.

#include "oaplugincore.h"
#include "schematiclayers.h"
#include "schematictest.h"
#include "testevaluator.h"

using namespace oa;
using namespace schematiclayers;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ParametricSymbolTest : public SchematicTest {
protected:
  ~ParametricSymbolTest() override {
    if (oaLibDMData::exists(scalar("lib"))) {
      oaLibDMData::destroy(scalar("lib"));
    }
  }
  // A parametric symbol, whose own contents never show.
  void createSymbol(const oaParamArray &defaults, const char *view = "symbol") {
    const SchematicBuilder symbol("res", view, SchematicBuilder::symbol);
    oaRect::create(*symbol, kDevice, kDrawn, oaBox(0, 0, 1, 1));
    evaluator.define(symbol.design(), defaults);
  }

  // One line for each of m.
  TestEvaluator evaluator{"lines", [](oaDesign *design, const oaParamArray &params) {
                            oaBlock *block = oaBlock::create(design);
                            for (int i = 0; i < intValueOf(params, "m"); ++i) {
                              const oaPoint points[] = {oaPoint(0, i), oaPoint(10, i)};
                              oaLine::create(block, kDevice, kDrawn, oaPointArray(points, 2));
                            }
                          }};
};

TEST_F(ParametricSymbolTest, IsReadWithItsDefaultsAndANotice) {
  createSymbol(paramsOf({oaParam("m", oaInt4(2)), oaParam("r", oaDouble(1.5e3)), booleanParam("on", false)}));
  EXPECT_THAT(read("res", "symbol"),
              ElementsAre("reportError \"Parametric symbol, open with default parameter\" 2 \"\"",
                          "addCellNumData 1 \"lib\"", "addCellNumData 3 \"res\"", "addCellNumData 4 \"symbol\"",
                          "addCellDataInt \"m\" 2", "addCellDataFloat \"r\" 1500", "addCellData \"on\" \"false\"",
                          "addPolyline [(0 0) (10 0)] \"deviceColor\"", "addPolyline [(0 1) (10 1)] \"deviceColor\""));
}

TEST_F(ParametricSymbolTest, WithoutItsEvaluatorThereIsNoData) {
  createSymbol(paramsOf({oaParam("m", oaInt4(2))}));
  evaluator.unlink();
  QString thrown;
  try {
    read("res", "symbol");
  } catch (const QString &text) {
    thrown = text;
  }
  EXPECT_EQ(thrown, "no data");
  EXPECT_EQ(oaDesign::find(scalar("lib"), scalar("res"), scalar("symbol")), nullptr) << "left open";
}

// As a component it comes with the text of its parameters, the last one first.
TEST_F(ParametricSymbolTest, ComponentComesWithItsParameterText) {
  createSymbol(paramsOf({oaParam("m", oaInt4(1)), oaParam("r", oaDouble(1.5e-6)), oaParam("f", oaFloat(0.25f)),
                         oaParam("model name", oaString("a b<c>\"d'e\nf&g")), oaParam("none", oaString("")),
                         booleanParam("on", true), booleanParam("off", false)}));
  recorder.clear();
  plugIn.loadComponent("lib", "res");
  EXPECT_THAT(recorder.lines({"compData"}),
              ElementsAre("compData \"<list off false true >\\n<list on true false >\\n<string none &nbsp; >\\n"
                          "<string model&sp;name a&sp;b&lt;c&gt;&quote;d&rsquo;e&newline;f&g >\\n"
                          "<double f 0.25 >\\n<double r 1.5e-06 >\\n<int m 1 >\\n\" 0"));
  EXPECT_EQ(recorder.lines({"compPolyline"}).size(), 1u);
}

// The netlist of a schematic needs the terminals of the variant that is placed.
TEST_F(ParametricSymbolTest, VariantsAreNetlistedWithTheirOwnTerminals) {
  TestEvaluator terminals("terminals", [](oaDesign *design, const oaParamArray &params) {
    oaBlock *block = oaBlock::create(design);
    for (int i = 0; i < intValueOf(params, "m"); ++i) {
      const oaName name(scalar("T" + std::to_string(i)));
      oaTerm::create(oaNet::create(block, name), name);
    }
  });
  {
    const SchematicBuilder symbol("res", "symbol", SchematicBuilder::symbol);
    terminals.define(symbol.design(), paramsOf({oaParam("m", oaInt4(2))}));
  }
  {
    const SchematicBuilder schematic("top", "schematic", SchematicBuilder::schematic);
    for (int m : {1, 3}) {
      const oaParamArray params = paramsOf({oaParam("m", oaInt4(m))});
      oaScalarInst::create(*schematic, scalar("lib"), scalar("res"), scalar("symbol"), scalar("R" + std::to_string(m)),
                           oaTransform(), &params);
    }
  }
  recorder.clear();
  plugIn.loadNetlist("lib", "top", "schematic");
  EXPECT_THAT(recorder.lines({"netlistAddDevice"}),
              ElementsAre(StartsWith("netlistAddDevice \"R1\" \"res\" [\"T0\"]"),
                          StartsWith("netlistAddDevice \"R3\" \"res\" [\"T0\" \"T1\" \"T2\"]")));
  EXPECT_THAT(read("top").size(), testing::Ge(4u));
  EXPECT_THAT(recorder.lines({"addPlacement"}), ElementsAre(HasSubstr("\"res\" \"lib.oa\""), HasSubstr("\"res\"")));
}

} // namespace
