#include "busname.h"
#include "schematicconnectivity.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Points = QVector<QPoint>;

TEST(BusName, MembersAndBits) {
  const struct {
    const char *name, *bits;
  } cases[] = {
      {"A", "A"},
      {"A<3>", "A<3>"},
      {"D<0:3>", "D<0> D<1> D<2> D<3>"},
      {"D<3:0:2>", "D<3> D<1>"},
      {"D<7:0:-3>", "D<7> D<4> D<1>"},
      {"A<0:1:0>", "A<0> A<1>"},
      {"A<0:1>_b", "A_b<0> A_b<1>"},
      {"2*A<0:1>, B", "A<0> A<1> A<0> A<1> B"},
      {" EN ,,X", "EN X"},
      {"4*EN", "EN EN EN EN"},
      {"0*EN", "0*EN"},
      {"*EN", "*EN"},
      {"A<3>x", "A<3>x"},
      {"A<5", "A<5"},
      {"<5>", "<5>"},
      {"A<a:b>", "A<0>"},
      {"", ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(bitNamesOf(c.name).join(' ').toStdString(), c.bits);
    EXPECT_EQ(bitsOfName(c.name), bitNamesOf(c.name).size());
  }
  EXPECT_EQ(bitsOfName("A<0:2000000000>,B<0:2000000000>"), 1 << 20);
  EXPECT_EQ(bitsOfName("A<-2147483648:2147483647>"), 1 << 20);
}

TEST(BusName, PlainFormAndRepeats) {
  EXPECT_EQ(plainNetName(" A , B<1:0>"), "A,B<1:0>");
  EXPECT_EQ(plainNetName("A<5:5>"), "A<5>");
  EXPECT_EQ(plainNetName("1*A"), "A");
  const struct {
    const char *once, *four;
  } cases[] = {{"A", "4*A"}, {"2*A<1:0>", "8*A<1:0>"}, {"A,B", "A,B,A,B,A,B,A,B"}};
  for (const auto &c : cases) {
    EXPECT_EQ(repeatedName(c.once, 4), c.four);
    EXPECT_EQ(unrepeatedName(c.four, 4), c.once);
  }
  EXPECT_EQ(unrepeatedName("3*A", 2), "");
  EXPECT_EQ(unrepeatedName("A,B,A", 2), "");
}

// A schematic drawn by hand, and its nets as texts.
class Connectivity : public testing::Test {
protected:
  SchematicModel model;
  SymbolModel gate;   // A at (0, 0), Y at (40, 0)
  SymbolModel memory; // D<3:0> at (0, 0), Q at (0, -20)
  QHash<QString, const SymbolModel *> symbols;

  void SetUp() override {
    gate.ports = {port("A", 0, 0), port("Y", 40, 0)};
    memory.ports = {port("D<3:0>", 0, 0), port("Q", 0, -20)};
    symbols = {{"lib/gate", &gate}, {"lib/memory", &memory}, {"lib/none", nullptr}};
  }
  static SchematicPort port(const char *name, int x, int y) {
    SchematicPort port;
    port.name = name;
    port.position = QPoint(x, y);
    return port;
  }
  void wire(std::initializer_list<QPoint> points, bool isBus = false) {
    model.wires.push_back({QPolygon(QVector<QPoint>(points)), isBus});
  }
  void label(const char *text, int x, int y) { model.labels.push_back({text, QPoint(x, y), QPoint()}); }
  SchematicPlacement &place(const char *device, const char *name, int x, int y, Orientation orientation = {}) {
    SchematicPlacement placement;
    placement.library = "lib";
    placement.device = device;
    placement.name = name;
    placement.origin = QPoint(x, y);
    placement.orientation = orientation;
    model.placements.push_back(placement);
    return model.placements.back();
  }
  SchematicPlacement &placeVector(const char *device, const char *name, int x, int y, int start, int stop) {
    SchematicPlacement &placement = place(device, name, x, y);
    placement.isVector = true;
    placement.start = start;
    placement.stop = stop;
    return placement;
  }
  // "name wires terminals" of each net: "net1 w0 w2 u1.A".
  std::vector<std::string> nets() {
    const SchematicConnectivity found = findConnectivity(model, symbols);
    std::vector<std::string> lines;
    for (const SchematicNet &net : found.nets) {
      QString line = net.name + (net.isGlobal ? "!" : "");
      for (const int index : net.wires)
        line += QString(" w%1").arg(index);
      for (const int index : net.terminals)
        line += " " + model.placements[static_cast<std::size_t>(found.terminals[index].placement)].name + "." +
                found.terminals[index].terminal;
      lines.push_back(line.toStdString());
    }
    problems.clear();
    for (const QString &problem : found.problems)
      problems.push_back(problem.toStdString());
    return lines;
  }
  std::vector<std::string> problems;
};

TEST_F(Connectivity, WiresMeetAtEndsAndDotsButNotWhereTheyCross) {
  const QPoint left(0, 0);
  const QPoint right(100, 0);
  const struct {
    const char *name;
    std::vector<Points> wires;
    std::vector<QPoint> dots;
    int nets;
  } cases[] = {
      {"crossing", {Points{left, right}, Points{QPoint(50, -50), QPoint(50, 50)}}, {}, 2},
      {"crossing with a dot", {Points{left, right}, Points{QPoint(50, -50), QPoint(50, 50)}}, {QPoint(50, 0)}, 1},
      {"dot beside", {Points{left, right}, Points{QPoint(50, -50), QPoint(50, 50)}}, {QPoint(50, 1)}, 2},
      {"T, end on the middle", {Points{left, right}, Points{QPoint(50, 50), QPoint(50, 0)}}, {}, 1},
      {"T on a vertical", {Points{QPoint(0, -9), QPoint(0, 9)}, Points{right, left}}, {}, 1},
      {"end beside", {Points{left, right}, Points{QPoint(50, 50), QPoint(50, 1)}}, {}, 2},
      {"end beyond", {Points{left, right}, Points{QPoint(101, 0), QPoint(200, 0)}}, {}, 2},
      {"ends meet", {Points{left, right}, Points{right, QPoint(100, 70)}}, {}, 1},
      {"in line", {Points{left, right}, Points{QPoint(200, 0), right}}, {}, 1},
      {"on top", {Points{left, right}, Points{QPoint(200, 0), QPoint(60, 0)}}, {}, 1},
      {"corner on a corner",
       {Points{left, QPoint(50, 0), QPoint(50, 50)}, Points{QPoint(50, -50), QPoint(50, 0), right}},
       {},
       2},
      {"T on a diagonal", {Points{left, QPoint(100, 50)}, Points{QPoint(50, 25), QPoint(50, 0)}}, {}, 1},
      {"beside a diagonal", {Points{left, QPoint(100, 50)}, Points{QPoint(50, 24), QPoint(50, 0)}}, {}, 2},
      {"far apart",
       {Points{QPoint(-2147483647, -2147483647), QPoint(2147483647, 2147483646)},
        Points{QPoint(2147483646, 2147483646), QPoint(0, 9)}},
       {},
       2},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    model = SchematicModel();
    for (const Points &points : c.wires)
      model.wires.push_back({QPolygon(points), false});
    model.wireDots = c.dots;
    EXPECT_EQ(nets().size(), static_cast<std::size_t>(c.nets));
  }
}

TEST_F(Connectivity, TerminalsLieWhereTheOrientationTakesThem) {
  place("gate", "u1", 100, 100, Orientation(false, 1)); // Y at (100, 140)
  place("gate", "u2", 100, 140, Orientation(true, 2));  // Y at (60, 140)
  place("gate", "u3", 500, 0);                          // A on the middle of a wire, Y on nothing
  wire({{60, 140}, {60, 0}, {520, 0}});
  EXPECT_THAT(nets(), ElementsAre("net1 w0 u2.Y u3.A", "net2 u1.Y u2.A"));
  const SchematicConnectivity found = findConnectivity(model, symbols);
  EXPECT_EQ(found.netOfTerminal.back(), -1);
  EXPECT_EQ(found.netOfTerminal.front(), -1);
}

TEST_F(Connectivity, NamesJoinGroupsAndNumbersAvoidThem) {
  wire({{0, 0}, {10, 0}});
  wire({{0, 50}, {10, 50}});
  wire({{0, 90}, {10, 90}});
  wire({{0, 100}, {10, 100}});
  label("VDD", 5, 0);
  label(" VDD", 5, 50);
  label("net1", 300, 0);
  label("net2<3:0>,B", 400, 0);
  model.ports.push_back(port("D<1:0>", 500, 0));
  model.ports.push_back(port("VDD", 600, 0));
  model.ports.back().isGlobal = true;
  model.grounds.push_back({QPoint(700, 0)});
  EXPECT_THAT(nets(), ElementsAre("D<1:0>", "VDD! w0 w1", "net1", "net2<3:0>,B", "net3 w2", "net4 w3", "GND!"));
  EXPECT_THAT(problems, IsEmpty());
}

TEST_F(Connectivity, FirstNameStandsAndTheOtherIsTold) {
  wire({{0, 0}, {100, 0}});
  label("B", 100, 0);
  label("A<1>,A<0>", 200, 0);
  label("A<1:0>", 200, 0);
  model.ports.push_back(port("A", 50, 0));
  EXPECT_THAT(nets(), ElementsAre("A w0", "A<1>,A<0>"));
  EXPECT_THAT(problems, ElementsAre("net A is also called B by the label at (100, 0)"));
}

TEST_F(Connectivity, UnnamedNetsAreAsWideAsTheirNarrowestTerminal) {
  place("memory", "m1", 0, 0);
  wire({{0, 0}, {100, 0}}, true);
  place("gate", "u1", 300, 0);
  placeVector("gate", "x1", 340, 0, 3, 0); // A touches Y of u1
  wire({{380, 0}, {500, 0}});
  placeVector("gate", "x2", 500, 0, 0, 3);
  wire({{900, 0}, {900, 5}}, true);
  const SchematicConnectivity found = findConnectivity(model, symbols);
  EXPECT_THAT(nets(), ElementsAre("net1<3:0> w0 m1.D<3:0>", "net2<3:0> w1 x1.Y x2.A", " w2", "net3 u1.Y x1.A"));
  EXPECT_THAT(problems, IsEmpty());
  EXPECT_EQ(found.nets[2].bits, 0);
}

TEST_F(Connectivity, WidthsThatDoNotFitAreTold) {
  place("memory", "m1", 0, 0);
  label("A<7:0>", 0, 0);
  placeVector("memory", "m2", 1000, 0, 1, 0);
  label("A<7:0>", 1000, 0); // 4 bits twice
  label("X,Y,Z", 1000, -20);
  placeVector("memory", "m3", 2000, 0, 1, 0);
  label("S<3:0>", 2000, 0); // shared
  nets();
  EXPECT_THAT(problems,
              ElementsAre("terminal D<3:0> of placement m1 at (0, 0) has 4 bits, but net A<7:0> has 8",
                          "terminal Q of placement m2 at (1000, -20) has 1 bit times 2, but net X,Y,Z has 3"));
}

TEST_F(Connectivity, ConnectionsByNameNameTheGroupAtTheTerminal) {
  SchematicPlacement &shared = placeVector("gate", "x1", 0, 0, 0, 3);
  shared.connections = {{"A", "4*EN"}, {"Y", "Q<0:3>"}};
  place("memory", "m1", 1000, 0).connections = {{"D<3:0>", "Q<0:3>"}, {"E", "net1"}};
  wire({{0, 0}, {0, 50}});
  wire({{0, 500}, {0, 550}});
  EXPECT_THAT(nets(), ElementsAre("EN w0 x1.A", "net2 w1", "Q<0:3> x1.Y m1.D<3:0>"));
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_THAT(problems[0], HasSubstr("terminal E of placement m1 is connected to net net1, but the symbol lib/memory"));
  label("OTHER", 0, 50);
  nets();
  EXPECT_THAT(problems,
              testing::Contains("net OTHER is also called EN by the connection of terminal A of placement x1"));
}

TEST_F(Connectivity, MissingSymbolsAreToldOnceAndTheRestConnects) {
  place("none", "u1", 0, 0);
  place("none", "u2", 0, 0);
  place("gate", "u3", 0, 0);
  label("A", 0, 0);
  EXPECT_THAT(nets(), ElementsAre("A u3.A"));
  EXPECT_THAT(problems,
              ElementsAre("the symbol lib/none of placement u1 and 1 more is missing: it has no terminals to connect"));
}

TEST_F(Connectivity, PlacesOfOneTerminalAreOneNet) {
  gate.ports.push_back(port("A", 0, -40));
  place("gate", "u1", 0, 0);
  wire({{0, 0}, {-10, 0}});
  wire({{0, -40}, {-10, -40}});
  EXPECT_THAT(nets(), ElementsAre("net1 w0 w1 u1.A u1.A"));
}

// Time grows with the drawing, not with its square: long rails with many taps, and stacked wires.
// Quadratic work would run into the limit of time that every test has.
TEST_F(Connectivity, LargeDrawingsComeToAnEnd) {
  constexpr int kColumns = 100000;
  for (int i = 0; i < kColumns; ++i) {
    wire({{10 * i, 0}, {10 * i, 100}});
    wire({{10 * i, 200}, {10 * i + 15, 200}});
    wire({{0, 300}, {10 * i + 10, 300}});
    model.placements.emplace_back();
    model.placements.back().library = "lib";
    model.placements.back().device = "gate";
    model.placements.back().origin = QPoint(10 * i, 100);
  }
  wire({{0, 0}, {10 * kColumns, 0}});
  EXPECT_EQ(findConnectivity(model, symbols).nets.size(), 3u);
}

} // namespace
