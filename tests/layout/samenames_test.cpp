// Cells that the host cannot tell apart, because their names for it are the same.

#include "layouttest.h"
#include "testevaluator.h"

using namespace oa;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class SameNamesTest : public LayoutTest {
protected:
  static void draw(oaDesign *design, const oaParamArray &params) {
    oaParam w;
    params.find("w", w);
    oaRect::create(oaBlock::create(design), 4, 0, oaBox(0, 0, oaCoord(w.getDoubleVal() * 1e8), 5));
  }

  static void place(const CellBuilder &top, const char *name, double w) {
    const oaParamArray params = paramsOf({oaParam("w", oaDouble(w))});
    oaScalarInst::create(*top, scalar("lib"), scalar("pc"), scalar("layout"), scalar(name), oaTransform(), &params);
  }

  TestEvaluator boxes{"boxes", draw};
};

const char kMessage[] = "reportError \"different cells have the same name, the first is shown for all\" 2 ";

TEST_F(SameNamesTest, VariantsWithCloseValuesAreToldOnce) {
  boxes.define(CellBuilder(std::string("lib"), "pc").design(), paramsOf({oaParam("w", oaDouble(1))}));
  {
    CellBuilder mid("lib", "mid");
    place(mid, "I1", 1.2500002);
  }
  {
    CellBuilder top("lib", "top");
    place(top, "I1", 1.25);
    place(top, "I2", 1.2500001);
    place(top, "I3", 1.2500001);
    place(top, "I4", 1.3);
    top.inst("M", "mid");
  }
  const Lines sent = read("top", Lines{"addBox", "reportError"});
  EXPECT_THAT(sent, ElementsAre("addBox 0 0 125000000 5 4 0",
                                testing::AllOf(testing::StartsWith(kMessage), HasSubstr("pc~"),
                                               HasSubstr("is the name of several variants of lib/pc/layout")),
                                "addBox 0 0 130000000 5 4 0"));
}

TEST_F(SameNamesTest, CellsAndViewsThatMakeTheSameNameAreTold) {
  { CellBuilder(std::string("lib"), "a", "b_c").rect(1, 0, 0, 0, 1, 1); }
  { CellBuilder(std::string("lib"), "a_b", "c").rect(1, 0, 0, 0, 2, 2); }
  {
    CellBuilder top("lib", "top");
    top.inst("I1", "a", 0, 0, oacR0, "lib", "b_c");
    top.inst("I2", "a_b", 0, 0, oacR0, "lib", "c");
  }
  EXPECT_THAT(read("top", Lines{"reportError"}),
              ElementsAre(kMessage + std::string("\"a_b_c is the name of lib/a/b_c and of lib/a_b/c\"")));
  // The cell that is read has a name, too.
  { CellBuilder(std::string("lib"), "top", "b").inst("I", "top_b"); }
  { CellBuilder(std::string("lib"), "top_b").rect(1, 0, 0, 0, 1, 1); }
  EXPECT_THAT(Lines(read("top", "b")).back(), "setCurrentCell \"top_b\"");
  EXPECT_THAT(recorder.lines({"reportError"}), ElementsAre(HasSubstr("lib/top/b and of lib/top_b/layout")));
}

TEST_F(SameNamesTest, ViasThatDifferInTheirCutsAreTold) {
  oaTech *tech = oaTech::create(scalar("lib"));
  oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "m1", 31, oacMetalMaterial);
  oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "m2", 32, oacMetalMaterial);
  oaViaParam params;
  params.setCutLayer(30);
  params.setCutWidth(10);
  params.setCutHeight(10);
  oaStdViaDef *viaDef = oaStdViaDef::create(tech, "V", m1, m2, params);
  tech->save();
  oaViaParam full;
  full.setCutRows(3);
  full.setCutColumns(3);
  full.setCutSpacing(oaVector(10, 10));
  oaViaParam gap = full;
  gap.setCutPatternVal(1, 1, false);
  oaViaParam end = full;
  end.setCutPatternVal(2, 2, false);
  const struct {
    const char *name;
    const oaViaParam *first, *second;
    size_t cuts, reports;
  } cases[] = {
      {"a gap and none", &gap, &full, 8, 1},
      {"none and a gap", &full, &gap, 9, 1},
      {"other gaps", &gap, &end, 8, 1},
      {"the same gap", &gap, &gap, 8, 0},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    {
      const CellBuilder top("lib", std::string("top") + std::to_string(&c - cases));
      oaStdVia::create(*top, viaDef, oaTransform(0, 0), c.first);
      oaStdVia::create(*top, viaDef, oaTransform(100, 0), c.second);
      oaStdVia::create(*top, viaDef, oaTransform(200, 0), c.second);
    }
    SignalRecorder fresh(&plugIn); // holds no cells yet
    read("top" + std::to_string(&c - cases));
    const Lines reports = fresh.lines({"reportError"});
    EXPECT_EQ(reports.size(), c.reports);
    EXPECT_EQ(fresh.lines({"addBox"}).size(), c.cuts + 2);
    EXPECT_EQ(fresh.lines({"addCellRef"}).size(), 3u);
  }
}

} // namespace
