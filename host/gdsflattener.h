#ifndef GDSFLATTENER_H
#define GDSFLATTENER_H

#include "coordinatescale.h"
#include "gdsindex.h"
#include "gdsshapewriter.h"

#include <vector>

// A mirror, rotation, magnification and shift in floating point, from the coordinates of a placed structure to those of
// the cell that is being written.
struct PlaneTransform {
  double xx = 1, xy = 0, yx = 0, yy = 1; // x' = xx * x + xy * y + dx
  double dx = 0, dy = 0;
  double magnification = 1;

  // The transform of a reference whose origin is shifted by (stepX, stepY).
  static PlaneTransform ofReference(const GdsElement &reference, double stepX, double stepY);
  // `inner` first, then this.
  PlaneTransform after(const PlaneTransform &inner) const;
  // What a rotation angle, mirrored as `mirrored` says, becomes.
  double mapAngle(double angleDegrees) const;
  bool isMirrored() const { return xx * yy - xy * yx < 0; }
};

// Writes the shapes of placed structures in place of references that a layout cannot hold: magnified ones, and ones at
// slanted angles. What a structure places in turn is flattened with it.
class GdsFlattener {
public:
  GdsFlattener(const GdsParser &parser, const GdsIndex &index, const CoordinateScale &scale, GdsShapeWriter &shapes,
               ImportReport &report);

  // `reference` is an SREF or AREF in file units. Throws HostError when the result would be beyond measure: more than
  // four million objects in all, a hierarchy deeper than a thousand, or coordinates beyond 32 bits.
  void flatten(const GdsElement &reference, const GdsPlace &where);

private:
  class StructureHandler;
  void flattenElements(const GdsElement &reference, const PlaneTransform &outer, const GdsPlace &where);
  void flattenShape(const GdsElement &element, const PlaneTransform &transform, const GdsPlace &where);
  QPoint mapPoint(const QPoint &point, const PlaneTransform &transform) const;
  void countWork(const GdsPlace &where);

  const GdsParser &parser_;
  const GdsIndex &index_;
  const CoordinateScale &scale_;
  GdsShapeWriter &shapes_;
  ImportReport &report_;
  std::vector<int> openStructures_;
  qint64 work_ = 0;
};

#endif
