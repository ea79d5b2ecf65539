#ifndef OAKIT_SHAPECONTENTS_H
#define OAKIT_SHAPECONTENTS_H

// A shape taken out of its tables: what moving, copying and scaling work on, the same way for all kinds.

#include "oa/oaPointArray.h"
#include "oa/oaTransform.h"
#include "shapetables.h"

#include <string>

namespace OpenAccess_4 {
namespace kit {

class DesignDatabase;

// The members that a kind does not use are empty.
struct ShapeContents {
  oaTypeEnum kind = oacRectType;
  oaBox box; // of rectangles and ellipses; of others it follows from the rest
  oaPointArray points;
  PathTable::Path path{};
  PathSegTable::Segment segment{};
  ArcTable::Arc arc{};
  DonutTable::Donut donut{};
  DotTable::Dot dot{};
  TextStyle style{};
  std::string text, evaluator;
  Row displayPayload = kNoRow; // what a text display shows stays with it

  // Raises oacInvalidPointsAfterTransform or oacInvalidBBoxAfterTransform when a coordinate would leave its range.
  void transform(const oaTransform &xform, const std::string &label);
  // Scales and turns (radians) about the origin; axis-parallel kinds take the box around what comes out. Raises the
  // same when the shape degenerates.
  void transform(double scale, double angle, const std::string &label);
};

ShapeContents readShape(const DesignDatabase &design, Row row);
// Puts contents of the same kind and the same number of points back.
void writeShape(DesignDatabase &design, Row row, const ShapeContents &contents);
// A new shape. Text displays cannot be added to another design than their own: raises oacNonDesignTextDisplay.
Row addShape(DesignDatabase &design, oaLayerNum layer, oaPurposeNum purpose, const ShapeContents &contents,
             const DesignDatabase &from);

} // namespace kit
} // namespace OpenAccess_4

#endif
