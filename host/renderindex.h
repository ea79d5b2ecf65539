#ifndef RENDERINDEX_H
#define RENDERINDEX_H

#include <vector>

#include "layoutmodel.h"
#include "rendergeometry.h"

// The row numbers of one layer's shapes in the tables of a cell, and how far the layer reaches.
struct LayerContent {
  LayerIndex layer = 0;
  std::vector<std::uint32_t> boxes;
  std::vector<std::uint32_t> polygons;
  std::vector<std::uint32_t> paths;
  std::vector<std::uint32_t> texts;
  bool isBelow = false; // some cell that is placed here, at any depth, has the layer
  Extent extent;        // of this cell with all that it places; texts count with their origin

  std::size_t shapeCount() const { return boxes.size() + polygons.size() + paths.size() + texts.size(); }
};

// What a drawing needs to know of a model that signals do not say: which cells hold which layers and where. The model
// must stay unchanged while the index lives.
class LayoutIndex {
public:
  LayoutIndex(const LayoutModel &model, CellIndex top);

  // False for a reference that would place a cell inside itself, or a cell that was never sent, or no element at all.
  // Drawing along references that are followed comes to an end.
  bool isFollowed(CellIndex parent, const ModelReference &reference) const;

  // The content of a cell on a layer, or null when neither the cell nor any cell below has the layer.
  const LayerContent *content(CellIndex cell, LayerIndex layer) const;
  const std::vector<LayerContent> &contents(CellIndex cell) const { return cells_[cell].layers; }

  // Everything a cell shows, all levels; empty for an empty cell.
  const Extent &extent(CellIndex cell) const { return cells_[cell].extent; }

  // 1 for a cell that places no other, else one more than the deepest cell placed.
  int levels(CellIndex cell) const { return cells_[cell].levels; }

  // False when some reference, at any depth, is not followed.
  bool isComplete(CellIndex cell) const { return cells_[cell].isComplete; }
  bool holdsTexts(CellIndex cell) const { return cells_[cell].holdsTexts; }

  // Shapes of each layer, by LayerIndex, as they are seen when `levels` levels are expanded. As floating-point numbers,
  // since arrays of arrays pass every integer.
  std::vector<double> shownShapes(int levels) const;

  // Texts among them.
  double shownTexts(int levels) const;

private:
  struct IndexedCell {
    std::vector<LayerContent> layers; // by rising layer
    Extent extent;
    int levels = 1;
    bool isComplete = true;
    bool holdsTexts = false; // at any depth
    int rank = -1;           // order of completion: a cell comes after all that it places, recursion left out
  };

  void rankCells(CellIndex top);
  void indexShapes(CellIndex cell);
  void indexReferences(CellIndex cell);
  LayerContent &contentFor(IndexedCell &cell, LayerIndex layer);
  // The shapes of one cell by its layers, with those that the tables `below` give for its masters (null: none).
  void countShown(CellIndex cell, const std::vector<std::vector<double>> *below, bool onlyTexts,
                  std::vector<double> *counts) const;
  std::vector<double> shownOnTop(int levels, bool onlyTexts) const;

  const LayoutModel &model_;
  CellIndex top_;
  std::vector<IndexedCell> cells_;
  std::vector<CellIndex> order_; // by rising rank
};

// The outline of a path, in the coordinates that its points are given in; empty for a path without width.
QPolygonF outlineOf(const ModelPath &path, const QPolygonF &points, double scale);

// The extent of all elements of a reference when `element` is that of the cell it places.
Extent referenceExtent(const ModelReference &reference, const Extent &element);

#endif
