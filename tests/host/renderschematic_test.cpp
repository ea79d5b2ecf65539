// Drawings of small schematics: what is drawn where, looked at in the scene, pixel by pixel, and in SVG.

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>

#include <gtest/gtest.h>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "evaluatedtext.h"
#include "gridfinder.h"
#include "renderschematic.h"
#include "schematicpicture.h"

namespace {

// Fonts need an application; none of the tests needs a display.
class Application : public testing::Environment {
public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "renderschematic_test";
    static char *argv[] = {name, nullptr};
    application_ = std::make_unique<QGuiApplication>(argc, argv);
  }
  void TearDown() override { application_.reset(); }

private:
  std::unique_ptr<QGuiApplication> application_;
};

const testing::Environment *const kApplication = testing::AddGlobalTestEnvironment(new Application);

using Kind = SchematicShape::Kind;

QPolygon polygon(std::initializer_list<QPoint> points) { return QPolygon(QVector<QPoint>(points)); }

SchematicShape shape(Kind kind, std::initializer_list<QPoint> points, const char *colour = "deviceColor") {
  return {kind, polygon(points), QLatin1String(colour), QString(), 0};
}

SchematicShape text(Kind kind, const QPoint &origin, const char *words, int rotation = 0) {
  return {kind, polygon({origin}), QStringLiteral("deviceColor"), QString::fromUtf8(words), rotation};
}

SchematicPort port(const char *name, const QPoint &position, const char *type, bool isGlobal = false) {
  return {QLatin1String(name), position, QLatin1String(type), QString(), isGlobal};
}

// A schematic and its symbols, with short ways to fill it.
struct Sheet {
  SchematicModel model;
  std::map<QString, SymbolModel> owned;

  SymbolModel &symbol(const char *device) { return owned[symbolKey(QStringLiteral("lib"), QLatin1String(device))]; }
  SchematicPlacement &place(const char *device, const char *name, const QPoint &origin, Orientation orientation = {}) {
    SchematicPlacement placement;
    placement.library = QStringLiteral("lib");
    placement.device = QLatin1String(device);
    placement.name = QLatin1String(name);
    placement.origin = origin;
    placement.orientation = orientation;
    model.placements.push_back(placement);
    return model.placements.back();
  }
  void wire(std::initializer_list<QPoint> points, bool isBus = false) {
    model.wires.push_back({polygon(points), isBus});
  }
  QHash<QString, const SymbolModel *> symbols() const {
    QHash<QString, const SymbolModel *> found;
    for (const auto &entry : owned)
      found.insert(entry.first, &entry.second);
    return found;
  }
  std::unique_ptr<SchematicScene> scene(SchematicScene::Kind kind = SchematicScene::Kind::Schematic) const {
    return std::make_unique<SchematicScene>(model, kind, symbols(), SchematicTheme::light(), true);
  }
  QByteArray picture(PictureFormat format, SchematicPictureOptions options = {},
                     SchematicScene::Kind kind = SchematicScene::Kind::Schematic) const {
    return drawSchematicPicture(model, kind, symbols(), QStringLiteral("lib / top / view"), format, options);
  }
  QByteArray svg(SchematicScene::Kind kind = SchematicScene::Kind::Schematic) const {
    return picture(PictureFormat::Svg, {}, kind);
  }
};

// The square (0, 0) to (200, 200) of a schematic without a page around it, two pixels a database unit.
class Drawing {
public:
  explicit Drawing(const Sheet &sheet) : image_(400, 400, QImage::Format_ARGB32_Premultiplied) {
    image_.fill(Qt::white);
    QPainter painter(&image_);
    const auto scene = sheet.scene();
    const View view({0, 0, 200, 200}, QRectF(image_.rect()));
    SchematicPainter(&painter, scene.get(), SchematicTheme::light(), view, QRectF(image_.rect()), false).paint();
  }

