// How instances arrive: as placements with their data and the connections that the host needs.

#include "schematictest.h"

using namespace oa;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

class ReadInstancesTest : public SchematicTest {
protected:
  // What arrives of a schematic with the instances that `create` makes, apart from the cell's own data.
  Lines placed(void (*create)(oaBlock *block)) {
    {
      SchematicBuilder schematic("row", "schematic", SchematicBuilder::schematic);
      create(*schematic);
    }
    const Lines lines = read("row");
    return lines.size() < 3 ? lines : Lines(lines.begin() + 3, lines.end());
  }
};

oaName named(const char *text) { return oaName(oaConvert::ns, text); }

oaScalarInst *inst(oaBlock *block, const char *view = "symbol", oaOrient orient = oacR0) {
  return oaScalarInst::create(block, scalar("cells"), scalar("inv"), scalar(view), scalar("I1"),
                              oaTransform(oaPoint(10, -20), orient));
}

oaVectorInst *iterated(oaBlock *block, const char *base, oaUInt4 start, oaUInt4 stop) {
  return oaVectorInst::create(block, scalar("cells"), scalar("inv"), scalar("symbol"), scalar(base), start, stop,
                              oaTransform(0, 0));
}

// Connects a terminal of an instance to a new net; no name means no net.
void connect(oaInst *inst, const char *term, const char *net) {
  oaNet *created = *net ? oaNet::create(inst->getBlock(), named(net)) : nullptr;
  oaInstTerm::create(created, inst, named(term));
}

const char kPlaced[] = "addPlacement \"inv\" \"cells.oa\" (10 -20) \"\"";
const char kPlacedAtOrigin[] = "addPlacement \"inv\" \"cells.oa\" (0 0) \"\"";
const char kNamed[] = "setDataString \"devicename\" \"I1\"";

