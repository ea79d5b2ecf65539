#ifndef RENDERRASTERCANVAS_H
#define RENDERRASTERCANVAS_H

#include <memory>

#include <QImage>

#include "rendercanvas.h"

class QPainter;

// Paints into an image. Boxes have crisp edges on whole pixels and are at least one pixel wide; slanted edges are
// smoothed.
class RasterCanvas : public RenderCanvas {
public:
  // `image` must be of format ARGB32_Premultiplied, opaque, and outlive the canvas. It may be painted on by others
  // between endLayer() and beginLayer().
  explicit RasterCanvas(QImage *image);
  ~RasterCanvas() override;

  void beginLayer(const LayerStyle &style) override;
  void addBox(const QRectF &box) override;
  void addPolygon(const QPolygonF &polygon) override;
  void addLine(const QPointF &from, const QPointF &to) override;
  void addPoint(const QPointF &point) override;
  void endLayer() override;

private:
  // One sheet of coverage, 8 bits a pixel, with a painter for what is not a box.
  struct Sheet {
    explicit Sheet(const QSize &size);
    // Raises the coverage of a stretch of pixels to at least `value`.
    void fillRow(int left, int right, int y, uchar value);

    QImage coverage;
    uchar *bits;
    int bytesPerLine;
    std::unique_ptr<QPainter> painter;
  };

  void markDirty(const QRect &pixels);
  void blendRow(int y, const uchar *opacityOfPattern);

  QImage *image_;
  LayerStyle style_;
  Sheet fill_;
  Sheet frame_;
  QRect dirty_; // pixels of both sheets that may be set
};

#endif
