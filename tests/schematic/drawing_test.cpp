// Shapes and texts that are only drawn.

#include "blocktext.h"

using blocktext::shapesOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class DrawingTest : public SchematicTest {};

QPolygon polygon(const std::vector<QPoint> &points) {
  QPolygon result;
  for (const QPoint &point : points) {
    result.append(point);
  }
  return result;
}

// A null text: the shape is refused.
const struct {
  const char *name;
  void (*save)(oaPlugInMain &);
  const char *shape;
} kShapes[] = {
    {"rectangle", [](oaPlugInMain &p) { p.saveRect(0, 1, 20, 11, "red"); }, "Rect 231/-6 (0 1) (20 11) {color=red}"},
    {"rectangle without colour", [](oaPlugInMain &p) { p.saveRect(0, 1, 20, 11, ""); },
     "Rect 231/-6 (0 1) (20 11) {color=}"},
    {"rectangle of the instance layer", [](oaPlugInMain &p) { p.saveRect(0, 0, 9, 9, "instanceLayer:#ff0000"); },
     "Rect 236/-6 (0 0) (9 9) {color=#ff0000}"},
    {"prefix alone", [](oaPlugInMain &p) { p.saveRect(0, 0, 9, 9, "instanceLayer:"); },
     "Rect 236/-6 (0 0) (9 9) {color=}"},
    {"prefix in other letters", [](oaPlugInMain &p) { p.saveRect(0, 0, 9, 9, "instancelayer:red"); },
     "Rect 231/-6 (0 0) (9 9) {color=instancelayer:red}"},
    {"inverted rectangle", [](oaPlugInMain &p) { p.saveRect(9, 9, 0, 0, "red"); }, nullptr},
    {"flat rectangle", [](oaPlugInMain &p) { p.saveRect(0, 5, 9, 5, "red"); }, nullptr},
    {"circle", [](oaPlugInMain &p) { p.saveCircle(-5, -6, 5, 6, "blue"); },
     "Ellipse 231/-6 (-5 -6) (5 6) {color=blue}"},
    {"circle takes no prefix", [](oaPlugInMain &p) { p.saveCircle(0, 0, 9, 9, "instanceLayer:red"); },
     "Ellipse 231/-6 (0 0) (9 9) {color=instanceLayer:red}"},
    {"inverted circle", [](oaPlugInMain &p) { p.saveCircle(9, 0, 0, 9, "red"); }, nullptr},
    {"polygon",
     [](oaPlugInMain &p) {
       p.savePolygon(polygon({{0, 0}, {9, 0}, {0, 7}}), "red");
     },
     "Polygon 231/-6 (0 0) (9 0) (0 7) {color=red}"},
    {"polygon with extra points",
     [](oaPlugInMain &p) {
       p.savePolygon(polygon({{0, 0}, {5, 0}, {9, 0}, {9, 0}, {0, 7}, {0, 0}}), "red");
     },
     "Polygon 231/-6 (0 0) (9 0) (0 7) {color=red}"},
    {"polygon in a line",
     [](oaPlugInMain &p) {
       p.savePolygon(polygon({{0, 0}, {9, 0}, {20, 0}}), "red");
     },
     nullptr},
    {"empty polygon", [](oaPlugInMain &p) { p.savePolygon(QPolygon(), "red"); }, nullptr},
    {"polyline keeps every point",
     [](oaPlugInMain &p) {
       p.savePolyline(polygon({{0, 0}, {5, 0}, {9, 0}, {9, 0}}), "red");
     },
     "Line 231/-6 (0 0) (5 0) (9 0) (9 0) {color=red}"},
    {"polyline of one point",
     [](oaPlugInMain &p) {
       p.savePolyline(polygon({{0, 0}}), "red");
     },
     nullptr},
    {"text", [](oaPlugInMain &p) { p.saveText("a b", QPoint(1, -2), "red", 90); },
     "Text 231/-6 \"a b\" (1 -2) align 2 orient 1 font 5 height 12 visible drafting {color=red}"},
    {"text at another angle", [](oaPlugInMain &p) { p.saveText("a", QPoint(0, 0), "", 200); },
     "Text 231/-6 \"a\" (0 0) align 2 orient 2 font 5 height 12 visible drafting {color=}"},
    {"evaluated text", [](oaPlugInMain &p) { p.saveEvalText("[@name]", QPoint(3, 4)); },
     "EvalText 230/-6 \"[@name]\" (3 4) align 2 orient 0 font 5 height 12 visible drafting"},
};

TEST_F(DrawingTest, EachCallHasItsShapeAndARefusalLosesNothingElse) {
  Lines expected;
  plugIn.saveSymbol("lib", "cell", "symbol");
  for (const auto &shape : kShapes) {
    SCOPED_TRACE(shape.name);
    recorder.clear();
    const std::string printed = printedBy([&] { shape.save(plugIn); });
    if (shape.shape) {
      expected.push_back(shape.shape);
      EXPECT_EQ(printed, "");
      EXPECT_THAT(reports(), testing::IsEmpty());
    } else {
      EXPECT_THAT(printed, testing::MatchesRegex("ERROR \\(save[A-Za-z]+\\): .+ \n"));
      EXPECT_EQ(reports().size(), 1u);
    }
  }
  plugIn.saveClose();
  EXPECT_EQ(shapesOf(*OpenView("cell", "symbol")), expected);
}

TEST_F(DrawingTest, ShapesOfNoDesignAreTold) {
  for (const auto &shape : kShapes) {
    SCOPED_TRACE(shape.name);
    recorder.clear();
    EXPECT_EQ(printedBy([&] { shape.save(plugIn); }), "");
    EXPECT_THAT(reports(), ElementsAre(HasSubstr("no design is open for writing")));
  }
}

} // namespace
