#include "shapetables.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace OpenAccess_4 {
namespace kit {

Row roomFor(Row row) {
  constexpr std::uint64_t kSmallest = 64;
  return static_cast<Row>(std::min<std::uint64_t>(std::max<std::uint64_t>(kSmallest, std::uint64_t(row) * 2), kNoRow));
}

LPPTable::LPPTable(Database &database) : Table(database, kLPPTable, "lpps", TableLife::kinds) { setKindColumn(kind); }

LayerHeaderTable::LayerHeaderTable(Database &database)
    : Table(database, kLayerHeaderTable, "layerHeaders", TableLife::kinds) {
  setKindColumn(kind);
}

ShapeTable::ShapeTable(Database &database) : Table(database, kShapeTable, "shapes", TableLife::kinds) {
  setKindColumn(kind);
  lpp.refersTo(kLPPTable);
  payload.refersTo([](const Table &table, Row row) { return payloadTable(table.kindOf(row)); });
  net.refersTo(kNetTable);
  pin.refersTo(kPinTable);
}

std::uint16_t ShapeTable::payloadTable(std::uint8_t kind) {
  switch (kind) {
  case oacPolygonType:
  case oacLineType:
    return kOutlineTable;
  case oacPathType:
    return kPathTable;
  case oacPathSegType:
    return kPathSegTable;
  case oacArcType:
    return kArcTable;
  case oacDonutType:
    return kDonutTable;
  case oacDotType:
    return kDotTable;
  case oacTextType:
  case oacEvalTextType:
    return kTextTable;
  default:
    return isDisplayKind(kind) ? kTextDisplayTable : 0;
  }
}

PointTable::PointTable(Database &database) : Table(database, kPointTable, "points", TableLife::pool) {}

OutlineTable::OutlineTable(Database &database) : Table(database, kOutlineTable, "outlines", TableLife::referenced) {
  points.spansPool(kPointTable, offsetof(PoolSpan, begin), offsetof(PoolSpan, count));
}

PathTable::PathTable(Database &database) : Table(database, kPathTable, "paths", TableLife::referenced) {
  paths.spansPool(kPointTable, offsetof(Path, points.begin), offsetof(Path, points.count));
}

PathSegTable::PathSegTable(Database &database) : Table(database, kPathSegTable, "pathSegs", TableLife::referenced) {}

ArcTable::ArcTable(Database &database) : Table(database, kArcTable, "arcs", TableLife::referenced) {}

DonutTable::DonutTable(Database &database) : Table(database, kDonutTable, "donuts", TableLife::referenced) {}

DotTable::DotTable(Database &database) : Table(database, kDotTable, "dots", TableLife::referenced) {}

TextTable::TextTable(Database &database) : Table(database, kTextTable, "texts", TableLife::referenced) {
  text.refersTo(kStringTable);
  evaluator.refersTo(kStringTable);
}

TextDisplayTable::TextDisplayTable(Database &database)
    : Table(database, kTextDisplayTable, "textDisplays", TableLife::referenced) {
  objectRow.refersTo(
      [](const Table &table, Row row) { return static_cast<const TextDisplayTable &>(table).objectTable[row]; });
  masterText.refersTo(kStringTable);
}

} // namespace kit
} // namespace OpenAccess_4
