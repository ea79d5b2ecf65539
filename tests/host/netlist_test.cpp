// What `oahost netlist` prints for libraries that are written with the plug-in's operations.

#include "netlistmodel.h"
#include "schematichost.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using testing::HasSubstr;

class NetlistCommand : public SchematicHost {
protected:
  // A symbol with a terminal for each name; names of several bits are bus ports.
  void saveSymbol(const QString &lib, const QString &cell, const QStringList &ports,
                  const NetlistParameters &properties = {}) {
    plugIn.saveSymbol(lib, cell, "symbol");
    int y = 0;
    for (const QString &port : ports) {
      if (port.contains(':'))
        plugIn.saveBusport(port, QPoint(0, y += 20), false, "input", "");
      else
        plugIn.savePort(port, QPoint(0, y += 20), false, "input");
    }
    for (const auto &[name, value] : properties)
      plugIn.savePropString(name, value);
    plugIn.saveClose();
  }
  // lib/inv: a symbol, and a schematic of two transistors, a supply and a net of its own.
  void saveInverter(const QString &lib, const QString &deviceLib) {
    saveSymbol(deviceLib, "nmos", {"D", "G", "S"},
               {{"spiceprefix", "M"}, {"model", "nch"}, {"w", "1u"}, {"l", "0.1u"}});
    saveSymbol(lib, "inv", {"A", "Y"}, {{"wn", "2u"}});
    plugIn.saveSchematic(lib, "inv", "schematic");
    plugIn.saveNet(1, "A", 1);
    plugIn.savePort(1, QPoint(0, 0), false, "input", "");
    plugIn.saveNet(2, "Y", 1);
    plugIn.savePort(2, QPoint(0, 40), false, "output", "");
    plugIn.saveGlobalPort("VSS");
    plugIn.saveNet(3, "inner", 0);
    for (const char *name : {"N1", "N2"}) {
      plugIn.savePlacement(deviceLib, "nmos", "symbol", name, QPoint(0, 0), "");
      plugIn.savePlacementConnection(name[1] == '1' ? 2 : 3, "D");
      plugIn.savePlacementConnection(1, "G");
      plugIn.saveStringProp("w", "wn");
    }
    plugIn.saveClose();
  }
};

TEST_F(NetlistCommand, EachCellIsOneSubcircuit) {
  createLib("devices");
  createLib("logic");
  createLib("chip");
  saveInverter("logic", "devices");
  saveSymbol("chip", "top", {"IN<1:0>", "OUT"});
  plugIn.saveSchematic("chip", "top", "schematic");
  plugIn.saveNet(1, "OUT", 1);
  plugIn.savePort(1, QPoint(0, 0), false, "output", "");
  plugIn.saveBusport("IN<1:0>", QPoint(0, 40), false, "input", "");
  plugIn.saveNet(2, "IN<0>", 0);
  plugIn.saveVectorPlacement("logic", "inv", "symbol", "x1", QPoint(0, 0), "", 1, 0);
  plugIn.saveVectorPlacementConnection("A", "IN<1:0>");
  plugIn.saveVectorPlacementConnection("Y", "2*OUT");
  plugIn.savePlacement("logic", "inv", "symbol", "U2", QPoint(0, 0), "");
  plugIn.savePlacementConnection(2, "A");
  plugIn.saveStringProp("wn", "4u");
  plugIn.saveClose();

  const HostResult result = host().run("netlist chip top");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output.toStdString(), "* netlist of chip/top/schematic\n"
                                         ".global VSS\n"
                                         "\n"
                                         "* logic/inv/schematic\n"
                                         ".subckt inv A Y wn=2u\n"
                                         "MN1 Y A N1/S nch w=wn l=0.1u\n"
                                         "MN2 inner A N2/S nch w=wn l=0.1u\n"
                                         ".ends inv\n"
                                         "\n"
                                         "* chip/top/schematic\n"
                                         ".subckt top IN[1] IN[0] OUT\n"
                                         "x1[1] IN[1] OUT inv\n"
                                         "x1[0] IN[0] OUT inv\n"
                                         "XU2 IN[0] U2/Y inv wn=4u\n"
                                         ".ends top\n");
  EXPECT_EQ(host().run("netlist chip top -o out.sp").output, "");
  EXPECT_EQ(host().read("out.sp"), result.output);
}