const struct {
  const char *name;
  void (*create)(oaBlock *block);
  Lines lines;
} kInstances[] = {
    {"instance of a symbol", [](oaBlock *b) { inst(b); }, {kPlaced, kNamed}},
    {"instance of another view",
     [](oaBlock *b) { inst(b, "sym2"); },
     {"addPlacement \"sym2@inv\" \"cells.oa\" (10 -20) \"\"", kNamed}},
    {"instance of one of the host's own components",
     [](oaBlock *b) { inst(b, "TarnwickdaleComponent"); },
     {"addPlacement \"inv\" \"cells\" (10 -20) \"\"", kNamed}},
    {"orientation as the readers send it",
     [](oaBlock *b) { inst(b, "symbol", oacMXR90); },
     {"addPlacement \"inv\" \"cells.oa\" (10 -20) \"R90M\"", kNamed}},
    {"array",
     [](oaBlock *b) {
       oaArrayInst::create(b, scalar("cells"), scalar("inv"), scalar("symbol"), scalar("I1"), oaTransform(0, 0), 10, 10,
                           2, 2);
     },
     {kPlacedAtOrigin, kNamed}},

    {"properties of every kind, in their order",
     [](oaBlock *b) {
       oaInst *placed = inst(b);
       oaStringProp::create(placed, "model", "nch \xb5");
       oaIntProp::create(placed, "m", -4);
       oaDoubleProp::create(placed, "w", 1.5e-6);
       oaBooleanProp::create(placed, "swap", true);
       oaStringProp::create(placed, "empty", "");
       oaAppProp::create(placed, "cdf", "ILList", 3, reinterpret_cast<const oaByte *>("abc"));
       oaHierProp::create(placed, "tree");
     },
     {kPlaced, "setDataString \"model\" \"nch \xc2\xb5\"", "setDataString \"m\" \"-4\"",
      "setDataString \"w\" \"1.5e-06\"", "setDataString \"swap\" \"true\"", "setDataString \"empty\" \"\"",
      "setDataString \"cdf\" \"abc\"", "setDataString \"tree\" \"oaHierProp\"", kNamed}},
    {"label offset",
     [](oaBlock *b) {
       oaInst *placed = inst(b);
       oaStringProp::create(placed, "a", "1");
       oaStringProp::create(placed, "labelOffset", "-5 7");
       oaStringProp::create(placed, "b", "2");
     },
     {kPlaced, "setDataString \"a\" \"1\"", "setDataPoint 1 (-5 7)", "setDataString \"b\" \"2\"", kNamed}},
    {"label offset that is no point",
     [](oaBlock *b) { oaStringProp::create(inst(b), "labelOffset", "x"); },
     {kPlaced, "setDataPoint 1 (0 0)", kNamed}},

    {"connection of a single bit", [](oaBlock *b) { connect(inst(b), "A", "n1"); }, {kPlaced, kNamed}},
    {"connections of buses",
     [](oaBlock *b) {
       oaInst *placed = inst(b);
       connect(placed, "A", "n1");
       connect(placed, "D[0:3]", "Q[3:0]");
       connect(placed, "B,C", "n2,X[1]");
       connect(placed, "E[0:1]", "");
     },
     {kPlaced, kNamed, "setVectorPlacementConnection \"D<0:3>\" \"Q<3:0>\"",
      "setVectorPlacementConnection \"B,C\" \"n2,X<1>\""}},

    {"iterated instance, every connection",
     [](oaBlock *b) {
       oaInst *placed = iterated(b, "I1", 0, 3);
       connect(placed, "A", "D[0:3]");
       connect(placed, "B", "");
       connect(placed, "E[0:1]", "Q[0:7]");
     },
     {kPlacedAtOrigin, kNamed, "upgradeToVectorPlacement 0 3", "setVectorPlacementConnection \"A\" \"D<0:3>\"",
      "setVectorPlacementConnection \"E<0:1>\" \"Q<0:7>\""}},
    {"iterated instance, downwards",
     [](oaBlock *b) { iterated(b, "I1", 3, 0); },
     {kPlacedAtOrigin, kNamed, "upgradeToVectorPlacement 3 0"}},
    {"two ranges of one base are told by the first",
     [](oaBlock *b) {
       iterated(b, "I1", 0, 3);
       iterated(b, "I1", 8, 9);
     },
     {kPlacedAtOrigin, kNamed, "upgradeToVectorPlacement 0 3", kPlacedAtOrigin, kNamed,
      "upgradeToVectorPlacement 0 3"}},
    {"range of one bit is a plain placement", [](oaBlock *b) { iterated(b, "I1", 5, 5); }, {kPlacedAtOrigin, kNamed}},
    {"single bit is a plain placement",
     [](oaBlock *b) {
       oaVectorInstBit::create(b, scalar("cells"), scalar("inv"), scalar("symbol"), scalar("I1"), 2, oaTransform(0, 0));
     },
     {kPlacedAtOrigin, kNamed}},
    {"name that begins with a bracket is not cut",
     [](oaBlock *b) {
       oaScalarInst::create(b, scalar("cells"), scalar("inv"), scalar("symbol"), scalar("[1]"), oaTransform(0, 0));
     },
     {kPlacedAtOrigin, "setDataString \"devicename\" \"[1]\""}},
};

TEST_F(ReadInstancesTest, EachInstanceArrivesWithItsData) {
  for (const auto &instance : kInstances) {
    SCOPED_TRACE(instance.name);
    EXPECT_THAT(placed(instance.create), ElementsAreArray(instance.lines));
  }
}

void connectByPosition(oaBlock *block) {
  oaInst *placed = inst(block);
  placed->getMaster();
  oaInstTerm::create(oaNet::create(block, named("Q[0:1]")), placed, oaUInt4(0));
}

// A connection by position has no name of its own: the symbol knows it.
TEST_F(ReadInstancesTest, ConnectionsByPositionTakeTheirNameFromTheSymbol) {
  createLib("cells");
  {
    SchematicBuilder symbol("inv", "symbol", SchematicBuilder::symbol, "cells");
    oaTerm::create(oaNet::create(*symbol, named("D[0:1]")), named("D[0:1]"))->setPosition(0);
  }
  EXPECT_THAT(placed(connectByPosition),
              ElementsAre(kPlaced, kNamed, "setVectorPlacementConnection \"D<0:1>\" \"Q<0:1>\""));
}

TEST_F(ReadInstancesTest, ConnectionsByPositionWithoutASymbolAreReported) {
  EXPECT_THAT(placed(connectByPosition),
              ElementsAre(kPlaced, kNamed,
                          testing::AllOf(testing::StartsWith("reportError"), testing::EndsWith(" 1 \"I1 0\""))));
}

} // namespace
