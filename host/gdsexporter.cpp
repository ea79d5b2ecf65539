#include "gdsexporter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

constexpr int kMaxLayer = 65535;
constexpr int kMaxCount = 32767; // of columns and rows
constexpr int kCustomaryNameLength = 32;
constexpr double kMetresPerMagnification = 1e-6;

bool isLatin1(const QString &text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xff; });
}

bool isCustomaryName(const QString &name) {
  return std::all_of(name.begin(), name.end(), [](QChar c) {
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == '_' || c == '?' || c == '$');
  });
}

// Database units in a micrometre, whole where the reported unit means a whole number: divisions leave it a little off.
double dbuPerMagnification(double metresPerDbu) {
  const double exact = kMetresPerMagnification / metresPerDbu;
  const double whole = std::round(exact);
  return std::fabs(exact - whole) <= 1e-9 * whole ? whole : exact;
}

bool fitsInt(qint64 value) {
  return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
}

} // namespace

GdsExporter::GdsExporter(const LayoutModel &model, GdsWriter &writer, ImportReport &report)
    : model_(model), writer_(writer), report_(report) {}

void GdsExporter::run(const QByteArray &libraryName, const std::function<void(qint64)> &onProgress) {
  writer_.beginLibrary(libraryName, model_.userUnitsPerDbu(), model_.metresPerDbu());
  qint64 done = 0;
  for (const LayoutCell &cell : model_.cells()) {
    if (cell.isDefined)
      writeCell(cell);
    onProgress(++done);
  }
  writer_.endLibrary();
}

void GdsExporter::writeCell(const LayoutCell &cell) {
  if (cell.name.size() > kCustomaryNameLength)
    report_.notice(QStringLiteral("a name is longer than the 32 characters that old GDSII readers take"), cell.name);
  if (!isCustomaryName(cell.name))
    report_.notice(QStringLiteral("a name has characters other than letters, digits, _, ? and $"), cell.name);
  if (!isLatin1(cell.name))
    report_.notice(QStringLiteral("a name has characters outside Latin-1, which become question marks"), cell.name);
  writer_.beginStructure(structureName(cell.name));
  writeShapes(cell);
  for (const ModelReference &reference : cell.references)
    writeReference(cell, reference);
  writer_.endStructure();
}

void GdsExporter::writeShapes(const LayoutCell &cell) {
  std::size_t next[4] = {0, 0, 0, 0};
  for (const ShapeRun &run : cell.shapeOrder) {
    std::size_t &index = next[static_cast<int>(run.kind)];
    for (std::uint32_t i = 0; i < run.count; ++i, ++index) {
      switch (run.kind) {
      case ShapeKind::Box:
        if (usableLayer(cell, cell.boxes[index].layer) != nullptr)
          writeBox(cell.boxes[index]);
        break;
      case ShapeKind::Polygon:
        writePolygon(cell, cell.polygons[index]);
        break;
      case ShapeKind::Path:
        writePath(cell, cell.paths[index]);
        break;
      case ShapeKind::Text:
        writeText(cell, cell.texts[index]);
        break;
      }
    }
  }
}

void GdsExporter::writeBox(const ModelBox &box) {
  const LayerPurpose &layer = model_.layer(box.layer);
  const QPoint corners[] = {{box.left, box.bottom}, {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}};
  writer_.writeBoundary(corners, 4, layer.layer, layer.datatype);
}

void GdsExporter::writePolygon(const LayoutCell &cell, const ModelPolygon &polygon) {
  const LayerPurpose *layer = usableLayer(cell, polygon.layer);
  if (layer == nullptr)
    return;
  if (polygon.pointCount == 0) {
    report_.problem(QStringLiteral("a polygon without points is left out"), cell.name);
    return;
  }
  if (polygon.pointCount >= kGdsMaxPoints)
    report_.notice(QStringLiteral("a polygon has more points than one XY record holds; it is written with several"),
                   cell.name);
  writer_.writeBoundary(cell.pointsOf(polygon), polygon.pointCount, layer->layer, layer->datatype);
}

