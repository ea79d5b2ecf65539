#ifndef RENDERCANVAS_H
#define RENDERCANVAS_H

#include <QPolygonF>
#include <QRectF>

#include "layercolours.h"

// Takes the shapes of one layer after the other, in picture coordinates (pixels, y downwards), and puts each layer as
// one transparent sheet on those before it: shapes of one layer that overlap do not darken each other. Shapes are
// clipped by the caller.
class RenderCanvas {
public:
  virtual ~RenderCanvas() = default;

  // Shapes belong between beginLayer() and endLayer(); the colour is used as it is.
  virtual void beginLayer(const LayerStyle &style) = 0;
  virtual void addBox(const QRectF &box) = 0;
  // Filled by the nonzero winding rule.
  virtual void addPolygon(const QPolygonF &polygon) = 0;
  // A line as thin as the canvas can draw.
  virtual void addLine(const QPointF &from, const QPointF &to) = 0;
  // Something too small to have a shape.
  virtual void addPoint(const QPointF &point) = 0;
  virtual void endLayer() = 0;
};

// The strengths, 0 to 1, with which the parts of a shape cover what lies below.
constexpr double kFrameOpacity = 0.9;
constexpr double kHatchOpacity = 0.55;

// The strength between the marks of a hatch. Dotted layers are wells and implants, whose large areas would dim all
// others.
constexpr double groundOpacity(FillPattern pattern) {
  switch (pattern) {
  case FillPattern::Outline:
    return 0;
  case FillPattern::Dots:
    return 0.05;
  case FillPattern::Solid:
    return 0.5;
  default:
    return 0.2;
  }
}

#endif