  QColor at(const QPointF &place) const {
    return image_.pixelColor(static_cast<int>(place.x() * 2), 399 - static_cast<int>(place.y() * 2));
  }
  bool isPainted(const QPointF &place) const { return at(place) != QColor(Qt::white); }
  // Painted pixels in the column at `x`.
  int paintedInColumn(double x) const {
    int count = 0;
    for (int y = 0; y < image_.height(); ++y)
      count += image_.pixelColor(static_cast<int>(x * 2), y) != QColor(Qt::white);
    return count;
  }
  QImage part(const Extent &extent) const {
    return image_.copy(QRect(QPoint(static_cast<int>(extent.left * 2), 399 - static_cast<int>(extent.top * 2)),
                             QSize(static_cast<int>(extent.width() * 2), static_cast<int>(extent.height() * 2))));
  }

private:
  QImage image_;
};

const SchematicText *findText(const SchematicScene &scene, const char *words) {
  for (const SchematicText &text : scene.texts())
    if (text.text == QString::fromUtf8(words))
      return &text;
  return nullptr;
}

Extent placeOf(SchematicScene &scene, const char *words) {
  const SchematicText *text = findText(scene, words);
  EXPECT_NE(text, nullptr) << words << " is not there";
  return text ? scene.measure().extent(*text) : Extent();
}

TEST(RenderSchematic, BusesAreThickerThanWires) {
  Sheet sheet;
  sheet.wire({{10, 50}, {90, 50}});
  sheet.wire({{110, 50}, {190, 50}}, true);
  const Drawing drawing(sheet);
  EXPECT_TRUE(drawing.isPainted({50, 50}));
  EXPECT_GE(drawing.paintedInColumn(150), drawing.paintedInColumn(50) + 2);
  EXPECT_EQ(drawing.paintedInColumn(100), 0);
}

TEST(RenderSchematic, DotsMarkJunctionsAndCrossingsHaveNone) {
  Sheet sheet;
  sheet.wire({{10, 50}, {190, 50}});
  sheet.wire({{50, 10}, {50, 90}});
  sheet.wire({{150, 10}, {150, 90}});
  sheet.model.wireDots.push_back(QPoint(50, 50));
  const Drawing drawing(sheet);
  EXPECT_TRUE(drawing.isPainted({52, 52}));
  EXPECT_FALSE(drawing.isPainted({152, 52}));
}

