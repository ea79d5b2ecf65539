#include "schematiccopycheck.h"
#include "schematicfacts.h"
#include "schematichost.h"
#include "signalrecorder.h"

#include <map>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = SchematicShape::Kind;

// Writes down what a schematic writer is asked to write, one line a call, with the names of nets for their numbers.
class RecordingPlugIn : public oaPlugInMain {
public:
  std::vector<std::string> lines;

  void saveNet(int net, QString name, int kind) override {
    names[net] = name;
    add(QString("net %1 %2").arg(name).arg(kind));
  }
  void saveWire(QPolygon points, int net) override { add("wire " + names.at(net) + text(points)); }
  void saveBus(QPolygon points, QString name) override { add("bus " + name + text(points)); }
  void saveWireDot(QPoint centre, int net) override { add("dot " + names[net] + text(centre)); }
  void saveWireLabel(QString label, QPoint origin, QPoint offset) override {
    add("label " + label + text(origin) + text(offset));
  }
  void saveRect(int x1, int y1, int x2, int y2, QString colour) override {
    add("rect " + colour + text(QPoint(x1, y1)) + text(QPoint(x2, y2)));
  }
  void savePolygon(QPolygon points, QString colour) override { add("polygon " + colour + text(points)); }
  void savePolyline(QPolygon points, QString colour) override { add("polyline " + colour + text(points)); }
  void savePort(int net, QPoint position, bool global, QString type, QString) override {
    add(QString("port %1%2 ").arg(names.at(net), global ? "!" : "") + type + text(position));
  }
  void saveBusport(QString name, QPoint position, bool, QString, QString) override {
    add("busport " + name + text(position));
  }
  void saveGround(int net, QPoint position) override { add("ground " + names.at(net) + text(position)); }
  void savePlacement(QString, QString cell, QString view, QString instance, QPoint origin, QString trans) override {
    add("placement " + instance + " of " + cell + "/" + view + text(origin) + " " + trans);
  }
  void saveVectorPlacement(QString, QString, QString, QString instance, QPoint, QString, int start, int stop) override {
    add(QString("vector %1 %2 %3").arg(instance).arg(start).arg(stop));
  }
  void saveStringProp(QString name, QString value) override { add("property " + name + "=" + value); }
  void savePointProp(QString name, QPoint value) override { add("point " + name + text(value)); }
  void savePlacementConnection(int net, QString terminal) override { add("connect " + terminal + " " + names.at(net)); }
  void saveVectorPlacementConnection(QString terminal, QString net) override { add("join " + terminal + " " + net); }
  void savePropString(QString name, QString value) override { add("design " + name + "=" + value); }

private:
  static QString text(const QPoint &point) { return QString(" %1,%2").arg(point.x()).arg(point.y()); }
  static QString text(const QPolygon &points) {
    QString all;
    for (const QPoint &point : points)
      all += text(point);
    return all;
  }
  void add(const QString &line) { lines.push_back(line.toStdString()); }
  std::map<int, QString> names;
};

class SchematicWriterCalls : public testing::Test {
protected:
  RecordingPlugIn plugIn;
  SchematicModel model;
  SymbolModel gate;
  QHash<QString, const SymbolModel *> symbols;
  ImportReport report;

  void SetUp() override {
    gate.ports = {portAt("A", 0, 0), portAt("D<1:0>", 0, 20)};
    symbols.insert("lib/gate", &gate);
  }
  std::vector<std::string> written() {
    plugIn.lines.clear();
    report = ImportReport();
    writeSchematicContents(plugIn, model, symbols, "lib/top/schematic", report);
    return plugIn.lines;
  }
  std::vector<std::string> told() const {
    std::vector<std::string> lines;
    for (const QString &line : report.lines())
      lines.push_back(line.toStdString());
    return lines;
  }
};

