#ifndef RENDERVECTORCANVAS_H
#define RENDERVECTORCANVAS_H

#include <vector>

#include "rendercanvas.h"

class QPainter;

// Paints layers as paths, for formats that keep geometry (SVG, PDF). Hatches are drawn as lines, since not every format
// has patterns.
class VectorCanvas : public RenderCanvas {
public:
  explicit VectorCanvas(QPainter *painter) : painter_(painter) {}

  void beginLayer(const LayerStyle &style) override;
  void addBox(const QRectF &box) override;
  void addPolygon(const QPolygonF &polygon) override;
  void addLine(const QPointF &from, const QPointF &to) override;
  void addPoint(const QPointF &point) override;
  void endLayer() override;

private:
  void keep(const QPolygonF &polygon, const QSizeF &size);
  void addPointRuns();
  void paintSmall();
  void paintLarge();
  void paintLines();

  QPainter *painter_;
  LayerStyle style_;
  // All of one sense of rotation, so that overlaps add up to their union. The small ones get neither frame nor hatch,
  // which would be most of the file and nothing to see.
  std::vector<QPolygonF> polygons_, smallPolygons_;
  std::vector<QPointF> lineEnds_; // in pairs
  std::vector<QPoint> points_;    // whole pixels
};

#endif
