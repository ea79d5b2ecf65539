// What loadNetlist() sends, for designs that are built with the API and with the writing operations.

#include <algorithm>
#include <fstream>

#include "schematictest.h"

using namespace oa;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

oaName name(const std::string &text) { return oaName(oaConvert::ns, text.c_str()); }

oaNet *net(oaBlock *block, const std::string &text) { return oaNet::create(block, name(text)); }

void port(oaBlock *block, const std::string &text) { oaTerm::create(net(block, text), name(text)); }

// A symbol with these terminals.
void symbol(const std::string &cell, const Lines &terminals) {
  const SchematicBuilder builder(cell, "symbol", SchematicBuilder::symbol);
  for (const std::string &terminal : terminals) {
    port(*builder, terminal);
  }
}

// "I1", or "I1[0:3]" for an iterated instance.
oaInst *place(oaBlock *block, const std::string &cell, const std::string &instance) {
  const oaSimpleName parsed(oaConvert::ns, instance.c_str());
  const oaTransform xform(0, 0);
  if (const oaVectorName *vector = parsed.getVector()) {
    oaScalarName base;
    vector->getBaseName(base);
    return oaVectorInst::create(block, scalar("lib"), scalar(cell), scalar("symbol"), base, vector->getStart(),
                                vector->getStop(), xform);
  }
  return oaScalarInst::create(block, scalar("lib"), scalar(cell), scalar("symbol"), scalar(instance), xform);
}

oaInstTerm *connect(oaInst *inst, const std::string &terminal, oaNet *toNet) {
  return oaInstTerm::create(toNet, inst, name(terminal));
}

// As the writing operations name terminals: the whole text is a scalar name.
oaInstTerm *connectByText(oaInst *inst, const std::string &terminal, oaNet *toNet) {
  return oaInstTerm::create(toNet, inst, oaName(scalar(terminal)));
}

class Netlist : public SchematicTest {
protected:
  // Nodes as "name number external", devices as "name master [terminals] [nodes] [names] [values]"; no quotes.
  Lines load(const std::string &cell, const std::string &view = "schematic") {
    recorder.clear();
    plugIn.loadNetlist("lib", QString::fromStdString(cell), QString::fromStdString(view));
    Lines lines;
    for (std::string line : recorder.lines({"netlistAddNode", "netlistAddDevice"})) {
      line.erase(0, line.find(' ') + 1);
      line.erase(std::remove(line.begin(), line.end(), '"'), line.end());
      lines.push_back(line);
    }
    return lines;
  }
  Lines devices(const std::string &cell) {
    Lines found;
    for (const std::string &line : load(cell)) {
      if (line.find('[') != std::string::npos) {
        found.push_back(line);
      }
    }
    return found;
  }
};

