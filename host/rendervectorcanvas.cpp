#include "rendervectorcanvas.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double kPenWidth = 0.8;
// Small shapes have neither frame nor hatch but one even strength.
constexpr double kSmallOpacity = 0.6;
// Some viewers give up on paths of more than 32767 points, so long ones are split.
constexpr int kMostElements = 20000;

QColor withOpacity(QColor colour, double opacity) {
  colour.setAlphaF(opacity);
  return colour;
}

// A set of parallel lines: points (x, y) with normal * (x, y) = n * spacing for whole n.
struct HatchFamily {
  QPointF normal; // of length 1
  double spacing;
};

std::vector<HatchFamily> hatchOf(FillPattern pattern) {
  const double kDiagonal = 0.70710678118654752;
  const HatchFamily forward{{kDiagonal, kDiagonal}, 8 * kDiagonal}, backward{{kDiagonal, -kDiagonal}, 8 * kDiagonal};
  const HatchFamily horizontal{{0, 1}, 8}, vertical{{1, 0}, 8}, dots{{0, 1}, 4};
  switch (pattern) {
  case FillPattern::Solid:
  case FillPattern::Outline:
    return {};
  case FillPattern::Forward:
    return {forward};
  case FillPattern::Backward:
    return {backward};
  case FillPattern::Cross:
    return {forward, backward};
  case FillPattern::Horizontal:
    return {horizontal};
  case FillPattern::Vertical:
    return {vertical};
  case FillPattern::Grid:
    return {horizontal, vertical};
  case FillPattern::Dots:
    return {dots};
  }
  return {};
}

// Where a hatch line enters (+1) or leaves (-1) a polygon.
struct Crossing {
  int line;
  double along;
  int winding;

  bool operator<(const Crossing &other) const { return line != other.line ? line < other.line : along < other.along; }
};

void addCrossings(const QPolygonF &polygon, const HatchFamily &family, std::vector<Crossing> *crossings) {
  const QPointF direction(-family.normal.y(), family.normal.x());
  for (int i = 0; i < polygon.size(); ++i) {
    const QPointF &from = polygon[i], &to = polygon[(i + 1) % polygon.size()];
    const double acrossFrom = QPointF::dotProduct(from, family.normal) / family.spacing;
    const double acrossTo = QPointF::dotProduct(to, family.normal) / family.spacing;
    const double alongFrom = QPointF::dotProduct(from, direction), alongTo = QPointF::dotProduct(to, direction);
    // Half-open, so that a line through a corner meets one of the two edges.
    const int first = static_cast<int>(std::ceil(std::min(acrossFrom, acrossTo)));
    const int last = static_cast<int>(std::ceil(std::max(acrossFrom, acrossTo))) - 1;
    for (int line = first; line <= last; ++line) {
      const double at = (line - acrossFrom) / (acrossTo - acrossFrom);
      crossings->push_back({line, alongFrom + at * (alongTo - alongFrom), acrossTo > acrossFrom ? 1 : -1});
    }
  }
}

// Gives `paint` the parts of a family of lines that lie inside the union of the polygons.
template <typename Paint>
void hatchPolygons(const std::vector<QPolygonF> &polygons, const HatchFamily &family, Paint paint) {
  std::vector<Crossing> crossings;
  for (const QPolygonF &polygon : polygons)
    addCrossings(polygon, family, &crossings);
  std::sort(crossings.begin(), crossings.end());
  const QPointF direction(-family.normal.y(), family.normal.x());
  QPainterPath path;
  int winding = 0;
  for (const Crossing &crossing : crossings) {
    const bool wasInside = winding != 0;
    winding += crossing.winding;
    const QPointF point = family.normal * (crossing.line * family.spacing) + direction * crossing.along;
    if (!wasInside) {
      if (path.elementCount() >= kMostElements) {
        paint(path);
        path = QPainterPath();
      }
      path.moveTo(point);
    } else if (winding == 0) {
      path.lineTo(point);
    }
  }
  if (!path.isEmpty())
    paint(path);
}

double signedArea(const QPolygonF &polygon) {
  double sum = 0;
  for (int i = 0; i < polygon.size(); ++i) {
    const QPointF &from = polygon[i], &to = polygon[(i + 1) % polygon.size()];
    sum += from.x() * to.y() - to.x() * from.y();
  }
  return sum / 2;
}

