#include "gdsimporter.h"

#include "shapegeometry.h"

#include <cmath>

namespace {

constexpr double kMagnificationTolerance = 1e-9;
constexpr qint64 kMaxExpandedElements = 4000000;

ModelReference singleReference(const QPoint &origin, Orientation orientation) {
  return {0, origin, orientation, false, 1, 1, 0, 0, QString()};
}

// The step between neighbours along one direction of an array.
struct Pitch {
  qint64 x = 0;
  qint64 y = 0;
  bool isWhole = true;
};

// A direction in which there is one element only has no step: what the file says there has no effect.
Pitch pitchAlong(const QPoint &origin, const QPoint &end, int count) {
  if (count == 1)
    return {};
  const qint64 x = static_cast<qint64>(end.x()) - origin.x();
  const qint64 y = static_cast<qint64>(end.y()) - origin.y();
  return {x / count, y / count, x % count == 0 && y % count == 0};
}

bool fitsInt(qint64 value) { return value == static_cast<int>(value); }

} // namespace

GdsImporter::GdsImporter(const GdsParser &parser, const GdsIndex &index, const CoordinateScale &scale,
                         double libraryMetresPerDbu, LayoutWriter &writer, ImportReport &report)
    : parser_(parser), index_(index), scale_(scale), writer_(writer), report_(report),
      shapes_(writer, report, libraryMetresPerDbu), flattener_(parser, index, scale, shapes_, report) {}

void GdsImporter::run(const std::function<void(qint64)> &onProgress) {
  onProgress_ = onProgress;
  parser_.parseLibrary(*this);
}

void GdsImporter::beginStructure(const QByteArray &name, qint64 offset) {
  structure_ = name;
  const int number = index_.find(name);
  // Nameless structures and second definitions have been reported by the index.
  isWriting_ = number >= 0 && index_.structures()[static_cast<std::size_t>(number)].offset == offset;
  if (!isWriting_)
    return;
  isWriting_ = writer_.beginCell(QString::fromLatin1(name));
  if (isWriting_)
    ++shapes_.counts().cells;
  else
    report_.problem(QStringLiteral("a structure could not be written"), GdsPlace{name, offset}.toString());
}

void GdsImporter::element(const GdsElement &element) {
  onProgress_(element.offset);
  if (!isWriting_)
    return;
  const GdsPlace where{structure_, element.offset};
  if (element.propertyCount > 0)
    report_.notice(QStringLiteral("an element's GDSII properties have no place in a layout and are left out"),
                   where.toString());
  try {
    if (element.kind == GdsRecordType::Sref || element.kind == GdsRecordType::Aref)
      writeReference(element, where);
    else
      writeShape(element, where);
  } catch (const CoordinateError &error) {
    throw GdsError(parser_.fileName(), element.offset,
                   QStringLiteral("structure %1: %2").arg(QString::fromLatin1(structure_), error.message()));
  }
}

void GdsImporter::endStructure() {
  if (isWriting_)
    writer_.endCell();
  isWriting_ = false;
}

void GdsImporter::writeShape(const GdsElement &element, const GdsPlace &where) {
  if (scale_.isIdentity()) {
    shapes_.write(element, where);
    return;
  }
  scaledElement_ = element;
  for (QPoint &point : scaledElement_.points)
    point = scaled(point);
  scaledElement_.width = scaled(element.width);
  scaledElement_.beginExtension = scaled(element.beginExtension);
  scaledElement_.endExtension = scaled(element.endExtension);
  shapes_.write(scaledElement_, where);
}

void GdsImporter::writeReference(const GdsElement &element, const GdsPlace &where) {
  bool isOrthogonal = true;
  const Orientation orientation = gdsOrientation(element, &isOrthogonal);
  if (!(element.magnification > 0)) {
    report_.problem(QStringLiteral("a reference with magnification %1 is left out").arg(element.magnification),
                    where.toString());
    return;
  }
  if (!isOrthogonal || std::fabs(element.magnification - 1) > kMagnificationTolerance) {
    report_.notice(QStringLiteral("a magnified or slanted reference is flattened"), where.toString());
    flattener_.flatten(element, where);
    return;
  }
  const ModelReference reference = singleReference(scaled(element.points.front()), orientation);
  if (element.columns == 1 && element.rows == 1)
    writeSingle(QString::fromLatin1(element.text), reference);
  else
    writeArray(element, reference, where);
}

void GdsImporter::writeArray(const GdsElement &element, const ModelReference &reference, const GdsPlace &where) {
  const Pitch column = pitchAlong(reference.origin, scaled(element.points[1]), element.columns);
  const Pitch row = pitchAlong(reference.origin, scaled(element.points[2]), element.rows);
  ModelReference array = reference;
  array.isArray = true;
  // The file's columns may run in y and its rows in x, as those of an array that was turned by a quarter.
  const bool isStraight = column.y == 0 && row.x == 0;
  const bool isSwapped = column.x == 0 && row.y == 0;
  const qint64 pitchX = isStraight ? column.x : row.x;
  const qint64 pitchY = isStraight ? row.y : column.y;
  if ((!isStraight && !isSwapped) || !column.isWhole || !row.isWhole || !fitsInt(pitchX) || !fitsInt(pitchY)) {
    writeExpandedArray(element, reference, where);
    return;
  }
  array.columns = isStraight ? element.columns : element.rows;
  array.rows = isStraight ? element.rows : element.columns;
  array.columnPitch = static_cast<int>(pitchX);
  array.rowPitch = static_cast<int>(pitchY);
  writer_.writeReference(QString::fromLatin1(element.text), array);
  ++shapes_.counts().arrays;
}

void GdsImporter::writeExpandedArray(const GdsElement &element, ModelReference reference, const GdsPlace &where) {
  report_.notice(QStringLiteral("a skewed array, or one whose pitch is not whole, is written as single references"),
                 where.toString());
  expandedElements_ += static_cast<qint64>(element.columns) * element.rows;
  if (expandedElements_ > kMaxExpandedElements) {
    throw GdsError(parser_.fileName(), element.offset,
                   QStringLiteral("structure %1: skewed arrays expand to more than %2 references")
                       .arg(QString::fromLatin1(structure_))
                       .arg(kMaxExpandedElements));
  }
  const QPoint origin = reference.origin;
  const QPoint columnEnd = scaled(element.points[1]);
  const QPoint rowEnd = scaled(element.points[2]);
  const auto step = [](int from, int to, int count, int index) {
    return (static_cast<double>(to) - from) * index / count;
  };
  const QString cell = QString::fromLatin1(element.text);
  for (int row = 0; row < element.rows; ++row) {
    for (int column = 0; column < element.columns; ++column) {
      const double x = origin.x() + step(origin.x(), columnEnd.x(), element.columns, column) +
                       step(origin.x(), rowEnd.x(), element.rows, row);
      const double y = origin.y() + step(origin.y(), columnEnd.y(), element.columns, column) +
                       step(origin.y(), rowEnd.y(), element.rows, row);
      reference.origin = QPoint(roundToDbu(x), roundToDbu(y));
      writeSingle(cell, reference);
    }
  }
}

void GdsImporter::writeSingle(const QString &cell, const ModelReference &reference) {
  writer_.writeReference(cell, reference);
  ++shapes_.counts().references;
}
