#include "renderrastercanvas.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>

namespace {

// The pixel that holds a coordinate; shapes far outside are brought just beyond the image, where an int can hold them.
int pixelOf(double coordinate) { return static_cast<int>(std::floor(std::clamp(coordinate, -1e6, 1e6))); }

// Hatches as tiles of 8 by 8 pixels, one byte a row. They lie at the same place in every shape, so a hatch runs on from
// one shape into the next.
using Tile = std::array<unsigned char, 8>;

Tile tileOf(FillPattern pattern) {
  switch (pattern) {
  case FillPattern::Solid:
  case FillPattern::Outline:
    return {0, 0, 0, 0, 0, 0, 0, 0};
  case FillPattern::Forward:
    return {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80};
  case FillPattern::Backward:
    return {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01};
  case FillPattern::Cross:
    return {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81};
  case FillPattern::Horizontal:
    return {0xff, 0, 0, 0, 0, 0, 0, 0};
  case FillPattern::Vertical:
    return {0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
  case FillPattern::Grid:
    return {0xff, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
  case FillPattern::Dots:
    return {0x80, 0, 0, 0, 0x08, 0, 0, 0};
  }
  return {};
}

bool isRectilinear(const QPolygonF &polygon) {
  for (int i = 0; i < polygon.size(); ++i) {
    const QPointF step = polygon[(i + 1) % polygon.size()] - polygon[i];
    if (std::abs(step.x()) > 1e-6 && std::abs(step.y()) > 1e-6)
      return false;
  }
  return true;
}

// Frames of small shapes are weaker: where thousands of shapes are a few pixels each, frames would be all there is to
// see.
uchar frameCoverage(double shortSidePixels) {
  const double kFullFrame = 8;
  return shortSidePixels >= kFullFrame ? 0xff
                                       : static_cast<uchar>(0xa0 + 0x5f * std::max(shortSidePixels, 0.0) / kFullFrame);
}

uchar toByte(double opacity) { return static_cast<uchar>(std::lround(opacity * 255)); }

} // namespace

RasterCanvas::Sheet::Sheet(const QSize &size) : coverage(size, QImage::Format_Alpha8) {
  coverage.fill(0);
  bits = coverage.bits();
  bytesPerLine = coverage.bytesPerLine();
  painter = std::make_unique<QPainter>(&coverage);
}

void RasterCanvas::Sheet::fillRow(int left, int right, int y, uchar value) {
  uchar *row = bits + static_cast<std::ptrdiff_t>(y) * bytesPerLine;
  if (value == 0xff) {
    std::fill(row + left, row + right + 1, value);
    return;
  }
  for (int x = left; x <= right; ++x)
    row[x] = std::max(row[x], value);
}

RasterCanvas::RasterCanvas(QImage *image) : image_(image), fill_(image->size()), frame_(image->size()) {
  fill_.painter->setPen(Qt::NoPen);
  fill_.painter->setBrush(Qt::black);
  frame_.painter->setBrush(Qt::NoBrush);
}

RasterCanvas::~RasterCanvas() = default;

void RasterCanvas::beginLayer(const LayerStyle &style) {
  style_ = style;
  dirty_ = QRect();
}

void RasterCanvas::markDirty(const QRect &pixels) { dirty_ |= pixels & image_->rect(); }

void RasterCanvas::addBox(const QRectF &box) {
  const QRect pixels(QPoint(pixelOf(box.left()), pixelOf(box.top())),
                     QPoint(pixelOf(box.right()), pixelOf(box.bottom())));
  const QRect seen = pixels & image_->rect();
  if (seen.isEmpty())
    return;
  markDirty(seen);
  const uchar frame = frameCoverage(std::min(pixels.width(), pixels.height()) - 1);
  for (int y = seen.top(); y <= seen.bottom(); ++y) {
    if (y == pixels.top() || y == pixels.bottom())
      frame_.fillRow(seen.left(), seen.right(), y, frame);
    else
      fill_.fillRow(seen.left(), seen.right(), y, 0xff);
    for (const int x : {pixels.left(), pixels.right()})
      if (x == seen.left() || x == seen.right())
        frame_.fillRow(x, x, y, frame);
  }
}

void RasterCanvas::addPolygon(const QPolygonF &polygon) {
  const bool isCrisp = isRectilinear(polygon);
  QPolygonF points = polygon;
  if (isCrisp)
    for (QPointF &point : points)
      point = QPointF(pixelOf(point.x()), pixelOf(point.y()));
  const QRectF box = points.boundingRect();
  markDirty(box.toAlignedRect().adjusted(-2, -2, 2, 2));
  fill_.painter->setRenderHint(QPainter::Antialiasing, !isCrisp);
  fill_.painter->drawPolygon(points, Qt::WindingFill);
  frame_.painter->setRenderHint(QPainter::Antialiasing, !isCrisp);
  frame_.painter->setPen(QPen(QColor(0, 0, 0, frameCoverage(std::min(box.width(), box.height()))), 1));
  frame_.painter->drawPolygon(points);
}

void RasterCanvas::addLine(const QPointF &from, const QPointF &to) {
  markDirty(QRectF(from, to).normalized().toAlignedRect().adjusted(-2, -2, 2, 2));
  const bool isCrisp = from.x() == to.x() || from.y() == to.y();
  frame_.painter->setRenderHint(QPainter::Antialiasing, !isCrisp);
  frame_.painter->setPen(QPen(Qt::black, 1));
  frame_.painter->drawLine(from, to);
}

void RasterCanvas::addPoint(const QPointF &point) {
  const QPoint pixel(pixelOf(point.x()), pixelOf(point.y()));
  if (!image_->rect().contains(pixel))
    return;
  markDirty(QRect(pixel, pixel));
  frame_.fillRow(pixel.x(), pixel.x(), pixel.y(), frameCoverage(0));
}

void RasterCanvas::blendRow(int y, const uchar *opacityOfPattern) {
  const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(y) * fill_.bytesPerLine;
  uchar *fillRow = fill_.bits + offset, *frameRow = frame_.bits + offset;
  QRgb *row = reinterpret_cast<QRgb *>(image_->scanLine(y));
  const QRgb colour = style_.colour.rgb();
  const int red = qRed(colour), green = qGreen(colour), blue = qBlue(colour);
  const int frameOpacity = toByte(kFrameOpacity);
  for (int x = dirty_.left(); x <= dirty_.right(); ++x) {
    if (!(fillRow[x] | frameRow[x]))
      continue;
    const int opacity = std::max(fillRow[x] * opacityOfPattern[x & 7], frameRow[x] * frameOpacity) / 255;
    const int rest = 255 - opacity;
    row[x] =
        qRgb((qRed(row[x]) * rest + red * opacity + 127) / 255, (qGreen(row[x]) * rest + green * opacity + 127) / 255,
             (qBlue(row[x]) * rest + blue * opacity + 127) / 255);
    fillRow[x] = 0;
    frameRow[x] = 0;
  }
}

void RasterCanvas::endLayer() {
  if (dirty_.isEmpty())
    return;
  const Tile tile = tileOf(style_.pattern);
  const uchar ground = toByte(groundOpacity(style_.pattern)), mark = toByte(kHatchOpacity);
  for (int y = dirty_.top(); y <= dirty_.bottom(); ++y) {
    uchar opacityOfPattern[8];
    for (int x = 0; x < 8; ++x)
      opacityOfPattern[x] = (tile[y & 7] & (0x80 >> x)) ? mark : ground;
    blendRow(y, opacityOfPattern);
  }
}
