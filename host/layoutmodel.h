#ifndef LAYOUTMODEL_H
#define LAYOUTMODEL_H

#include "orientation.h"

#include <QHash>
#include <QPoint>
#include <QPolygon>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

// A layout in memory, filled from the signals of one openLayout() call and read by drawing and export. Coordinates are
// database units. Shapes take few bytes each (a box 20), so that ten million fit; points of polygons and paths lie in
// one pool a cell. Layers and cells are small numbers into the tables of the model.

using LayerIndex = std::uint32_t;
using CellIndex = std::uint32_t;

struct LayerPurpose {
  int layer = 0;
  int datatype = 0;
  bool operator==(const LayerPurpose &other) const { return layer == other.layer && datatype == other.datatype; }
};

struct ModelBox {
  int left;
  int bottom;
  int right;
  int top;
  LayerIndex layer;
};

struct ModelPolygon {
  std::uint32_t firstPoint; // in LayoutCell::points
  std::uint32_t pointCount; // the closing point is not repeated
  LayerIndex layer;
};

struct ModelPath {
  std::uint32_t firstPoint; // in LayoutCell::points
  std::uint32_t pointCount;
  LayerIndex layer;
  int width; // 0: a line
  int caps;  // 0 flush, or extended by beginExtension and endExtension; 1 round; 2 extended by half the width
  int beginExtension;
  int endExtension;
};

struct ModelText {
  QString text;
  QPoint origin;
  int height;
  LayerIndex layer;
  int presentation; // horizontal (0 left, 1 centre, 2 right) + 4 * vertical (0 upper, 1 centre, 2 lower)
  Orientation orientation;
};

// A reference to a cell, single or as an array. The element at column c and row r lies at origin + (c * columnPitch,
// r * rowPitch) in the placing cell's axes; each element has the orientation.
struct ModelReference {
  CellIndex cell;
  QPoint origin;
  Orientation orientation;
  bool isArray;
  int columns; // 1 for a single reference, as rows
  int rows;
  int columnPitch;
  int rowPitch;
  QString name; // of the instance, or of the via definition
};

// One entry of a cell's data: library (number 1), cell (3) and view (4) by number, parameters by name.
struct CellDatum {
  int number = 0;
  QString name;
  QVariant value;
};

enum class ShapeKind : std::uint8_t { Box, Polygon, Path, Text };

// A stretch of shapes of one kind in their order of arrival.
struct ShapeRun {
  ShapeKind kind;
  std::uint32_t count;
};

struct LayoutCell {
  QString name;
  // False for a cell that is referenced but was never sent.
  bool isDefined = false;
  std::vector<ModelBox> boxes;
  std::vector<ModelPolygon> polygons;
  std::vector<ModelPath> paths;
  std::vector<ModelText> texts;
  std::vector<QPoint> points;
  // The order of all shapes: each run takes the next `count` entries of the table of its kind.
  std::vector<ShapeRun> shapeOrder;
  // References and arrays in order of arrival.
  std::vector<ModelReference> references;
  std::vector<CellDatum> cellData;

  const QPoint *pointsOf(const ModelPolygon &polygon) const { return points.data() + polygon.firstPoint; }
  const QPoint *pointsOf(const ModelPath &path) const { return points.data() + path.firstPoint; }
  QPolygon polygonPoints(const ModelPolygon &polygon) const;
  QPolygon pathPoints(const ModelPath &path) const;

  void addBox(const ModelBox &box);
  void addPolygon(const QPolygon &points, LayerIndex layer);
  // The points of `path` are given by `points`; its own firstPoint and pointCount are set here.
  void addPath(const QPolygon &points, ModelPath path);
  void addText(ModelText text);

private:
  void countShape(ShapeKind kind);
  std::uint32_t storePoints(const QPolygon &added);
};

class LayoutModel {
public:
  // The index of a layer and datatype, which is entered when it is new.
  LayerIndex layerIndex(int layer, int datatype);
  const LayerPurpose &layer(LayerIndex index) const { return layers_[index]; }
  // All layers in order of arrival.
  const std::vector<LayerPurpose> &layers() const { return layers_; }

  // The cell of that name, which is entered (undefined) when it is new.
  CellIndex cellIndex(const QString &name);
  // True when the cell of that name has been sent, or has begun to be sent.
  bool isDefined(const QString &name) const;
  LayoutCell &cell(CellIndex index) { return cells_[index]; }
  const LayoutCell &cell(CellIndex index) const { return cells_[index]; }
  // All cells in order of first mention; some may be undefined.
  const std::deque<LayoutCell> &cells() const { return cells_; }

  std::optional<CellIndex> topCell() const { return topCell_; }
  void setTopCell(CellIndex index) { topCell_ = index; }

  // Zero until setUnits() was received.
  double userUnitsPerDbu() const { return userUnitsPerDbu_; }
  double metresPerDbu() const { return metresPerDbu_; }
  void setUnits(double userUnitsPerDbu, double metresPerDbu);

private:
  std::vector<LayerPurpose> layers_;
  QHash<QPair<int, int>, LayerIndex> layerIndices_;
  LayerPurpose lastLayer_{-1, -1};
  LayerIndex lastLayerIndex_ = 0;
  // A deque, so that a cell stays where it is while others are entered.
  std::deque<LayoutCell> cells_;
  QHash<QString, CellIndex> cellIndices_;
  std::optional<CellIndex> topCell_;
  double userUnitsPerDbu_ = 0;
  double metresPerDbu_ = 0;
};

#endif
