// What each kind of shape arrives as.

#include <cmath>

#include <QFile>

#include "schematiclayers.h"
#include "schematictest.h"

using namespace oa;
using namespace schematiclayers;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class ReadShapesTest : public SchematicTest {
protected:
  // What arrives of a schematic with the shapes that `create` makes, apart from the cell's own data.
  Lines drawn(void (*create)(oaBlock *block)) {
    {
      SchematicBuilder schematic("row", "schematic", SchematicBuilder::schematic);
      create(*schematic);
    }
    read("row");
    Lines lines;
    for (const std::string &line : recorder.lines()) {
      if (line.compare(0, 14, "addCellNumData") != 0) {
        lines.push_back(line);
      }
    }
    return lines;
  }
};

oaPointArray points(std::initializer_list<oaPoint> list) { return oaPointArray(list.begin(), oaUInt4(list.size())); }

oaName named(const char *text) { return oaName(oaConvert::ns, text); }

oaNet *net(oaBlock *block, const char *name) { return oaNet::create(block, named(name)); }

template <typename Shape> Shape *on(oaNet *net, Shape *shape) {
  shape->addToNet(net);
  return shape;
}

template <typename Shape> Shape *withText(Shape *shape, const char *name, const char *value) {
  oaStringProp::create(shape, name, value);
  return shape;
}

oaLine *line(oaBlock *block, oaLayerNum layer) {
  return oaLine::create(block, layer, kConnectivity, points({{0, 0}, {10, 0}, {10, -5}}));
}

oaPathSeg *segment(oaBlock *block) {
  return oaPathSeg::create(block, kWire, kConnectivity, oaPoint(0, 0), oaPoint(0, 9),
                           oaSegStyle(2, oacTruncateEndStyle, oacTruncateEndStyle));
}

oaPolygon *triangle(oaBlock *block, oaLayerNum layer) {
  return oaPolygon::create(block, layer, kDrawn, points({{0, 0}, {10, 0}, {0, 7}}));
}

oaRect *rect(oaBlock *block, oaLayerNum layer) { return oaRect::create(block, layer, kDrawn, oaBox(-3, -3, 4, 10)); }

oaDot *dot(oaBlock *block, oaLayerNum layer) { return oaDot::create(block, layer, kDrawn, oaPoint(10, 10), 5, 3); }

oaEllipse *ellipse(oaBlock *block, oaLayerNum layer) {
  return oaEllipse::create(block, layer, kDrawn, oaBox(-4, -4, 1, 7));
}

oaText *text(oaBlock *block, oaLayerNum layer, oaOrient orient = oacR0) {
  return oaText::create(block, layer, kDrawn, "some \xb5m", oaPoint(3, -4), oacLowerLeftTextAlign, orient, oacStickFont,
                        12);
}

// A shape in the pin of a terminal on a net of the same name.
template <typename Shape> Shape *inPin(oaBlock *block, const char *name, Shape *shape) {
  shape->addToPin(oaPin::create(oaTerm::create(net(block, name), named(name)), oaUInt4(0)));
  return shape;
}

oaRect *port(oaBlock *block, const char *name) { return inPin(block, name, rect(block, kPin)); }

oaRect *globalPort(oaBlock *block, const char *name) {
  oaNet *global = net(block, name);
  global->setGlobal(true);
  return on(global, rect(block, kPin));
}

const char kWireLine[] = "addWire [(0 0) (10 0) (10 -5)]";
const char kBusLine[] = "addBus [(0 0) (10 0) (10 -5)]";
const char kTriangle[] = "addPolygon [(0 0) (10 0) (0 7) (0 0)] \"deviceColor\"";
const char kRect[] = "addRect (-3 -3) (4 10) \"deviceColor\"";

