#ifndef OAKIT_SHAPECHECK_H
#define OAKIT_SHAPECHECK_H

#include "designdatabase.h"
#include "oa/oaPointArray.h"
#include "tablecheck.h"

#include <optional>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// The box that a shape must have. Where arithmetic with fractions is behind it, another build may round the other way.
struct ExpectedBox {
  oaBox box;
  oaCoord slackDbu = 0;
};

// What the rows behind the shapes of each class hold.
class ShapePayloads {
public:
  ShapePayloads(const TableCheck &check, const DesignDatabase &design) : check_(check), design_(design) {}

  // Checks the payload of a shape and gives the box that follows from it; nothing when it cannot be told, or when there
  // is nothing to compare with. `payload` is a row of the kind's table.
  std::optional<ExpectedBox> check(std::uint8_t kind, Row payload);

private:
  std::optional<ExpectedBox> outline(std::uint8_t kind, Row payload) const;
  std::optional<ExpectedBox> path(Row payload);
  std::optional<ExpectedBox> segment(Row payload);
  std::optional<ExpectedBox> arc(Row payload) const;
  std::optional<ExpectedBox> donut(Row payload) const;
  std::optional<ExpectedBox> text(std::uint8_t kind, Row payload);
  void display(std::uint8_t kind, Row payload) const;
  void checkShownObject(std::uint8_t kind, Row payload) const;
  bool checkStyle(const Table &table, Row payload, const TextStyle &style) const;
  bool checkPointCount(const Table &table, Row payload, Row count, Row least) const;

  const TableCheck &check_;
  const DesignDatabase &design_;
  oaPointArray points_, boundary_;
  std::uint64_t textBytes_ = 0;
};

// Shapes, their headers, and the box of the block.
void checkShapes(const TableCheck &check, DesignDatabase &design);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
