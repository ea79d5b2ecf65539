#include "gdsshapewriter.h"

#include "shapegeometry.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

constexpr double kAngleToleranceDegrees = 1e-6;
// GDSII texts have a magnification and no height. By the custom of layout tools it counts micrometres.
constexpr double kMetresPerMagnification = 1e-6;

LayerPurpose layerOf(const GdsElement &element) { return {element.layer, element.datatype}; }

QPolygon toPolygon(const std::vector<QPoint> &points) {
  QPolygon polygon(static_cast<int>(points.size()));
  std::copy(points.begin(), points.end(), polygon.begin());
  return polygon;
}

} // namespace

Orientation gdsOrientation(const GdsElement &element, bool *isExact) {
  const double turns = std::remainder(element.angleDegrees, 360.0) / 90.0;
  const double nearest = std::round(turns);
  *isExact = std::fabs(turns - nearest) * 90 <= kAngleToleranceDegrees;
  return Orientation(element.mirrored, static_cast<int>(nearest));
}

GdsShapeWriter::GdsShapeWriter(LayoutWriter &writer, ImportReport &report, double libraryMetresPerDbu)
    : writer_(writer), report_(report), libraryMetresPerDbu_(libraryMetresPerDbu) {}

void GdsShapeWriter::write(const GdsElement &element, const GdsPlace &where) {
  switch (element.kind) {
  case GdsRecordType::Boundary:
  case GdsRecordType::Box:
    writeOutline(element, where);
    break;
  case GdsRecordType::Path:
    writePath(element, where);
    break;
  case GdsRecordType::Text:
    writeText(element, where);
    break;
  default:
    report_.notice(QStringLiteral("a NODE has no counterpart in a layout and is left out"), where.toString());
    break;
  }
}

void GdsShapeWriter::writeOutline(const GdsElement &element, const GdsPlace &where) {
  const QPolygon corners = withoutRedundantPoints(toPolygon(element.points));
  if (corners.isEmpty())
    report_.notice(QStringLiteral("a boundary or box without area cannot be stored and is left out"), where.toString());
  else
    writeCorners(corners, layerOf(element));
}

void GdsShapeWriter::writeCorners(const QPolygon &corners, LayerPurpose layer) {
  if (const std::optional<QRect> box = asRectangle(corners)) {
    writer_.writeBox(*box, layer);
    ++counts_.boxes;
  } else {
    writer_.writePolygon(corners, layer);
    ++counts_.polygons;
  }
}

void GdsShapeWriter::writePath(const GdsElement &element, const GdsPlace &where) {
  if (element.pathType != 0 && element.pathType != 1 && element.pathType != 2 && element.pathType != 4)
    report_.notice(QStringLiteral("path type %1 is not known; the ends are flush").arg(element.pathType),
                   where.toString());
  if (element.width == std::numeric_limits<int>::min()) {
    report_.problem(QStringLiteral("a path's width does not fit in 32 bits; the path is left out"), where.toString());
    return;
  }
  if (element.width < 0)
    report_.notice(QStringLiteral("a path's width is absolute; it is written as a plain width"), where.toString());
  const std::vector<QPolygon> pieces = pathPieces(toPolygon(element.points));
  if (pieces.empty()) {
    writeSinglePointPath(element, where);
    return;
  }
  if (pieces.size() > 1)
    report_.notice(QStringLiteral("a path turns straight back; it is written in pieces"), where.toString());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const bool isFirst = i == 0;
    const bool isLast = i + 1 == pieces.size();
    writePiece(pieces[i], element, isFirst ? element.beginExtension : 0, isLast ? element.endExtension : 0, where);
  }
}

void GdsShapeWriter::writePiece(const QPolygon &piece, const GdsElement &element, int beginExtension, int endExtension,
                                const GdsPlace &where) {
  const int width = std::abs(element.width);
  if (element.pathType != 4) {
    const int caps = element.pathType == 1 || element.pathType == 2 ? element.pathType : 0;
    writer_.writePath(piece, width, caps, layerOf(element));
    ++counts_.paths;
    return;
  }
  const WritablePath path = expressPath(piece, width, beginExtension, endExtension);
  if (!path.isOutline) {
    writer_.writePath(path.points, width, path.caps, layerOf(element));
    ++counts_.paths;
    return;
  }
  report_.notice(QStringLiteral("a path with end extensions that no path can express is written as a polygon"),
                 where.toString());
  const QPolygon corners = withoutRedundantPoints(path.points);
  if (corners.isEmpty())
    report_.problem(QStringLiteral("a path's outline has no area; the path is left out"), where.toString());
  else
    writeCorners(corners, layerOf(element));
}

// A point with round or extended ends is a dot; with flush ends there is nothing to see.
void GdsShapeWriter::writeSinglePointPath(const GdsElement &element, const GdsPlace &where) {
  const qint64 width = std::abs(element.width);
  const bool isSquare = element.pathType == 1 || element.pathType == 2;
  const qint64 begin = isSquare ? width / 2 : element.pathType == 4 ? element.beginExtension : 0;
  const qint64 end = isSquare ? width - width / 2 : element.pathType == 4 ? element.endExtension : 0;
  if (width == 0 || begin + end <= 0) {
    report_.notice(QStringLiteral("a path of one point has no area and is left out"), where.toString());
    return;
  }
  report_.notice(QStringLiteral("a path of one point is written as a box"), where.toString());
  const QPoint centre = element.points.front();
  const qint64 below = width / 2;
  const QPoint upperLeft(narrowedToDbu(centre.x() - begin), narrowedToDbu(centre.y() - below + width));
  const QPoint lowerRight(narrowedToDbu(centre.x() + end), narrowedToDbu(centre.y() - below));
  writer_.writeBox(QRect(upperLeft, lowerRight), layerOf(element));
  ++counts_.boxes;
}

void GdsShapeWriter::writeText(const GdsElement &element, const GdsPlace &where) {
  bool isExact = true;
  ModelText text{};
  text.text = QString::fromLatin1(element.text);
  text.origin = element.points.front();
  text.height = textHeight(element, where);
  text.orientation = gdsOrientation(element, &isExact);
  if (!isExact)
    report_.notice(QStringLiteral("a text at a slanted angle is turned to the nearest quarter"), where.toString());
  // Bits 0 and 1 are the horizontal position, 2 and 3 the vertical one: the host's code, but for the font above them.
  constexpr int kPositionBits = 0xf;
  text.presentation = element.presentation & kPositionBits;
  if (text.presentation % 4 == 3 || text.presentation / 4 == 3) {
    report_.notice(QStringLiteral("a text's presentation is none of the nine; it is placed with its upper left corner"),
                   where.toString());
    text.presentation = 0;
  }
  writer_.writeText(text, layerOf(element));
  ++counts_.texts;
}

int GdsShapeWriter::textHeight(const GdsElement &element, const GdsPlace &where) {
  const double exact = std::fabs(element.magnification) * kMetresPerMagnification / libraryMetresPerDbu_;
  if (element.magnification < 0)
    report_.notice(QStringLiteral("a text's magnification is below 0; its size is taken"), where.toString());
  if (exact > std::numeric_limits<int>::max()) {
    report_.notice(QStringLiteral("a text's height does not fit in 32 bits; it is cut to what does"), where.toString());
    return std::numeric_limits<int>::max();
  }
  const double height = std::round(exact);
  if (std::fabs(height - exact) > 1e-3)
    report_.notice(QStringLiteral("a text's height is rounded to a whole number of database units"), where.toString());
  return static_cast<int>(height);
}
