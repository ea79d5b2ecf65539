// What each kind of shape arrives as.

#include "layouttest.h"

using namespace oa;
using testing::ElementsAre;

namespace {

class ShapesTest : public LayoutTest {};

oaPointArray points(std::initializer_list<oaPoint> list) { return oaPointArray(list.begin(), oaUInt4(list.size())); }

std::string polygonLine(const oaPointArray &points) {
  std::string line = "addPolygon [";
  for (oaUInt4 i = 0; i < points.getNumElements(); ++i) {
    line += (i ? " (" : "(") + std::to_string(points[i].x()) + " " + std::to_string(points[i].y()) + ")";
  }
  return line + "] 4 2";
}

const oaPoint kBend[] = {{0, 0}, {100, 0}, {100, 50}};

oaPath *bend(oaBlock *block, oaPathStyle style, oaDist beginExt = 0, oaDist endExt = 0) {
  return oaPath::create(block, 4, 2, 10, oaPointArray(kBend, 3), style, beginExt, endExt);
}

void segment(oaBlock *block, oaPoint end, oaSegStyle style) {
  oaPathSeg::create(block, 4, 2, oaPoint(0, 0), end, style);
}

const struct {
  const char *name;
  void (*create)(oaBlock *block);
  const char *line;
} kShapes[] = {
    {"rectangle", [](oaBlock *b) { oaRect::create(b, 4, 2, oaBox(0, 0, 10, 5)); }, "addBox 0 0 10 5 4 2"},
    {"rectangle on the drawing purpose",
     [](oaBlock *b) { oaRect::create(b, 4, oaPurposeNum(-1), oaBox(-3, -2, 10, 5)); }, "addBox -3 -2 13 7 4 0"},
    {"layer number equal to the limit", [](oaBlock *b) { oaRect::create(b, 256, 255, oaBox(0, 0, 1, 1)); },
     "addBox 0 0 1 1 0 255"},
    {"layer number just below the limit", [](oaBlock *b) { oaRect::create(b, 255, 256, oaBox(0, 0, 1, 1)); },
     "addBox 0 0 1 1 255 0"},
    {"dot, halves truncated", [](oaBlock *b) { oaDot::create(b, 4, 2, oaPoint(10, 10), 3, 5); }, "addBox 9 8 3 5 4 2"},
    {"polygon",
     [](oaBlock *b) {
       oaPolygon::create(b, 4, 2, points({{0, 0}, {10, 0}, {0, 7}}));
     },
     "addPolygon [(0 0) (10 0) (0 7)] 4 2"},
    {"flush path", [](oaBlock *b) { bend(b, oacTruncatePathStyle); }, "addPath [(0 0) (100 0) (100 50)] 4 2 10 0 0 0"},
    {"round path", [](oaBlock *b) { bend(b, oacRoundPathStyle); }, "addPath [(0 0) (100 0) (100 50)] 4 2 10 1 0 0"},
    {"extended path", [](oaBlock *b) { bend(b, oacExtendPathStyle); }, "addPath [(0 0) (100 0) (100 50)] 4 2 10 2 0 0"},
    {"variable path", [](oaBlock *b) { bend(b, oacVariablePathStyle, 3, 8); },
     "addPath [(0 0) (100 0) (100 50)] 4 2 10 0 3 8"},
    {"flush segment",
     [](oaBlock *b) {
       segment(b, {50, 0}, oaSegStyle(10, oacTruncateEndStyle, oacTruncateEndStyle));
     },
     "addPath [(0 0) (50 0)] 4 2 10 0 0 0"},
    {"extended segment",
     [](oaBlock *b) {
       segment(b, {0, 50}, oaSegStyle(10, oacExtendEndStyle, oacExtendEndStyle));
     },
     "addPath [(0 0) (0 50)] 4 2 10 2 0 0"},
    {"mixed segment",
     [](oaBlock *b) {
       segment(b, {50, 0}, oaSegStyle(10, oacExtendEndStyle, oacVariableEndStyle, 0, 7));
     },
     "addPath [(0 0) (50 0)] 4 2 10 0 5 7"},
    {"line",
     [](oaBlock *b) {
       oaLine::create(b, 4, 2, points({{0, 0}, {5, 5}}));
     },
     "addPath [(0 0) (5 5)] 4 2 0 0 0 0"},
    {"text",
     [](oaBlock *b) {
       oaText::create(b, 4, 2, "a b", oaPoint(1, -2), oacLowerRightTextAlign, oacR90, oacStickFont, 30);
     },
     "addText \"a b\" (1 -2) 30 4 2 10 \"R270\""},
    {"text with 8-bit characters",
     [](oaBlock *b) { oaText::create(b, 4, 2, "\xb5m", oaPoint(0, 0), oacUpperLeftTextAlign, oacMX, oacStickFont, 1); },
     "addText \"\xc2\xb5m\" (0 0) 1 4 2 0 \"M\""},
    {"empty text",
     [](oaBlock *b) { oaText::create(b, 4, 2, "", oaPoint(0, 0), oacCenterCenterTextAlign, oacR0, oacStickFont, 0); },
     "addText \"\" (0 0) 0 4 2 5 \"\""},
    {"evaluated text",
     [](oaBlock *b) {
       oaEvalText::create(b, 4, 2, "[@w]", oaPoint(0, 0), oacUpperCenterTextAlign, oacR180, oacStickFont, 9);
     },
     "addText \"[@w]\" (0 0) 9 4 2 1 \"R180\""},
    {"display of an attribute",
     [](oaBlock *b) {
       oaNet *net = oaScalarNet::create(b, scalar("vdd"));
       oaAttrDisplay::create(net, oaNetAttrType(oacNameNetAttrType), 4, 2, oaPoint(7, 8), oacUpperLeftTextAlign, oacMY,
                             oacStickFont, 12, oacValueTextDisplayFormat);
     },
     "addText \"vdd\" (7 8) 12 4 2 0 \"R180M\""},
};

TEST_F(ShapesTest, EachKindHasItsSignal) {
  {
    CellBuilder cell("lib", "all");
    for (const auto &shape : kShapes) {
      SCOPED_TRACE(shape.name);
      shape.create(*cell);
    }
  }
  const Lines sent = read("all", Lines{"addBox", "addPolygon", "addPath", "addText", "reportError"});
  ASSERT_EQ(sent.size(), std::size(kShapes));
  for (size_t i = 0; i < sent.size(); ++i) {
    SCOPED_TRACE(kShapes[i].name);
    EXPECT_EQ(sent[i], kShapes[i].line);
  }
}

TEST_F(ShapesTest, TextThatShowsTheInstanceNameIsNotSent) {
  {
    CellBuilder cell("lib", "names");
    oaEvalText::create(*cell, 4, 2, "[@instanceName]", oaPoint(0, 0), oacUpperLeftTextAlign, oacR0, oacStickFont, 9);
  }
  EXPECT_THAT(read("names", Lines{"addText", "reportError"}), ElementsAre());
}

// Ellipse, donut, arc and the segments that are no paths arrive as points, and the design keeps its shapes.
TEST_F(ShapesTest, CurvesArriveAsPointsAndStayCurvesInTheDesign) {
  oaPointArray ellipse;
  oaPointArray donut;
  oaPointArray diagonal;
  oaPointArray chamfer;
  {
    CellBuilder cell("lib", "curves");
    const oaSegStyle flush(12, oacTruncateEndStyle, oacTruncateEndStyle);
    const oaSegStyle cut(12, oacChamferEndStyle, oacTruncateEndStyle);
    oaEllipse::create(*cell, 4, 2, oaBox(0, 0, 100, 60));
    oaDonut::create(*cell, 4, 2, oaPoint(200, 0), 50, 20);
    segment(*cell, {50, 50}, flush);
    segment(*cell, {50, 0}, cut);
    oaEllipse::genBoundary(oaBox(0, 0, 100, 60), 32, ellipse);
    oaDonut::genBoundary(oaPoint(200, 0), 50, 20, 20, donut);
    oaPathSeg::genBoundary(oaPoint(0, 0), oaPoint(50, 50), flush, diagonal);
    oaPathSeg::genBoundary(oaPoint(0, 0), oaPoint(50, 0), cut, chamfer);
  }
  const OpenCell open("lib", "curves");
  EXPECT_EQ(ellipse.getNumElements(), 32u);
  EXPECT_THAT(read("curves", Lines{"addPolygon", "reportError"}),
              ElementsAre(polygonLine(ellipse), polygonLine(donut), polygonLine(diagonal), polygonLine(chamfer)));
  std::vector<int> types;
  oaIter<oaShape> shapes((*open)->getShapes());
  while (oaShape *shape = shapes.getNext()) {
    types.push_back(int(oaTypeEnum(shape->getType())));
  }
  EXPECT_THAT(types, ElementsAre(oacEllipseType, oacDonutType, oacPathSegType, oacPathSegType));
}

TEST_F(ShapesTest, ArcRunsFromStartToStop) {
  {
    CellBuilder cell("lib", "arc");
    oaArc::create(*cell, 4, 2, oaBox(-100, -100, 100, 100), 0.0, 1.5707963267948966);
  }
  const Lines sent = read("arc", Lines{"addPath"});
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_THAT(sent[0], testing::StartsWith("addPath [(100 0) (99 16)"));
  EXPECT_THAT(sent[0], testing::EndsWith("(0 100)] 4 2 0 0 0 0"));
}

// The receiver keeps what it got: later emissions must not reach into it.
TEST_F(ShapesTest, KeptArgumentsStayAsTheyWere) {
  class Keeper : public QObject {
  public:
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override {
      id = QObject::qt_metacall(call, id, arguments);
      if (id == 0 && call == QMetaObject::InvokeMetaMethod) {
        kept.append(*static_cast<QPolygon *>(arguments[1]));
      }
      return id - 1;
    }
    QList<QPolygon> kept;
  } keeper;
  const int polygonSignal = plugIn.metaObject()->indexOfSignal("addPolygon(QPolygon,int,int)");
  QMetaObject::connect(&plugIn, polygonSignal, &keeper, QObject::staticMetaObject.methodCount());
  {
    CellBuilder cell("lib", "kept");
    oaPolygon::create(*cell, 1, 0, points({{0, 0}, {1, 0}, {0, 1}}));
    oaPolygon::create(*cell, 1, 0, points({{9, 9}, {8, 9}, {9, 8}, {12, 4}}));
  }
  read("kept");
  ASSERT_EQ(keeper.kept.size(), 2);
  EXPECT_EQ(keeper.kept[0], QPolygon() << QPoint(0, 0) << QPoint(1, 0) << QPoint(0, 1));
  EXPECT_EQ(keeper.kept[1].size(), 4);
}

} // namespace
