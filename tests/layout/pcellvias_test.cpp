// Custom vias whose master is a parametric cell.

#include "layouttest.h"
#include "testevaluator.h"
#include "viaparameters.h"

using namespace oa;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class PcellViasTest : public LayoutTest {
protected:
  // The custom definition "C", drawn by "boxes" in the parametric cell "drawn" with the parameters m and pitch.
  PcellViasTest() {
    tech = oaTech::create(scalar("lib"));
    oaPhysicalLayer *m1 = oaPhysicalLayer::create(tech, "m1", 31, oacMetalMaterial);
    oaPhysicalLayer *m2 = oaPhysicalLayer::create(tech, "m2", 32, oacMetalMaterial);
    definition = oaCustomViaDef::create(tech, "C", scalar("lib"), scalar("drawn"), scalar("layout"), m1, m2);
    tech->save();
    const CellBuilder drawn("lib", "drawn");
    boxes.define(drawn.design(), paramsOf({oaParam("m", oaInt4(2)), oaParam("pitch", oaDouble(0.1))}));
  }

  static oaParamArray justM(oaInt4 m) { return paramsOf({oaParam("m", m)}); }

  static void draw(oaDesign *design, const oaParamArray &params) {
    oaBlock *block = oaBlock::create(design);
    for (int i = 0; i < intValueOf(params, "m"); ++i) {
      oaRect::create(block, 31, 0, oaBox(10 * i, 0, 10 * i + 5, 5));
    }
  }

  void save(const QStringList &list, const QPoint &origin) {
    QStringList names;
    QStringList values;
    for (int i = 0; i + 1 < list.size(); i += 2) {
      names << list.at(i);
      values << list.at(i + 1);
    }
    plugIn.saveCellref("lib", "drawn", "layout", origin, "", "any", names, values, {}, {});
  }

  oaTech *tech;
  oaCustomViaDef *definition;
  TestEvaluator boxes{"boxes", draw};
};

TEST_F(PcellViasTest, EachVariantIsSentOnceWithItsParameters) {
  {
    const CellBuilder top("lib", "top");
    const oaParamArray three = justM(3);
    oaCustomVia::create(*top, definition, oaTransform(100, 0), &three);
    oaCustomVia::create(*top, definition, oaTransform(200, 0));
    oaCustomVia::create(*top, definition, oaTransform(300, 0, oacMX), &three);
  }
  const int before = boxes.evaluationCount();
  const Lines sent =
      read("top", Lines{"addCell", "addCellDataInt", "addCellData", "addBox", "addCellRef", "reportError"});
  EXPECT_EQ(boxes.evaluationCount(), before + 2);
  EXPECT_THAT(sent, ElementsAre("addCell \"top\"",                                                              //
                                StartsWith("addCell \"drawn~"), "addCellDataInt \"m\" 3",                       //
                                "addCellData \"oaType\" \"oaCustomVia\"", "addCellData \"oaViaDefName\" \"C\"", //
                                "addCellData \"m\" \"3\"", "addCellData \"layer1\" \"31\"",                     //
                                "addCellData \"layer2\" \"32\"",                                                //
                                "addBox 0 0 5 5 31 0", "addBox 10 0 5 5 31 0", "addBox 20 0 5 5 31 0",          //
                                AllOf(HasSubstr("(100 0)"), HasSubstr("\"\" \"C\"")),                           //
                                StartsWith("addCell \"drawn~"), "addCellDataInt \"m\" 2",                       //
                                "addCellData \"oaType\" \"oaCustomVia\"", "addCellData \"oaViaDefName\" \"C\"", //
                                "addCellData \"layer1\" \"31\"", "addCellData \"layer2\" \"32\"",               //
                                "addBox 0 0 5 5 31 0", "addBox 10 0 5 5 31 0",                                  //
                                HasSubstr("(200 0)"), AllOf(HasSubstr("(300 0)"), HasSubstr("\"M\" \"C\""))));
  const Lines references = recorder.lines({"addCellRef"});
  const auto cellOf = [](const std::string &line) { return line.substr(0, line.find('(')); };
  EXPECT_EQ(cellOf(references[0]), cellOf(references[2]));
  EXPECT_NE(cellOf(references[0]), cellOf(references[1]));
}

// What was given to the via and what it leaves to its master stay apart, since the host's name of the cell tells them
// apart.
TEST_F(PcellViasTest, WhatWasReadIsWrittenBack) {
  const oaParamArray given[] = {oaParamArray(), justM(2), paramsOf({oaParam("pitch", oaDouble(1.0 / 3))})};
  QList<QStringList> lists;
  {
    const CellBuilder top("lib", "top");
    for (const oaParamArray &params : given) {
      oaCustomVia::create(*top, definition, oaTransform(100 * lists.size(), 0), &params);
      lists << toCustomViaParameterList(params, "C", definition);
    }
  }
  beginLayout("copy");
  for (int i = 0; i < lists.size(); ++i) {
    save(lists.at(i), QPoint(100 * i, 0));
  }
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const Lines references = read("top", Lines{"addCellRef"});
  EXPECT_EQ(references.size(), 3u);
  EXPECT_EQ(read("copy", Lines{"addCellRef"}), references);
}

TEST_F(PcellViasTest, MissingEvaluatorLeavesTheReferences) {
  {
    const CellBuilder top("lib", "top");
    const oaParamArray three = justM(3);
    oaCustomVia::create(*top, definition, oaTransform(100, 0), &three);
  }
  boxes.unlink();
  EXPECT_THAT(read("top", Lines{"addBox", "reportError", "addCellRef"}),
              ElementsAre(HasSubstr("no layout data"), HasSubstr("'boxes'"), HasSubstr("(100 0)")));
}

} // namespace