const struct {
  const char *name;
  void (*create)(oaBlock *block);
  Lines lines;
} kShapes[] = {
    {"arc",
     [](oaBlock *b) { oaArc::create(b, kDevice, kDrawn, oaBox(0, 0, 100, 100), 0, std::acos(0)); },
     {"addArc [(50 50) (100 50) (50 100)] \"deviceColor\""}},
    {"arc on a net",
     [](oaBlock *b) { on(net(b, "A"), oaArc::create(b, kWire, kDrawn, oaBox(-100, 0, 0, 100), 0, std::acos(0))); },
     {"addArc [(-50 50) (0 50) (-50 100)] \"deviceColor\""}},

    {"dot on the pin layer", [](oaBlock *b) { dot(b, kPin); }, {"addGround (10 10)"}},
    {"dot on the pin layer, on a net", [](oaBlock *b) { on(net(b, "A"), dot(b, kPin)); }, {"addGround (10 10)"}},
    {"dot on the wire layer", [](oaBlock *b) { dot(b, kWire); }, {"addWireDot (10 10)"}},
    {"dot elsewhere, on a net", [](oaBlock *b) { on(net(b, "A"), dot(b, kDevice)); }, {"addWireDot (10 10)"}},
    {"dot elsewhere", [](oaBlock *b) { dot(b, kDevice); }, {"addRect (8 11) (12 9) \"deviceColor\""}},

    {"ellipse on the wire layer, centre truncated", [](oaBlock *b) { ellipse(b, kWire); }, {"addWireDot (-1 1)"}},
    {"ellipse elsewhere, on a net", [](oaBlock *b) { on(net(b, "A"), ellipse(b, kDevice)); }, {"addWireDot (-1 1)"}},
    {"ellipse elsewhere",
     [](oaBlock *b) { withText(ellipse(b, kDevice), "color", "#00ff00"); },
     {"addCircle (-4 -4) (1 7) \"#00ff00\""}},

    {"line on a net of one bit", [](oaBlock *b) { on(net(b, "A"), line(b, kWire)); }, {kWireLine}},
    {"line on a net, whatever the layer", [](oaBlock *b) { on(net(b, "A"), line(b, kDevice)); }, {kWireLine}},
    {"line on a bus", [](oaBlock *b) { on(net(b, "D[0:3]"), line(b, kWire)); }, {kBusLine}},
    {"line on a bundle", [](oaBlock *b) { on(net(b, "A,B"), line(b, kWire)); }, {kBusLine}},
    {"line on a bit", [](oaBlock *b) { on(net(b, "D[2]"), line(b, kWire)); }, {kWireLine}},
    {"line on a net of one bit with the bus flag, of whatever value",
     [](oaBlock *b) { oaBooleanProp::create(on(net(b, "A"), line(b, kWire)), "bus", false); },
     {kBusLine}},
    {"line on a net with the bus flag, whatever the layer",
     [](oaBlock *b) { withText(on(net(b, "A"), line(b, kDevice)), "bus", ""); },
     {kBusLine}},
    {"line without a net, wire layer", [](oaBlock *b) { line(b, kWire); }, {kWireLine}},
    {"line without a net, wire layer, bus flag",
     [](oaBlock *b) { withText(line(b, kWire), "bus", "true"); },
     {kBusLine}},
    {"line without a net, other layer, bus flag",
     [](oaBlock *b) { withText(line(b, kDevice), "bus", "true"); },
     {"addPolyline [(0 0) (10 0) (10 -5)] \"deviceColor\""}},

    {"segment", [](oaBlock *b) { segment(b); }, {"addPolyline [(0 0) (0 9)] \"deviceColor\""}},
    {"segment on a net of one bit, bus flag not consulted",
     [](oaBlock *b) { withText(on(net(b, "A"), segment(b)), "bus", "true"); },
     {"addWire [(0 0) (0 9)]"}},
    {"segment on a bus", [](oaBlock *b) { on(net(b, "D[3:0]"), segment(b)); }, {"addBus [(0 0) (0 9)]"}},

    {"polygon, closed", [](oaBlock *b) { triangle(b, kDevice); }, {kTriangle}},
    {"polygon of a pin", [](oaBlock *b) { inPin(b, "A", triangle(b, kPin)); }, {kTriangle}},

    {"rectangle", [](oaBlock *b) { rect(b, kDevice); }, {kRect}},
    {"rectangle of a pin on another layer", [](oaBlock *b) { inPin(b, "A", rect(b, kDevice)); }, {kRect}},
    {"port", [](oaBlock *b) { port(b, "A"); }, {"addPort (0 3) \"A\""}},
    {"port of a bus", [](oaBlock *b) { port(b, "D[0:3]"); }, {"addPort (0 3) \"D<0:3>\""}},
    {"port of a bundle", [](oaBlock *b) { port(b, "A,D[1]"); }, {"addPort (0 3) \"A,D<1>\""}},
    {"port with type and symbol, in whatever order they are stored",
     [](oaBlock *b) { withText(withText(port(b, "A"), "symbol", "pin_in"), "type", "input"); },
     {"addPort (0 3) \"A\"", "setDataString \"type\" \"input\"", "setDataString \"symbol\" \"pin_in\""}},
    {"port with an empty type",
     [](oaBlock *b) { withText(withText(port(b, "A"), "symbol", "x"), "type", ""); },
     {"addPort (0 3) \"A\"", "setDataString \"symbol\" \"x\""}},
    {"port of a global net",
     [](oaBlock *b) { withText(globalPort(b, "VDD"), "type", "power"); },
     {"addPort (0 3) \"VDD\"", "setDataString \"type\" \"power\"", "setGlobal true"}},
    {"port of a global bus keeps OpenAccess's name",
     [](oaBlock *b) { globalPort(b, "V[0:1]"); },
     {"addPort (0 3) \"V[0:1]\"", "setGlobal true"}},
    {"terminal of a global net is a plain port",
     [](oaBlock *b) {
       port(b, "A");
       oaNet::find(b, named("A"))->setGlobal(true);
     },
     {"addPort (0 3) \"A\""}},
    {"pin layer without a pin", [](oaBlock *b) { rect(b, kPin); }, {}},
    {"pin layer on a net that is not global", [](oaBlock *b) { on(net(b, "A"), rect(b, kPin)); }, {}},

    {"wire label", [](oaBlock *b) { text(b, kWire); }, {"addWireLabel (3 -4) \"some \xc2\xb5m\" (0 0)"}},
    {"wire label with an offset",
     [](oaBlock *b) { withText(text(b, kWire, oacR90), "labelOffset", "-7 12"); },
     {"addWireLabel (3 -4) \"some \xc2\xb5m\" (-7 12)"}},
    {"text", [](oaBlock *b) { text(b, kDevice); }, {"addText (3 -4) \"deviceColor\" \"some \xc2\xb5m\" 0"}},
    {"text at 90 degrees",
     [](oaBlock *b) { withText(text(b, kDevice, oacR90), "color", "red"); },
     {"addText (3 -4) \"red\" \"some \xc2\xb5m\" 90"}},
    {"text at 180 degrees",
     [](oaBlock *b) { text(b, kDevice, oacR180); },
     {"addText (3 -4) \"deviceColor\" \"some \xc2\xb5m\" 180"}},
    {"text at 270 degrees",
     [](oaBlock *b) { text(b, kPin, oacR270); },
     {"addText (3 -4) \"deviceColor\" \"some \xc2\xb5m\" 270"}},
    {"mirrored text",
     [](oaBlock *b) { text(b, kDevice, oacMXR90); },
     {"addText (3 -4) \"deviceColor\" \"some \xc2\xb5m\" 0"}},
    {"evaluated text, on the wire layer too",
     [](oaBlock *b) {
       oaEvalText::create(b, kWire, kDrawn, "[@name]", oaPoint(1, 2), oacLowerLeftTextAlign, oacR90, oacStickFont, 12);
     },
     {"addText (1 2) \"deviceColor\" \"[@name]\" 0"}},
    {"display of an attribute",
     [](oaBlock *b) {
       oaAttrDisplay::create(net(b, "vdd"), oaNetAttrType(oacNameNetAttrType), kDevice, kDrawn, oaPoint(7, 8),
                             oacUpperLeftTextAlign, oacR0, oacStickFont, 12, oacValueTextDisplayFormat);
     },
     {}},

    {"colour of any kind of property",
     [](oaBlock *b) { oaIntProp::create(rect(b, kDevice), "color", 5); },
     {"addRect (-3 -3) (4 10) \"5\""}},
    {"properties end with their shape",
     [](oaBlock *b) {
       withText(withText(rect(b, kDevice), "color", "red"), "bus", "true");
       withText(rect(b, kDevice), "color", "");
       line(b, kWire);
       rect(b, kDevice);
     },
     {"addRect (-3 -3) (4 10) \"red\"", "addRect (-3 -3) (4 10) \"\"", kWireLine, kRect}},
    {"the whole range of coordinates",
     [](oaBlock *b) { oaEllipse::create(b, kWire, kDrawn, oaBox(2147483000, -2147483000, 2147483600, -2147482000)); },
     {"addWireDot (2147483300 -2147482500)"}},
    {"layer of a negative number", [](oaBlock *b) { rect(b, oaLayerNum(-5)); }, {kRect}},
};

