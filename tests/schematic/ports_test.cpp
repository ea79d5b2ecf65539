// Ports and ground symbols.

#include <climits>

#include "blocktext.h"

using namespace oa;
using blocktext::netsOf;
using blocktext::shapesOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class PortsTest : public SchematicTest {
protected:
  PortsTest() { plugIn.saveSchematic("lib", "cell", "schematic"); }
};

const struct {
  const char *type;
  const char *termType;
} kDirections[] = {
    {"input output", "2"}, {"output", "1"},     {"input", "0"}, {"", "2"},
    {"inputOutput", "0"},  {"an output!", "1"}, {"INPUT", "2"}, {"power", "2"},
};

TEST_F(PortsTest, DirectionFollowsTheTypeText) {
  Lines nets, shapes;
  for (const auto &direction : kDirections) {
    const std::string name = "P" + std::to_string(nets.size());
    const std::string type(direction.type);
    plugIn.savePort(QString::fromStdString(name), QPoint(100, 0), false, direction.type);
    nets.push_back("ScalarNet " + name + ", term " + name + " " + direction.termType + ", pins 1");
    shapes.push_back("Rect 229/-6 (92 -8) (108 8) pin of " + name + (type.empty() ? "" : " {type=" + type + "}"));
  }
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView open("cell");
  EXPECT_EQ(netsOf(*open), nets);
  EXPECT_EQ(shapesOf(*open), shapes);
}

TEST_F(PortsTest, NumberedPortTakesTheTerminalOfItsNet) {
  plugIn.saveNet(1, "A", 1);
  plugIn.saveNet(2, "D<3>", 1);
  plugIn.saveNet(3, "B", 0);
  plugIn.saveNet(4, "VDD", 2);
  plugIn.saveNet(5, "GND", 0);
  plugIn.savePort(1, QPoint(0, 0), false, "input", "ipin");
  plugIn.savePort(2, QPoint(0, 0), false, "output", "");
  // A net without a terminal, and a number without a net: the box stands alone.
  plugIn.savePort(3, QPoint(0, 0), false, "input", "");
  plugIn.savePort(9, QPoint(0, 0), false, "input", "");
  plugIn.savePort(9, QPoint(0, 0), true, "input", "");
  // A global port is a figure of its net; the terminal keeps its type.
  plugIn.savePort(4, QPoint(0, 0), true, "input", "");
  plugIn.savePort(5, QPoint(0, 0), true, "", "");
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open),
              ElementsAre("ScalarNet A, term A 0, pins 1", "BusNetBit D[3], term D[3] 1, pins 1", "ScalarNet B",
                          "ScalarNet VDD global, term VDD 2, pins 1", "ScalarNet GND global"));
  EXPECT_THAT(shapesOf(*open),
              ElementsAre("Rect 229/-6 (-8 -8) (8 8) pin of A {type=input, symbol=ipin}",
                          "Rect 229/-6 (-8 -8) (8 8) pin of D[3] {type=output}",
                          "Rect 229/-6 (-8 -8) (8 8) {type=input}", "Rect 229/-6 (-8 -8) (8 8) {type=input}",
                          "Rect 229/-6 (-8 -8) (8 8) {type=input}", "Rect 229/-6 (-8 -8) (8 8) net VDD {type=input}",
                          "Rect 229/-6 (-8 -8) (8 8) net GND"));
}

TEST_F(PortsTest, GlobalPortsByName) {
  plugIn.savePort("VDD", QPoint(0, 0), true, "input");
  plugIn.saveGlobalPort("VSS");
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet VDD global, term VDD 0, pins 1", "ScalarNet VSS global"));
  EXPECT_THAT(shapesOf(*open), ElementsAre("Rect 229/-6 (-8 -8) (8 8) pin of VDD {type=input}"));
}

TEST_F(PortsTest, DrawnPortsHaveTheirFigureInThePin) {
  plugIn.savePortRect(0, 10, 20, 0, "P");
  plugIn.savePortPolygon(QPolygon() << QPoint(0, 0) << QPoint(5, 0) << QPoint(9, 0) << QPoint(0, 7), "Q");
  // Corners in the order of saveRect() make an inverted box here.
  EXPECT_THAT(printedBy([&] { plugIn.savePortRect(0, 0, 20, 10, "R"); }),
              testing::MatchesRegex("ERROR \\(savePortRect\\): .+ \n"));
  EXPECT_THAT(printedBy([&] { plugIn.savePortPolygon(QPolygon(), "S"); }),
              testing::MatchesRegex("ERROR \\(savePortPolygon\\): .+ \n"));
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(shapesOf(*open),
              ElementsAre("Rect 229/-6 (0 0) (20 10) pin of P", "Polygon 229/-6 (0 0) (9 0) (0 7) pin of Q"));
  EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet P, term P 2, pins 1", "ScalarNet Q, term Q 2, pins 1"));
}

