#ifndef OAKIT_BOUNDARIES_H
#define OAKIT_BOUNDARIES_H

// Outlines of paths, path segments and curves, apart from any database. Coordinates are database units; results are
// rounded to the nearest one and end at the limits of the coordinate range.

#include "oa/oaPathSeg.h"
#include "oa/oaPointArray.h"
#include "shapetables.h"

namespace OpenAccess_4 {
namespace kit {

// See oaPath::genBoundary(). Coinciding neighbours are skipped; fewer than two different points give an empty outline.
void pathBoundary(const oaPointArray &points, oaDist width, oaPathStyleEnum style, oaDist beginExt, oaDist endExt,
                  oaPointArray &boundary);

// See oaPathSeg::genBoundary(). The points are checked already.
void segBoundary(const PathSegTable::Segment &segment, oaPointArray &boundary);
// Horizontal, vertical or at 45 degrees, and not of length 0.
bool isSegDirection(const oaPoint &begin, const oaPoint &end);
PathSegTable::Segment toSegment(const oaPoint &begin, const oaPoint &end, const oaSegStyle &style);

// Points of an axis-parallel ellipse in its box, at `edges` equal steps of the parameter from `start` to `stop`, both
// ends included.
void ellipsePoints(const oaBox &box, double start, double stop, oaUInt4 edges, oaPointArray &points);
// See oaEllipse::genBoundary() and oaDonut::genBoundary().
void ellipseBoundary(const oaBox &box, oaUInt4 sides, oaPointArray &points);
void donutBoundary(const DonutTable::Donut &donut, oaUInt4 sides, oaPointArray &points);
oaBox donutBox(const DonutTable::Donut &donut, std::uint32_t radius);
oaBox dotBox(const DotTable::Dot &dot);

// To [0, 2 pi).
double reducedAngle(double angle);
// The angle of an arc from start to stop, counter-clockwise: above 0, at most 2 pi.
double sweepOf(double start, double stop);
oaBox arcBox(const ArcTable::Arc &arc);

} // namespace kit
} // namespace OpenAccess_4

#endif
