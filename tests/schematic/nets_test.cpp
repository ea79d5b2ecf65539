// Beginning a schematic or symbol, nets, and what is drawn for them.

#include "blocktext.h"

using namespace oa;
using blocktext::netsOf;
using blocktext::shapesOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class NetsTest : public SchematicTest {};

const QPolygon kLine = QPolygon() << QPoint(0, 0) << QPoint(10, 0);

std::string viewTypeOf(const std::string &cell, const std::string &view) {
  const OpenView open(cell, view);
  oaString name;
  open->getViewType()->getName(name);
  return static_cast<const oaChar *>(name);
}

TEST_F(NetsTest, ViewTypeFollowsOperationAndViewName) {
  const struct {
    const char *name;
    void (oaPlugInMain::*begin)(QString, QString, QString);
    const char *view;
    const char *type;
  } cases[] = {
      {"schematic", &oaPlugInMain::saveSchematic, "schematic", "schematic"},
      {"schematic called symbol", &oaPlugInMain::saveSchematic, "Symbol", "schematicSymbol"},
      {"symbol", &oaPlugInMain::saveSymbol, "symbol", "schematicSymbol"},
      {"symbol called otherwise", &oaPlugInMain::saveSymbol, "sym2", "schematicSymbol"},
      // A design that exists keeps its type, whatever is written into it.
      {"symbol over a schematic", &oaPlugInMain::saveSymbol, "schematic", "schematic"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    (plugIn.*c.begin)("lib", "cell", c.view);
    plugIn.saveClose();
    EXPECT_EQ(viewTypeOf("cell", c.view), c.type);
  }
  EXPECT_THAT(reports(), IsEmpty());
}

TEST_F(NetsTest, WritingAgainReplacesTheContents) {
  for (const auto begin : {&oaPlugInMain::saveSchematic, &oaPlugInMain::saveSymbol}) {
    plugIn.saveSchematic("lib", "cell", "schematic");
    plugIn.saveNet(1, "OLD", 1);
    plugIn.savePort(1, QPoint(0, 0), false, "input", "");
    plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
    plugIn.saveClose();
    (plugIn.*begin)("lib", "cell", "schematic");
    plugIn.saveNet(2, "NEW", 0);
    plugIn.saveClose();
    const OpenView open("cell");
    EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet NEW"));
    EXPECT_THAT(shapesOf(*open), IsEmpty());
    EXPECT_THAT(blocktext::instsOf(*open), IsEmpty());
  }
}

TEST_F(NetsTest, RefusedSchematicReachesTheCaller) {
  EXPECT_THROW(plugIn.saveSchematic("nolib", "cell", "schematic"), oaException);
  // Nothing is open then, and the operations say so.
  plugIn.saveNet(1, "A", 0);
  EXPECT_THAT(reports(), ElementsAre("reportError \"no design is open for writing\" 1 \"saveNet\""));
}

TEST_F(NetsTest, RefusedSymbolIsPrinted) {
  EXPECT_THAT(printedBy([&] { plugIn.saveSymbol("nolib", "cell", "symbol"); }),
              testing::MatchesRegex("OpenAccess Exception: .+\n"));
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("saveSymbol: nolib/cell/symbol")));
}

TEST_F(NetsTest, EachKindOfNetHasWhatBelongsToIt) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "PLAIN", 0);
  plugIn.saveNet(2, "PORT", 1);
  plugIn.saveNet(3, "VDD", 2);
  plugIn.saveNet(4, "OTHER", 3);
  plugIn.saveNet(7, "D<3>", 1);
  plugIn.saveNet(8, "D<4>_b", 2);
  plugIn.saveNet(9, "A>1<", 0);
  plugIn.saveNet(10, "X<y>", 0);
  EXPECT_THAT(reports(), IsEmpty());
  EXPECT_EQ(plugIn.netsByNumber.size(), 8);
  EXPECT_THAT(plugIn.termsByNumber.keys(), UnorderedElementsAre(2, 3, 7, 8));
  EXPECT_THAT(plugIn.pinsByNumber.keys(), UnorderedElementsAre(2, 3, 7, 8));
  EXPECT_EQ(plugIn.pinsByNumber.value(7)->getTerm(), plugIn.termsByNumber.value(7));
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open),
              ElementsAre("ScalarNet PLAIN", "ScalarNet PORT, term PORT 2, pins 1",
                          "ScalarNet VDD global, term VDD 2, pins 1", "ScalarNet OTHER",
                          "BusNetBit D[3], term D[3] 2, pins 1", "BusNetBit D_b[4] global, term D_b[4] 2, pins 1",
                          "ScalarNet A>1<", "BusNetBit X[0]"));
}

