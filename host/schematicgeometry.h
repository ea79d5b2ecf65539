#ifndef SCHEMATICGEOMETRY_H
#define SCHEMATICGEOMETRY_H

// Lines of schematic objects in database units, y upwards, in double precision: coordinates may lie anywhere in the
// 32-bit range, and what is drawn around them beyond it.

#include "rendergeometry.h"
#include "schematicmodel.h"

#include <QPolygonF>

// The direction in which something leads away from a place.
enum class Side { Left, Right, Up, Down };

QPointF unitVector(Side side);
Side oppositeOf(Side side);

// The line that a shape draws; closed shapes repeat their first point. Curves become many short lines. Empty for texts
// and for shapes without a point.
QPolygonF strokeOf(const SchematicShape &shape);

Extent extentOf(const QPolygonF &points);

// The signs for ports, pins and grounds are of the size that suits texts of 12 database units, times `unit`.

// A port that leads to `side` from the place of its connection: an arrow in the direction of the signal, both ways for
// an input and output, a box when the direction is not known, a bar on a stem for a global net.
std::vector<QPolygonF> portStrokes(const SchematicPort &port, Side side, double unit);
// How far these strokes reach to `side`, in units.
constexpr double kPortLength = 20;

// A pin of a symbol whose body lies at `body` from it: a small arrow in the direction of the signal, a diamond for
// both, a square when the direction is not known.
QPolygonF pinStroke(const SchematicPort &pin, Side body, double unit);
// Of the square for a pin of a placed symbol, in units.
constexpr double kPinHalfSide = 2.5;

// Three bars under a stem that hangs from the place of the connection.
std::vector<QPolygonF> groundStrokes(const QPointF &position, double unit);

// Whether signals go in, out or both, from the type of a port, by the same test as the writer's.
bool isInput(const SchematicPort &port);
bool isOutput(const SchematicPort &port);

#endif