TEST_F(Netlist, NodesComeFirstInTheOrderOfTheNets) {
  symbol("inv", {"A", "Y"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaNet *middle = net(*top, "middle");
    port(*top, "in");
    port(*top, "Q[1:0]");
    oaNet::create(*top, name("VDD"), oacSignalSigType, true);
    oaInst *first = place(*top, "inv", "I1");
    connect(first, "Y", middle);
    connect(first, "A", oaNet::find(*top, name("in")));
    oaStringProp::create(first, "w", "2u");
    oaStringProp::create(first, "labelOffset", "3 4");
    oaIntProp::create(first, "m", 4);
    oaInst *second = place(*top, "inv", "I2");
    connect(second, "A", middle);
    connect(second, "Y", net(*top, "Q[0]"));
  }
  EXPECT_THAT(load("top"), ElementsAre("middle 0 false", "in 1 true", "Q<1> 2 true", "Q<0> 3 true", "VDD 4 true",
                                       "I1 inv [A Y] [1 0] [w m] [2u 4]", "I2 inv [A Y] [0 3] [] []"));
  EXPECT_THAT(reports(), IsEmpty());
}

TEST_F(Netlist, ConnectionsAreResolvedBitByBit) {
  const struct {
    const char *name, *terminals, *instance, *terminal, *net;
    Lines expected;
  } cases[] = {
      {"bus in written order",
       "D[2:0]",
       "I1",
       "D[2:0]",
       "B[0:2]",
       {"B<0> 0 false", "B<1> 1 false", "B<2> 2 false", "I1 m [D<2> D<1> D<0>] [0 1 2] [] []"}},
      {"bundle with a repeat and a step",
       "D[3:0]",
       "I1",
       "D[3:0]",
       "2*A,B[4:0:4]",
       {"A 0 false", "B<4> 1 false", "B<0> 2 false", "I1 m [D<3> D<2> D<1> D<0>] [0 0 1 2] [] []"}},
      {"bundle terminal with a repeat",
       "2*P,Q",
       "I1",
       "2*P,Q",
       "2*A,B",
       {"A 0 false", "B 1 false", "I1 m [P Q] [0 1] [] []"}},
      {"part of a bus terminal",
       "D[1:0]",
       "I1",
       "D[0]",
       "N",
       {"N 0 false", "I1/D<1> 1 false", "I1 m [D<1> D<0>] [1 0] [] []"}},
      {"terminals joined to a bundle",
       "A,B",
       "I1",
       "B,A",
       "N[1:0]",
       {"N<1> 0 false", "N<0> 1 false", "I1 m [A B] [1 0] [] []"}},
      {"iterated, a slice for each bit",
       "D[1:0]",
       "I1[0:1]",
       "D[1:0]",
       "B[3:0]",
       {"B<3> 0 false", "B<2> 1 false", "B<1> 2 false", "B<0> 3 false", "I1<0> m [D<1> D<0>] [0 1] [] []",
        "I1<1> m [D<1> D<0>] [2 3] [] []"}},
      {"iterated downwards",
       "A",
       "I1[3:2]",
       "A",
       "N,M",
       {"N 0 false", "M 1 false", "I1<3> m [A] [0] [] []", "I1<2> m [A] [1] [] []"}},
      {"iterated, one net repeated",
       "A",
       "I1[0:1]",
       "A",
       "2*N",
       {"N 0 false", "I1<0> m [A] [0] [] []", "I1<1> m [A] [0] [] []"}},
      {"unconnected",
       "A,Y",
       "I1[0:1]",
       "A",
       "2*N",
       {"N 0 false", "I1<0>/Y 1 false", "I1<1>/Y 2 false", "I1<0> m [A Y] [0 1] [] []", "I1<1> m [A Y] [0 2] [] []"}},
  };
  int number = 0;
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const std::string cell = "top" + std::to_string(number);
    const std::string master = "m" + std::to_string(number++);
    symbol(master, {c.terminals});
    {
      const SchematicBuilder top(cell, "schematic", SchematicBuilder::schematic);
      connect(place(*top, master, c.instance), c.terminal, net(*top, c.net));
    }
    Lines expected = c.expected;
    for (std::string &line : expected) {
      const size_t at = line.find(" m [");
      if (at != std::string::npos) {
        line.replace(at + 1, 1, master);
      }
    }
    EXPECT_EQ(load(cell), expected);
    EXPECT_THAT(reports(), IsEmpty());
  }
}