TEST_F(NetlistCommand, JsonHasTheSameNetlist) {
  createLib("jdevices");
  createLib("jlogic");
  saveInverter("jlogic", "jdevices");
  const HostResult result = host().run("netlist jlogic inv --format json");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const QJsonObject netlist = QJsonDocument::fromJson(result.output).object();
  EXPECT_EQ(netlist["top"], "jlogic/inv/schematic");
  const QJsonObject cell = netlist["cells"].toArray().first().toObject();
  EXPECT_EQ(cell["ports"], (QJsonArray{"A", "Y"}));
  EXPECT_EQ(cell["portNets"], (QJsonArray{"A", "Y"}));
  EXPECT_EQ(cell["globals"], (QJsonArray{"VSS"}));
  EXPECT_EQ(cell["nets"], (QJsonArray{"A", "Y", "VSS", "inner", "N1/S", "N2/S"}));
  const QJsonObject device = cell["devices"].toArray().last().toObject();
  EXPECT_EQ(device["name"], "N2");
  EXPECT_EQ(device["library"], "jdevices");
  EXPECT_EQ(device["subcircuit"], false);
  EXPECT_EQ(device["connections"], (QJsonObject{{"D", "inner"}, {"G", "A"}, {"S", "N2/S"}}));
  EXPECT_EQ(device["parameters"], (QJsonObject{{"spiceprefix", "M"}, {"model", "nch"}, {"w", "wn"}, {"l", "0.1u"}}));
}

TEST_F(NetlistCommand, SupplyNamedByAPropertyIsAPort) {
  createLib("extra");
  saveSymbol("extra", "gate", {"A"}, {{"xschem.extra", "VCC mode"}, {"VCC", "VDD"}, {"mode", "fast"}, {"w", "1"}});
  saveSymbol("extra", "res", {"P", "N"}, {{"spiceprefix", "R"}, {"model", "@mode"}});
  plugIn.saveSchematic("extra", "gate", "schematic");
  plugIn.saveNet(1, "A", 1);
  plugIn.savePort(1, QPoint(0, 0), false, "input", "");
  plugIn.saveNet(2, "VCC", 0);
  plugIn.savePlacement("extra", "res", "symbol", "R1", QPoint(0, 0), "");
  plugIn.savePlacementConnection(1, "P");
  plugIn.savePlacementConnection(2, "N");
  plugIn.saveClose();
  plugIn.saveSchematic("extra", "top", "schematic");
  plugIn.saveNet(1, "in", 0);
  for (const char *name : {"x1", "x2"}) {
    plugIn.savePlacement("extra", "gate", "symbol", name, QPoint(0, 0), "");
    plugIn.savePlacementConnection(1, "A");
  }
  plugIn.saveStringProp("VCC", "VBAT");
  plugIn.saveClose();
  const HostResult result = host().run("netlist extra top");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output.toStdString(), HasSubstr(".subckt gate A VCC w=1\nR1 A VCC fast\n.ends gate\n"));
  EXPECT_THAT(result.output.toStdString(), HasSubstr(".subckt top\nx1 in VDD gate\nx2 in VBAT gate\n.ends top\n"));
}

// The terminals of a symbol are a bus between scalars in the drawing; the database lists buses behind them.
TEST_F(NetlistCommand, NodesComeInTheOrderOfTheDrawing) {
  createLib("order");
  saveSymbol("order", "alu", {"A<1:0>", "zero", "B<1:0>", "carry"});
  saveSymbol("order", "alu2", {"A<1:0>", "zero", "B<1:0>", "carry"},
             {{"xschem.format", "@name @pinlist ; @#1 @#2 @symname"}});
  plugIn.saveSchematic("order", "top", "schematic");
  plugIn.saveNet(1, "z", 0);
  plugIn.saveNet(2, "c", 0);
  for (const char *master : {"alu", "alu2"}) {
    plugIn.savePlacement("order", master, "symbol", QString("x") + master, QPoint(0, 0), "");
    plugIn.savePlacementConnection(1, "zero");
    plugIn.savePlacementConnection(2, "carry");
    plugIn.saveVectorPlacementConnection("A<1:0>", "a<1:0>");
    plugIn.saveVectorPlacementConnection("B<1:0>", "b<0:1>");
    plugIn.saveVectorPlacementConnection("extra", "z");
  }
  plugIn.saveClose();
  const HostResult result = host().run("netlist order top");
  EXPECT_EQ(result.exitCode, 1); // the symbols have no terminal "extra"
  EXPECT_THAT(result.output.toStdString(), HasSubstr("xalu a[1] a[0] z b[0] b[1] c z alu\n"
                                                     "xalu2 a[1] a[0] z b[0] b[1] c z ; z b[0] b[1] alu2\n"));
}

