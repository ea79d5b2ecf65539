// loadComponent(): what the host gets of one symbol.

#include <cmath>

#include <QFile>

#include "oaplugincore.h"
#include "schematiclayers.h"
#include "schematictest.h"

using namespace oa;
using namespace schematiclayers;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class SymbolsTest : public SchematicTest {
protected:
  ~SymbolsTest() override {
    if (oaLibDMData::exists(scalar("lib"))) {
      oaLibDMData::destroy(scalar("lib"));
    }
  }

  Lines load(const char *device, const char *lib = "lib") {
    recorder.clear();
    plugIn.loadComponent(lib, device);
    return recorder.lines();
  }
};

oaPointArray points(std::initializer_list<oaPoint> list) { return oaPointArray(list.begin(), oaUInt4(list.size())); }

oaName named(const char *text) { return oaName(oaConvert::ns, text); }

const char kNoOffset[] = "compOffset (0 0)";

TEST_F(SymbolsTest, DrawingArrivesWithTheComponentsSignals) {
  {
    SchematicBuilder symbol("all", "symbol", SchematicBuilder::symbol);
    oaBlock *b = *symbol;
    const oaPointArray bend = points({{0, 0}, {10, 0}, {0, 7}});
    oaRect *port = oaRect::create(b, kPin, kDrawn, oaBox(-8, -8, 8, 8));
    oaStringProp::create(port, "type", "input");
    port->addToPin(oaPin::create(oaTerm::create(oaNet::create(b, named("D[0:3]")), named("D[0:3]")), oaUInt4(0)));
    oaNet *global = oaNet::create(b, named("VDD"));
    global->setGlobal(true);
    oaRect::create(b, kPin, kDrawn, oaBox(92, -8, 108, 8))->addToNet(global);
    oaRect::create(b, kPin, kDrawn, oaBox(0, 0, 1, 1));
    oaStringProp::create(oaPolygon::create(b, kDevice, kDrawn, bend), "color", "red");
    oaLine::create(b, kDevice, kDrawn, bend);
    oaLine::create(b, kWire, kConnectivity, bend)->addToNet(global);
    oaPathSeg::create(b, kDevice, kDrawn, oaPoint(0, 0), oaPoint(0, 9),
                      oaSegStyle(2, oacTruncateEndStyle, oacTruncateEndStyle));
    oaEllipse::create(b, kDevice, kDrawn, oaBox(0, 0, 20, 10));
    oaEllipse::create(b, kWire, kConnectivity, oaBox(5, 5, 15, 15));
    oaDot::create(b, kDevice, kDrawn, oaPoint(10, 10), 4, 2);
    oaDot::create(b, kPin, kDrawn, oaPoint(10, 10), 4, 2);
    oaRect::create(b, kDevice, kDrawn, oaBox(0, 0, 10, 5));
    oaText::create(b, kDevice, kDrawn, "a b", oaPoint(1, 2), oacLowerLeftTextAlign, oacR90, oacStickFont, 12);
    oaText::create(b, kWire, kDrawn, "n1", oaPoint(3, 4), oacLowerLeftTextAlign, oacR0, oacStickFont, 12);
    oaEvalText::create(b, kEvaluatedText, kDrawn, "[@name]", oaPoint(5, 6), oacLowerLeftTextAlign, oacR0, oacStickFont,
                       12);
  }
  EXPECT_THAT(
      load("all"),
      ElementsAre(kNoOffset, "compPort (0 0) \"D<0:3>\"", "compPort (100 0) \"VDD\"", "compSetGlobal true",
                  "compPolygon [(0 0) (10 0) (0 7) (0 0)] \"red\"", "compPolyline [(0 0) (10 0) (0 7)] \"deviceColor\"",
                  "compPolyline [(0 0) (10 0) (0 7)] \"deviceColor\"", "compPolyline [(0 0) (0 9)] \"deviceColor\"",
                  "compCircle (0 0) (20 10) \"deviceColor\"", "compCircle (5 5) (15 15) \"deviceColor\"",
                  "compRect (8 11) (12 9) \"deviceColor\"", "compCircle (8 9) (12 11) \"deviceColor\"",
                  "compRect (0 0) (10 5) \"deviceColor\"", "compText (1 2) \"deviceColor\" \"a b\"",
                  "compText (3 4) \"deviceColor\" \"n1\"", "compText (5 6) \"deviceColor\" \"[@name]\""));
}

TEST_F(SymbolsTest, ArcIsALineThroughItsPoints) {
  {
    SchematicBuilder symbol("bow", "symbol", SchematicBuilder::symbol);
    oaArc::create(*symbol, kDevice, kDrawn, oaBox(-100, -100, 100, 100), 0, std::acos(-1));
  }
  const Lines sent = load("bow");
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_THAT(sent[1], AllOf(StartsWith("compPolyline [(100 0) "), HasSubstr(" (0 100) "), HasSubstr(" (-100 0)]")));
}

