// Drawings of small models, looked at pixel by pixel.

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <QGuiApplication>
#include <QPainter>

#include "hosterror.h"
#include "layoutmodel.h"
#include "renderindex.h"
#include "renderlabels.h"
#include "renderlayout.h"
#include "renderpage.h"
#include "renderpicture.h"
#include "renderrastercanvas.h"
#include "rendervectorcanvas.h"

namespace {

// Fonts need an application; none of the tests needs a display.
class Application : public testing::Environment {
public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "render_test";
    static char *argv[] = {name, nullptr};
    application_ = std::make_unique<QGuiApplication>(argc, argv);
  }
  void TearDown() override { application_.reset(); }

private:
  std::unique_ptr<QGuiApplication> application_;
};

const testing::Environment *const kApplication = testing::AddGlobalTestEnvironment(new Application);

constexpr int kAllLevels = 1000;

// A model with short ways to fill it. The first cell is the top cell.
struct Chip {
  LayoutModel model;

  LayoutCell &cell(const char *name) {
    const CellIndex index = model.cellIndex(QString::fromLatin1(name));
    if (!model.topCell())
      model.setTopCell(index);
    model.cell(index).isDefined = true;
    return model.cell(index);
  }
  void box(const char *cellName, int left, int bottom, int right, int top, int layer = 1) {
    cell(cellName).addBox({left, bottom, right, top, model.layerIndex(layer, 0)});
  }
  void path(const char *cellName, const QVector<QPoint> &points, int width, int caps, int begin = 0, int end = 0) {
    cell(cellName).addPath(QPolygon(points), {0, 0, model.layerIndex(1, 0), width, caps, begin, end});
  }
  void place(const char *parent, const char *child, QPoint origin, Orientation orientation = {}) {
    array(parent, child, origin, 1, 1, 0, 0, orientation);
  }
  void array(const char *parent, const char *child, QPoint origin, int columns, int rows, int columnPitch, int rowPitch,
             Orientation orientation = {}) {
    LayoutCell &cellOfParent = cell(parent);
    cellOfParent.references.push_back({model.cellIndex(QString::fromLatin1(child)), origin, orientation,
                                       columns * rows > 1, columns, rows, columnPitch, rowPitch, QString()});
  }
};

// A picture of the square (0, 0) to (side, side) without any page around it, a pixel a database unit unless `pixels`
// says otherwise.
class Drawing {
public:
  Drawing(const Chip &chip, double left, double bottom, double side, int pixels = 0, int levels = kAllLevels)
      : image_(pixels > 0 ? pixels : static_cast<int>(side), pixels > 0 ? pixels : static_cast<int>(side),
               QImage::Format_ARGB32_Premultiplied),
        view_(square(left, bottom, side), QRectF(image_.rect())) {
    image_.fill(Qt::black);
    const CellIndex top = *chip.model.topCell();
    const LayoutIndex index(chip.model, top);
    LayoutPainter painter(chip.model, index, top, levels, view_, QRectF(image_.rect()));
    RasterCanvas canvas(&image_);
    LayerStyle style;
    for (LayerIndex layer = 0; layer < chip.model.layers().size(); ++layer) {
      style.colour = chip.model.layer(layer).layer == 1 ? Qt::white : Qt::red;
      canvas.beginLayer(style);
      painter.paintLayer(layer, &canvas);
      canvas.endLayer();
    }
    style.colour = Qt::green;
    style.pattern = FillPattern::Outline;
    canvas.beginLayer(style);
    painter.paintOutlines(&canvas);
    canvas.endLayer();
  }

  QColor at(double x, double y) const {
    const QPointF point = view_.map(QPointF(x, y));
    const QPoint pixel(std::min(static_cast<int>(point.x()), image_.width() - 1),
                       std::min(static_cast<int>(point.y()), image_.height() - 1));
    return image_.pixelColor(pixel);
  }
  bool isPainted(double x, double y) const { return at(x, y) != QColor(Qt::black); }
  const QImage &image() const { return image_; }

  // Painted stretches along the horizontal line at `y`.
  int stretches(double y) const {
    int count = 0;
    bool wasPainted = false;
    for (int x = 0; x < image_.width(); ++x) {
      const bool isPainted = image_.pixelColor(x, static_cast<int>(view_.map(QPointF(0, y)).y())) != QColor(Qt::black);
      count += isPainted && !wasPainted;
      wasPainted = isPainted;
    }
    return count;
  }

private:
  static Extent square(double left, double bottom, double side) { return {left, bottom, left + side, bottom + side}; }