TEST(RenderSchematic, PinsOfTurnedSymbolsMeetTheirWires) {
  const struct {
    const char *name;
    Orientation orientation;
    QPoint pin, mark; // from the placement's origin
  } cases[] = {
      {"R0", {false, 0}, {40, 10}, {30, 20}},       {"R90", {false, 1}, {-10, 40}, {-20, 30}},
      {"R180", {false, 2}, {-40, -10}, {-30, -20}}, {"R270", {false, 3}, {10, -40}, {20, -30}},
      {"MX", {true, 0}, {40, -10}, {30, -20}},      {"MXR90", {true, 1}, {10, 40}, {20, 30}},
      {"MY", {true, 2}, {-40, 10}, {-30, 20}},      {"MYR90", {true, 3}, {-10, -40}, {-20, -30}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    Sheet sheet;
    SymbolModel &symbol = sheet.symbol("s");
    symbol.shapes.push_back(shape(Kind::Polyline, {{0, 10}, {40, 10}}));
    symbol.shapes.push_back(shape(Kind::Polygon, {{28, 18}, {32, 18}, {32, 22}, {28, 22}}, "#ff0000"));
    symbol.ports.push_back(port("P", {40, 10}, "output"));
    sheet.place("s", "I1", {100, 100}, c.orientation);
    const QPoint pin = QPoint(100, 100) + c.pin;
    // The wire goes on as the pin's lead does.
    sheet.wire({pin, pin + c.orientation.map(QPoint(30, 0))});
    const Drawing drawing(sheet);
    EXPECT_EQ(drawing.at(pin + QPointF(1.75, 1.75)), SchematicTheme::light().port) << "the pin";
    EXPECT_TRUE(drawing.isPainted(QPointF(pin) + QPointF(c.orientation.map(QPoint(15, 0))))) << "the wire";
    EXPECT_EQ(drawing.at(QPoint(100, 100) + c.mark).name(), QStringLiteral("#ff0000")) << "the mark";
  }
}

TEST(RenderSchematic, TextsInTurnedSymbolsStayReadable) {
  const auto pictureOf = [](Orientation orientation) {
    Sheet sheet;
    SymbolModel &symbol = sheet.symbol("s");
    symbol.shapes.push_back(shape(Kind::Rect, {{-90, -90}, {90, 90}}));
    symbol.shapes.push_back(text(Kind::Text, {-10, -6}, "RAM"));
    symbol.shapes.push_back(text(Kind::Text, {60, 80}, "@name"));
    sheet.place("s", "", {100, 100}, orientation);
    const Extent place = placeOf(*sheet.scene(), "RAM");
    return Drawing(sheet).part(
        {std::floor(place.left), std::floor(place.bottom), std::floor(place.left) + 26, std::floor(place.bottom) + 13});
  };
  const QImage upright = pictureOf({});
  // Its place changes by fractions of a pixel, which changes the shades of its edges.
  const auto difference = [&upright](const QImage &other) {
    int different = 0;
    for (int y = 0; y < upright.height(); ++y)
      for (int x = 0; x < upright.width(); ++x)
        different += std::abs(qGray(upright.pixel(x, y)) - qGray(other.pixel(x, y))) > 160;
    return different;
  };
  for (const Orientation orientation : {Orientation(false, 2), Orientation(true, 0), Orientation(true, 2)})
    EXPECT_LT(difference(pictureOf(orientation)), 40) << orientation.isMirrored() << orientation.quarterTurns();
  EXPECT_GT(difference(upright.mirrored(true, true)), 80) << "the comparison sees a text that stands on its head";
}

TEST(RenderSchematic, ExpressionsTellWhatThePlacementSays) {
  SchematicPlacement placement;
  placement.name = QStringLiteral("x1");
  placement.device = QStringLiteral("sym2@inv_1");
  placement.isVector = true;
  placement.start = 3;
  placement.stop = 0;
  placement.data = {{QStringLiteral("W"), QStringLiteral("2.5")}, {QStringLiteral("E"), QString()}};
  SymbolModel symbol;
  symbol.data = {{QStringLiteral("W"), QStringLiteral("1")}, {QStringLiteral("L"), QStringLiteral("0.15")}};
  const struct {
    const char *name, *text, *shown; // null: nothing is shown
  } cases[] = {
      {"plain text", "D[3:0]", "D[3:0]"},
      {"name with range", "@name", "x1<3:0>"},
      {"cell of a device with a view", "@symname", "inv_1"},
      {"property of the placement first", "W=@W", "W=2.5"},
      {"property of the symbol", "@W / @L", "2.5 / 0.15"},
      {"no value", "@model", nullptr},
      {"an empty value is none", "@E", nullptr},
      {"one of two has a value", "@mult x @W", " x 2.5"},
      {"of a terminal", "@#1:net_name", nullptr},
      {"a result of a simulator", "W=@W id=@spice_get_node", nullptr},
      {"a word ends at a sign", "@W:@L", "2.5:0.15"},
      {"inside a word", "me@name.org", "me@name.org"},
      {"a single @", "a @ b", "a @ b"},
      {"longer word", "@names", nullptr},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const auto shown = evaluatedText(QLatin1String(c.text), placement, symbol);
    EXPECT_EQ(shown.has_value(), c.shown != nullptr);
    if (shown && c.shown) {
      EXPECT_EQ(*shown, QLatin1String(c.shown));
    }
  }
}

TEST(RenderSchematic, SvgHasTheWordsAsText) {
  Sheet sheet;
  SymbolModel &symbol = sheet.symbol("alu");
  symbol.shapes.push_back(shape(Kind::Rect, {{-40, -20}, {40, 20}}));
  symbol.shapes.push_back(text(Kind::EvalText, {-30, -6}, "@symname of @size"));
  SchematicPlacement &placement = sheet.place("alu", "I1", {0, 0});
  placement.isVector = true;
  placement.stop = 3;
  placement.data = {{QStringLiteral("size"), QStringLiteral("8")}, {QStringLiteral("speed"), QStringLiteral("fast")}};
  sheet.model.ports.push_back(port("CLK", {-100, 0}, "input"));
  sheet.model.labels.push_back({QStringLiteral("D<0:7>"), QPoint(100, 0), QPoint()});
  sheet.model.shapes.push_back(text(Kind::Text, {0, 100}, "first line\nsecond & last", 90));
  const QByteArray svg = sheet.svg();
  for (const char *words : {">alu of 8</text>", ">I1&lt;0:3&gt;</text>", ">speed=fast</text>", ">CLK</text>",
                            ">D&lt;0:7&gt;</text>", ">first line</text>", ">second &amp; last</text>"})
    EXPECT_TRUE(svg.contains(words)) << words;
  EXPECT_FALSE(svg.contains("size=8")) << "a property that the symbol shows is not shown again";
  EXPECT_FALSE(svg.contains("@"));
}

TEST(RenderSchematic, ASymbolViewShowsItsTextsAsWrittenAndNamesItsPins) {
  Sheet sheet;
  sheet.model.shapes.push_back(shape(Kind::Rect, {{-40, -20}, {40, 20}}));
  sheet.model.shapes.push_back(text(Kind::EvalText, {0, 0}, "@name"));
  sheet.model.shapes.push_back(text(Kind::Text, {-38, 0}, "B[3:0]"));
  sheet.model.ports = {port("A", {-60, 10}, "input"), port("B<3:0>", {-60, 0}, "input"), port("Y", {60, 0}, "output")};
  const QByteArray svg = sheet.svg(SchematicScene::Kind::Symbol);
  EXPECT_TRUE(svg.contains(">@name</text>"));
  EXPECT_TRUE(svg.contains(">A</text>"));
  EXPECT_TRUE(svg.contains(">3 pins"));
  EXPECT_FALSE(svg.contains("B&lt;3:0&gt;")) << "the symbol's text B[3:0] says it already";
  const auto scene = sheet.scene(SchematicScene::Kind::Symbol);
  EXPECT_LT(placeOf(*scene, "A").right, -60) << "outside the symbol";
  EXPECT_GT(placeOf(*scene, "Y").left, 60);
}

TEST(RenderSchematic, AMissingSymbolLeavesItsDeviceName) {
  Sheet sheet;
  sheet.place("gone", "I1", {0, 0});
  sheet.symbol("empty");
  sheet.place("empty", "I2", {200, 0});
  sheet.symbol("good").shapes.push_back(shape(Kind::Rect, {{-10, -10}, {10, 10}}));
  sheet.place("good", "I3", {400, 0});
  const QByteArray svg = sheet.svg();
  for (const char *words : {">gone<", ">I1<", ">empty<", ">I2<", ">I3<", "placements without a symbol: 2"})
    EXPECT_TRUE(svg.contains(words)) << words;
  EXPECT_TRUE(svg.contains("stroke-dasharray"));
}

TEST(RenderSchematic, NamesStandBesideTheSymbolOrWhereTheHostWantsThem) {
  const auto symbolWithPins = [](Sheet *sheet, std::initializer_list<QPoint> pins) {
    SymbolModel &symbol = sheet->symbol("s");
    symbol.shapes.push_back(shape(Kind::Rect, {{-40, -40}, {40, 40}}));
    for (const QPoint &pin : pins) {
      symbol.ports.push_back(port("P", pin, ""));
      symbol.shapes.push_back(shape(Kind::Polyline, {pin, pin / 2}));
    }
  };
  const struct {
    const char *name;
    std::initializer_list<QPoint> pins;
    Side side; // where the name is to be
  } cases[] = {
      {"above", {{-60, 0}, {60, 0}}, Side::Up},
      {"no wire through the name", {{-60, 0}, {0, 60}}, Side::Right},
      {"below", {{-60, 0}, {60, 0}, {0, 60}}, Side::Down},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    Sheet sheet;
    symbolWithPins(&sheet, c.pins);
    SchematicPlacement &placement = sheet.place("s", "I1", {0, 0});
    placement.data = {{QStringLiteral("W"), QStringLiteral("1")}};
    const auto scene = sheet.scene();
    const Extent symbol = scene->drawing(0).extent;
    Extent block = placeOf(*scene, "I1");
    EXPECT_GT(block.bottom, placeOf(*scene, "W=1").bottom) << "the name stands above the properties";
    block.add(placeOf(*scene, "W=1"));
    EXPECT_EQ(block.bottom >= symbol.top, c.side == Side::Up);
    EXPECT_EQ(block.left >= symbol.right, c.side == Side::Right);
    EXPECT_EQ(block.top <= symbol.bottom, c.side == Side::Down);

    placement.labelOffset = QPoint(-7, 90);
    const auto moved = sheet.scene();
    EXPECT_EQ(placeOf(*moved, "I1").left, -7);
    EXPECT_EQ(placeOf(*moved, "I1").bottom, 90);
  }
}

TEST(RenderSchematic, PortsLeadAwayFromWhatTheyConnect) {
  const struct {
    const char *name, *type;
    QPoint wireEnd; // of a wire from the port; null: none
    Side side;
  } cases[] = {
      {"input with a wire to the right", "input", {50, 0}, Side::Left},
      {"input with a wire to the left", "input", {-50, 0}, Side::Right},
      {"output with a wire to the left", "output", {-50, 0}, Side::Right},
      {"wire upwards", "input output", {0, 50}, Side::Down},
      {"wire downwards", "", {0, -50}, Side::Up},
      {"input alone", "input", {0, 0}, Side::Left},
      {"output alone", "output", {0, 0}, Side::Right},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    Sheet sheet;
    sheet.model.ports.push_back(port("NAME", {0, 0}, c.type));
    if (!c.wireEnd.isNull())
      sheet.wire({c.wireEnd, {0, 0}});
    const auto scene = sheet.scene();
    ASSERT_EQ(scene->strokes().size(), 1u);
    const Extent arrow = extentOf(scene->strokes()[0].points), name = placeOf(*scene, "NAME");
    const QPointF unit = unitVector(c.side);
    EXPECT_EQ(QPointF((arrow.left + arrow.right) / 2, (arrow.bottom + arrow.top) / 2), unit * kPortLength / 2);
    const QPointF nameCentre((name.left + name.right) / 2, (name.bottom + name.top) / 2);
    EXPECT_GT(QPointF::dotProduct(nameCentre, unit), kPortLength) << "the name stands beyond the arrow";
  }
}

TEST(RenderSchematic, PortsTellTheirDirectionByTheirShape) {
  const struct {
    const char *type;
    bool isPointedAtWire, isPointedAtName;
  } cases[] = {{"input", true, false}, {"output", false, true}, {"input output", true, true}, {"", false, false}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.type);
    const auto strokes = portStrokes(port("P", {0, 0}, c.type), Side::Right, 1);
    ASSERT_EQ(strokes.size(), 1u);
    const auto pointsAt = [&strokes](double x) { // without the one that closes the outline
      return std::count_if(strokes[0].begin() + 1, strokes[0].end(), [x](const QPointF &p) { return p.x() == x; });
    };
    EXPECT_EQ(pointsAt(0), c.isPointedAtWire ? 1 : 2);
    EXPECT_EQ(pointsAt(kPortLength), c.isPointedAtName ? 1 : 2);
  }
  EXPECT_EQ(portStrokes(port("VDD", {0, 0}, "input output", true), Side::Up, 1).size(), 2u) << "a bar on a stem";
}

