#ifndef OAARC_H
#define OAARC_H

#include "oa/oaShape.h"

namespace OpenAccess_4 {

class oaLine;

// A piece of an axis-parallel ellipse, counter-clockwise from the start to the stop angle. Angles are radians,
// parameters of the ellipse: the point at t is centre + (rx cos t, ry sin t), rounded to the grid.
class oaArc : public oaShape {
public:
  // Raises oacArcEllipseBBoxInvalid for a box that is inverted or flat, oacArcAnglesInvalid when both angles are equal
  // after reduction to [0, 2 pi) or are no numbers.
  static oaArc *create(oaBlock *block, oaLayerNum layerNum, oaPurposeNum purposeNum, const oaBox &ellipseBBox,
                       oaDouble startAngle, oaDouble stopAngle);
  // The circular arc from p1 over p2 to p3, or back from p3 to p1 when that is the counter-clockwise sense. Raises
  // oacArcPointsColinear, and oacArcTooLarge for more than half a turn.
  static void calcArc(const oaPoint &p1, const oaPoint &p2, const oaPoint &p3, oaBox &ellipseBBox, oaDouble &startAngle,
                      oaDouble &stopAngle);
  // The arc of the ellipse inside `bBox`. Raises oacArcWrongNumIntercepts unless the boxes' edges cut the ellipse in
  // exactly two points.
  static void calcArc(const oaBox &ellipseBBox, oaBox &bBox, oaDouble &startAngle, oaDouble &stopAngle);
  static void calcBBox(const oaBox &ellipseBBox, oaDouble startAngle, oaDouble stopAngle, oaBox &bBox);
  // `numEdges` + 1 points at equal angles. Raises oacArcNumSidesInvalid for fewer than 3 edges.
  static void genPoints(const oaBox &ellipseBBox, oaDouble startAngle, oaDouble stopAngle, oaUInt4 numEdges,
                        oaPointArray &boundary);

  void getEllipseBBox(oaBox &bBox) const;
  oaDouble getStartAngle() const;
  oaDouble getStopAngle() const;
  void getPoints(oaPointArray &points, oaUInt4 numSegs = 10) const;
  void set(const oaBox &ellipseBBox, oaDouble startAngle, oaDouble stopAngle);
  // Changes the class of this object, whose pointer stays the same. Raises oacArcNumSidesInvalid for fewer than 3
  // sides.
  oaLine *convertToLine(oaUInt4 numSides = 16);
};

} // namespace OpenAccess_4

#endif