  QImage image_;
  View view_;
};

TEST(RenderLayout, EachOrientationTurnsAnAsymmetricCell) {
  // A flag: its foot at the origin, the pole along +y, the cloth to +x at the pole's end.
  const struct {
    const char *name;
    Orientation orientation;
    QPoint pole, cloth; // points on them
  } cases[] = {
      {"R0", {false, 0}, {2, 20}, {20, 36}},       {"R90", {false, 1}, {-20, 2}, {-36, 20}},
      {"R180", {false, 2}, {-2, -20}, {-20, -36}}, {"R270", {false, 3}, {20, -2}, {36, -20}},
      {"MX", {true, 0}, {2, -20}, {20, -36}},      {"MXR90", {true, 1}, {20, 2}, {36, 20}},
      {"MY", {true, 2}, {-2, 20}, {-20, 36}},      {"MYR90", {true, 3}, {-20, -2}, {-36, -20}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    Chip chip;
    chip.cell("TOP");
    chip.box("FLAG", 0, 0, 4, 40);
    chip.box("FLAG", 0, 32, 24, 40);
    chip.place("TOP", "FLAG", QPoint(50, 50), c.orientation);
    const Drawing drawing(chip, 0, 0, 100);
    EXPECT_TRUE(drawing.isPainted(50 + c.pole.x(), 50 + c.pole.y()));
    EXPECT_TRUE(drawing.isPainted(50 + c.cloth.x(), 50 + c.cloth.y()));
    int painted = 0;
    for (const auto &other : cases)
      painted += drawing.isPainted(50 + other.cloth.x(), 50 + other.cloth.y());
    EXPECT_EQ(painted, 1) << "the cloth of no other orientation";
  }
}

TEST(RenderLayout, ArraysInsideTurnedCellsPaintEachElement) {
  Chip chip;
  chip.cell("TOP");
  chip.array("ROW", "DOT", QPoint(0, 0), 3, 2, 20, -10); // three columns to the right, two rows downwards
  chip.box("DOT", 0, 0, 5, 5);
  chip.place("TOP", "ROW", QPoint(50, 20), Orientation(false, 1));
  const Drawing drawing(chip, 0, 0, 100);
  for (const double y : {22.5, 42.5, 62.5})
    EXPECT_EQ(drawing.stretches(y), 2) << y;
  EXPECT_EQ(drawing.stretches(82.5), 0);
  EXPECT_TRUE(drawing.isPainted(47.5, 22.5));
  EXPECT_TRUE(drawing.isPainted(57.5, 62.5));
}

TEST(RenderLayout, PathEndsFollowTheirCaps) {
  const struct {
    const char *name;
    int caps, begin, end;
    bool isBeginPainted, isEndPainted, isCornerPainted; // 4 beyond the ends; the corner of a square end
  } cases[] = {
      {"flush", 0, 0, 0, false, false, false},
      {"round", 1, 0, 0, true, true, false},
      {"half the width", 2, 0, 0, true, true, true},
      {"own extensions", 0, 6, -6, true, false, true},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    Chip chip;
    chip.path("TOP", {QPoint(30, 50), QPoint(70, 50)}, 10, c.caps, c.begin, c.end);
    const Drawing drawing(chip, 0, 0, 100);
    EXPECT_EQ(drawing.isPainted(26, 50), c.isBeginPainted);
    EXPECT_EQ(drawing.isPainted(74, 50), c.isEndPainted);
    EXPECT_EQ(drawing.isPainted(25.7, 54.3), c.isCornerPainted);
    EXPECT_EQ(drawing.isPainted(66, 50), c.end >= 0);
    EXPECT_TRUE(drawing.isPainted(50, 54));
    EXPECT_FALSE(drawing.isPainted(50, 56.5));
  }
  Chip bend;
  bend.path("TOP", {QPoint(20, 20), QPoint(20, 20), QPoint(80, 20), QPoint(80, 80)}, 10, 0);
  bend.path("TOP", {QPoint(20, 90), QPoint(60, 50)}, 0, 0);
  const Drawing drawing(bend, 0, 0, 100);
  EXPECT_TRUE(drawing.isPainted(83, 17)) << "the corner is mitred";
  EXPECT_TRUE(drawing.isPainted(40, 70)) << "a path without width is a hairline";
  EXPECT_FALSE(drawing.isPainted(44, 70));
}

TEST(RenderLayout, CellsBeyondTheLastLevelAreOutlined) {
  Chip chip;
  chip.box("TOP", 0, 0, 10, 10);
  chip.place("TOP", "A", QPoint(20, 20));
  chip.box("A", 0, 0, 10, 10, 2);
  chip.place("A", "B", QPoint(20, 20));
  chip.box("B", 0, 0, 30, 30, 2);
  const Drawing two(chip, 0, 0, 100, 0, 2);
  EXPECT_TRUE(two.isPainted(25, 25));
  EXPECT_FALSE(two.isPainted(55, 55)) << "B is not filled";
  EXPECT_GT(two.at(40.5, 55).green(), 100) << "but outlined";
  const Drawing one(chip, 0, 0, 100, 0, 1);
  EXPECT_TRUE(one.isPainted(5, 5));
  EXPECT_FALSE(one.isPainted(25, 25));
  EXPECT_GT(one.at(20.5, 45).green(), 100) << "the outline of A holds B";
  EXPECT_TRUE(Drawing(chip, 0, 0, 100).isPainted(55, 55));
}

TEST(RenderLayout, ExtremeAndTinyShapesAreSeen) {
  const int kFar = 2000000000;
  Chip chip;
  chip.box("TOP", -kFar, -kFar, -kFar + 10, -kFar + 10);
  chip.box("TOP", kFar - 10, kFar - 10, kFar, kFar);
  chip.place("TOP", "A", QPoint(kFar, -kFar), Orientation(true, 1));
  chip.box("A", -kFar, 0, -kFar + 1, 1); // beyond 32 bits after placing, were it not for the turn
  const Drawing whole(chip, -kFar, -kFar, 2.0 * kFar, 100);
  EXPECT_TRUE(whole.isPainted(-kFar + 5, -kFar + 5));
  EXPECT_TRUE(whole.isPainted(kFar - 5, kFar - 5));
  EXPECT_FALSE(whole.isPainted(0, 0));
  // At full size every unit is where it belongs.
  const Drawing corner(chip, kFar - 50.0, kFar - 50.0, 50);
  EXPECT_TRUE(corner.isPainted(kFar - 9.5, kFar - 9.5));
  EXPECT_FALSE(corner.isPainted(kFar - 10.5, kFar - 10.5));
}

TEST(RenderLayout, HugeArraysAreThinnedAndRecursionEnds) {
  Chip chip;
  chip.array("TOP", "A", QPoint(0, 0), 30000, 30000, 1000, 1000);
  chip.array("A", "B", QPoint(0, 0), 30000, 30000, 10, 10);
  chip.box("B", 0, 0, 10, 10);
  chip.place("B", "TOP", QPoint(0, 0)); // recursive
  chip.place("TOP", "MISSING", QPoint(0, 0));
  const Drawing drawing(chip, 0, 0, 3e7, 50);
  for (const double place : {1e6, 1.5e7, 2.9e7})
    EXPECT_TRUE(drawing.isPainted(place, place)) << place;

  const LayoutIndex index(chip.model, *chip.model.topCell());
  EXPECT_EQ(index.levels(*chip.model.topCell()), 3);
  EXPECT_DOUBLE_EQ(index.shownShapes(kAllLevels)[0], 9e8 * 9e8);
  EXPECT_DOUBLE_EQ(index.shownShapes(2)[0], 0);
}

TEST(RenderLayout, CopiesPiledUpAtOnePlaceEndAsTheirBox) {
  Chip chip;
  chip.cell("L0");
  const int kDoublings = 50;
  for (int level = 0; level < kDoublings; ++level) {
    const QByteArray parent = "L" + QByteArray::number(level);
    const QByteArray child = "L" + QByteArray::number(level + 1);
    chip.place(parent, child, QPoint(0, 0));
    chip.place(parent, child, QPoint(1, 0));
  }
  chip.box("L50", 0, 0, 20, 80);
  QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::black);
  const LayoutIndex index(chip.model, *chip.model.topCell());
  LayoutPainter painter(chip.model, index, *chip.model.topCell(), kAllLevels,
                        View({0, 0, 100, 100}, QRectF(image.rect())), QRectF(image.rect()));
  painter.setWorkLimit(10000);
  RasterCanvas canvas(&image);
  LayerStyle style;
  style.colour = Qt::white;
  canvas.beginLayer(style);
  painter.paintLayer(0, &canvas);
  canvas.endLayer();
  EXPECT_TRUE(painter.isSimplified());
  EXPECT_GT(qGray(image.pixel(2, 50)), 0);
  EXPECT_GT(qGray(image.pixel(68, 50)), 0) << "20 wide, moved by up to 50";
  EXPECT_EQ(qGray(image.pixel(73, 50)), 0);
}