TEST_F(ReadShapesTest, EachKindHasItsSignals) {
  for (const auto &shape : kShapes) {
    SCOPED_TRACE(shape.name);
    EXPECT_THAT(drawn(shape.create), ElementsAreArray(shape.lines));
  }
}

std::string polygonText(oaPolygon *polygon) {
  oaPointArray outline;
  polygon->getPoints(outline);
  std::string text = "[";
  for (oaUInt4 i = 0; i < outline.getNumElements(); ++i) {
    text += (i ? " (" : "(") + std::to_string(outline[i].x()) + " " + std::to_string(outline[i].y()) + ")";
  }
  return text + "]";
}

// Both arrive as the polygon that the kit's own conversion makes of them.
TEST_F(ReadShapesTest, PathAndDonutArriveAsTheirConversion) {
  const Lines sent = drawn([](oaBlock *b) {
    const oaPointArray bend = points({{0, 0}, {100, 0}, {100, 50}});
    oaDonut::create(b, kDevice, kDrawn, oaPoint(200, 0), 50, 20);
    oaPath::create(b, kDevice, kDrawn, 9, bend, oacRoundPathStyle);
    on(net(b, "A"), oaPath::create(b, kWire, kDrawn, 10, bend, oacVariablePathStyle, 3, 8));
    withText(on(net(b, "D[0:1]"), oaPath::create(b, kWire, kDrawn, 10, bend, oacExtendPathStyle)), "color", "x");
    withText(on(net(b, "B"), oaPath::create(b, kWire, kDrawn, 10, bend)), "bus", "true");
  });
  const struct {
    const char *before, *behind;
  } expected[] = {{"addPolygon ", " \"deviceColor\""},
                  {"addPolygon ", " \"deviceColor\""},
                  {"addWire ", ""},
                  {"addBus ", ""},
                  {"addWire ", ""}};
  ASSERT_EQ(sent.size(), std::size(expected));

  const OpenView converted("row");
  oaIter<oaShape> shapes(converted->getTopBlock()->getShapes());
  for (size_t i = 0; oaShape *shape = shapes.getNext(); ++i) {
    SCOPED_TRACE(i);
    ASSERT_LT(i, sent.size());
    oaPolygon *polygon = shape->getType() == oacDonutType ? static_cast<oaDonut *>(shape)->convertToPolygon(20)
                                                          : static_cast<oaPath *>(shape)->convertToPolygon();
    EXPECT_EQ(sent[i], expected[i].before + polygonText(polygon) + expected[i].behind);
  }
}