TEST_F(SymbolsTest, DataComesFirstInTheOrderOfItsTypes) {
  {
    SchematicBuilder symbol("inv", "symbol", SchematicBuilder::symbol);
    oaStringProp::create(symbol.design(), "title", "Inverter");
    oaStringProp::create(symbol.design(), "offset", "-10 20");
    oaIntProp::create(symbol.design(), "m", 2);
    oaRect::create(*symbol, kDevice, kDrawn, oaBox(0, 0, 10, 5));
  }
  oaLibDMData *lib = oaLibDMData::open(scalar("lib"), 'a');
  oaStringProp::create(lib, "owner", "me");
  oaAppProp::create(lib, "cachedComponents", "Tarnwickdale", 3, reinterpret_cast<const oaByte *>("inv"));
  lib->save();
  lib->close();
  oaCellDMData *cell = oaCellDMData::open(scalar("lib"), scalar("inv"), 'a');
  oaStringProp::create(cell, "category", "gates");
  oaAppProp::create(cell, "cdfData", "ILList", 9, reinterpret_cast<const oaByte *>("(nil nil)"));
  cell->save();
  cell->close();

  EXPECT_THAT(load("inv"),
              ElementsAre("compData \"(nil nil)\" 1", "compData \"owner\\nme\" 2", "compData \"category\\ngates\" 3",
                          "compData \"title\\nInverter\" 4", "compData \"offset\\n-10 20\" 4", "compData \"m\\n2\" 4",
                          "compOffset (-10 20)", "compRect (0 0) (10 5) \"deviceColor\""));
  EXPECT_EQ(oaDesign::find(scalar("lib"), scalar("inv"), scalar("symbol")), nullptr);
  EXPECT_EQ(oaLibDMData::find(scalar("lib")), nullptr);
  EXPECT_EQ(oaCellDMData::find(scalar("lib"), scalar("inv")), nullptr);
}

TEST_F(SymbolsTest, DeviceNameLeadsToItsView) {
  {
    SchematicBuilder symbol("inv", "sym2", SchematicBuilder::symbol);
    oaRect::create(*symbol, kDevice, kDrawn, oaBox(0, 0, 10, 5));
  }
  EXPECT_THAT(load("sym2@inv"), ElementsAre(kNoOffset, "compRect (0 0) (10 5) \"deviceColor\""));
}

TEST_F(SymbolsTest, LayerLimitHoldsForComponentsToo) {
  {
    SchematicBuilder symbol("inv", "symbol", SchematicBuilder::symbol);
    oaNet *net = oaNet::create(*symbol, named("A"));
    oaRect::create(*symbol, kPin, kDrawn, oaBox(0, 0, 16, 16))
        ->addToPin(oaPin::create(oaTerm::create(net, named("A")), oaUInt4(0)));
  }
  plugIn.setLayerMax(229, 256);
  EXPECT_THAT(load("inv"), ElementsAre(kNoOffset, "compRect (0 0) (16 16) \"deviceColor\""));
}

TEST_F(SymbolsTest, WhatCannotBeLoadedIsReportedAndNeverThrown) {
  oaDesign *hollow = oaDesign::open(scalar("lib"), scalar("hollow"), scalar("symbol"),
                                    oaViewType::get(oaReservedViewType(oacSchematicSymbol)), 'w');
  hollow->save();
  hollow->close();
  { SchematicBuilder cut("cut", "symbol", SchematicBuilder::symbol); }
  ASSERT_TRUE(QFile::resize(folder().filePath("lib/cut/symbol/symbol.oa"), 40));

  const struct {
    const char *lib, *device, *message;
  } cases[] = {{"nolib", "inv", "library not found"}, {"lib", "nosuch", "nosuch"}, {"lib", "sym2@cut", "sym2"},
               {"lib", "hollow", "no data"},          {"lib", "cut", "cut"},       {"lib", "", ""}};
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.lib) + "/" + c.device);
    Lines lines;
    const std::string printed = printedBy([&] { lines = load(c.device, c.lib); });
    EXPECT_THAT(printed, AllOf(StartsWith("ERROR (loadComponent): "), HasSubstr(c.message), testing::EndsWith(" \n")));
    EXPECT_THAT(lines, ElementsAre(AllOf(StartsWith("reportError"), HasSubstr(c.message),
                                         HasSubstr(std::string(c.lib) + "/" + c.device))));
  }
}

// The drawing does not depend on data beside it.
TEST_F(SymbolsTest, DamagedLibraryDataIsToldAndLeftOut) {
  {
    SchematicBuilder symbol("inv", "symbol", SchematicBuilder::symbol);
    oaRect::create(*symbol, kDevice, kDrawn, oaBox(0, 0, 10, 5));
  }
  QFile data(folder().filePath("lib/data.dm"));
  ASSERT_TRUE(data.open(QIODevice::WriteOnly));
  data.write("no management data");
  data.close();
  Lines lines;
  EXPECT_THAT(printedBy([&] { lines = load("inv"); }), HasSubstr("data.dm"));
  data.remove();
  EXPECT_THAT(lines, ElementsAre(StartsWith("reportError"), kNoOffset, "compRect (0 0) (10 5) \"deviceColor\""));
}

} // namespace