// Ports may be drawn as anything, and a global net without a port is no terminal.
TEST_F(NetlistCommand, TerminalsAreThoseOfTheSymbolHoweverDrawn) {
  createLib("shapes");
  plugIn.saveSymbol("shapes", "buf", "symbol");
  plugIn.savePortRect(0, 10, 10, 0, "A");
  plugIn.savePortPolygon(points({QPoint(40, 0), QPoint(50, 0), QPoint(50, 10)}), "Z");
  plugIn.savePort("S", QPoint(0, 40), false, "input");
  plugIn.saveGlobalPort("VDD");
  plugIn.saveClose();
  plugIn.saveSchematic("shapes", "buf", "schematic");
  int number = 0;
  for (const char *name : {"A", "S", "Z"}) {
    plugIn.saveNet(++number, name, 1);
    plugIn.savePort(number, QPoint(0, 40 * number), false, "input", "");
  }
  plugIn.saveGlobalPort("VDD");
  plugIn.saveClose();
  plugIn.saveSchematic("shapes", "top", "schematic");
  plugIn.saveNet(11, "A", 1);
  plugIn.saveNet(12, "out", 0);
  plugIn.savePlacement("shapes", "buf", "symbol", "x1", QPoint(0, 0), "");
  plugIn.savePlacementConnection(11, "A");
  plugIn.savePlacementConnection(11, "S");
  plugIn.savePlacementConnection(12, "Z");
  plugIn.saveClose();
  const std::string subcircuit = ".global VDD\n\n* shapes/buf/schematic\n.subckt buf A S Z\n.ends buf\n";
  for (const char *top : {"top", "buf"}) {
    const HostResult result = host().run({"netlist", "shapes", top});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output.toStdString(), HasSubstr(subcircuit));
  }
  EXPECT_THAT(host().run("netlist shapes top").output.toStdString(), HasSubstr(".subckt top A\nx1 A A out buf\n"));
}

// Ports have the names of terminals, whatever their nets are called; these need not be drawn.
TEST_F(NetlistCommand, TerminalsOfOtherNamesThanTheirNets) {
  createLib("named");
  saveSymbol("named", "dev", {"P", "N"});
  for (const char *cell : {"plain", "exchanged"})
    saveSymbol("named", cell, {"T1", "T2"});
  host().write("named.tcl", R"(foreach {cell nets} {plain {T1 a T2 w[1]} exchanged {T1 T2 T2 T1}
    bare {T1 a T2 T3} bus {T[0:1] d[1:0]} shared {P a Q a}} {
  set design [oa::DesignOpen named $cell schematic [oa::ViewTypeGet schematic] w]
  set block [oa::BlockCreate $design]
  set inst [oa::ScalarInstCreate $block named dev symbol D1 [oa::Transform [oa::Point 0 0] R0]]
  foreach {terminal name} $nets pin {P N} {
    if {$terminal eq ""} break
    if {[set net [oa::NetFind $block $name]] eq ""} {set net [oa::NetCreate $block $name]}
    set port [oa::TermCreate $net $terminal]
    oa::addToPin [oa::RectCreate $block 229 4294967290 [oa::Box 0 0 16 16]] [oa::PinCreate $port]
    if {$cell eq "bus"} {set net [oa::BusNetBitCreate $block d 1]}
    if {$pin eq "P"} {oa::InstTermCreate $net $inst P}
  }
  oa::save $design
  oa::close $design
}
)");
  const HostResult made = host().run("tcl named.tcl");
  ASSERT_EQ(made.exitCode, 0) << made.errors;
  const struct {
    const char *cell, *body, *told;
  } cases[] = {
      {"plain", ".subckt plain T1 T2\nXD1 T1 D1/N dev\n", ""},
      {"exchanged", ".subckt exchanged T1 T2\nXD1 T1 D1/N dev\n", ""},
      {"bare", ".subckt bare T1 T2\nXD1 T1 D1/N dev\n", ""},
      {"bus", ".subckt bus T[0] T[1]\nXD1 T[0] D1/N dev\n", ""},
      {"shared", ".subckt shared P Q\nXD1 P D1/N dev\n", "two terminals are on one net, which a netlist cannot say"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.cell);
    const HostResult result = host().run({"netlist", "named", c.cell});
    EXPECT_EQ(result.exitCode, c.told[0] == '\0' ? 0 : 1);
    EXPECT_THAT(result.errors, HasSubstr(c.told));
    EXPECT_THAT(result.output.toStdString(), HasSubstr(c.body));
    EXPECT_THAT(result.output.toStdString(), testing::Not(HasSubstr(".global")));
  }
  const HostResult result = host().run("netlist named shared --format json");
  const QJsonObject cell = QJsonDocument::fromJson(result.output).object()["cells"].toArray().last().toObject();
  EXPECT_EQ(cell["portNets"], (QJsonArray{"a", QJsonValue()}));
}