// The kit refuses to convert it.
TEST_F(ReadShapesTest, PathWithoutAreaIsSentAsItIs) {
  const Lines sent = drawn([](oaBlock *b) {
    oaPath::create(b, kDevice, kDrawn, 0, points({{0, 0}, {100, 0}}));
    rect(b, kDevice);
  });
  EXPECT_THAT(sent, ElementsAre(HasSubstr("addPolygon [(0 0)"), kRect));
}

TEST_F(ReadShapesTest, LayersAboveTheHostsLimitMeanNothing) {
  const auto create = [](oaBlock *b) {
    line(b, kWire);
    text(b, kWire);
    ellipse(b, kWire);
    dot(b, kPin);
    port(b, "A");
  };
  const struct {
    int limit;
    Lines signalNames;
  } cases[] = {
      {230, {"addWire", "addWireLabel", "addWireDot", "addGround", "addPort"}},
      {229, {"addWire", "addWireLabel", "addWireDot", "addRect", "addRect"}},
      {228, {"addPolyline", "addText", "addCircle", "addRect", "addRect"}},
      {0, {"addPolyline", "addText", "addCircle", "addRect", "addRect"}},
      {-1, {"addPolyline", "addText", "addCircle", "addRect", "addRect"}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.limit);
    plugIn.setLayerMax(c.limit, 256);
    Lines signalNames;
    for (const std::string &line : drawn(create)) {
      signalNames.push_back(line.substr(0, line.find(' ')));
    }
    EXPECT_EQ(signalNames, c.signalNames);
  }
}

