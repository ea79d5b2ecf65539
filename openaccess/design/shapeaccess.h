#ifndef OAKIT_SHAPEACCESS_H
#define OAKIT_SHAPEACCESS_H

// How the shape classes make, read and change their rows.

#include "designaccess.h"
#include "oa/oaBlock.h"
#include "oa/oaPointArray.h"
#include "oa/oaShape.h"

namespace OpenAccess_4 {
namespace kit {

// The design that new shapes of the block belong to. Raises oacDeletedDatabase for NULL and for a dead block.
inline DesignDatabase &designOfShapes(const oaBlock *block) {
  return designOf(tableAs<BlockTable>(block, kBlockTable, "block"));
}

// A new shape. Raises oacInvalidPurposeNumber before anything has changed. `payload` kNoRow for kinds without one.
inline Row addShape(DesignDatabase &design, oaLayerNum layer, oaPurposeNum purpose, oaTypeEnum kind, const oaBox &box,
                    Row payload = kNoRow) {
  const Row lpp = design.lppFor(layer, purpose);
  ShapeTable &shapes = design.shapes;
  const Row row = shapes.appendRow();
  shapes.kind.push(row, static_cast<std::uint8_t>(kind));
  shapes.lpp.push(row, lpp);
  shapes.box.push(row, box);
  if (payload != kNoRow) {
    shapes.payload.set(row, payload);
  }
  design.lpps.shapes.set(lpp, design.lpps.shapes[lpp] + 1);
  if (OA_UNLIKELY(design.shapesOfLpp.isBuilt())) {
    design.shapesOfLpp.add(lpp, row);
  }
  if (OA_LIKELY(!ShapeTable::isDisplayKind(static_cast<std::uint8_t>(kind)))) {
    design.shapeBoxGrows(box);
  }
  design.Database::touch();
  return row;
}

// The handle of a shape that has just been made.
template <typename Shape> inline Shape *newShapeAt(DesignDatabase &design, Row row, oaTypeEnum kind) {
  return static_cast<Shape *>(design.shapes.handle(row, static_cast<std::uint8_t>(kind)));
}
template <typename Shape> inline Shape *shapeAt(DesignDatabase &design, Row row) {
  return static_cast<Shape *>(design.shapes.handle(row));
}

// A shape with its payload. Raises oacInvalidReference when the object is not of the kind, and oacCorruptedDatabase
// when it lacks its payload.
struct ShapeRow {
  DesignDatabase &design;
  Row row;
  Row payload;
};
[[noreturn]] void raiseWrongShape(const oaObject *object, oaTypeEnum expected);
inline ShapeRow shapeRow(const oaObject *object, oaTypeEnum kind, const Table &(*payloads)(const DesignDatabase &)) {
  ShapeTable &shapes = shapesOf(object);
  const Row row = rowOf(object);
  if (OA_UNLIKELY(shapes.kindOf(row) != kind)) {
    raiseWrongShape(object, kind);
  }
  DesignDatabase &design = designOf(shapes);
  return {design, row, checkedRow(payloads(design), shapes.payload[row], "a shape")};
}

// The payload of a shape of that kind, when it can be had without further ado: stored and verified. NULL otherwise;
// then shapeRow() says what is wrong, or finds it.
template <typename T>
inline const T *readyPayload(const oaObject *object, oaTypeEnum kind,
                             const LongColumn<T> &(*payloads)(const DesignDatabase &)) {
  const Table *table = tableOf(object);
  if (OA_UNLIKELY(table == nullptr || object->getType() != kind)) {
    return nullptr;
  }
  const Row *payload = static_cast<const ShapeTable *>(table)->payload.ready(rowOf(object));
  return OA_LIKELY(payload != nullptr) ? payloads(designOf(*table)).ready(*payload) : nullptr;
}

// A shape of a kind without payload.
inline ShapeRow plainShapeRow(const oaObject *object, oaTypeEnum kind) {
  ShapeTable &shapes = shapesOf(object);
  const Row row = rowOf(object);
  if (OA_UNLIKELY(shapes.kindOf(row) != kind)) {
    raiseWrongShape(object, kind);
  }
  return {designOf(shapes), row, kNoRow};
}

// The shape has a new box.
void setShapeBox(DesignDatabase &design, Row row, const oaBox &box);
// The shape has another class and payload; handle, net, pin, properties and displays stay.
void convertShape(DesignDatabase &design, Row row, oaTypeEnum kind, Row payload, const oaBox &box);

// Point lists.
PoolSpan addPoints(DesignDatabase &design, const oaPointArray &points);
void getPoints(const DesignDatabase &design, const PoolSpan &span, oaPointArray &points);
// Overwrites in place when the number of points is the same.
PoolSpan replacePoints(DesignDatabase &design, const PoolSpan &span, const oaPointArray &points);
oaBox boxOf(const oaPointArray &points);
Row addOutline(DesignDatabase &design, const oaPointArray &points);
// "design lib/cell/view: polygon on layer 4, purpose 0", for messages.
std::string newShapeLabel(const DesignDatabase &design, const char *what);

// A coordinate at the end of its range rather than beyond it, rounded to the nearest.
oaCoord toCoord(double value);
oaCoord toCoord(std::int64_t value);
oaBox boxAround(const oaPoint &centre, std::int64_t left, std::int64_t bottom, std::int64_t right, std::int64_t top);

} // namespace kit
} // namespace OpenAccess_4

#endif
