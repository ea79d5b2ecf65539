#ifndef GDSSHAPEWRITER_H
#define GDSSHAPEWRITER_H

#include "gdsparser.h"
#include "importreport.h"
#include "layoutwriter.h"

#include <array>

// How many objects of each kind were written.
struct WrittenCounts {
  quint64 cells = 0;
  quint64 boxes = 0;
  quint64 polygons = 0;
  quint64 paths = 0;
  quint64 texts = 0;
  quint64 references = 0;
  quint64 arrays = 0;
};

// Gives GDSII shapes and texts their meaning as shapes of a library. Coordinates, widths and extensions of the elements
// are in the library's database units already.
class GdsShapeWriter {
public:
  GdsShapeWriter(LayoutWriter &writer, ImportReport &report, double libraryMetresPerDbu);

  // `element` is a boundary, box, path, text or node, found at `where`; anything else is the caller's.
  void write(const GdsElement &element, const GdsPlace &where);
  const WrittenCounts &counts() const { return counts_; }
  WrittenCounts &counts() { return counts_; }

private:
  void writeOutline(const GdsElement &element, const GdsPlace &where);
  void writePath(const GdsElement &element, const GdsPlace &where);
  void writeSinglePointPath(const GdsElement &element, const GdsPlace &where);
  void writePiece(const QPolygon &piece, const GdsElement &element, int beginExtension, int endExtension,
                  const GdsPlace &where);
  void writeCorners(const QPolygon &corners, LayerPurpose layer);
  void writeText(const GdsElement &element, const GdsPlace &where);
  int textHeight(const GdsElement &element, const GdsPlace &where);

  LayoutWriter &writer_;
  ImportReport &report_;
  const double libraryMetresPerDbu_;
  WrittenCounts counts_;
};

// The orientation of a reference or text. `isExact` is set false when the angle is no multiple of 90 degrees: the
// result is then the nearest.
Orientation gdsOrientation(const GdsElement &element, bool *isExact);

#endif
