#ifndef RENDERLAYOUT_H
#define RENDERLAYOUT_H

#include <cstdint>
#include <vector>

#include "renderindex.h"
#include "renderlabels.h"

class RenderCanvas;

// Walks a layout's hierarchy and puts what can be seen of it on a canvas, one layer a walk. Work is bounded by what the
// picture can show: what is smaller than a pixel becomes a point, arrays with many elements a pixel are thinned out,
// and cells out of sight are skipped.
class LayoutPainter {
public:
  // Shows `levels` levels of cells (1: the top cell alone); references below are left to outlines(). `area` bounds the
  // drawing in the picture.
  LayoutPainter(const LayoutModel &model, const LayoutIndex &index, CellIndex top, int levels, const View &view,
                const QRectF &area);

  // What one walk may cost, in visits of shapes and elements. The default suits any chip and takes some seconds when it
  // is used up.
  void setWorkLimit(std::int64_t visits) { workLimit_ = visits; }

  // Paints all shapes of one layer, texts excepted.
  void paintLayer(LayerIndex layer, RenderCanvas *canvas);

  // Paints the outlines of the cells beyond the last level.
  void paintOutlines(RenderCanvas *canvas);

  // The names of the cells that paintOutlines() shows, where they fit.
  std::vector<RenderLabel> outlineLabels(const QColor &colour) const;

  // The texts that are large enough to be read, and all of the top cell's. `colours` by LayerIndex.
  std::vector<RenderLabel> textLabels(const std::vector<QColor> &colours);

  // True when a walk met so many overlapping elements that some were painted as the box around them.
  bool isSimplified() const { return isSimplified_; }

private:
  struct OutlinedCell {
    QRectF box;
    CellIndex cell;
  };

  template <typename Visit> void forEachElement(const Placement &parent, const ModelReference &reference, Visit visit);
  bool isSeen(const QRectF &box) const;
  bool isSpent();
  bool spend();

  void paintCell(CellIndex cell, const Placement &placement, int level);
  void paintShapes(const LayoutCell &cell, const LayerContent &content, const CellToPicture &toPicture);
  void paintBox(const QRectF &box);
  void paintPolygon(const QPolygonF &polygon);
  void paintPath(const LayoutCell &cell, const ModelPath &path, const CellToPicture &toPicture);
  void collectOutlines(CellIndex cell, const Placement &placement, int level);
  void collectTexts(CellIndex cell, const Placement &placement, int level, const std::vector<QColor> &colours,
                    std::vector<RenderLabel> *labels);

  const LayoutModel &model_;
  const LayoutIndex &index_;
  CellIndex top_;
  int levels_;
  View view_;
  QRectF area_;
  LayerIndex layer_ = 0;
  RenderCanvas *canvas_ = nullptr;
  std::int64_t workLimit_ = 50'000'000;
  std::int64_t budget_ = 0; // what this walk may still cost; below zero when it is spent
  bool isSimplified_ = false;
  std::vector<OutlinedCell> outlined_;
};

#endif