TEST(RenderCanvas, HolesStayEmptyAndOverlapsDoNotDarken) {
  // A ring as one polygon with a cut, and two boxes that overlap.
  const QPolygonF ring(QVector<QPointF>{
      {10, 10}, {90, 10}, {90, 90}, {10, 90}, {10, 30}, {30, 30}, {30, 70}, {70, 70}, {70, 30}, {10, 30}});
  for (const FillPattern pattern : {FillPattern::Solid, FillPattern::Cross, FillPattern::Dots, FillPattern::Outline}) {
    SCOPED_TRACE(static_cast<int>(pattern));
    LayerStyle style;
    style.colour = Qt::white;
    style.pattern = pattern;
    QImage images[2];
    for (int kind = 0; kind < 2; ++kind) {
      QImage &image = images[kind];
      image = QImage(200, 100, QImage::Format_ARGB32_Premultiplied);
      image.fill(Qt::black);
      QPainter painter(&image);
      std::unique_ptr<RenderCanvas> canvas;
      if (kind == 0)
        canvas = std::make_unique<RasterCanvas>(&image);
      else
        canvas = std::make_unique<VectorCanvas>(&painter);
      canvas->beginLayer(style);
      canvas->addPolygon(ring);
      canvas->addBox(QRectF(110, 10, 60, 60));
      canvas->addBox(QRectF(130, 30, 60, 60));
      canvas->endLayer();
      painter.end();
      int holePixels = 0, alone = 0;
      for (int y = 33; y < 67; ++y)
        for (int x = 33; x < 67; ++x)
          holePixels += qGray(image.pixel(x, y)) > 0;
      for (int y = 12; y < 28; ++y)
        for (int x = 112; x < 168; ++x)
          alone = std::max(alone, qGray(image.pixel(x, y)));
      EXPECT_EQ(holePixels, 0) << kind;
      EXPECT_EQ(alone > 0, pattern != FillPattern::Outline) << kind;
      if (pattern == FillPattern::Solid) {
        EXPECT_EQ(qGray(image.pixel(150, 50)), alone) << "overlap, canvas " << kind;
      }
      EXPECT_GT(qGray(image.pixel(150, 10)), 80) << "frame, canvas " << kind;
    }
  }
}