TEST_F(SchematicWriterCalls, NetsComeFirstAndKindsFollowPorts) {
  model.wires = {{points({{0, 0}, {10, 0}}), false}, {points({{0, 50}, {10, 50}}), true}};
  model.wireDots = {{0, 0}, {999, 999}};
  model.ports = {portAt("IN", 10, 0, "input"), portAt("VDD", 100, 0, "", "", true), portAt("B<1:0>", 10, 50)};
  model.labels = {{"G<0>", QPoint(200, 0), QPoint(1, 2)}};
  model.grounds = {{QPoint(300, 0)}};
  EXPECT_THAT(written(),
              ElementsAre("net IN 1", "net VDD 0", "net G<0> 0", "net GND 0", "wire IN 0,0 10,0",
                          "bus B<1:0> 0,50 10,50", "dot IN 0,0", "dot  999,999", "ground GND 300,0",
                          "label G<0> 200,0 1,2", "port IN input 10,0", "port VDD!  100,0", "busport B<1:0> 10,50"));
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(SchematicWriterCalls, ConnectionsFollowTheWidths) {
  SchematicPlacement scalar = placementOf("lib", "gate", "u1", 0, 0, Orientation(false, 1));
  scalar.labelOffset = QPoint(3, 4);
  scalar.data = {{"w", "1"}, {"l", "2"}};
  SchematicPlacement vector = placementOf("lib", "gate", "x1", 1000, 0);
  vector.isVector = true;
  vector.start = 3;
  vector.stop = 0;
  SchematicPlacement unknown = placementOf("lib", "small@none", "u2", 5000, 0);
  unknown.connections = {{"E", "N<1:0>"}, {"F<1:0>", "N<1:0>"}};
  model.placements = {scalar, vector, unknown};
  model.labels = {{"A", QPoint(0, 0), {}},
                  {"B,C", QPoint(-20, 0), {}},
                  {"EN", QPoint(1000, 0), {}},
                  {"S<7:0>", QPoint(1000, 20), {}}};
  model.data = {{"version", "7"}};
  EXPECT_THAT(written(),
              testing::AllOf(testing::Contains("point labelOffset 3,4"), testing::Contains("design version=7")));
  const std::vector<std::string> tail(plugIn.lines.end() - 13, plugIn.lines.end());
  EXPECT_THAT(tail, ElementsAre("label S<7:0> 1000,20 0,0", "placement u1 of gate/symbol 0,0 R90",
                                "point labelOffset 3,4", "property w=1", "property l=2", "connect A A",
                                "join D<1:0> B,C", "vector x1 3 0", "join A 4*EN", "join D<1:0> S<7:0>",
                                "placement u2 of none/small 5000,0 ", "join E N<1:0>", "design version=7"));
  ASSERT_EQ(told().size(), 2u);
  EXPECT_THAT(told()[0], HasSubstr("the symbol lib/small@none of placement u2 is missing"));
  EXPECT_THAT(told()[1], HasSubstr("terminal F<1:0> of placement u2"));
}

TEST_F(SchematicWriterCalls, WidthsThatDoNotFitStayUnconnected) {
  model.placements = {placementOf("lib", "gate", "u1", 0, 0)};
  model.labels = {{"A<7:0>", QPoint(0, 20), {}}, {"A<3>", QPoint(0, 0), {}}};
  EXPECT_THAT(written(), testing::Not(testing::Contains(HasSubstr("join"))));
  EXPECT_EQ(plugIn.lines.back(), "connect A A<3>");
  EXPECT_THAT(told(), ElementsAre(HasSubstr("terminal D<1:0> of placement u1")));
  EXPECT_EQ(report.problemCount(), 1);
}

TEST_F(SchematicWriterCalls, DrawingKeepsTheOrderItArrivedIn) {
  model.shapes = {shapeOf(Kind::Text, {{1, 1}}), shapeOf(Kind::Rect, {{9, 9}, {0, 0}})};
  model.wires = {{points({{0, 0}, {10, 0}}), false}, {points({{0, 5}, {10, 5}}), true}};
  model.order = {{SchematicItem::Shape, 0}, {SchematicItem::Wire, 0}, {SchematicItem::Shape, 1}};
  // Incomplete: by kinds.
  EXPECT_EQ(written().back(), "rect red 0,0 9,9");
  model.order.push_back({SchematicItem::Wire, 1});
  EXPECT_THAT(written(), ElementsAre("net net1 0", "wire net1 0,0 10,0", "rect red 0,0 9,9", "bus  0,5 10,5"));
}

TEST_F(SchematicWriterCalls, ShapesTheDatabaseRefusesAreReplacedOrTold) {
  model.shapes = {shapeOf(Kind::Rect, {{0, 0}, {0, 10}}), shapeOf(Kind::Arc, {{0, 0}, {100, 0}, {0, 100}}),
                  shapeOf(Kind::Polygon, {{0, 0}, {5, 5}})};
  model.wires = {{points({{3, 3}}), false}};
  // The arc is a quarter turn, anticlockwise.
  EXPECT_THAT(written(), ElementsAre("net net1 0", "polyline red 0,0 0,10",
                                     testing::AllOf(testing::StartsWith("polyline red 100,0 100,10 98,20"),
                                                    testing::EndsWith(" 10,100 0,100"))));
  EXPECT_EQ(report.problemCount(), 2);
  EXPECT_THAT(told(), testing::Contains(HasSubstr("a wire with fewer than two points is left out")));
}

// Everything that a schematic can hold.
class SchematicCopy : public SchematicHost {
protected:
  static SymbolModel gate() {
    SymbolModel symbol;
    symbol.ports = {portAt("A", 0, 0, "input"), portAt("Y", 40, 0, "output")};
    symbol.shapes = {shapeOf(Kind::Polygon, {{0, -10}, {40, 0}, {0, 10}}), shapeOf(Kind::EvalText, {{5, 20}}, "", "@n"),
                     shapeOf(Kind::Text, {{5, 30}}, "blue", "gate", 90)};
    symbol.data = {{"prefix", "X"}};
    return symbol;
  }
  static SymbolModel memory() {
    SymbolModel symbol;
    symbol.ports = {portAt("D<3:0>", 0, 0, "input output"), portAt("CS,WE", 0, -20, "input"), portAt("Q", 0, -40)};
    symbol.shapes = {shapeOf(Kind::Rect, {{0, -50}, {60, 10}}), shapeOf(Kind::Circle, {{60, 0}, {70, 10}})};
    return symbol;
  }
  static SchematicModel everything(const QString &lib) {
    SchematicModel model;
    for (int i = 0; i < 8; ++i) {
      const QString name = QString("u%1").arg(i);
      model.placements.push_back(placementOf(lib, "gate", name.toUtf8(), 0, 100 * i, Orientation(i >= 4, i % 4)));
    }
    model.placements[0].labelOffset = QPoint(-5, 60);
    model.placements[0].data = {{"w", "1u"}, {"note", "a \"b\""}};
    model.placements.push_back(placementOf(lib, "small@gate", "u8", 0, 900));
    model.placements.push_back(placementOf(lib, "memory", "m1", 1000, 0));
    for (const int y : {0, 200}) {
      SchematicPlacement vector = placementOf(lib, y == 0 ? "gate" : "memory", y == 0 ? "x1" : "x2", 2000, y);
      vector.isVector = true;
      vector.start = y == 0 ? 3 : 0;
      vector.stop = y == 0 ? 0 : 1;
      model.placements.push_back(vector);
    }
    model.wires = {{points({{0, 0}, {0, 900}}), false},
                   {points({{1000, 0}, {900, 0}}), true},
                   {points({{1000, -20}, {900, -20}}), true},
                   {points({{2000, 0}, {1900, 0}}), false},
                   {points({{2040, 0}, {2100, 0}, {2100, 200}, {2000, 200}}), true},
                   {points({{2000, 160}, {1900, 160}}), false},
                   {points({{5000, 0}, {5100, 0}}), true},
                   {points({{5000, 50}, {5100, 50}}), false}};
    model.wireDots = {{0, 100}, {7000, 7000}};
    model.grounds = {{QPoint(5000, 50)}};
    model.labels = {{"ADDR<3:0>", QPoint(900, 0), QPoint(2, 3)},
                    {"ADDR<0>", QPoint(40, 0), QPoint()},
                    {"EN,ADDR<1>", QPoint(900, -20), QPoint()},
                    {"EN", QPoint(1900, 0), QPoint(0, -9)}};
    model.ports = {portAt("ADDR<3:0>", 900, 0, "input", "busin"), portAt("EN", -500, 0, "output", "out"),
                   portAt("VDD", 1900, 160, "", "power", true), portAt("V<1:0>", -500, 100, "", "", true)};
    model.shapes = {shapeOf(Kind::Text, {{3, 3}}, "green", "note", 270), shapeOf(Kind::Polyline, {{0, 0}, {5, 5}})};
    model.order = {{SchematicItem::Shape, 0}, {SchematicItem::Port, 0},   {SchematicItem::Label, 0},
                   {SchematicItem::Wire, 0},  {SchematicItem::Wire, 1},   {SchematicItem::Dot, 0},
                   {SchematicItem::Wire, 2},  {SchematicItem::Label, 1},  {SchematicItem::Wire, 3},
                   {SchematicItem::Wire, 4},  {SchematicItem::Ground, 0}, {SchematicItem::Wire, 5},
                   {SchematicItem::Wire, 6},  {SchematicItem::Port, 1},   {SchematicItem::Port, 2},
                   {SchematicItem::Wire, 7},  {SchematicItem::Label, 2},  {SchematicItem::Label, 3},
                   {SchematicItem::Dot, 1},   {SchematicItem::Port, 3},   {SchematicItem::Shape, 1}};
    return model;
  }
  void writeSource(const QString &lib) {
    createLib(lib);
    writeSymbol(lib, "gate", gate());
    writeSymbol(lib, "small@gate", gate());
    writeSymbol(lib, "memory", memory());
    SymbolModel top;
    top.ports = {portAt("EN", 0, 0), portAt("ADDR<3:0>", 0, 20)};
    writeSymbol(lib, "top", top);
    writeSchematic(lib, "top", everything(lib));
    SchematicModel inside;
    inside.placements = {placementOf(lib, "memory", "m1", 0, 0)};
    inside.ports = {portAt("A", 0, 0), portAt("Y", 10, 0)};
    writeSchematic(lib, "gate", inside);
  }
  // Empty for a copy that is equal.
  static std::string difference(const QString &lib, const QString &copy, const QString &cell, const QString &view) {
    const HostResult result = host().run(QStringList{"diff", lib, cell, view, copy, cell, view});
    return result.errors + result.output.toStdString();
  }
};

TEST_F(SchematicCopy, WhatIsWrittenIsWhatIsRead) {
  writeSource("source");
  EXPECT_EQ(report.problemCount(), 1); // A of gate has one bit, D<3:0> of the memory in it has four
  const SchematicModel model = everything("source");
  const SchematicModel back = read("source", "top");
  ASSERT_EQ(back.placements.size(), model.placements.size());
  for (std::size_t i = 0; i < model.placements.size(); ++i) {
    SCOPED_TRACE(model.placements[i].name.toStdString());
    EXPECT_EQ(back.placements[i].name, model.placements[i].name);
    EXPECT_EQ(back.placements[i].library, model.placements[i].library);
    EXPECT_EQ(back.placements[i].device, model.placements[i].device);
    EXPECT_EQ(back.placements[i].origin, model.placements[i].origin);
    EXPECT_EQ(back.placements[i].orientation, model.placements[i].orientation);
    EXPECT_EQ(back.placements[i].isVector, model.placements[i].isVector);
    EXPECT_EQ(back.placements[i].start, model.placements[i].start);
    EXPECT_EQ(back.placements[i].data, model.placements[i].data);
    EXPECT_EQ(back.placements[i].labelOffset, model.placements[i].labelOffset);
  }
  using Pairs = std::vector<QPair<QString, QString>>;
  EXPECT_EQ(back.placements[9].connections, (Pairs{{"D<3:0>", "ADDR<3:0>"}, {"CS,WE", "EN,ADDR<1>"}}));
  EXPECT_EQ(back.placements[10].connections, (Pairs{{"A", "4*EN"}, {"Y", "net2<3:0>"}}));
  EXPECT_EQ(back.placements[11].connections, (Pairs{{"D<3:0>", "2*net2<3:0>"}, {"Q", "2*VDD"}}));
  ASSERT_EQ(back.ports.size(), model.ports.size());
  for (std::size_t i = 0; i < model.ports.size(); ++i) {
    EXPECT_EQ(back.ports[i].name, model.ports[i].name);
    EXPECT_EQ(back.ports[i].position, model.ports[i].position);
    EXPECT_EQ(back.ports[i].type, model.ports[i].type);
    EXPECT_EQ(back.ports[i].symbol, model.ports[i].symbol);
    EXPECT_EQ(back.ports[i].isGlobal, model.ports[i].isGlobal);
  }
  ASSERT_EQ(back.order.size(), model.order.size());
  for (std::size_t i = 0; i < model.order.size(); ++i) {
    EXPECT_EQ(back.order[i].kind, model.order[i].kind);
    EXPECT_EQ(back.order[i].index, model.order[i].index);
  }
  EXPECT_EQ(back.grounds.size(), 1u);
  EXPECT_EQ(back.wireDots, model.wireDots);
  EXPECT_EQ(back.shapes[0].rotation, 270);
}

TEST_F(SchematicCopy, CopyHasTheSameStreamsAndTheSameNetlist) {
  writeSource("first");
  createLib("second");
  const HostResult copied = host().run("copy first top second");
  EXPECT_EQ(copied.exitCode, 0);
  EXPECT_EQ(copied.errors, "");
  for (const char *view :
       {"top schematic", "top symbol", "gate symbol", "gate small", "gate schematic", "memory symbol"}) {
    SCOPED_TRACE(view);
    const std::string stream = output(QString("read first %1").arg(view), "first");
    EXPECT_THAT(stream, HasSubstr("addPort"));
    EXPECT_EQ(output(QString("read second %1").arg(view), "second"), stream);
    const QStringList names = QString(view).split(' ');
    EXPECT_EQ(difference("first", "second", names[0], names[1]), "");
  }
  EXPECT_EQ(output("component second gate", "second"), output("component first gate", "first"));
  SignalRecorder recorder(&plugIn);
  plugIn.loadNetlist("first", "top", "schematic");
  const std::vector<std::string> netlist = recorder.lines();
  EXPECT_GT(netlist.size(), 15u);
  recorder.clear();
  plugIn.loadNetlist("second", "top", "schematic");
  EXPECT_EQ(recorder.lines(), netlist);
}

TEST_F(SchematicCopy, ExistingViewsAreKeptUnlessReplaced) {
  writeSource("old");
  createLib("new");
  EXPECT_EQ(host().run("copy old gate new --view small").exitCode, 0);
  EXPECT_EQ(output("views new gate", "new"), "small\n");
  const HostResult refused = host().run("copy old gate new --view small");
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_THAT(refused.errors,
              HasSubstr("library new has a cell gate with a view small already; --replace writes over"));
  // What is only placed stays, and with it schematics below.
  const HostResult shared = host().run("copy old top new twin");
  EXPECT_EQ(shared.exitCode, 0);
  EXPECT_EQ(shared.errors,
            "oahost: a placed symbol is in the library already and stays as it is there (new/gate/small)\n");
  const HostResult again = host().run("copy old top new top");
  EXPECT_EQ(again.exitCode, 0);
  EXPECT_THAT(again.errors, HasSubstr("the schematic of a placed cell is in the library already and stays as it is "
                                      "there (new/gate/schematic)"));
  EXPECT_EQ(output("views new top", "new"), "schematic\nsymbol\n");
  EXPECT_EQ(host().run("copy old top new").exitCode, 1);
  EXPECT_EQ(host().run("copy old top new --replace --top-only").exitCode, 0);
  EXPECT_EQ(output("cells new", "new"), "gate\nmemory\ntop\ntwin\n");
  EXPECT_EQ(host().run("copy old top old twin").exitCode, 0);
  EXPECT_THAT(output("read old twin", "old"), HasSubstr("addPlacement \"memory\" LIB.oa 1000,0"));
  EXPECT_THAT(host().run("copy old top old").errors, HasSubstr("old/top/schematic would be copied onto itself"));
}

// A cell of the same name may be quite another one.
TEST_F(SchematicCopy, KeptSymbolThatIsAnotherOneIsTold) {
  createLib("from");
  createLib("into");
  writeSymbol("from", "gate", gate());
  SchematicModel model;
  model.placements = {placementOf("from", "gate", "u1", 0, 0)};
  writeSchematic("from", "top", model);
  SymbolModel other = gate();
  other.ports.pop_back();
  writeSymbol("into", "gate", other);
  const HostResult copied = host().run("copy from top into");
  EXPECT_EQ(copied.exitCode, 1);
  EXPECT_THAT(copied.errors, HasSubstr("stays as it is there, although it is another one (into/gate/symbol)"));
  EXPECT_THAT(copied.errors, HasSubstr("net Y is not in the copy (into/gate/symbol)"));
}

TEST_F(SchematicCopy, MissingSymbolIsNamedAndTheRestIsCopied) {
  createLib("partial");
  createLib("target");
  SchematicModel model;
  model.placements = {placementOf("partial", "gone", "u1", 0, 0), placementOf("partial", "gate", "u2", 0, 0)};
  model.ports = {portAt("A", 0, 0)};
  writeSymbol("partial", "gate", gate());
  writeSchematic("partial", "top", model);
  const HostResult copied = host().run("copy partial top target");
  EXPECT_EQ(copied.exitCode, 1);
  EXPECT_EQ(copied.errors, "oahost: the placed symbol target/gone is missing (target/top/schematic, placement u1)\n");
  EXPECT_EQ(output("read target top", "target"), output("read partial top", "partial"));
  EXPECT_EQ(difference("partial", "target", "top", "schematic"), "");
}

// An editor need not draw what it connects. Each copy is equal to its source, and nothing is told.
class CopiedOperations : public SchematicCopy {
protected:
  CopiedOperations() { createLib(lib); }
  void begin(const char *cell) { plugIn.saveSchematic(lib, cell, "schematic"); }
  void symbol(const char *cell) {
    plugIn.saveSymbol(lib, cell, "symbol");
    plugIn.savePort("A", QPoint(-100, 0), false, "input");
    plugIn.savePort("Z", QPoint(100, 0), false, "output");
    plugIn.saveClose();
  }
  void place(const char *cell, const char *name, const QPoint &origin = QPoint()) {
    plugIn.savePlacement(lib, cell, "symbol", name, origin, "");
  }
  // What the command says.
  std::string copy(const QString &cell, const QString &view, int exitCode = 0) {
    plugIn.saveClose();
    const HostResult copied =
        host().run(QStringList{"copy", lib, cell, view, "--to", lib + "copy", "--path", host().path(lib + "copy")});
    EXPECT_EQ(copied.exitCode, exitCode) << copied.errors;
    return copied.errors;
  }
  std::string differenceOf(const QString &cell, const QString &view) {
    return difference(lib, lib + "copy", cell, view);
  }

  const QString lib = QString(testing::UnitTest::GetInstance()->current_test_info()->name()).toLower();
};

TEST_F(CopiedOperations, ConnectionsThatNoDrawingShows) {
  symbol("inv");
  begin("top");
  plugIn.saveNet(1, "foo", 0);
  plugIn.saveNet(2, "clk", 0);
  plugIn.saveNet(3, "bar", 0);
  plugIn.saveNet(4, "D<3>", 0);
  plugIn.saveNet(5, "hidden", 1);
  plugIn.saveNet(6, "loose", 0);
  plugIn.saveGlobalPort("vdd");
  plugIn.saveWire(points({{150, 0}, {300, 0}}), 1);
  plugIn.saveWire(points({{-300, 0}, {-100, 0}}), 2);
  plugIn.saveWireLabel("clk", QPoint(-300, 0), QPoint());
  // Through both terminals of I2, and on neither's net.
  plugIn.saveWire(points({{0, 500}, {200, 500}}), 2);
  plugIn.saveWire(points({{0, 600}, {200, 600}}), 3);
  plugIn.saveWire(points({{0, 700}, {200, 700}}), -1);
  plugIn.saveWireDot(QPoint(0, 650), 3);
  // Taps of a bus touch it.
  plugIn.saveBus(points({{1000, 0}, {1000, 500}}), "D<0:3>");
  plugIn.saveBus(points({{1000, 600}, {1100, 600}}), "");
  plugIn.saveBus(points({{1000, 700}, {1100, 700}}), "narrow");
  plugIn.saveWire(points({{1000, 100}, {1100, 100}}), 4);
  plugIn.saveWireLabel("D<3>", QPoint(1100, 100), QPoint());
  plugIn.saveWireLabel("a remark", QPoint(5000, 0), QPoint());
  place("inv", "I1");
  plugIn.savePlacementConnection(2, "A");
  plugIn.savePlacementConnection(1, "Z");
  place("inv", "I2", QPoint(100, 500));
  plugIn.savePlacementConnection(1, "A");
  plugIn.saveVectorPlacementConnection("Z", "vdd");
  place("inv", "I3", QPoint(200, 0)); // on the terminal Z of I1, but not connected
  EXPECT_EQ(copy("top", "schematic"), "");
  EXPECT_EQ(differenceOf("top", "schematic"), "");
}

TEST_F(CopiedOperations, GlobalNetsAndGrounds) {
  plugIn.saveSymbol(lib, "gate", "symbol");
  plugIn.saveNet(501, "VDD", 0); // no terminal
  plugIn.savePort(501, QPoint(0, 100), true, "", "");
  plugIn.saveNet(502, "VEE", 2); // with terminal
  plugIn.savePort(502, QPoint(0, 200), true, "", "power");
  plugIn.saveNet(503, "A", 1);
  plugIn.savePort(503, QPoint(-100, 0), false, "input", "");
  plugIn.saveGround(-1, QPoint(0, -100));
  plugIn.saveClose();
  begin("top");
  plugIn.saveNet(1, "gndnet", 0);
  plugIn.saveWire(points({{300, 0}, {300, 100}}), 1);
  plugIn.saveGround(1, QPoint(300, 0));
  plugIn.saveGround(-1, QPoint(900, 0));
  plugIn.saveNet(2, "VEE", 2);
  plugIn.saveNet(3, "SUB", 2);
  plugIn.savePort(3, QPoint(0, 900), true, "", "");
  place("gate", "I1");
  plugIn.savePlacementConnection(1, "A");
  plugIn.savePlacementConnection(2, "VEE");
  EXPECT_EQ(copy("top", "schematic"), "");
  EXPECT_EQ(differenceOf("gate", "symbol"), "");
  EXPECT_EQ(differenceOf("top", "schematic"), "");
}

TEST_F(CopiedOperations, OrderOfProperties) {
  symbol("inv");
  begin("top");
  place("inv", "I1");
  plugIn.saveStringProp("w", "2");
  plugIn.savePointProp("labelOffset", QPoint(5, -6));
  plugIn.saveStringProp("l", "3");
  place("inv", "I2");
  plugIn.saveStringProp("devicename", "first");
  plugIn.savePointProp("labelOffset", QPoint(1, 1));
  plugIn.saveStringProp("w", "4");
  EXPECT_EQ(copy("top", "schematic"), "");
  EXPECT_EQ(differenceOf("top", "schematic"), "");
}

TEST_F(CopiedOperations, ShapesThatLookAlikeInTheSignals) {
  plugIn.saveSymbol(lib, "box", "symbol");
  plugIn.saveRect(0, 0, 10, 10, "red");
  plugIn.saveRect(0, 0, 20, 20, "instanceLayer:#ff0000");
  plugIn.saveText("@name", QPoint(0, 0), "deviceColor", 0);
  plugIn.saveEvalText("plain", QPoint(0, 50));
  plugIn.saveEvalText("@name", QPoint(0, 60));
  plugIn.saveWireLabel("label", QPoint(0, 0), QPoint());
  EXPECT_EQ(copy("box", "symbol"), "");
  EXPECT_EQ(differenceOf("box", "symbol"), "");
}

// The figure of such a port is sent as a polygon. Terminal and net are kept, the rest is told.
TEST_F(CopiedOperations, PortsOfOtherShapes) {
  plugIn.saveSymbol(lib, "buf", "symbol");
  plugIn.savePortPolygon(points({{100, 0}, {140, 20}, {140, -20}}), "Z");
  plugIn.savePort("A", QPoint(-100, 0), false, "input");
  EXPECT_THAT(copy("buf", "symbol"), HasSubstr("the copy differs in what signals do not tell or operations do not "
                                               "write; oahost diff shows it (" +
                                               lib.toStdString() + "copy/buf/symbol"));
  const std::string different = differenceOf("buf", "symbol");
  EXPECT_THAT(different, HasSubstr("-  polygon 229/"));
  EXPECT_THAT(different, testing::Not(HasSubstr("-  term")));
}

TEST_F(CopiedOperations, DataOfCellsGoesAlong) {
  symbol("inv");
  begin("inner");
  plugIn.saveClose();
  symbol("inner");
  begin("top");
  place("inv", "I1");
  place("inner", "I2");
  plugIn.saveClose();
  plugIn.writeLayoutData(lib, "inv", "text of inv \303\244 {");
  plugIn.writeCdfData(lib, "inv", "described");
  plugIn.writeCdfData(lib, "inner", "inside");
  plugIn.writeLayoutData(lib, "top", "text of top");
  EXPECT_EQ(copy("top", "schematic"), "");
  for (const char *cell : {"inv", "inner", "top"}) {
    const HostResult data = host().run(QStringList{"data", lib, cell});
    EXPECT_NE(data.output, "") << cell;
    EXPECT_EQ(host().run(QStringList{"data", lib + "copy", cell}).output, data.output);
  }
  plugIn.writeLayoutData(lib, "inv", "other");
  plugIn.saveLayout(lib, "inv", "layout", false, QStringList(), QStringList());
  plugIn.savePolygon(1, 0, points({{0, 0}, {10, 0}, {0, 10}}));
  EXPECT_THAT(copy("inv", "layout"), HasSubstr("data of a cell is in the library already and stays as it is there (" +
                                               lib.toStdString() + "copy/inv, TarnwickdaleData)"));
  EXPECT_THAT(host().run(QStringList{"data", lib + "copy", "inv"}).output.toStdString(), HasSubstr("text of inv"));
  const HostResult again = host().run(QStringList{"copy", lib, "top", "schematic", "--to", lib + "copy", "--replace"});
  EXPECT_EQ(again.exitCode, 0);
  EXPECT_THAT(host().run(QStringList{"data", lib + "copy", "inv"}).output.toStdString(), HasSubstr("\"other\""));
}

TEST_F(CopiedOperations, ParametersOfPlacementsAreTold) {
  host().write("parametric.tcl", R"(lassign $argv lib
set definition [oa::PcellLinkGetPcellDef tclPcell]
oa::addData $definition GenCellProc {design {
  foreach parameter [oa::getParams $design] {lassign $parameter name type value; set $name $value}
  set block [oa::BlockCreate $design]
  for {set i 0} {$i < $inputs} {incr i} {
    set pin [oa::PinCreate [oa::ScalarTermCreate [oa::ScalarNetCreate $block A$i] A$i input]]
    oa::addToPin [oa::RectCreate $block 229 4294967290 [oa::Box -8 [expr {$i*100-8}] 8 [expr {$i*100+8}]]] $pin
  }
}}
set design [oa::DesignOpen $lib gate symbol [oa::ViewTypeGet schematicSymbol] w]
oa::BlockCreate $design
oa::defineSuperMaster $design $definition {{inputs int 2}}
oa::save $design
oa::close $design
set design [oa::DesignOpen $lib top schematic [oa::ViewTypeGet schematic] w]
set block [oa::BlockCreate $design]
set net [oa::ScalarNetCreate $block n]
set plain [oa::ScalarInstCreate $block $lib gate symbol I1 [oa::Transform [oa::Point 0 0] R0]]
set wide [oa::ScalarInstCreate $block $lib gate symbol I2 [oa::Transform [oa::Point 0 500] R0] {{inputs int 4}}]
oa::InstTermCreate $net $plain A1
oa::InstTermCreate $net $wide A3
oa::save $design
oa::close $design
)");
  const HostResult made = host().run(QStringList{"tcl", "parametric.tcl", lib});
  ASSERT_EQ(made.exitCode, 0) << made.errors;
  const std::string told = copy("top", "schematic", 1);
  EXPECT_THAT(told, HasSubstr("no operation places a symbol with parameters, those of I2 are lost"));
  EXPECT_THAT(told, HasSubstr("a parametric symbol is copied as it looks with its default parameters"));
  EXPECT_THAT(output("dump " + lib + "copy top", lib), HasSubstr("instTerm \"A3\" net=\"n\""));
}

// The operations make terminals of their net's name.
TEST_F(CopiedOperations, TerminalsOfOtherNamesThanTheirNets) {
  symbol("inv");
  host().write("terminals.tcl", R"(lassign $argv lib
set design [oa::DesignOpen $lib top schematic [oa::ViewTypeGet schematic] w]
set block [oa::BlockCreate $design]
set inst [oa::ScalarInstCreate $block $lib inv symbol I1 [oa::Transform [oa::Point 0 0] R0]]
foreach {net terminal y connected} {n1 P 0 A n1 Q 1000 {} other n2 2000 Z n2 {} 0 {}} {
  if {[set found [oa::ScalarNetFind $block $net]] eq ""} {set found [oa::ScalarNetCreate $block $net]}
  if {$connected ne ""} {oa::InstTermCreate $found $inst $connected}
  if {$terminal eq ""} continue
  set pin [oa::PinCreate [oa::ScalarTermCreate $found $terminal inputOutput]]
  oa::addToPin [oa::RectCreate $block 229 4294967290 [oa::Box -8 [expr {$y-8}] 8 [expr {$y+8}]]] $pin
}
oa::save $design
oa::close $design
)");
  plugIn.saveClose();
  const HostResult made = host().run(QStringList{"tcl", "terminals.tcl", lib});
  ASSERT_EQ(made.exitCode, 0) << made.errors;
  const std::string told = copy("top", "schematic", 1);
  EXPECT_THAT(told, HasSubstr("net n1 is called P in the copy"));
  EXPECT_THAT(told, HasSubstr("net Q is only in the copy"));
  // Taking its terminal's name, this net would be shorted with another.
  EXPECT_THAT(told, HasSubstr("net other has a terminal or is global, but not in the copy"));
  EXPECT_THAT(told, HasSubstr("net n2 has a terminal or is global in the copy only"));
  const std::string dump = output("dump " + lib + "copy top", lib + "copy");
  EXPECT_THAT(dump, HasSubstr("instTerm \"A\" net=\"P\""));
  EXPECT_THAT(dump, HasSubstr("instTerm \"Z\" net=\"other\""));
}

// The signals tell no range of one bit, and for placements that share a name that of the first.
TEST_F(CopiedOperations, RangesOfIteratedPlacements) {
  symbol("inv");
  plugIn.saveSymbol(lib, "wide", "symbol");
  plugIn.saveBusport("D<1:0>", QPoint(-100, 0), false, "input", "");
  plugIn.savePort("Q", QPoint(100, 0), false, "output");
  plugIn.saveClose();
  begin("top");
  plugIn.saveNet(1, "a", 0);
  plugIn.saveWire(points({{0, 0}, {300, 0}}), 1);
  const struct {
    const char *name;
    int start, stop;
    const char *net;
  } ranges[] = {{"V", 2, 2, "a"}, {"V", 7, 4, "N<3:0>"}, {"V", 0, 1, "2*a"}, {"W", 3, 3, "N<1>"}};
  for (const auto &range : ranges) {
    plugIn.saveVectorPlacement(lib, "inv", "symbol", range.name, QPoint(0, 100 * range.stop), "", range.start,
                               range.stop);
    plugIn.saveVectorPlacementConnection("A", range.net);
  }
  place("inv", "S");
  plugIn.savePlacementConnection(1, "Z");
  plugIn.saveVectorPlacement(lib, "wide", "symbol", "M", QPoint(), "", 5, 5);
  plugIn.saveVectorPlacementConnection("D<1:0>", "N<1:0>");
  plugIn.saveVectorPlacementConnection("Q", "N<2>");
  EXPECT_EQ(copy("top", "schematic"), "");
  EXPECT_EQ(differenceOf("top", "schematic"), "");
}

// A bit keeps the name that its bus or bundle has it under, and a terminal its net where the names allow it.
TEST_F(CopiedOperations, BitsOfWideNetsKeepTheirNames) {
  symbol("inv");
  plugIn.saveSymbol(lib, "wide", "symbol");
  plugIn.saveBusport("D<0:1>", QPoint(-100, 0), false, "input", "");
  plugIn.saveClose();
  host().write("bits.tcl", R"(lassign $argv lib
foreach {cell bit wide terminal isGlobal} {
  member a {a b} T1 0  bit {D[1]} {{D[0:1]}} T1 0  global {D[1]} {{D[0:1]}} {} 1  alone a {} T1 0
} {
  set design [oa::DesignOpen $lib $cell schematic [oa::ViewTypeGet schematic] w]
  set block [oa::BlockCreate $design]
  set net [oa::NetCreate $block $bit]
  oa::setGlobal $net $isGlobal
  if {$terminal ne ""} {oa::TermCreate $net $terminal}
  set inst [oa::ScalarInstCreate $block $lib inv symbol I0 [oa::Transform [oa::Point 0 0] R0]]
  oa::InstTermCreate $net $inst A
  if {$wide ne ""} {
    set inst [oa::ScalarInstCreate $block $lib wide symbol I1 [oa::Transform [oa::Point 0 0] R0]]
    oa::InstTermCreate [oa::BundleNetCreate $block [join $wide ,]] $inst {D[0:1]}
  }
  oa::save $design
  oa::close $design
}
set design [oa::DesignOpen $lib exchanged schematic [oa::ViewTypeGet schematic] w]
set block [oa::BlockCreate $design]
foreach {net terminal} {p q q p} {oa::TermCreate [oa::NetCreate $block $net] $terminal}
oa::save $design
oa::close $design
)");
  const HostResult made = host().run(QStringList{"tcl", "bits.tcl", lib});
  ASSERT_EQ(made.exitCode, 0) << made.errors;
  const std::string where = " (" + lib.toStdString() + "copy/";
  const struct {
    const char *cell, *told, *net;
  } cases[] = {{"member", "net a has a terminal or is global, but not in the copy", "net=\"a\""},
               {"bit", "net D<1> has a terminal or is global, but not in the copy", "net=bit:\"D[1]\""},
               {"global", "net D<1> has a terminal or is global, but not in the copy", "net=bit:\"D[1]\""},
               {"alone", "net a is called T1 in the copy", "net=\"T1\""}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.cell);
    const std::string told = copy(c.cell, "schematic", 1);
    EXPECT_THAT(told, HasSubstr(c.told + where + c.cell));
    EXPECT_THAT(told, testing::Not(HasSubstr("only in the copy")));
    EXPECT_THAT(told, testing::Not(HasSubstr("of placement")));
    EXPECT_THAT(output("dump " + lib + "copy " + c.cell, lib), HasSubstr(std::string("instTerm \"A\" ") + c.net));
  }
  EXPECT_THAT(copy("exchanged", "schematic", 1),
              HasSubstr("2 times: a terminal is not kept on its net, since another net has its name"));
}