// Others that have the design open, and the file, see no trace of the reading.
TEST_F(ReadShapesTest, ReadingChangesNothing) {
  {
    SchematicBuilder schematic("kept", "schematic", SchematicBuilder::schematic);
    oaPath::create(*schematic, kDevice, kDrawn, 10, points({{0, 0}, {100, 0}}));
    oaDonut::create(*schematic, kDevice, kDrawn, oaPoint(0, 0), 50, 20);
    ellipse(*schematic, kDevice);
    oaArc::create(*schematic, kDevice, kDrawn, oaBox(0, 0, 100, 100), 0, 1);
    rect(*schematic, kDevice);
  }
  QFile file(folder().filePath("lib/kept/schematic/sch.oa"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray before = file.readAll();

  const OpenView other("kept");
  EXPECT_THAT(read("kept"), testing::SizeIs(3 + 5));
  EXPECT_FALSE(other->isModified());
  std::vector<int> types;
  oaIter<oaShape> shapes((*other)->getShapes());
  while (const oaShape *shape = shapes.getNext()) {
    types.push_back(shape->getType());
  }
  EXPECT_THAT(types, ElementsAre(oacPathType, oacDonutType, oacEllipseType, oacArcType, oacRectType));

  QFile after(file.fileName());
  ASSERT_TRUE(after.open(QIODevice::ReadOnly));
  EXPECT_EQ(after.readAll(), before);
}

TEST_F(ReadShapesTest, ProgressLinesComeOnlyWhenSwitchedOn) {
  {
    SchematicBuilder schematic("spoken", "schematic", SchematicBuilder::schematic);
    withText(rect(*schematic, kDevice), "color", "red");
    text(*schematic, kDevice);
    oaInst *inst = oaScalarInst::create(*schematic, scalar("lib"), scalar("inv"), scalar("symbol"), scalar("I1"),
                                        oaTransform(0, 0));
    oaIntProp::create(inst, "m", 2);
  }
  EXPECT_THAT(printedBy([&] { read("spoken"); }), IsEmpty());
  oaConvert::debug = true;
  const std::string printed = printedBy([&] { read("spoken"); });
  oaConvert::debug = false;
  EXPECT_EQ(printed,
            "need symbol lib inv symbol\nset parameter...inst prop (m): 2\nset instance name...end instance I1\n"
            "shape prop (color): red\nboxtext some \xb5m\ntext-end load schematic");
}

} // namespace
