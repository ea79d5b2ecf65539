#include "renderschematic.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// A symbol that is shown smaller than this is a box.
constexpr double kSmallestSymbolPixels = 6;
// What all symbols together may cost: a second or two, and a file that viewers take.
constexpr int kMostRasterSegments = 800'000;
constexpr int kMostVectorSegments = 400'000;
// Lines of text lower than this cannot be read.
constexpr double kSmallestLinePixels = 4.5;
// A vector picture keeps small texts up to so many; more would make it too large for viewers.
constexpr std::size_t kMostSmallTexts = 20'000;
// More texts than this cover each other, so that none can be read.
constexpr int kMostTexts = 40'000;
constexpr double kDotRadius = 3.5; // units

// Unlike QRectF::contains(), this takes boxes without width or height for what they are.
bool encloses(const QRectF &area, const QRectF &box) {
  return box.left() >= area.left() && box.right() <= area.right() && box.top() >= area.top() &&
         box.bottom() <= area.bottom();
}

} // namespace

SchematicLineWidths::SchematicLineWidths(double unit)
    : device(std::max(1.0, 0.9 * unit)), wire(std::max(1.5, 1.1 * unit)), bus(std::max(3.0, 3.0 * unit)),
      dotRadius(std::max(2.0, kDotRadius * unit)) {}

SchematicPainter::SchematicPainter(QPainter *painter, SchematicScene *scene, const SchematicTheme &theme,
                                   const View &view, const QRectF &area, bool isVector)
    : painter_(painter), scene_(scene), theme_(theme), view_(view), area_(area), isVector_(isVector),
      widths_(view.scale * scene->unit()), segmentBudget_(isVector ? kMostVectorSegments : kMostRasterSegments) {}

void SchematicPainter::paint() {
  painter_->save();
  painter_->setRenderHint(QPainter::Antialiasing);
  painter_->setClipRect(area_);
  if (scene_->kind() == SchematicScene::Kind::Symbol)
    paintOrigin();
  paintPlacements();
  for (const SceneStroke &stroke : scene_->strokes()) {
    usePen(stroke.colour, widths_.device);
    paintStroke(toPicture(stroke.points), stroke.colour, stroke.fill);
  }
  flushSegments();
  paintWires(false);
  paintWires(true);
  paintDots();
  paintTexts();
  painter_->restore();
}

QPolygonF SchematicPainter::toPicture(const QPolygonF &points) const {
  QPolygonF mapped;
  mapped.reserve(points.size());
  for (const QPointF &point : points)
    mapped += view_.map(point);
  return mapped;
}

void SchematicPainter::usePen(const QColor &colour, double width, Qt::PenStyle style) {
  const QPen pen(colour, width, style, Qt::SquareCap, Qt::RoundJoin);
  if (painter_->pen() == pen)
    return;
  flushSegments();
  painter_->setPen(pen);
}

void SchematicPainter::flushSegments() {
  if (!segments_.isEmpty())
    painter_->drawLines(segments_);
  segments_.clear();
}

void SchematicPainter::paintLine(const QPolygonF &points) {
  // Lines along an axis meet in a proper corner when each is painted for itself.
  bool isStraight = !isVector_;
  for (int i = 0; isStraight && i + 1 < points.size(); ++i)
    isStraight = points[i].x() == points[i + 1].x() || points[i].y() == points[i + 1].y() || points.size() == 2;
  const bool isInside = encloses(area_, points.boundingRect());
  if (isInside && !isStraight) {
    painter_->drawPolyline(points);
    return;
  }
  for (int i = 0; i + 1 < points.size(); ++i) {
    QPointF from = points[i], to = points[i + 1];
    if (isInside || clipLine(&from, &to, area_))
      segments_ += QLineF(from, to);
  }
  if (points.size() == 1 && isInside)
    segments_ += QLineF(points[0], points[0]);
}

void SchematicPainter::paintStroke(const QPolygonF &points, const QColor &colour, double fill) {
  if (fill > 0) {
    flushSegments();
    QColor inside = colour;
    inside.setAlphaF(fill);
    const QPen pen = painter_->pen();
    painter_->setPen(Qt::NoPen);
    painter_->setBrush(inside);
    painter_->drawPolygon(clippedPolygon(points, area_), Qt::WindingFill);
    painter_->setBrush(Qt::NoBrush);
    painter_->setPen(pen);
  }
  paintLine(points);
}

