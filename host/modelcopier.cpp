#include "modelcopier.h"

#include "layoutwriter.h"
#include "shapegeometry.h"

#include <cstddef>

namespace {

class ModelCopier {
public:
  ModelCopier(const LayoutModel &model, const LayoutCell &cell, LayoutWriter &writer, ImportReport &report)
      : model_(model), cell_(cell), writer_(writer), report_(report) {}

  void writeShapes() {
    std::size_t next[4] = {0, 0, 0, 0};
    for (const ShapeRun &run : cell_.shapeOrder) {
      std::size_t &index = next[static_cast<int>(run.kind)];
      for (std::uint32_t i = 0; i < run.count; ++i)
        writeShape(run.kind, index++);
    }
  }

private:
  void writeShape(ShapeKind kind, std::size_t index) {
    switch (kind) {
    case ShapeKind::Box: {
      const ModelBox &box = cell_.boxes[index];
      writer_.writeBox(QRect(QPoint(box.left, box.top), QPoint(box.right, box.bottom)), model_.layer(box.layer));
      break;
    }
    case ShapeKind::Polygon: {
      const ModelPolygon &polygon = cell_.polygons[index];
      writer_.writePolygon(cell_.polygonPoints(polygon), model_.layer(polygon.layer));
      break;
    }
    case ShapeKind::Path:
      writePath(cell_.paths[index]);
      break;
    case ShapeKind::Text:
      writer_.writeText(cell_.texts[index], model_.layer(cell_.texts[index].layer));
      break;
    }
  }

  void writePath(const ModelPath &path) {
    const LayerPurpose &layer = model_.layer(path.layer);
    const QPolygon points = cell_.pathPoints(path);
    const bool hasExtensions = path.beginExtension != 0 || path.endExtension != 0;
    if (path.caps != 0 || !hasExtensions || points.size() < 2) {
      writer_.writePath(points, path.width, path.caps, layer);
      return;
    }
    const WritablePath writable = expressPath(points, path.width, path.beginExtension, path.endExtension);
    if (writable.isOutline) {
      report_.notice(QStringLiteral("a path with end extensions that no path can express is written as a polygon"),
                     QStringLiteral("cell %1").arg(cell_.name));
      writer_.writePolygon(writable.points, layer);
    } else {
      writer_.writePath(writable.points, path.width, writable.caps, layer);
    }
  }

  const LayoutModel &model_;
  const LayoutCell &cell_;
  LayoutWriter &writer_;
  ImportReport &report_;
};

} // namespace

void writeModelShapes(const LayoutModel &model, const LayoutCell &cell, LayoutWriter &writer, ImportReport &report) {
  ModelCopier(model, cell, writer, report).writeShapes();
}
