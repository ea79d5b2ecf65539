// Placements, their connections and properties.

#include "blocktext.h"

using namespace oa;
using blocktext::instsOf;
using blocktext::netsOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class PlacementsTest : public SchematicTest {
protected:
  PlacementsTest() { plugIn.saveSchematic("lib", "cell", "schematic"); }
};

TEST_F(PlacementsTest, MastersNeedNotExist) {
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(1, 2), "R90");
  plugIn.savePlacement("nolib", "nand2", "sym2", "I2", QPoint(-1, 0), "R270M");
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I3", QPoint(0, 0), "M", 0, 3);
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I4", QPoint(0, 0), "", 5, 2);
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  EXPECT_THAT(instsOf(*OpenView("cell")), ElementsAre("ScalarInst I1 of lib/inv/symbol at (1 2) orient 1",
                                                      "ScalarInst I2 of nolib/nand2/sym2 at (-1 0) orient 7",
                                                      "VectorInst I3[0:3] of lib/inv/symbol at (0 0) orient 6",
                                                      "VectorInst I4[5:2] of lib/inv/symbol at (0 0) orient 0"));
}

TEST_F(PlacementsTest, NonOrthogonalPlacementIsToldAndMadeUnrotated) {
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "R45");
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I2", QPoint(0, 0), "R30M", 0, 1);
  plugIn.saveClose();
  EXPECT_THAT(reports(),
              ElementsAre("reportError \"non orthogonal placing are not supported in OpenAccess\" 1 \"R45\"",
                          "reportError \"non orthogonal placing are not supported in OpenAccess\" 1 \"R30M\""));
  EXPECT_THAT(instsOf(*OpenView("cell")), ElementsAre("ScalarInst I1 of lib/inv/symbol at (0 0) orient 0",
                                                      "VectorInst I2[0:1] of lib/inv/symbol at (0 0) orient 0"));
}

TEST_F(PlacementsTest, FieldsNameTheLastPlacement) {
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  EXPECT_EQ(plugIn.propertyTarget, plugIn.currentScalarInst);
  EXPECT_EQ(plugIn.currentVectorInst, nullptr);
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I2", QPoint(0, 0), "", 0, 1);
  EXPECT_EQ(plugIn.propertyTarget, plugIn.currentVectorInst);
  EXPECT_NE(plugIn.propertyTarget, nullptr);
  EXPECT_EQ(plugIn.currentScalarInst, nullptr);
  plugIn.saveClose();
}

TEST_F(PlacementsTest, EachKindOfPropertyReadsBack) {
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  plugIn.saveStringProp("model", "n ch");
  plugIn.saveIntProp("m", -3);
  plugIn.saveDoubleProp("w", 0.25);
  plugIn.saveBoolProp("dummy", true);
  plugIn.savePointProp("labelOffset", QPoint(7, -8));
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I2", QPoint(0, 0), "", 0, 1);
  plugIn.saveIntProp("m", 4);
  plugIn.savePropString("title", "a title");
  plugIn.savePropInt("version", 12);
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView open("cell");
  EXPECT_THAT(instsOf(*open),
              ElementsAre("ScalarInst I1 of lib/inv/symbol at (0 0) orient 0 {model=n ch, m=-3, w=0.25, dummy=true, "
                          "labelOffset=7 -8}",
                          "VectorInst I2[0:1] of lib/inv/symbol at (0 0) orient 0 {m=4}"));
  EXPECT_EQ(blocktext::propsText(open.operator->()), " {title=a title, version=12}");
  const char *types[] = {"StringProp", "IntProp", "DoubleProp", "BooleanProp", "StringProp"};
  oaIter<oaProp> props(oaInst::find(*open, oaSimpleName(scalar("I1")))->getProps());
  for (const char *type : types) {
    EXPECT_EQ(blocktext::typeOf(props.getNext()), type);
  }
}

TEST_F(PlacementsTest, SecondPropertyOfANameIsRefused) {
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  plugIn.saveStringProp("m", "first");
  EXPECT_THAT(printedBy([&] { plugIn.saveIntProp("m", 2); }), testing::MatchesRegex("ERROR \\(saveIntProp\\): .+ \n"));
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("saveIntProp: m of I1")));
  plugIn.saveClose();
  EXPECT_THAT(instsOf(*OpenView("cell")), ElementsAre("ScalarInst I1 of lib/inv/symbol at (0 0) orient 0 {m=first}"));
}

TEST_F(PlacementsTest, PropertyWithoutAPlacementIsTold) {
  const struct {
    const char *label;
    void (*save)(oaPlugInMain &);
  } cases[] = {
      {"saveStringProp", [](oaPlugInMain &p) { p.saveStringProp("m", "1"); }},
      {"saveIntProp", [](oaPlugInMain &p) { p.saveIntProp("m", 1); }},
      {"saveDoubleProp", [](oaPlugInMain &p) { p.saveDoubleProp("m", 1); }},
      {"saveBoolProp", [](oaPlugInMain &p) { p.saveBoolProp("m", true); }},
      {"savePointProp", [](oaPlugInMain &p) { p.savePointProp("m", QPoint(1, 1)); }},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.label);
    recorder.clear();
    c.save(plugIn);
    EXPECT_THAT(reports(),
                ElementsAre("reportError \"no placement for the property\" 1 \"" + std::string(c.label) + ": m\""));
  }
  recorder.clear();
  plugIn.saveNet(1, "A", 0);
  plugIn.savePlacementConnection(1, "A");
  plugIn.saveVectorPlacementConnection("A", "B");
  plugIn.saveVectorPlacementConnection("A,B", "C,D");
  EXPECT_THAT(reports(), IsEmpty());
  plugIn.saveClose();
  EXPECT_THAT(netsOf(*OpenView("cell")), ElementsAre("ScalarNet A"));
}