TEST(RenderSchematic, LabelsStandAtTheirWireOrBeyondTheirPin) {
  Sheet sheet;
  sheet.wire({{0, 0}, {100, 0}});
  sheet.wire({{300, 0}, {300, 100}});
  SymbolModel &symbol = sheet.symbol("s");
  symbol.shapes.push_back(shape(Kind::Rect, {{0, -20}, {40, 20}}));
  symbol.ports.push_back(port("P", {0, 0}, ""));
  sheet.place("s", "I1", {500, 0});
  const auto label = [&sheet](const char *words, const QPoint &origin, const QPoint &offset = {}) {
    sheet.model.labels.push_back({QLatin1String(words), origin, offset});
  };
  label("left_end", {0, 0});
  label("right_end", {100, 0});
  label("middle", {40, 0});
  label("upright", {300, 50});
  label("lower_end", {300, 0});
  label("pin", {500, 0});
  label("moved", {100, 0}, {-5, 30});
  const auto scene = sheet.scene();
  EXPECT_EQ(placeOf(*scene, "left_end").left, 0);
  EXPECT_GE(placeOf(*scene, "left_end").bottom, 0);
  EXPECT_EQ(placeOf(*scene, "right_end").right, 100) << "over the wire, not beyond it";
  EXPECT_EQ(placeOf(*scene, "middle").left, 40);
  EXPECT_GT(placeOf(*scene, "upright").left, 300) << "beside the wire";
  EXPECT_LT(placeOf(*scene, "lower_end").top, 0) << "beyond the wire, upright";
  EXPECT_LT(placeOf(*scene, "pin").right, 500) << "not on the symbol";
  EXPECT_EQ(placeOf(*scene, "moved").left, 95);
  EXPECT_EQ(placeOf(*scene, "moved").bottom, 30);
}

