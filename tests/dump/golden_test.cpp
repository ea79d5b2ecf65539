// The form of the text, on one layout and one schematic.

#include "contents.h"
#include "oadump.h"
#include "testevaluator.h"

using namespace oa;

namespace {

const oaPurposeNum kDrawing = 0xffffffffU;

class DumpGolden : public DumpTest {};

TEST_F(DumpGolden, Layout) {
  {
    const NewView view("inv", "layout", oacMaskLayout);
    oaStringProp::create(view.design(), "owner", "me");
    oaNet *net = oaScalarNet::create(*view, scalar("A"));
    oaPin *pin = oaPin::create(oaTerm::create(net, named("A"), oacInputTermType), "A", oacLeft);
    oaRect::create(*view, 8, kDrawing, oaBox(0, 0, 100, 20))->addToPin(pin);
    oaRect::create(*view, 8, kDrawing, oaBox(-50, 0, 100, 20))->addToNet(net);
    oaPolygon::create(*view, 1, 0, pointsOf({{0, 0}, {10, 0}, {0, 10}}));
    oaPath::create(*view, 8, 2, 10, pointsOf({{0, 0}, {50, 0}}), oacExtendPathStyle);
    oaText::create(*view, 8, 25, "A", oaPoint(1, 2), oacLowerLeftTextAlign, oacR90, oacStickFont, 20);
    oaScalarInst::create(*view, scalar("lib"), scalar("via1"), scalar("layout"), scalar("I1"),
                         oaTransform(5, -5, oacMX));
    oaArrayInst::create(*view, scalar("pdk"), scalar("via1"), scalar("layout"), scalar("I2"), oaTransform(), 10, 20, 3,
                        1);
  }
  EXPECT_EQ(dump("inv"), R"(oaDump 2
library "lib"
cell "inv"
view "layout"
viewType maskLayout
units 1000 per micron
design cellType=none
  prop string "owner" "me"
block visibleToModule=yes
nets
  net "A" sigType=signal global=no priority=0
terms
  term "A" net="A" type=input interface=yes
    pin "A" access=left status=none type=none
insts
  inst "I1" master=./"via1"/"layout" origin=(5 -5) orient=MX status=none priority=0
  inst "I2" master="pdk"/"via1"/"layout" origin=(0 0) orient=R0 rows=3 cols=1 dX=10 dY=20 status=none priority=0
shapes
  polygon 1/0 points=(0 0)(10 0)(0 10)
  path 8/2 width=10 style=extend beginExt=0 endExt=0 points=(0 0)(50 0)
  text 8/25 text="A" origin=(1 2) align=lowerLeft orient=R90 font=stick height=20 overbar=no visible=yes drafting=yes
  rect 8/drawing box=(-50 0)(100 20) net="A"
  rect 8/drawing box=(0 0)(100 20) pin="A"/"A"
)");
}

TEST_F(DumpGolden, Schematic) {
  {
    const NewView view("top", "schematic", oacSchematic);
    oaNet *bus = oaBusNet::create(*view, oaVectorName(scalar("D"), 0, 1));
    oaTerm::create(bus, oaName(oaVectorName(scalar("D"), 0, 1)), oacOutputTermType)->setPosition(4);
    oaScalarNet *vdd = oaScalarNet::create(*view, scalar("vdd!"), oacPowerSigType, true);
    vdd->makeEquivalent(oaScalarNet::create(*view, scalar("vcc")));
    oaIntProp::create(bus->getBit(1), "tap", 1);
    oaInst *inst = oaVectorInst::create(*view, scalar("lib"), scalar("inv"), scalar("symbol"), scalar("I"), 1, 0,
                                        oaTransform(160, 0));
    oaInstTerm::create(bus, inst, named("Y"));
    oaPropDisplay::create(oaStringProp::create(inst, "model", "n\303\xa1"), 230, kDrawing, oaPoint(0, 8),
                          oacCenterLeftTextAlign, oacR0, oacFixedFont, 10, oacValueTextDisplayFormat);
    oaLine::create(*view, 228, kDrawing, pointsOf({{0, 0}, {160, 0}}))->addToNet(bus);
    oaEvalText::create(*view, 230, kDrawing, "[@w]", oaPoint(), oacLowerLeftTextAlign, oacR0, oacStickFont, 12, "il");
  }
  EXPECT_EQ(dump("top", "schematic"), R"(oaDump 2
library "lib"
cell "top"
view "schematic"
viewType schematic
units 160 per inch
design cellType=none
block visibleToModule=yes
nets
  net "vcc" sigType=signal global=no priority=0
  net "vdd!" sigType=power global=yes priority=0
  net bit:"D[1]" implicit=yes
    prop int "tap" 1
  net bus:"D[0:1]" sigType=signal global=no priority=0
equivalences
  preferred "vdd!" equivalent "vcc"
terms
  term bus:"D[0:1]" net=bus:"D[0:1]" type=output interface=yes position=4
insts
  inst bus:"I[1:0]" master=./"inv"/"symbol" origin=(160 0) orient=R0 status=none priority=0
    prop string "model" "n)"
                                      "\303\xa1"
                                      R"("
      propDisplay 230/drawing format=value origin=(0 8) align=centerLeft orient=R0 font=fixed height=10 overbar=no visible=yes drafting=yes
    instTerm "Y" net=bus:"D[0:1]"
shapes
  line 228/drawing points=(0 0)(160 0) net=bus:"D[0:1]"
  evalText 230/drawing expression="[@w]" evaluator="il" origin=(0 0) align=lowerLeft orient=R0 font=stick height=12 overbar=no visible=yes drafting=yes
)");
}

TEST_F(DumpGolden, EmptyDesign) {
  oaDesign *design =
      oaDesign::open(scalar("lib"), scalar("empty"), scalar("symbol"), oaViewType::get(oacSchematicSymbol), 'w');
  design->save();
  design->close();
  EXPECT_EQ(dump("empty", "symbol"), "oaDump 2\nlibrary \"lib\"\ncell \"empty\"\nview \"symbol\"\n"
                                     "viewType schematicSymbol\ndesign cellType=none\n");
}

// Super master and sub master have the same place.
TEST_F(DumpGolden, ParametricMasters) {
  TestEvaluator boxes("boxes", [](oaDesign *design, const oaParamArray &params) {
    oaRect::create(oaBlock::create(design), 1, 0, oaBox(0, 0, intValueOf(params, "m"), 5));
  });
  {
    const NewView view("pc", "layout", oacMaskLayout);
    oaPcellDef *definition = oaPcellLink::getPcellDef("boxes");
    definition->addData("GenCellProc", "proc {} {\n}");
    view.design()->defineSuperMaster(definition, paramsOf({oaParam("m", oaInt4(2)), oaParam("f", oaString("x"))}));
  }
  {
    const NewView top("top", "layout", oacMaskLayout);
    const oaParamArray given = paramsOf({oaParam("m", oaInt4(30))});
    oaScalarInst *inst =
        oaScalarInst::create(*top, scalar("lib"), scalar("pc"), scalar("layout"), scalar("I"), oaTransform(), &given);
    EXPECT_EQ(oaDump(inst->getMaster()).text().toStdString(), R"(oaDump 2
library "lib"
cell "pc"
view "layout"
viewType maskLayout
units 1000 per micron
design cellType=none
subMaster of=./"pc"/"layout"
  param int "m" 30
  param string "f" "x"
block visibleToModule=yes
shapes
  rect 1/0 box=(0 0)(30 5)
)");
  }
  EXPECT_EQ(dump("pc"), R"(oaDump 2
library "lib"
cell "pc"
view "layout"
viewType maskLayout
units 1000 per micron
design cellType=none
superMaster evaluator="boxes"
  data "GenCellProc" "proc {} {\n}"
  param int "m" 2
  param string "f" "x"
block visibleToModule=yes
)");
  boxes.unlink();
  EXPECT_THAT(dump("pc"), testing::HasSubstr("superMaster evaluator=\"boxes\" definition=none\n  param int \"m\" 2\n"));
}

TEST_F(DumpGolden, MasterOfAStandardVia) {
  oaTech *tech = oaTech::create(scalar("lib"));
  oaPhysicalLayer *lower = oaPhysicalLayer::create(tech, "m1", 1);
  oaPhysicalLayer *upper = oaPhysicalLayer::create(tech, "m2", 3);
  oaViaParam params;
  params.setCutLayer(2);
  params.setCutWidth(10);
  params.setCutHeight(8);
  params.setLayer1Enc(oaVector(1, 2));
  const oaStdViaDef *definition = oaStdViaDef::create(tech, "V", lower, upper, params);
  {
    const NewView view("top", "layout", oacMaskLayout);
    oaStdVia *via = oaStdVia::create(*view, definition, oaTransform());
    EXPECT_EQ(oaDump(via->getMaster()).text().toStdString(), R"(oaDump 2
library "lib"
cell "V"
view "layout"
viewType maskLayout
units 1000 per micron
design cellType=none
viaMaster
  viaParams cutLayer=2 cutWidth=10 cutHeight=8 cutColumns=1 cutRows=1 cutSpacing=(0 0) originOffset=(0 0) layer1Enc=(1 2) layer2Enc=(0 0) layer1Offset=(0 0) layer2Offset=(0 0) implant1Enc=(0 0) implant2Enc=(0 0) defined=none
block visibleToModule=yes
shapes
  rect 1/drawing box=(-6 -6)(6 6)
  rect 2/drawing box=(-5 -4)(5 4)
  rect 3/drawing box=(-5 -4)(5 4)
)");
  }
  tech->close();
}

} // namespace