TEST_F(PortsTest, NameInUseIsPrintedAndTheRestGoesOn) {
  plugIn.saveNet(1, "A", 1);
  for (const char *name : {"A", "a/b"}) {
    SCOPED_TRACE(name);
    recorder.clear();
    EXPECT_THAT(printedBy([&] { plugIn.savePort(name, QPoint(0, 0), false, ""); }),
                testing::MatchesRegex("ERROR \\(savePort\\): .+ \n"));
    EXPECT_THAT(printedBy([&] { plugIn.saveGlobalPort(name); }),
                testing::MatchesRegex("ERROR \\(saveGlobalPort\\): .+ \n"));
    EXPECT_THAT(reports(), ElementsAre(HasSubstr(name), HasSubstr(name)));
  }
  plugIn.savePort("B", QPoint(0, 0), false, "");
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet A, term A 2, pins 1", "ScalarNet B, term B 2, pins 1"));
  // What was made before the refusal stays.
  EXPECT_THAT(shapesOf(*open), ElementsAre("Rect 229/-6 (-8 -8) (8 8)", "Rect 229/-6 (-8 -8) (8 8)",
                                           "Rect 229/-6 (-8 -8) (8 8) pin of B"));
}

TEST_F(PortsTest, BusPortsOfOneNameShareAPin) {
  plugIn.saveBus(QPolygon() << QPoint(0, 0) << QPoint(10, 0), "D<0:3>");
  plugIn.saveBusport("D<0:3>", QPoint(0, 0), false, "input", "ipin");
  plugIn.saveBusport("D<0:3>", QPoint(100, 0), false, "", "");
  // The same bundle written otherwise is the same terminal; the pin goes by the text.
  plugIn.saveBusport(" D<0:3>", QPoint(200, 0), false, "", "");
  plugIn.saveBusport("V<0:1>", QPoint(0, 0), true, "", "");
  plugIn.saveClose();
  EXPECT_THAT(reports(), IsEmpty());
  const OpenView open("cell");
  EXPECT_THAT(netsOf(*open), ElementsAre("BundleNet D[0:3], term D[0:3] 2, pins 2", "BundleNet V[0:1] global"));
  EXPECT_THAT(shapesOf(*open),
              ElementsAre("Line 228/-1 (0 0) (10 0) net D[0:3]",
                          "Rect 229/-6 (-8 -8) (8 8) pin of D[0:3] {type=input, symbol=ipin}",
                          "Rect 229/-6 (92 -8) (108 8) pin of D[0:3]", "Rect 229/-6 (192 -8) (208 8) pin of D[0:3]",
                          "Rect 229/-6 (-8 -8) (8 8) net V[0:1]"));
  Lines pins;
  oaIter<oaPin> iter((*open)->getPins());
  while (oaPin *pin = iter.getNext()) {
    pins.push_back(blocktext::pinNameOf(pin) + " " + std::to_string(pin->getFigs().getCount()));
  }
  // The digests are those of md5sum.
  EXPECT_THAT(pins, ElementsAre("bus873e079d5678e955743749791fe2d508 2", "bus28fd0d4fb1ca5339bc07f7f58627a525 1"));
}

TEST_F(PortsTest, RefusedBusPortIsPrintedUnderItsLabel) {
  plugIn.saveNet(1, "A", 0);
  EXPECT_THAT(printedBy([&] { plugIn.saveBusport("A<0:3>", QPoint(0, 0), false, "", ""); }),
              testing::MatchesRegex("ERROR \\(busport\\): .+ \n"));
  plugIn.saveClose();
  EXPECT_THAT(shapesOf(*OpenView("cell")), IsEmpty());
}

TEST_F(PortsTest, GroundMakesItsNetGlobal) {
  plugIn.saveNet(1, "0", 0);
  plugIn.saveGround(1, QPoint(3, 4));
  plugIn.saveGround(2, QPoint(5, 6));
  plugIn.saveClose();
  const OpenView open("cell");
  EXPECT_THAT(shapesOf(*open), ElementsAre("Dot 229/-6 (3 4) (3 4) net 0", "Dot 229/-6 (5 6) (5 6)"));
  EXPECT_THAT(netsOf(*open), ElementsAre("ScalarNet 0 global"));
}

TEST_F(PortsTest, BoxIsCutOffWhereCoordinatesEnd) {
  plugIn.savePort("A", QPoint(INT_MAX, INT_MIN), false, "");
  plugIn.saveClose();
  EXPECT_THAT(shapesOf(*OpenView("cell")),
              ElementsAre("Rect 229/-6 (2147483639 -2147483648) (2147483647 -2147483640) pin of A"));
}

} // namespace