// A single placement may be called like a bit of an iterated one.
TEST_F(NetlistCommand, PlacementsOfOneNameStayApart) {
  createLib("same");
  saveSymbol("same", "dev", {"P"});
  plugIn.saveSchematic("same", "top", "schematic");
  plugIn.savePlacement("same", "dev", "symbol", "V<2>", QPoint(0, 0), "");
  plugIn.savePlacement("same", "dev", "symbol", "V[2]", QPoint(0, 40), "");
  plugIn.saveVectorPlacement("same", "dev", "symbol", "V", QPoint(0, 80), "", 3, 2);
  plugIn.saveClose();
  const HostResult result = host().run("netlist same top");
  EXPECT_THAT(result.output.toStdString(),
              HasSubstr("XV[2] V[2]/P dev\nXV[2]_2 V[2]/P_2 dev\nXV[3] V[3]/P dev\nXV[2]_3 V[2]/P_3 dev\n"));
  EXPECT_THAT(result.errors, HasSubstr("two nets have the same name, one is renamed"));
}

TEST_F(NetlistCommand, WhatIsWrongIsToldAndTheRestPrinted) {
  createLib("faulty");
  saveSymbol("faulty", "cell", {"A", "Z"});
  plugIn.saveSchematic("faulty", "cell", "schematic");
  plugIn.saveNet(1, "A", 1);
  plugIn.savePort(1, QPoint(0, 0), false, "input", "");
  plugIn.saveNet(2, "Q", 1);
  plugIn.savePort(2, QPoint(0, 40), false, "input", "");
  plugIn.savePlacement("faulty", "gone", "symbol", "I1", QPoint(0, 0), "");
  plugIn.savePlacementConnection(1, "P");
  plugIn.savePlacement("faulty", "cell", "symbol", "I2", QPoint(0, 0), "");
  plugIn.savePlacementConnection(1, "A");
  plugIn.saveClose();
  const HostResult result = host().run("netlist faulty cell");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.output.toStdString(), HasSubstr(".subckt cell A Z\nXI1 A gone\nXI2 A I2/Z cell\n.ends cell\n"));
  for (const char *part : {"instance I1 of faulty/gone/symbol", "a terminal of the symbol is no port of the schematic",
                           "faulty/cell/schematic, terminal Z", "faulty/cell/schematic, port Q",
                           "a cell contains itself", "device I2 of cell"})
    EXPECT_THAT(result.errors, HasSubstr(part));

  const struct {
    const char *arguments, *message;
  } refused[] = {{"netlist nolib cell", "library nolib is not known"},
                 {"netlist faulty nocell", "library faulty has no cell nocell"},
                 {"netlist faulty cell layout", "has no view layout"}};
  for (const auto &c : refused) {
    const HostResult refusal = host().run(c.arguments);
    EXPECT_EQ(refusal.exitCode, 1) << c.arguments;
    EXPECT_THAT(refusal.errors, HasSubstr(c.message));
    EXPECT_EQ(refusal.output, "");
  }
}

TEST_F(NetlistCommand, DifferentNetsNeverBecomeOne) {
  createLib("names");
  saveSymbol("names", "dev", {"P", "N"});
  plugIn.saveSchematic("names", "top", "schematic");
  const char *const nets[] = {"clk", "CLK", "VDD", "D<1>"};
  for (int i = 0; i < 4; ++i)
    plugIn.saveNet(i, nets[i], 0);
  plugIn.saveNet(4, "vdd", 2);
  for (int i = 0; i < 4; ++i) {
    plugIn.savePlacement("names", "dev", "symbol", QString("%1%2").arg(i % 2 ? "u" : "U").arg(i / 2), QPoint(0, 0), "");
    plugIn.savePlacementConnection(i, "P");
    plugIn.savePlacementConnection(4, "N");
  }
  plugIn.saveClose();
  const HostResult result = host().run("netlist names top");
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_THAT(result.output.toStdString(), HasSubstr(".global vdd\n"));
  EXPECT_THAT(result.output.toStdString(), HasSubstr("XU0 clk vdd dev\nXu0_2 CLK_2 vdd dev\n"
                                                     "XU1 VDD_2 vdd dev\nXu1_2 D[1] vdd dev\n"));
  EXPECT_THAT(result.errors, HasSubstr("4 times: a name is written otherwise for SPICE"));
}

} // namespace
