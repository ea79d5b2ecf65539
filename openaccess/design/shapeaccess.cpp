#include "shapeaccess.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace OpenAccess_4 {
namespace kit {

void raiseWrongShape(const oaObject *object, oaTypeEnum expected) {
  const Table &table = liveTable(object);
  raiseBase(oacInvalidReference, table.database().label() + ": shape " + std::to_string(rowOf(object)) + " is a " +
                                     std::string(object->getType().getName()) + ", not a " +
                                     std::string(oaType(expected).getName()) + " (any more)");
}

void setShapeBox(DesignDatabase &design, Row row, const oaBox &box) {
  if (!ShapeTable::isDisplayKind(design.shapes.kindOf(row))) {
    const oaBox old = design.shapes.box[row];
    if (old != box) {
      design.shapeBoxLeaves(old);
      design.shapeBoxGrows(box);
    }
  }
  design.shapes.box.set(row, box);
  design.Database::touch();
}

void convertShape(DesignDatabase &design, Row row, oaTypeEnum kind, Row payload, const oaBox &box) {
  setShapeBox(design, row, box);
  design.noteAbandonedRows();
  design.shapes.payload.set(row, payload);
  design.shapes.setKind(row, static_cast<std::uint8_t>(kind));
}

PoolSpan addPoints(DesignDatabase &design, const oaPointArray &points) {
  const Row count = points.getNumElements();
  const Row begin = design.points.addRows(count);
  const oaPoint *elements = points.getElements();
  if (design.points.points.append(elements, count) != begin) {
    raiseCorrupted(design.points, begin, "the points end before the table does");
  }
  return {begin, count};
}

namespace {

// Out of line, so that the usual way needs no stack.
[[gnu::noinline]] void findPoints(const DesignDatabase &design, const PoolSpan &span, oaPointArray &points) {
  const Row stored = design.points.points.size();
  if (OA_UNLIKELY(span.begin > stored || span.count > stored - span.begin)) {
    design.points.checkSpan(span.begin, span.count, "a shape");
  }
  points.setNumElements(span.count);
  if (span.count != 0) {
    std::memcpy(static_cast<void *>(&points[0]), design.points.points.span(span.begin, span.count),
                std::size_t(span.count) * sizeof(oaPoint));
  }
}

} // namespace

void getPoints(const DesignDatabase &design, const PoolSpan &span, oaPointArray &points) {
  const Column<oaPoint> &column = design.points.points;
  const oaPoint *first = column.ready(span.begin);
  const Row last = span.begin + (span.count - 1);
  // Both ends at hand means that the points lie in segments that are verified.
  if (OA_LIKELY(first != nullptr && span.count != 0 && span.count <= kSegmentRows && last >= span.begin &&
                column.ready(last) != nullptr && span.count <= points.getSize())) {
    points.setNumElements(span.count);
    std::memcpy(static_cast<void *>(&points[0]), first, std::size_t(span.count) * sizeof(oaPoint));
  } else {
    findPoints(design, span, points);
  }
}

PoolSpan replacePoints(DesignDatabase &design, const PoolSpan &span, const oaPointArray &points) {
  if (points.getNumElements() != span.count) {
    design.noteAbandonedRows();
    return addPoints(design, points);
  }
  design.points.checkSpan(span.begin, span.count, "a shape");
  for (Row i = 0; i < span.count; ++i) {
    design.points.points.set(span.begin + i, points[i]);
  }
  return span;
}

oaBox boxOf(const oaPointArray &points) {
  oaBox box;
  points.getBBox(box);
  return box;
}

Row addOutline(DesignDatabase &design, const oaPointArray &points) {
  const PoolSpan span = addPoints(design, points);
  const Row row = design.outlines.addRow();
  design.outlines.points.set(row, span);
  return row;
}

std::string newShapeLabel(const DesignDatabase &design, const char *what) { return design.label() + ": " + what; }

oaCoord toCoord(double value) {
  constexpr double kMin = std::numeric_limits<oaCoord>::min();
  constexpr double kMax = std::numeric_limits<oaCoord>::max();
  // Not a number ends at the lower end.
  const double rounded = std::floor(value + 0.5);
  return rounded >= kMax  ? std::numeric_limits<oaCoord>::max()
         : rounded > kMin ? static_cast<oaCoord>(rounded)
                          : std::numeric_limits<oaCoord>::min();
}

oaCoord toCoord(std::int64_t value) {
  return static_cast<oaCoord>(
      std::clamp<std::int64_t>(value, std::numeric_limits<oaCoord>::min(), std::numeric_limits<oaCoord>::max()));
}

oaBox boxAround(const oaPoint &centre, std::int64_t left, std::int64_t bottom, std::int64_t right, std::int64_t top) {
  return oaBox(toCoord(centre.x() + left), toCoord(centre.y() + bottom), toCoord(centre.x() + right),
               toCoord(centre.y() + top));
}

} // namespace kit
} // namespace OpenAccess_4