TEST(RenderLabels, AnchorFollowsPresentationAndOrientation) {
  const struct {
    const char *name;
    int presentation;
    Orientation orientation;
    QRectF box; // of a text of 40 by 10 at (100, 100), y downwards
  } cases[] = {
      {"upper left", 0, {}, {100, 100, 40, 10}},
      {"centre", 5, {}, {80, 95, 40, 10}},
      {"lower right", 10, {}, {60, 90, 40, 10}},
      {"lower left", 8, {}, {100, 90, 40, 10}},
      {"not a code", 3, {}, {100, 100, 40, 10}},
      {"lower left, quarter turn", 8, {false, 1}, {90, 60, 10, 40}},
      {"lower left, half turn", 8, {false, 2}, {60, 100, 40, 10}},
      {"upper left, mirrored about x", 0, {true, 0}, {100, 90, 40, 10}},
      {"lower left, mirrored about y", 8, {true, 2}, {60, 90, 40, 10}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    RenderLabel label;
    label.anchor = QPointF(100, 100);
    label.orientation = c.orientation;
    setPresentation(&label, c.presentation);
    EXPECT_EQ(labelBox(label, QSizeF(40, 10)), c.box);
  }
}

TEST(RenderLabels, LabelsNeitherOverlapNorLeaveTheArea) {
  QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::black);
  QPainter painter(&image);
  RenderLabel label;
  label.colour = Qt::white;
  label.text = QStringLiteral("deep");
  label.anchor = QPointF(30, 30);
  label.depth = 2;
  RenderLabel higher = label, atEdge = label, same = label;
  higher.text = QStringLiteral("higher");
  higher.depth = 1;
  atEdge.text = QStringLiteral("edge");
  atEdge.anchor = QPointF(150, 98);
  same = higher;
  EXPECT_EQ(paintLabels(&painter, {label, higher, same, atEdge}, QRectF(10, 10, 145, 80), Qt::black), 1)
      << "the deeper of the two at one place; a repeated one is not counted";
  painter.end();
  int inside = 0, outside = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qGray(image.pixel(x, y)) > 0)
        ++(QRect(8, 8, 150, 85).contains(x, y) ? inside : outside);
  EXPECT_GT(inside, 40);
  EXPECT_LT(outside, 20) << "only the cross that marks the anchor at the edge";
}

