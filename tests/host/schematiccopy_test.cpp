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
              ElementsAre("net IN 1", "net VDD 2", "net G<0> 0", "net GND 2", "wire IN 0,0 10,0",
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
  EXPECT_EQ(copied.exitCode, 1);
  EXPECT_THAT(copied.errors, HasSubstr("terminal D<3:0> of placement m1 at (0, 0) has 4 bits, but net A has 1"));
  for (const char *view :
       {"top schematic", "top symbol", "gate symbol", "gate small", "gate schematic", "memory symbol"}) {
    SCOPED_TRACE(view);
    const std::string stream = output(QString("read first %1").arg(view), "first");
    EXPECT_THAT(stream, HasSubstr("addPort"));
    EXPECT_EQ(output(QString("read second %1").arg(view), "second"), stream);
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
  const HostResult refused = host().run("copy old top new");
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_THAT(refused.errors,
              HasSubstr("library new has a cell gate with a view small already; --replace writes over"));
  EXPECT_EQ(output("cells new", "new"), "gate\n");
  EXPECT_EQ(host().run("copy old top new twin --replace --top-only").exitCode, 0);
  EXPECT_EQ(output("cells new", "new"), "gate\nmemory\ntwin\n");
  EXPECT_EQ(output("views new gate", "new"), "small\nsymbol\n");
  EXPECT_EQ(output("views new twin", "new"), "schematic\nsymbol\n");
  EXPECT_EQ(host().run("copy old top old twin").exitCode, 0);
  EXPECT_THAT(output("read old twin", "old"), HasSubstr("addPlacement \"memory\" LIB.oa 1000,0"));
  EXPECT_THAT(host().run("copy old top old").errors, HasSubstr("old/top/schematic would be copied onto itself"));
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
  EXPECT_THAT(copied.errors,
              HasSubstr("the placed symbol target/gone is missing: library target has no component gone: "
                        "cell gone has no view symbol"));
  EXPECT_THAT(copied.errors, HasSubstr("the symbol target/gone of placement u1 is missing"));
  EXPECT_EQ(output("read target top", "target"), output("read partial top", "partial"));
}

} // namespace
