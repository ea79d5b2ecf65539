#include "layoutmodel.h"

#include <limits>
#include <stdexcept>

QPolygon LayoutCell::polygonPoints(const ModelPolygon &polygon) const {
  QPolygon result(static_cast<int>(polygon.pointCount));
  std::copy_n(pointsOf(polygon), polygon.pointCount, result.begin());
  return result;
}

QPolygon LayoutCell::pathPoints(const ModelPath &path) const {
  QPolygon result(static_cast<int>(path.pointCount));
  std::copy_n(pointsOf(path), path.pointCount, result.begin());
  return result;
}

void LayoutCell::addBox(const ModelBox &box) {
  countShape(ShapeKind::Box);
  boxes.push_back(box);
}

void LayoutCell::addPolygon(const QPolygon &added, LayerIndex layer) {
  const std::uint32_t firstPoint = storePoints(added);
  countShape(ShapeKind::Polygon);
  polygons.push_back({firstPoint, static_cast<std::uint32_t>(added.size()), layer});
}

void LayoutCell::addPath(const QPolygon &added, ModelPath path) {
  path.firstPoint = storePoints(added);
  path.pointCount = static_cast<std::uint32_t>(added.size());
  countShape(ShapeKind::Path);
  paths.push_back(path);
}

void LayoutCell::addText(ModelText text) {
  countShape(ShapeKind::Text);
  texts.push_back(std::move(text));
}

void LayoutCell::countShape(ShapeKind kind) {
  if (!shapeOrder.empty() && shapeOrder.back().kind == kind &&
      shapeOrder.back().count < std::numeric_limits<std::uint32_t>::max())
    ++shapeOrder.back().count;
  else
    shapeOrder.push_back({kind, 1});
}

std::uint32_t LayoutCell::storePoints(const QPolygon &added) {
  if (points.size() + static_cast<std::size_t>(added.size()) > std::numeric_limits<std::uint32_t>::max())
    throw std::length_error("cell " + name.toStdString() + " has more points than the host can hold (4294967295)");
  const auto first = static_cast<std::uint32_t>(points.size());
  points.insert(points.end(), added.begin(), added.end());
  return first;
}

LayerIndex LayoutModel::layerIndex(int layer, int datatype) {
  const LayerPurpose wanted{layer, datatype};
  if (wanted == lastLayer_ && !layers_.empty())
    return lastLayerIndex_;
  const QPair<int, int> key(layer, datatype);
  const auto found = layerIndices_.constFind(key);
  LayerIndex index = 0;
  if (found != layerIndices_.constEnd()) {
    index = *found;
  } else {
    index = static_cast<LayerIndex>(layers_.size());
    layers_.push_back(wanted);
    layerIndices_.insert(key, index);
  }
  lastLayer_ = wanted;
  lastLayerIndex_ = index;
  return index;
}

CellIndex LayoutModel::cellIndex(const QString &name) {
  const auto found = cellIndices_.constFind(name);
  if (found != cellIndices_.constEnd())
    return *found;
  const auto index = static_cast<CellIndex>(cells_.size());
  cells_.emplace_back();
  cells_.back().name = name;
  cellIndices_.insert(name, index);
  return index;
}

bool LayoutModel::isDefined(const QString &name) const {
  const auto found = cellIndices_.constFind(name);
  return found != cellIndices_.constEnd() && cells_[*found].isDefined;
}

void LayoutModel::setUnits(double userUnitsPerDbu, double metresPerDbu) {
  userUnitsPerDbu_ = userUnitsPerDbu;
  metresPerDbu_ = metresPerDbu;
}