TEST(RenderPage, LegendLeavesTheDrawingItsRoom) {
  for (const QSizeF &size :
       {QSizeF(1600, 1200), QSizeF(640, 480), QSizeF(200, 150), QSizeF(64, 64), QSizeF(3000, 200)}) {
    for (const int layers : {0, 1, 40, 400}) {
      PageContent content;
      for (int layer = 0; layer < layers; ++layer)
        content.legend.push_back({generatedStyle(layer, 0), QString::number(layer), 1e7 * layer});
      const RenderPage page(size, RenderTheme::dark(), content);
      EXPECT_GE(page.panel().width(), size.width() * 0.5) << size.width() << " " << layers;
      EXPECT_TRUE(QRectF(QPointF(0, 0), size).contains(page.panel())) << size.width() << " " << layers;
      EXPECT_GT(page.drawingArea().height(), 0) << size.width() << " " << layers;
    }
  }
  EXPECT_EQ(lengthText(1380, 1e-9).toStdString(), "1.38 µm");
  EXPECT_EQ(lengthText(350, 1e-9).toStdString(), "350 nm");
  EXPECT_EQ(lengthText(350, 0).toStdString(), "350 dbu");
}

TEST(RenderPicture, EveryFormatDrawsEveryKindOfCell) {
  Chip full;
  full.model.setUnits(1e-3, 1e-9);
  full.box("TOP", 0, 0, 1000, 2000);
  full.cell("TOP").addText({QStringLiteral("A<1>&\x01"), QPoint(500, 500), 200, full.model.layerIndex(1, 0), 5, {}});
  Chip empty;
  empty.cell("TOP");
  Chip point; // without any size
  point.box("TOP", 7, 7, 7, 7);
  const struct {
    const char *name;
    const Chip &chip;
  } chips[] = {{"full", full}, {"empty", empty}, {"point", point}};
  const struct {
    PictureFormat format;
    const char *head;
  } formats[] = {{PictureFormat::Png, "\x89PNG"}, {PictureFormat::Svg, "<?xml"}, {PictureFormat::Pdf, "%PDF"}};
  for (const auto &chip : chips) {
    for (const auto &format : formats) {
      SCOPED_TRACE(std::string(chip.name) + " " + format.head);
      PictureOptions options;
      options.size = QSize(400, 300);
      options.isDark = false;
      const QByteArray picture =
          drawPicture(chip.chip.model, LayerMap(), QStringLiteral("lib / TOP"), format.format, options);
      EXPECT_TRUE(picture.startsWith(format.head));
      if (format.format == PictureFormat::Svg) {
        EXPECT_EQ(picture.contains("This cell is empty."), &chip.chip == &empty);
        EXPECT_EQ(picture.contains("A&lt;1&gt;&amp;"), &chip.chip == &full);
        EXPECT_FALSE(picture.contains('\x01'));
      }
      if (format.format == PictureFormat::Png) {
        const QImage image = QImage::fromData(picture);
        EXPECT_EQ(image.size(), options.size);
        EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::white));
      }
    }
  }
  EXPECT_THROW(drawPicture(LayoutModel(), LayerMap(), QStringLiteral("t"), PictureFormat::Png, {}), HostError);
  EXPECT_EQ(pictureFormatOf(QStringLiteral("a.b/c.SVG")), PictureFormat::Svg);
  EXPECT_FALSE(pictureFormatOf(QStringLiteral("picture.gif")));
  EXPECT_FALSE(pictureFormatOf(QStringLiteral("png")));
}

} // namespace