TEST_F(NetsTest, RefusedNetIsPrintedAndTheRestGoesOn) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "A", 0);
  oaNet *first = plugIn.netsByNumber.value(1);
  const char *refused[] = {"A", "a/b", "A<0>", "<3>", ""};
  for (const char *name : refused) {
    SCOPED_TRACE(name);
    recorder.clear();
    EXPECT_THAT(printedBy([&] { plugIn.saveNet(1, name, 0); }), testing::MatchesRegex("ERROR \\(saveNet\\): .+ \n"));
    EXPECT_THAT(reports(), ElementsAre(HasSubstr(std::string("saveNet: net 1, ") + name)));
  }
  EXPECT_EQ(plugIn.netsByNumber.value(1), first);
  plugIn.saveNet(1, "B", 0);
  plugIn.saveWire(kLine, 1);
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet A", "ScalarNet B"));
  EXPECT_THAT(shapesOf(*open), ElementsAre("Line 228/-1 (0 0) (10 0) net B"));
}

TEST_F(NetsTest, NumberUsedAgainStandsForTheNewNetAlone) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "A", 1);
  plugIn.saveNet(1, "B", 0);
  plugIn.savePort(1, QPoint(0, 0), false, "input", "");
  plugIn.saveClose();
  const OpenView open("cell");
  oaIter<oaPin> pins((*open)->getPins());
  EXPECT_TRUE(pins.getNext()->getFigs().isEmpty()) << "the port does not go to A";
}

TEST_F(NetsTest, WiresAndDotsJoinTheirNet) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "A", 0);
  plugIn.saveNet(-1, "B", 0);
  plugIn.saveNet(3, "D<3>", 0);
  plugIn.saveWire(kLine, 1);
  plugIn.saveWire(kLine, 2);
  plugIn.saveWire(kLine, 3);
  plugIn.saveWire(kLine, -1);
  plugIn.saveWireDot(QPoint(10, 0), 1);
  plugIn.saveWireDot(QPoint(10, 0), 2);
  // A dot's negative number never stands for a net.
  plugIn.saveWireDot(QPoint(-10, 3), -1);
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView open("cell");
  EXPECT_THAT(shapesOf(*open), ElementsAre("Line 228/-1 (0 0) (10 0) net A", "Line 228/-1 (0 0) (10 0)",
                                           "Line 228/-1 (0 0) (10 0) net D[3]", "Line 228/-1 (0 0) (10 0) net B",
                                           "Ellipse 228/-1 (5 -5) (15 5) net A", "Ellipse 228/-1 (5 -5) (15 5)",
                                           "Ellipse 228/-1 (-15 -2) (-5 8)"));
}

TEST_F(NetsTest, RefusedWireLosesNothingElse) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "A", 0);
  EXPECT_THAT(printedBy([&] { plugIn.saveWire(QPolygon() << QPoint(0, 0), 1); }),
              testing::MatchesRegex("ERROR \\(saveWire\\): .+ \n"));
  plugIn.saveWire(kLine, 1);
  plugIn.saveClose();
  EXPECT_THAT(shapesOf(*OpenView("cell")), ElementsAre("Line 228/-1 (0 0) (10 0) net A"));
}

TEST_F(NetsTest, BusesOfOneNameShareABundleNet) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "A", 0);
  plugIn.saveNet(2, "D<3>", 0);
  plugIn.saveBus(kLine, "A,D<3:0>");
  plugIn.saveBus(kLine, " A , D<3:0>");
  plugIn.saveBus(kLine, "D<0:7>");
  plugIn.saveBus(kLine, "");
  plugIn.saveBus(QPolygon() << QPoint(0, 0), "IGNORED");
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet A", "BusNetBit D[3]", "BundleNet A,D[3:0]", "BundleNet D[0:7]"));
  EXPECT_THAT(shapesOf(*open),
              ElementsAre("Line 228/-1 (0 0) (10 0) net A,D[3:0]", "Line 228/-1 (0 0) (10 0) net A,D[3:0]",
                          "Line 228/-1 (0 0) (10 0) net D[0:7]", "Line 228/-1 (0 0) (10 0) {bus=true}"));
}