void GdsExporter::writePath(const LayoutCell &cell, const ModelPath &path) {
  const LayerPurpose *layer = usableLayer(cell, path.layer);
  if (layer == nullptr)
    return;
  if (path.pointCount == 0) {
    report_.problem(QStringLiteral("a path without points is left out"), cell.name);
    return;
  }
  if (path.pointCount > kGdsMaxPoints)
    report_.notice(QStringLiteral("a path has more points than one XY record holds; it is written with several"),
                   cell.name);
  GdsWriter::PathEnds ends;
  if (path.caps == 1 || path.caps == 2)
    ends.pathType = path.caps;
  else if (path.beginExtension != 0 || path.endExtension != 0)
    ends = {4, path.beginExtension, path.endExtension};
  writer_.writePath(cell.pointsOf(path), path.pointCount, path.width, ends, layer->layer, layer->datatype);
}

void GdsExporter::writeText(const LayoutCell &cell, const ModelText &text) {
  const LayerPurpose *layer = usableLayer(cell, text.layer);
  if (layer == nullptr)
    return;
  if (!isLatin1(text.text))
    report_.notice(QStringLiteral("a text has characters outside Latin-1, which become question marks"), cell.name);
  writer_.writeText(text.text.toLatin1(), text.origin, text.presentation, text.orientation,
                    text.height / dbuPerMagnification(model_.metresPerDbu()), layer->layer, layer->datatype);
}

void GdsExporter::writeReference(const LayoutCell &cell, const ModelReference &reference) {
  const LayoutCell &target = model_.cell(reference.cell);
  if (!target.isDefined)
    report_.notice(QStringLiteral("cell %1 is placed but did not arrive; the references are written all the same")
                       .arg(target.name),
                   cell.name);
  if (reference.isArray)
    writeArray(structureName(target.name), reference);
  else
    writer_.writeSref(structureName(target.name), reference.origin, reference.orientation);
}

// GDSII counts columns along the turned x axis, in a file no more than 32767 a reference, and names the ends one pitch
// behind the last element. Larger arrays are cut, and where the ends would leave the 32-bit range the elements are
// written singly.
void GdsExporter::writeArray(const QByteArray &target, const ModelReference &reference) {
  const bool isTurned = reference.orientation.quarterTurns() % 2 != 0;
  for (int firstRow = 0; firstRow < reference.rows; firstRow += kMaxCount) {
    for (int firstColumn = 0; firstColumn < reference.columns; firstColumn += kMaxCount) {
      const int rows = std::min(reference.rows - firstRow, kMaxCount);
      const int columns = std::min(reference.columns - firstColumn, kMaxCount);
      const qint64 x = reference.origin.x() + static_cast<qint64>(firstColumn) * reference.columnPitch;
      const qint64 y = reference.origin.y() + static_cast<qint64>(firstRow) * reference.rowPitch;
      const qint64 endX = x + static_cast<qint64>(columns) * reference.columnPitch;
      const qint64 endY = y + static_cast<qint64>(rows) * reference.rowPitch;
      if (fitsInt(endX) && fitsInt(endY)) {
        const QPoint origin(static_cast<int>(x), static_cast<int>(y));
        const QPoint alongX(static_cast<int>(endX), origin.y());
        const QPoint alongY(origin.x(), static_cast<int>(endY));
        writer_.writeAref(target, origin, isTurned ? alongY : alongX, isTurned ? alongX : alongY,
                          isTurned ? rows : columns, isTurned ? columns : rows, reference.orientation);
        continue;
      }
      report_.notice(QStringLiteral("an array ends beside the 32-bit range; it is written as single references"),
                     QString::fromLatin1(target));
      for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
          const QPoint origin(static_cast<int>(x + static_cast<qint64>(column) * reference.columnPitch),
                              static_cast<int>(y + static_cast<qint64>(row) * reference.rowPitch));
          writer_.writeSref(target, origin, reference.orientation);
        }
      }
    }
  }
}

const LayerPurpose *GdsExporter::usableLayer(const LayoutCell &cell, LayerIndex index) {
  const LayerPurpose &layer = model_.layer(index);
  if (layer.layer >= 0 && layer.layer <= kMaxLayer && layer.datatype >= 0 && layer.datatype <= kMaxLayer)
    return &layer;
  report_.problem(QStringLiteral("layer %1 datatype %2 is beyond GDSII's 65535; its shapes are left out")
                      .arg(layer.layer)
                      .arg(layer.datatype),
                  cell.name);
  return nullptr;
}

QByteArray GdsExporter::structureName(const QString &cell) { return cell.toLatin1(); }
