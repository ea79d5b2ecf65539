#ifndef GDSEXPORTER_H
#define GDSEXPORTER_H

#include "gdswriter.h"
#include "importreport.h"
#include "layoutmodel.h"

#include <functional>

// Writes a layout as a GDSII library: each cell a structure, shapes and references in their order. What GDSII cannot
// hold is told.
class GdsExporter {
public:
  GdsExporter(const LayoutModel &model, GdsWriter &writer, ImportReport &report);
  // `onProgress` is called with the number of cells done.
  void run(const QByteArray &libraryName, const std::function<void(qint64)> &onProgress);

private:
  void writeCell(const LayoutCell &cell);
  void writeShapes(const LayoutCell &cell);
  void writeBox(const ModelBox &box);
  void writePolygon(const LayoutCell &cell, const ModelPolygon &polygon);
  void writePath(const LayoutCell &cell, const ModelPath &path);
  void writeText(const LayoutCell &cell, const ModelText &text);
  void writeReference(const LayoutCell &cell, const ModelReference &reference);
  void writeArray(const QByteArray &target, const ModelReference &reference);
  // The layer when GDSII can number it, else null, and told.
  const LayerPurpose *usableLayer(const LayoutCell &cell, LayerIndex index);
  QByteArray structureName(const QString &cell);

  const LayoutModel &model_;
  GdsWriter &writer_;
  ImportReport &report_;
};

#endif