TEST(RenderSchematic, TheGridIsFoundDespiteStrayPoints) {
  const auto pitchOf = [](int pitch, int strays) {
    GridFinder grid;
    for (int i = -20; i < 20; ++i)
      grid.add(QPointF(i * pitch, 3 * pitch));
    for (int i = 0; i < strays; ++i)
      grid.add(QPointF(1e9 + 7 * i + 1, -13 * i - 1));
    return grid.pitch();
  };
  EXPECT_EQ(pitchOf(40, 0), 40);
  EXPECT_EQ(pitchOf(40, 3), 40);
  EXPECT_EQ(pitchOf(40, 30), 1);
  EXPECT_EQ(pitchOf(7, 0), 1) << "nobody draws on such a grid";
  EXPECT_EQ(GridFinder().pitch(), 1);
}

TEST(RenderSchematic, TextsGrowWhereTheGridIsCoarseAndTheDrawingLarge) {
  const auto sheetOf = [](int grid, int cells) {
    Sheet sheet;
    SymbolModel &symbol = sheet.symbol("s");
    symbol.shapes.push_back(shape(Kind::Rect, {{0, 0}, {10 * grid, 4 * grid}}));
    symbol.shapes.push_back(text(Kind::Text, {8, 8}, "left"));
    symbol.shapes.push_back(text(Kind::Text, {10 * grid - 45, 8}, "right"));
    symbol.ports.push_back(port("P", {0, grid}, "input"));
    sheet.place("s", "I1", {0, 0});
    sheet.wire({{0, grid}, {-cells * grid, grid}});
    return sheet;
  };
  const struct {
    const char *name;
    int grid, cells;
    bool grows;
  } cases[] = {{"fine grid", 10, 400, false}, {"small drawing", 40, 4, false}, {"both", 40, 100, true}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Sheet sheet = sheetOf(c.grid, c.cells);
    const auto scene = sheet.scene();
    const Extent left = placeOf(*scene, "left"), right = placeOf(*scene, "right");
    EXPECT_EQ(left.height() > kLineHeightDbu, c.grows);
    EXPECT_LT(left.height(), c.grid * 1.25) << "rows of pins have room for it";
    EXPECT_EQ(left.left, 8);
    EXPECT_LE(right.right, 10 * c.grid) << "it grows away from the symbol's edge";
  }
}

