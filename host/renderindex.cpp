#include "renderindex.h"

#include <algorithm>

namespace {

bool hasElements(const ModelReference &reference) { return reference.columns > 0 && reference.rows > 0; }

double elementCount(const ModelReference &reference) { return static_cast<double>(reference.columns) * reference.rows; }

Extent pathExtent(const LayoutCell &cell, const ModelPath &path) {
  QPolygonF points;
  const QPoint *first = cell.pointsOf(path);
  for (std::uint32_t i = 0; i < path.pointCount; ++i)
    points.append(first[i]);
  Extent extent;
  for (const QPointF &point : outlineOf(path, points, 1))
    extent.add(point.x(), point.y());
  // Neither a line nor a path whose ends cut it away may vanish.
  if (extent.isEmpty())
    for (const QPointF &point : points)
      extent.add(point.x(), point.y());
  return extent;
}

} // namespace

QPolygonF outlineOf(const ModelPath &path, const QPolygonF &points, double scale) {
  if (path.width <= 0)
    return {};
  PathEnds ends;
  ends.isRound = path.caps == 1;
  ends.begin = (path.caps == 2 ? path.width / 2.0 : path.beginExtension) * scale;
  ends.end = (path.caps == 2 ? path.width / 2.0 : path.endExtension) * scale;
  return pathOutline(points, path.width * scale, ends);
}

Extent referenceExtent(const ModelReference &reference, const Extent &element) {
  Extent extent;
  const Placement atOrigin{reference.orientation, static_cast<double>(reference.origin.x()),
                           static_cast<double>(reference.origin.y())};
  extent.add(atOrigin.map(element));
  const Placement atEnd{reference.orientation,
                        atOrigin.x + static_cast<double>(reference.columnPitch) * (reference.columns - 1),
                        atOrigin.y + static_cast<double>(reference.rowPitch) * (reference.rows - 1)};
  extent.add(atEnd.map(element));
  return extent;
}

LayoutIndex::LayoutIndex(const LayoutModel &model, CellIndex top)
    : model_(model), top_(top), cells_(model.cells().size()) {
  rankCells(top);
  for (const CellIndex cell : order_) {
    indexShapes(cell);
    indexReferences(cell);
  }
}

void LayoutIndex::rankCells(CellIndex top) {
  // Depth first with a stack of our own, as a chain of cells may be longer than the program's stack is deep.
  struct Step {
    CellIndex cell;
    std::size_t nextReference;
  };
  std::vector<bool> isEntered(cells_.size());
  std::vector<Step> steps{{top, 0}};
  isEntered[top] = true;
  while (!steps.empty()) {
    Step &step = steps.back();
    const std::vector<ModelReference> &references = model_.cell(step.cell).references;
    if (step.nextReference < references.size()) {
      const CellIndex child = references[step.nextReference++].cell;
      if (!isEntered[child]) {
        isEntered[child] = true;
        steps.push_back({child, 0});
      }
    } else {
      cells_[step.cell].rank = static_cast<int>(order_.size());
      order_.push_back(step.cell);
      steps.pop_back();
    }
  }
}

bool LayoutIndex::isFollowed(CellIndex parent, const ModelReference &reference) const {
  return model_.cell(reference.cell).isDefined && hasElements(reference) &&
         cells_[reference.cell].rank < cells_[parent].rank;
}

LayerContent &LayoutIndex::contentFor(IndexedCell &cell, LayerIndex layer) {
  const auto place =
      std::lower_bound(cell.layers.begin(), cell.layers.end(), layer,
                       [](const LayerContent &content, LayerIndex wanted) { return content.layer < wanted; });
  if (place != cell.layers.end() && place->layer == layer)
    return *place;
  LayerContent content;
  content.layer = layer;
  return *cell.layers.insert(place, std::move(content));
}

const LayerContent *LayoutIndex::content(CellIndex cell, LayerIndex layer) const {
  const std::vector<LayerContent> &layers = cells_[cell].layers;
  const auto place =
      std::lower_bound(layers.begin(), layers.end(), layer,
                       [](const LayerContent &content, LayerIndex wanted) { return content.layer < wanted; });
  return place != layers.end() && place->layer == layer ? &*place : nullptr;
}