ViewNetlist netlistOf(const QStringList &nets, const QStringList &externals,
                      const std::vector<ViewNetlist::Device> &devices) {
  ViewNetlist netlist;
  netlist.nets = nets;
  for (const QString &net : nets)
    netlist.isExternal.insert(net, externals.contains(net));
  netlist.devices = devices;
  for (std::size_t i = 0; i < devices.size(); ++i)
    netlist.deviceNumber.insert(devices[i].name, static_cast<int>(i));
  return netlist;
}

TEST(SchematicCopyCheck, EachDifferenceOfTheConnectionsIsTold) {
  const ViewNetlist source =
      netlistOf({"a", "b", "c"}, {"a"}, {{"I1", {{"A", "a"}, {"B", "b"}}}, {"I2", {{"A", "b"}, {"B", ""}}}});
  struct Case {
    const char *name;
    ViewNetlist copy;
    std::vector<std::string> told;
  };
  const Case cases[] = {
      {"equal", source, {}},
      {"another name",
       netlistOf({"a", "x", "c"}, {"a"}, {{"I1", {{"A", "a"}, {"B", "x"}}}, {"I2", {{"A", "x"}, {"B", ""}}}}),
       {"net b is called x in the copy (w)"}},
      {"split",
       netlistOf({"a", "b", "c", "x"}, {"a"}, {{"I1", {{"A", "a"}, {"B", "b"}}}, {"I2", {{"A", "x"}, {"B", ""}}}}),
       {"terminal A of placement I2 is on net b, in the copy on net x (w)", "net x is only in the copy (w)"}},
      {"shorted",
       netlistOf({"a", "c"}, {"a"}, {{"I1", {{"A", "a"}, {"B", "a"}}}, {"I2", {{"A", "a"}, {"B", ""}}}}),
       {"terminal B of placement I1 is on net b, in the copy on net a (w)",
        "terminal A of placement I2 is on net b, in the copy on net a (w)", "net b is not in the copy (w)"}},
      {"opened and closed",
       netlistOf({"a", "b", "c"}, {"a"}, {{"I1", {{"A", "a"}, {"B", ""}}}, {"I2", {{"A", "b"}, {"B", "c"}}}}),
       {"terminal B of placement I1 is on net b, in the copy unconnected (w)",
        "terminal B of placement I2 is unconnected, in the copy on net c (w)"}},
      {"outside",
       netlistOf({"a", "b", "c"}, {"c"}, source.devices),
       {"net a has a terminal or is global, but not in the copy (w)",
        "net c has a terminal or is global in the copy only (w)"}},
      {"devices",
       netlistOf({"a", "b", "c"}, {"a"}, {source.devices[0], {"I3", {}}}),
       {"placement I2 is not in the copy (w)", "placement I3 is only in the copy (w)"}},
  };
  for (const Case &test : cases) {
    SCOPED_TRACE(test.name);
    ImportReport report;
    compareNetlists(source, test.copy, "w", report);
    std::vector<std::string> told;
    for (const QString &line : report.lines())
      told.push_back(line.toStdString());
    EXPECT_EQ(told, test.told);
    EXPECT_EQ(report.problemCount(), static_cast<int>(test.told.size()));
  }
  QStringList many;
  for (int i = 0; i < 30; ++i)
    many.append(QString("n%1").arg(i));
  ImportReport report;
  compareNetlists(netlistOf(many, {}, {}), netlistOf({}, {}, {}), "w", report);
  EXPECT_EQ(report.lines().size(), 21);
  EXPECT_EQ(report.lines().last(), "10 more differences of the connections are not shown (w)");
}

} // namespace