void SchematicPainter::paintPlacements() {
  const auto &placements = scene_->model().placements;
  for (std::size_t i = 0; i < placements.size(); ++i) {
    const SymbolDrawing &drawing = scene_->drawing(i);
    const Placement placement = placementOf(placements[i]);
    const QRectF box = view_.map(placement.map(drawing.extent));
    // Widened, as flat boxes meet nothing.
    if (!area_.intersects(box.adjusted(-1, -1, 1, 1)))
      continue;
    const bool isSmall = std::max(box.width(), box.height()) < kSmallestSymbolPixels;
    if (!isSmall && drawing.symbol && drawing.segments <= segmentBudget_) {
      segmentBudget_ -= drawing.segments;
      paintSymbol(drawing, CellToPicture(view_, placement));
      continue;
    }
    isSimplified_ |= !isSmall && drawing.symbol;
    paintBox(box, drawing);
  }
  flushSegments();
}

void SchematicPainter::paintBox(const QRectF &box, const SymbolDrawing &drawing) {
  if (drawing.symbol)
    usePen(theme_.device, widths_.device);
  else
    usePen(theme_.missing, widths_.device, Qt::DashLine);
  QPolygonF outline;
  outline << box.topLeft() << box.topRight() << box.bottomRight() << box.bottomLeft() << box.topLeft();
  paintLine(outline);
}

void SchematicPainter::paintSymbol(const SymbolDrawing &drawing, const CellToPicture &toPicture) {
  QPolygonF points;
  for (const SceneStroke &stroke : drawing.strokes) {
    points.clear();
    for (const QPointF &point : stroke.points)
      points += toPicture.map(point.x(), point.y());
    usePen(stroke.colour, widths_.device);
    paintStroke(points, stroke.colour, stroke.fill);
  }
  if (drawing.pins.empty())
    return;
  flushSegments();
  const double half = kPinHalfSide * scene_->unit() * view_.scale;
  for (const QPointF &pin : drawing.pins) {
    const QPointF place = toPicture.map(pin.x(), pin.y());
    const QRectF square(place - QPointF(half, half), place + QPointF(half, half));
    if (area_.contains(square))
      painter_->fillRect(square, theme_.port);
  }
}

void SchematicPainter::paintWires(bool areBuses) {
  usePen(areBuses ? theme_.bus : theme_.wire, areBuses ? widths_.bus : widths_.wire);
  for (const SchematicWire &wire : scene_->model().wires)
    if (wire.isBus == areBuses)
      paintLine(toPicture(QPolygonF(wire.points)));
  flushSegments();
}

void SchematicPainter::paintDots() {
  painter_->setPen(Qt::NoPen);
  painter_->setBrush(theme_.wire);
  for (const QPoint &dot : scene_->model().wireDots) {
    const QPointF place = view_.map(QPointF(dot));
    if (area_.contains(place))
      painter_->drawEllipse(place, widths_.dotRadius, widths_.dotRadius);
  }
  painter_->setBrush(Qt::NoBrush);
}

void SchematicPainter::paintTexts() {
  const bool keepsSmall = isVector_ && scene_->texts().size() <= kMostSmallTexts;
  SchematicTextPainter texts(painter_, &scene_->measure(), view_, area_, keepsSmall ? 0 : kSmallestLinePixels,
                             kMostTexts);
  for (const SchematicText &text : scene_->texts())
    texts.paint(text);
  hiddenTexts_ = texts.hiddenTexts();
}

void SchematicPainter::paintOrigin() {
  const QPointF origin = view_.map(QPointF(0, 0));
  const double arm = std::max(6.0, 6 * scene_->unit() * view_.scale);
  usePen(theme_.origin, 1);
  for (const QPointF &direction : {QPointF(arm, 0), QPointF(0, arm)}) {
    QPointF from = origin - direction, to = origin + direction;
    if (clipLine(&from, &to, area_))
      segments_ += QLineF(from, to);
  }
  flushSegments();
}