// Gives `paint` the polygons as one path, or as few as their number allows.
template <typename Paint> void unitePolygons(const std::vector<QPolygonF> &polygons, Paint paint) {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  for (const QPolygonF &polygon : polygons) {
    if (path.elementCount() > 0 && path.elementCount() + polygon.size() > kMostElements) {
      paint(path);
      path = QPainterPath();
      path.setFillRule(Qt::WindingFill);
    }
    path.addPolygon(polygon);
    path.closeSubpath();
  }
  if (!path.isEmpty())
    paint(path);
}

} // namespace

void VectorCanvas::beginLayer(const LayerStyle &style) {
  style_ = style;
  polygons_.clear();
  smallPolygons_.clear();
  lineEnds_.clear();
  points_.clear();
}

void VectorCanvas::keep(const QPolygonF &polygon, const QSizeF &size) {
  const double kSmallSide = 3;
  (std::min(size.width(), size.height()) < kSmallSide ? smallPolygons_ : polygons_).push_back(polygon);
}

void VectorCanvas::addBox(const QRectF &box) {
  // As wide as a pen at least.
  const double extraWidth = std::max(0.0, kPenWidth - box.width()) / 2,
               extraHeight = std::max(0.0, kPenWidth - box.height()) / 2;
  const QRectF seen = box.adjusted(-extraWidth, -extraHeight, extraWidth, extraHeight);
  keep(QPolygonF({seen.topLeft(), seen.topRight(), seen.bottomRight(), seen.bottomLeft()}), seen.size());
}

void VectorCanvas::addPolygon(const QPolygonF &polygon) {
  QPolygonF turned = polygon;
  if (signedArea(polygon) < 0)
    std::reverse(turned.begin(), turned.end());
  keep(turned, polygon.boundingRect().size());
}

void VectorCanvas::addLine(const QPointF &from, const QPointF &to) {
  lineEnds_.push_back(from);
  lineEnds_.push_back(to);
}

void VectorCanvas::addPoint(const QPointF &point) {
  points_.emplace_back(static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y())));
}

void VectorCanvas::paintSmall() {
  const QColor colour = withOpacity(style_.colour, kSmallOpacity);
  unitePolygons(smallPolygons_, [&](const QPainterPath &path) { painter_->fillPath(path, colour); });
}

void VectorCanvas::paintLarge() {
  const double ground = groundOpacity(style_.pattern);
  const QPen frame(withOpacity(style_.colour, kFrameOpacity), kPenWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
  unitePolygons(polygons_, [&](const QPainterPath &path) {
    if (ground > 0)
      painter_->fillPath(path, withOpacity(style_.colour, ground));
    painter_->strokePath(path, frame);
  });
  QPen hatch(withOpacity(style_.colour, kHatchOpacity), kPenWidth, Qt::SolidLine, Qt::FlatCap);
  if (style_.pattern == FillPattern::Dots)
    hatch.setDashPattern({1, 9});
  for (const HatchFamily &family : hatchOf(style_.pattern))
    hatchPolygons(polygons_, family, [&](const QPainterPath &path) { painter_->strokePath(path, hatch); });
}

void VectorCanvas::paintLines() {
  const QPen pen(withOpacity(style_.colour, kFrameOpacity), kPenWidth);
  QPainterPath path;
  for (std::size_t i = 0; i + 1 < lineEnds_.size(); i += 2) {
    path.moveTo(lineEnds_[i]);
    path.lineTo(lineEnds_[i + 1]);
    if (path.elementCount() >= kMostElements || i + 2 >= lineEnds_.size()) {
      painter_->strokePath(path, pen);
      path = QPainterPath();
    }
  }
}

void VectorCanvas::addPointRuns() {
  // Points that share a pixel are one, and neighbours in a row become one box: the file grows with what is seen.
  std::sort(points_.begin(), points_.end(), [](const QPoint &first, const QPoint &second) {
    return first.y() != second.y() ? first.y() < second.y() : first.x() < second.x();
  });
  for (std::size_t begin = 0; begin < points_.size();) {
    std::size_t end = begin + 1;
    while (end < points_.size() && points_[end].y() == points_[begin].y() &&
           points_[end].x() - points_[end - 1].x() <= 1)
      ++end;
    addBox(QRectF(points_[begin], QPointF(points_[end - 1] + QPoint(1, 1))));
    begin = end;
  }
}

void VectorCanvas::endLayer() {
  addPointRuns();
  paintSmall();
  paintLarge();
  paintLines();
}