// Otherwise its properties and connections would land on the placement before.
TEST_F(PlacementsTest, RefusedPlacementIsTheLastOneAllTheSame) {
  plugIn.saveNet(1, "A", 0);
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  for (const char *name : {"I1", "a/b"}) {
    SCOPED_TRACE(name);
    recorder.clear();
    EXPECT_THAT(printedBy([&] { plugIn.savePlacement("lib", "inv", "symbol", name, QPoint(0, 0), ""); }),
                testing::MatchesRegex("ERROR \\(savePlacement\\): .+ \n"));
    plugIn.saveIntProp("m", 1);
    plugIn.savePlacementConnection(1, "A");
    EXPECT_THAT(reports(), ElementsAre(HasSubstr(name), HasSubstr("no placement")));
  }
  plugIn.savePlacement("lib", "inv", "symbol", "I2", QPoint(0, 0), "");
  plugIn.savePlacementConnection(1, "A");
  plugIn.saveClose();
  EXPECT_THAT(instsOf(*OpenView("cell")), ElementsAre("ScalarInst I1 of lib/inv/symbol at (0 0) orient 0",
                                                      "ScalarInst I2 of lib/inv/symbol at (0 0) orient 0, A -> A"));
}

TEST_F(PlacementsTest, PlacementOfTheDesignBeforeIsForgotten) {
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  plugIn.saveClose();
  plugIn.saveSymbol("lib", "cell", "symbol");
  plugIn.saveIntProp("m", 1);
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("no placement")));
  plugIn.saveClose();
}

TEST_F(PlacementsTest, ConnectionsByNetNumber) {
  plugIn.saveNet(1, "A", 0);
  plugIn.saveNet(2, "D<3>", 0);
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  plugIn.savePlacementConnection(1, "in");
  plugIn.savePlacementConnection(2, "out");
  plugIn.savePlacementConnection(9, "unknown");
  EXPECT_THAT(reports(), IsEmpty());
  // The terminal is connected already; one bit of net does not do for four instances.
  EXPECT_THAT(printedBy([&] { plugIn.savePlacementConnection(2, "in"); }),
              testing::MatchesRegex("ERROR \\(savePlacementConnection\\): .+ \n"));
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I2", QPoint(0, 0), "", 0, 3);
  EXPECT_THAT(printedBy([&] { plugIn.savePlacementConnection(1, "in"); }),
              testing::MatchesRegex("ERROR \\(savePlacementConnection\\): .+ \n"));
  plugIn.saveClose();
  EXPECT_THAT(instsOf(*OpenView("cell")),
              ElementsAre("ScalarInst I1 of lib/inv/symbol at (0 0) orient 0, in -> A, out -> D[3]",
                          "VectorInst I2[0:3] of lib/inv/symbol at (0 0) orient 0"));
}

TEST_F(PlacementsTest, VectorConnectionsByNameNeedNoMaster) {
  plugIn.saveVectorPlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "", 0, 3);
  plugIn.saveVectorPlacementConnection("in", "D<0:3>");
  // A terminal's bit is a name like any other here.
  plugIn.saveVectorPlacementConnection("A<3>", "D<0:3>");
  plugIn.saveVectorPlacementConnection("en", "4*EN");
  EXPECT_THAT(reports(), IsEmpty());
  EXPECT_THAT(printedBy([&] { plugIn.saveVectorPlacementConnection("out", "D<0:1>"); }),
              testing::MatchesRegex("ERROR \\(saveVectorPlacementConnection\\): .+ \n"));
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(instsOf(*open), ElementsAre("VectorInst I1[0:3] of lib/inv/symbol at (0 0) orient 0, in -> D[0:3], "
                                          "A<3> -> D[0:3], en -> 4*EN"));
  EXPECT_THAT(netsOf(*open), ElementsAre("BundleNet D[0:3]", "BundleNet 4*EN", "BundleNet D[0:1]"));
}

TEST_F(PlacementsTest, BundlesOfTerminalsAreLookedUpInTheMaster) {
  plugIn.saveSymbol("lib", "reg", "symbol");
  plugIn.saveBusport("A<0:3>", QPoint(0, 0), false, "input", "");
  plugIn.saveBusport("B,C", QPoint(0, 0), false, "input", "");
  plugIn.saveClose();
  plugIn.saveSchematic("lib", "cell", "schematic");
  recorder.clear();
  plugIn.savePlacement("lib", "reg", "symbol", "I1", QPoint(0, 0), "");
  plugIn.saveVectorPlacementConnection("A<0:3>", "D<3:0>");
  plugIn.saveVectorPlacementConnection(" B,C", "X,Y");
  plugIn.saveVectorPlacement("lib", "reg", "symbol", "I2", QPoint(0, 0), "", 0, 1);
  plugIn.saveVectorPlacementConnection("A<0:3>", "D<0:7>");
  EXPECT_THAT(reports(), IsEmpty());
  // No such terminal, and no master.
  plugIn.saveVectorPlacementConnection("2*A", "X,Y");
  plugIn.savePlacement("lib", "none", "symbol", "I3", QPoint(0, 0), "");
  plugIn.saveVectorPlacementConnection("A,B", "X,Y");
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("terminal 2*A"), HasSubstr("terminal A,B")));
  plugIn.saveClose();
  EXPECT_THAT(instsOf(*OpenView("cell")),
              ElementsAre("ScalarInst I1 of lib/reg/symbol at (0 0) orient 0, A[0:3] -> D[3:0], B,C -> X,Y",
                          "VectorInst I2[0:1] of lib/reg/symbol at (0 0) orient 0, A[0:3] -> D[0:7]",
                          "ScalarInst I3 of lib/none/symbol at (0 0) orient 0"));
}

} // namespace