TEST_F(Netlist, NetsOverTheSameBitsShareTheirNodes) {
  symbol("m", {"A", "D[3:0]"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaNet *bus = net(*top, "N[0:3]");
    oaNet *reversed = net(*top, "N[3:0]");
    oaNet *bundle = oaBundleNet::create(*top, oaBundleName(oaVectorName(scalar("N"), 3, 0)));
    oaNet *bit = net(*top, "N[2]");
    connect(place(*top, "m", "I1"), "D[3:0]", bus);
    connect(place(*top, "m", "I2"), "D[3:0]", reversed);
    oaInst *third = place(*top, "m", "I3");
    connect(third, "D[3:0]", bundle);
    connect(third, "A", bit);
  }
  EXPECT_THAT(load("top"), ElementsAre("N<0> 0 false", "N<1> 1 false", "N<2> 2 false", "N<3> 3 false", "I1/A 4 false",
                                       "I2/A 5 false", "I1 m [A D<3> D<2> D<1> D<0>] [4 0 1 2 3] [] []",
                                       "I2 m [A D<3> D<2> D<1> D<0>] [5 3 2 1 0] [] []",
                                       "I3 m [A D<3> D<2> D<1> D<0>] [2 3 2 1 0] [] []"));
}

TEST_F(Netlist, EquivalentNetsAreOneNode) {
  symbol("inv", {"A", "Y"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaNet *alias = net(*top, "alias");
    port(*top, "other");
    oaBitNet *preferred = static_cast<oaBitNet *>(net(*top, "main"));
    preferred->makeEquivalent(static_cast<oaBitNet *>(alias));
    preferred->makeEquivalent(static_cast<oaBitNet *>(oaNet::find(*top, name("other"))));
    preferred->setPreferredEquivalent();
    oaInst *inst = place(*top, "inv", "I1");
    connect(inst, "A", alias);
    connect(inst, "Y", preferred);
  }
  EXPECT_THAT(load("top"), ElementsAre("main 0 true", "I1 inv [A Y] [0 0] [] []"));
}

TEST_F(Netlist, TerminalsAreMatchedByTheirText) {
  symbol("m", {"D[1:0]"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaInst *bits = place(*top, "m", "I1");
    connectByText(bits, "D<0>", net(*top, "N"));
    connectByText(bits, "D<1>", net(*top, "M"));
    // As wide as the terminal: the whole net for each bit.
    connectByText(place(*top, "m", "I2[0:1]"), "D<1:0>", net(*top, "B[1:0]"));
  }
  EXPECT_THAT(devices("top"), ElementsAre("I1 m [D<1> D<0>] [1 0] [] []", "I2<0> m [D<1> D<0>] [2 3] [] []",
                                          "I2<1> m [D<1> D<0>] [2 3] [] []"));
  EXPECT_THAT(reports(), IsEmpty());
}

TEST_F(Netlist, NetOfAnotherWidthIsConnectedAsFarAsItGoes) {
  symbol("m", {"D[3:0]"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    connectByText(place(*top, "m", "I1[0:1]"), "D<3:0>", net(*top, "B[1:0]"));
  }
  EXPECT_THAT(devices("top"), ElementsAre("I1<0> m [D<3> D<2> D<1> D<0>] [0 1 2 3] [] []",
                                          "I1<1> m [D<3> D<2> D<1> D<0>] [4 5 6 7] [] []"));
  EXPECT_THAT(reports(),
              ElementsAre("reportError \"the width of a net does not fit\" 1 \"lib/top/schematic, instance I1<0:1> of "
                          "lib/m/symbol, terminal D<3:0> has 4 bits, the instance 2, the net 2\""));
}

TEST_F(Netlist, TerminalOnTwoNetsIsTold) {
  symbol("two", {"D[0:1]"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaInst *inst = place(*top, "two", "I1");
    connect(inst, "D[0:1]", net(*top, "V[0:1]"));
    connectByText(inst, "D<0>", net(*top, "Z"));
  }
  load("top");
  EXPECT_THAT(reports(), ElementsAre(AllOf(HasSubstr("two nets"), HasSubstr("I1"), HasSubstr("D<0>"))));
}

TEST_F(Netlist, MissingMasterIsToldOnceAndListedByName) {
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaNet *bus = net(*top, "B[1:0]");
    for (const char *instance : {"I1", "I2"}) {
      oaInst *inst = place(*top, "gone", instance);
      connect(inst, "D[3:2]", bus);
      connect(inst, "Y", nullptr);
    }
  }
  EXPECT_THAT(load("top"), ElementsAre("B<1> 0 false", "B<0> 1 false", "I1/Y 2 false", "I2/Y 3 false",
                                       "I1 gone [D<3> D<2> Y] [0 1 2] [] []", "I2 gone [D<3> D<2> Y] [0 1 3] [] []"));
  EXPECT_THAT(reports(), ElementsAre(AllOf(HasSubstr("\"the master of an instance cannot be read\" 1 "
                                                     "\"lib/top/schematic, instance I1 of lib/gone/symbol, "),
                                           HasSubstr("connected by name: D<3:2>, Y"))));
}

TEST_F(Netlist, TerminalThatTheMasterLacksIsListedBehindTheOthers) {
  symbol("inv", {"A", "Y"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    for (const char *instance : {"I1", "I2"}) {
      oaInst *inst = place(*top, "inv", instance);
      connect(inst, "EN", net(*top, std::string("N") + instance));
      connect(inst, "Y", oaNet::find(*top, name(std::string("N") + instance)));
    }
  }
  EXPECT_THAT(devices("top"), ElementsAre("I1 inv [A Y EN] [2 0 0] [] []", "I2 inv [A Y EN] [3 1 1] [] []"));
  EXPECT_THAT(reports(),
              ElementsAre("reportError \"the master of an instance lacks a terminal\" 1 \"lib/top/schematic, "
                          "instance I1 of lib/inv/symbol, connected by name: EN\""));
}

TEST_F(Netlist, DevicesAreNamedAsPlacementsAre) {
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    for (const char *view : {"symbol", "sym2", "TarnwickdaleComponent"}) {
      oaScalarInst::create(*top, scalar("lib"), scalar("c"), scalar(view), scalar(view), oaTransform(0, 0));
    }
  }
  EXPECT_THAT(devices("top"),
              ElementsAre("symbol c [] [] [] []", "sym2 sym2@c [] [] [] []", "TarnwickdaleComponent c [] [] [] []"));
}

TEST_F(Netlist, WrittenSchematicComesBack) {
  plugIn.saveSymbol("lib", "cell", "symbol");
  plugIn.savePort("A", QPoint(0, 0), false, "input");
  plugIn.saveBusport("D<1:0>", QPoint(0, 40), false, "input", "");
  plugIn.saveClose();

  plugIn.saveSchematic("lib", "top", "schematic");
  plugIn.saveNet(1, "in", 1);
  plugIn.saveNet(2, "VDD", 2);
  plugIn.saveNet(3, "B<2>", 0);
  plugIn.saveBus(QPolygon(QVector<QPoint>{QPoint(0, 0), QPoint(9, 0)}), "B<3:0>");
  plugIn.savePlacement("lib", "cell", "symbol", "I1", QPoint(0, 0), "");
  plugIn.savePlacementConnection(2, "A");
  plugIn.savePlacementConnection(3, "D<1>");
  plugIn.saveDoubleProp("w", 0.5);
  plugIn.saveVectorPlacement("lib", "cell", "symbol", "I2", QPoint(0, 0), "", 1, 0);
  plugIn.saveVectorPlacementConnection("A", "2*in");
  plugIn.saveVectorPlacementConnection("D<1:0>", "B<3:0>");
  plugIn.saveClose();

  EXPECT_THAT(load("top"),
              ElementsAre("in 0 true", "VDD 1 true", "B<2> 2 false", "B<3> 3 false", "B<1> 4 false", "B<0> 5 false",
                          "I1/D<0> 6 false", "I1 cell [A D<1> D<0>] [1 2 6] [w] [0.5]",
                          "I2<1> cell [A D<1> D<0>] [0 3 2] [] []", "I2<0> cell [A D<1> D<0>] [0 4 5] [] []"));
  EXPECT_THAT(reports(), IsEmpty());
}

TEST_F(Netlist, ViewThatCannotBeReadIsNamed) {
  EXPECT_THAT(printedBy([&] { load("nowhere"); }), HasSubstr("ERROR (loadNetlist): "));
  EXPECT_THAT(reports(), ElementsAre(HasSubstr("loadNetlist: lib/nowhere/schematic")));
  {
    const SchematicBuilder builder("empty", "schematic", SchematicBuilder::schematic);
    (*builder)->destroy();
  }
  EXPECT_EQ(printedBy([&] { load("empty"); }), "");
  EXPECT_THAT(reports(), ElementsAre("reportError \"no data\" 1 \"loadNetlist: lib/empty/schematic\""));
}

TEST_F(Netlist, DamagedMasterLeavesTheRest) {
  symbol("bad", {"A"});
  symbol("good", {"A"});
  {
    const SchematicBuilder top("top", "schematic", SchematicBuilder::schematic);
    oaNet *wire = net(*top, "N");
    connect(place(*top, "bad", "I1"), "A", wire);
    connect(place(*top, "good", "I2"), "A", wire);
  }
  const QDir view(folder().filePath("lib/bad/symbol"));
  for (const QString &file : view.entryList({"*.oa"}, QDir::Files)) {
    std::ofstream(view.filePath(file).toStdString(), std::ios::trunc) << "this is no design";
  }
  EXPECT_THAT(devices("top"), ElementsAre("I1 bad [A] [0] [] []", "I2 good [A] [0] [] []"));
  EXPECT_THAT(reports(), ElementsAre(AllOf(HasSubstr("instance I1 of lib/bad/symbol"), HasSubstr(".oa"))));
}

} // namespace