TEST(RenderSchematic, ManyWiresOverManyLabelsTakeNoTime) {
  Sheet sheet;
  for (int i = 0; i < 20000; ++i) {
    sheet.model.labels.push_back({QStringLiteral("n"), QPoint(2 * i + 1, 0), QPoint()});
    sheet.wire({{0, 0}, {50000, 0}});
  }
  // 400 million meetings, were each looked at.
  EXPECT_EQ(sheet.scene()->texts().size(), 20000u);
}

TEST(RenderSchematic, CurvesGoThroughTheirPoints) {
  const struct {
    const char *name;
    SchematicShape shape;
    Extent extent;
  } cases[] = {
      {"quarter of a circle", shape(Kind::Arc, {{0, 0}, {100, 0}, {0, 100}}), {0, 0, 100, 100}},
      {"the other three quarters", shape(Kind::Arc, {{0, 0}, {0, 100}, {100, 0}}), {-100, -100, 100, 100}},
      {"ends where it began", shape(Kind::Arc, {{0, 0}, {0, 100}, {0, 100}}), {-100, -100, 100, 100}},
      {"of an ellipse", shape(Kind::Arc, {{0, 0}, {200, 0}, {0, 100}}), {0, 0, 200, 100}},
      {"rounded ends", shape(Kind::Arc, {{0, 0}, {71, 71}, {-71, 71}}), {-71, 71, 71, 100.4}},
      {"no radius", shape(Kind::Arc, {{5, 5}, {5, 5}, {9, 5}}), {5, 5, 9, 5}},
      {"ellipse in its box", shape(Kind::Circle, {{100, 40}, {0, 0}}), {0, 0, 100, 40}},
      {"corners in any order", shape(Kind::Rect, {{10, 0}, {0, 10}}), {0, 0, 10, 10}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const Extent extent = extentOf(strokeOf(c.shape));
    EXPECT_NEAR(extent.left, c.extent.left, 0.1);
    EXPECT_NEAR(extent.bottom, c.extent.bottom, 0.1);
    EXPECT_NEAR(extent.right, c.extent.right, 0.1);
    EXPECT_NEAR(extent.top, c.extent.top, 0.1);
  }
}

TEST(RenderSchematic, ColourTextsAreUnderstood) {
  const SchematicTheme theme = SchematicTheme::light();
  const struct {
    const char *text, *colour; // null: the device colour
  } cases[] = {{"#c00000", "#c00000"},   {"#00f", "#0000ff"},        {"navy", "#000080"},
               {"deviceColor", nullptr}, {"instanceLayer", nullptr}, {"", nullptr},
               {"#12", nullptr},         {"transparent", nullptr},   {"#80c00000", "#c00000"}};
  SchematicColours colours(theme);
  for (const auto &c : cases)
    EXPECT_EQ(colours.colour(QLatin1String(c.text)).name(),
              c.colour ? QString(QLatin1String(c.colour)) : theme.device.name())
        << c.text;
  EXPECT_NE(colours.colour(QStringLiteral("white")), QColor(Qt::white)) << "white on white is not seen";
  EXPECT_EQ(SchematicColours(SchematicTheme::dark()).colour(QStringLiteral("white")), QColor(Qt::white));
}

TEST(RenderSchematic, NothingToDrawIsSaid) {
  EXPECT_TRUE(Sheet().svg().contains("This schematic is empty."));
  EXPECT_TRUE(Sheet().svg(SchematicScene::Kind::Symbol).contains("This symbol is empty."));
}

TEST(RenderSchematic, TheFarthestAndTheFlattestAreDrawn) {
  const int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
  Sheet sheet;
  SymbolModel &symbol = sheet.symbol("s");
  symbol.shapes = {shape(Kind::Rect, {{kLeast, kLeast}, {kMost, kMost}}),
                   shape(Kind::Circle, {{kLeast, 0}, {kMost, 0}}),
                   shape(Kind::Arc, {{0, 0}, {kMost, kLeast}, {kLeast, kMost}}),
                   shape(Kind::Arc, {{1, 1}}),
                   shape(Kind::Rect, {}),
                   shape(Kind::Polygon, {}),
                   shape(Kind::Polygon, {{3, 3}}),
                   text(Kind::Text, {kLeast, kMost}, "far", 270)};
  symbol.shapes.push_back({Kind::Text, QPolygon(), QString(), QStringLiteral("nowhere"), 45});
  symbol.ports = {port("P", {kLeast, kMost}, "input"), port("Q", {kMost, kMost}, "output", true)};
  for (int turns = 0; turns < 4; ++turns)
    for (const bool isMirrored : {false, true})
      sheet.place("s", "I1", {kLeast, kMost}, Orientation(isMirrored, turns)).labelOffset = QPoint(kLeast, kMost);
  sheet.model.shapes = symbol.shapes;
  sheet.model.ports = symbol.ports;
  sheet.model.grounds.push_back({QPoint(kMost, kLeast)});
  sheet.model.wireDots.push_back(QPoint(kLeast, kLeast));
  sheet.model.labels.push_back({QStringLiteral("L"), QPoint(kLeast, 0), QPoint(kLeast, kLeast)});
  sheet.wire({{kLeast, 0}, {kMost, 0}, {kMost, kLeast}}, true);
  sheet.wire({{kLeast, kLeast}, {kMost, kMost}});
  sheet.wire({{5, 5}});
  sheet.wire({});
  SchematicPictureOptions near;
  near.window = Extent{-3, -3, 3, 3};
  for (const PictureFormat format : {PictureFormat::Png, PictureFormat::Svg, PictureFormat::Pdf}) {
    EXPECT_GT(sheet.picture(format).size(), 1000);
    EXPECT_GT(sheet.picture(format, near).size(), 1000);
    EXPECT_GT(sheet.picture(format, near, SchematicScene::Kind::Symbol).size(), 1000);
  }
}

TEST(RenderSchematic, VeryManySymbolsBecomeBoxes) {
  Sheet sheet;
  SymbolModel &symbol = sheet.symbol("s");
  for (int i = 0; i < 20; ++i)
    symbol.shapes.push_back(shape(Kind::Circle, {{-i - 1, -i - 1}, {i + 1, i + 1}}));
  const int kPlacements = 2000; // of 1460 segments each, all in one place
  for (int i = 0; i < kPlacements; ++i)
    sheet.place("s", "I", {0, 0});
  const QByteArray svg = sheet.svg();
  EXPECT_TRUE(svg.contains("simplified"));
  EXPECT_LT(svg.size(), 20 << 20);

  Sheet small;
  small.symbol("s") = symbol;
  for (int i = 0; i < kPlacements; ++i)
    small.place("s", "I", {i % 50 * 10000, i / 50 * 10000});
  const QByteArray boxes = small.svg();
  EXPECT_FALSE(boxes.contains("simplified")) << "symbols of a pixel are boxes anyway";
  EXPECT_LT(boxes.size(), 2 << 20);
}

} // namespace