TEST_F(NetsTest, RefusedBusIsPrintedAndTheRestGoesOn) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(1, "A", 0);
  // No member, an empty member, a bus whose base is a net already.
  for (const char *name : {",,", "3*", "A<0:3>"}) {
    SCOPED_TRACE(name);
    EXPECT_THAT(printedBy([&] { plugIn.saveBus(kLine, name); }), testing::MatchesRegex("ERROR \\(saveBus\\): .+ \n"));
  }
  plugIn.saveBus(kLine, "B<0:3>");
  plugIn.saveClose();
  EXPECT_THAT(shapesOf(*OpenView("cell")), ElementsAre("Line 228/-1 (0 0) (10 0) net B[0:3]"));
}

// It could be written, but no name space could ever read it.
TEST_F(NetsTest, NameThatIsTooLongIsRefused) {
  QStringList members;
  for (int i = 0; i < 2000; ++i) {
    members.append(QString::fromLatin1("N%1").arg(i));
  }
  plugIn.saveSchematic("lib", "cell", "schematic");
  recorder.clear();
  printedBy([&] { plugIn.saveBus(kLine, members.join(",")); });
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("at most 8024")));
  plugIn.saveClose();
}

TEST_F(NetsTest, WireLabelKeepsItsOffset) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveWireLabel("net 1", QPoint(3, 4), QPoint(-5, 6));
  plugIn.saveClose();
  EXPECT_THAT(
      shapesOf(*OpenView("cell")),
      ElementsAre("Text 228/-6 \"net 1\" (3 4) align 2 orient 0 font 5 height 12 visible drafting {labelOffset=-5 6}"));
}

// A symbol keeps the numbers of the schematic before it, whose nets are gone by then.
TEST_F(NetsTest, NumbersOutliveASymbolButNotASchematic) {
  plugIn.saveSchematic("lib", "cell", "schematic");
  plugIn.saveNet(7, "A", 1);
  plugIn.saveClose();
  plugIn.saveSymbol("lib", "cell", "symbol");
  EXPECT_TRUE(plugIn.netsByNumber.contains(7));
  EXPECT_TRUE(plugIn.termsByNumber.contains(7));
  EXPECT_TRUE(plugIn.pinsByNumber.contains(7));
  plugIn.saveWire(kLine, 7);
  plugIn.saveWireDot(QPoint(0, 0), 7);
  plugIn.savePort(7, QPoint(0, 0), false, "input", "");
  plugIn.saveGround(7, QPoint(0, 0));
  plugIn.savePlacement("lib", "inv", "symbol", "I1", QPoint(0, 0), "");
  plugIn.savePlacementConnection(7, "A");
  EXPECT_THAT(reports(), testing::Each(HasSubstr("not part of this design")));
  EXPECT_EQ(reports().size(), 6u);
  plugIn.saveClose();
  EXPECT_THAT(shapesOf(*OpenView("cell", "symbol")),
              ElementsAre("Line 228/-1 (0 0) (10 0)", "Ellipse 228/-1 (-5 -5) (5 5)",
                          "Rect 229/-6 (-8 -8) (8 8) {type=input}", "Dot 229/-6 (0 0) (0 0)"));

  plugIn.saveSchematic("lib", "cell", "schematic");
  EXPECT_TRUE(plugIn.netsByNumber.isEmpty());
  EXPECT_TRUE(plugIn.termsByNumber.isEmpty());
  EXPECT_TRUE(plugIn.pinsByNumber.isEmpty());
  plugIn.saveClose();
}

TEST_F(NetsTest, DesignLeftOpenIsDroppedWithANotice) {
  plugIn.saveSchematic("lib", "left", "schematic");
  plugIn.saveNet(7, "A", 0);
  plugIn.saveSymbol("lib", "cell", "symbol");
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("left open")));
  EXPECT_TRUE(plugIn.netsByNumber.contains(7));
  plugIn.saveClose();
}

} // namespace
