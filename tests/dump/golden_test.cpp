// The form of the text, on one layout and one schematic.

#include "contents.h"

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
  EXPECT_EQ(dump("inv"), R"(oaDump 1
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
  EXPECT_EQ(dump("top", "schematic"), R"(oaDump 1
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
  EXPECT_EQ(dump("empty", "symbol"), "oaDump 1\nlibrary \"lib\"\ncell \"empty\"\nview \"symbol\"\n"
                                     "viewType schematicSymbol\ndesign cellType=none\n");
}

} // namespace