void LayoutIndex::indexShapes(CellIndex cellIndex) {
  const LayoutCell &cell = model_.cell(cellIndex);
  IndexedCell &indexed = cells_[cellIndex];
  indexed.holdsTexts = !cell.texts.empty();
  for (std::uint32_t row = 0; row < cell.boxes.size(); ++row) {
    const ModelBox &box = cell.boxes[row];
    LayerContent &content = contentFor(indexed, box.layer);
    content.boxes.push_back(row);
    content.extent.add(box.left, box.bottom);
    content.extent.add(box.right, box.top);
  }
  for (std::uint32_t row = 0; row < cell.polygons.size(); ++row) {
    const ModelPolygon &polygon = cell.polygons[row];
    LayerContent &content = contentFor(indexed, polygon.layer);
    content.polygons.push_back(row);
    for (std::uint32_t i = 0; i < polygon.pointCount; ++i)
      content.extent.add(cell.pointsOf(polygon)[i].x(), cell.pointsOf(polygon)[i].y());
  }
  for (std::uint32_t row = 0; row < cell.paths.size(); ++row) {
    LayerContent &content = contentFor(indexed, cell.paths[row].layer);
    content.paths.push_back(row);
    content.extent.add(pathExtent(cell, cell.paths[row]));
  }
  for (std::uint32_t row = 0; row < cell.texts.size(); ++row) {
    LayerContent &content = contentFor(indexed, cell.texts[row].layer);
    content.texts.push_back(row);
    content.extent.add(cell.texts[row].origin.x(), cell.texts[row].origin.y());
  }
}

void LayoutIndex::indexReferences(CellIndex cellIndex) {
  IndexedCell &indexed = cells_[cellIndex];
  for (const ModelReference &reference : model_.cell(cellIndex).references) {
    if (!isFollowed(cellIndex, reference)) {
      indexed.extent.add(reference.origin.x(), reference.origin.y());
      indexed.isComplete = false;
      continue;
    }
    const IndexedCell &child = cells_[reference.cell];
    indexed.levels = std::max(indexed.levels, child.levels + 1);
    indexed.isComplete = indexed.isComplete && child.isComplete;
    indexed.holdsTexts = indexed.holdsTexts || child.holdsTexts;
    for (const LayerContent &below : child.layers) {
      LayerContent &content = contentFor(indexed, below.layer);
      content.isBelow = true;
      content.extent.add(referenceExtent(reference, below.extent));
    }
    // Apart from the layers, since a cell may hold nothing but references that are not followed.
    if (!child.extent.isEmpty())
      indexed.extent.add(referenceExtent(reference, child.extent));
  }
  for (const LayerContent &content : indexed.layers)
    indexed.extent.add(content.extent);
}

void LayoutIndex::countShown(CellIndex cell, const std::vector<std::vector<double>> *below, bool onlyTexts,
                             std::vector<double> *counts) const {
  const std::vector<LayerContent> &layers = cells_[cell].layers;
  counts->resize(layers.size());
  for (std::size_t i = 0; i < layers.size(); ++i)
    (*counts)[i] = static_cast<double>(onlyTexts ? layers[i].texts.size() : layers[i].shapeCount());
  if (!below)
    return;
  for (const ModelReference &reference : model_.cell(cell).references) {
    if (!isFollowed(cell, reference))
      continue;
    const std::vector<LayerContent> &childLayers = cells_[reference.cell].layers;
    std::size_t own = 0; // both lists rise by layer, and the cell has every layer of its masters
    for (std::size_t i = 0; i < childLayers.size(); ++i) {
      while (layers[own].layer != childLayers[i].layer)
        ++own;
      (*counts)[own] += (*below)[reference.cell][i] * elementCount(reference);
    }
  }
}

std::vector<double> LayoutIndex::shownOnTop(int levels, bool onlyTexts) const {
  std::vector<std::vector<double>> shown(cells_.size());
  if (levels >= cells_[top_].levels) {
    // Masters come first in the order, so one round sees everything below.
    for (const CellIndex cell : order_)
      countShown(cell, &shown, onlyTexts, &shown[cell]);
    return shown[top_];
  }
  // Level by level: what a cell shows in n levels is its own shapes and what its masters show in n - 1.
  std::vector<std::vector<double>> before;
  for (int round = 0; round < levels; ++round) {
    before.swap(shown);
    shown.assign(cells_.size(), {});
    for (const CellIndex cell : order_)
      countShown(cell, round > 0 ? &before : nullptr, onlyTexts, &shown[cell]);
  }
  return shown[top_];
}

std::vector<double> LayoutIndex::shownShapes(int levels) const {
  std::vector<double> counts(model_.layers().size());
  const std::vector<double> shown = shownOnTop(levels, false);
  for (std::size_t i = 0; i < shown.size(); ++i)
    counts[cells_[top_].layers[i].layer] = shown[i];
  return counts;
}

double LayoutIndex::shownTexts(int levels) const {
  double count = 0;
  for (const double shown : shownOnTop(levels, true))
    count += shown;
  return count;
}
