#ifndef GDSIMPORTER_H
#define GDSIMPORTER_H

#include "gdsflattener.h"

#include <functional>

// The second pass over a file: writes every structure as a cell. What a layout cannot hold is expressed otherwise, and
// told: magnified and slanted references are flattened, skewed arrays and arrays with broken pitches become single
// references, an array of one element is a single reference.
class GdsImporter : private GdsHandler {
public:
  // All arguments are borrowed. `index` is that of `parser`.
  GdsImporter(const GdsParser &parser, const GdsIndex &index, const CoordinateScale &scale, double libraryMetresPerDbu,
              LayoutWriter &writer, ImportReport &report);

  // `onProgress` is called now and then with the number of bytes done.
  void run(const std::function<void(qint64)> &onProgress);
  const WrittenCounts &counts() const { return shapes_.counts(); }

private:
  void beginStructure(const QByteArray &name, qint64 offset) override;
  void element(const GdsElement &element) override;
  void endStructure() override;

  void writeShape(const GdsElement &element, const GdsPlace &where);
  void writeReference(const GdsElement &element, const GdsPlace &where);
  void writeArray(const GdsElement &element, const ModelReference &reference, const GdsPlace &where);
  void writeExpandedArray(const GdsElement &element, ModelReference reference, const GdsPlace &where);
  void writeSingle(const QString &cell, const ModelReference &reference);
  int scaled(int value) const { return *scale_.apply(value); }
  QPoint scaled(const QPoint &point) const { return QPoint(scaled(point.x()), scaled(point.y())); }

  const GdsParser &parser_;
  const GdsIndex &index_;
  const CoordinateScale &scale_;
  LayoutWriter &writer_;
  ImportReport &report_;
  GdsShapeWriter shapes_;
  GdsFlattener flattener_;
  std::function<void(qint64)> onProgress_;
  QByteArray structure_;
  bool isWriting_ = false;
  GdsElement scaledElement_;
  qint64 expandedElements_ = 0;
};

#endif
