#ifndef XSCHEMDRAWING_H
#define XSCHEMDRAWING_H

#include "importreport.h"
#include "schematicmodel.h"
#include "xschemparser.h"

#include <optional>

// The colour of one of xschem's layers, "#rrggbb": those of a drawing on white paper, with wires (1) blue, texts (3)
// black, symbols (4) green and pins (5) red. Layers beyond 21 are black.
QString xschemLayerColour(int layer);

// Turns the coordinates and the drawing of one file into those of a model: y upwards, in database units.
class XschemDrawing {
public:
  // `scale` is the number of database units for one of xschem's. The others are borrowed.
  XschemDrawing(const XschemFile &file, double scale, ImportReport &report)
      : file_(file), scale_(scale), report_(report) {}

  // Nothing, with a problem told, when the point lies too far outside; a point between database units is rounded and
  // told.
  std::optional<QPoint> point(double x, double y, int line) const;

  // A line, box, polygon, arc or text; nothing is done about other objects.
  void addShape(const XschemObject &object, SchematicModel &model) const;

  // Of a placement or text with these numbers: mirrored left to right first when flipped, then turned clockwise.
  static Orientation orientation(double rotation, double flip);

private:
  bool isInside(std::initializer_list<double> values, int line) const;
  // Of an arc's points, which lie between database units in the nature of things.
  QPoint rounded(double x, double y) const;
  void tellFilling(bool isFilled, const XschemObject &object) const;
  void addBox(const XschemObject &object, bool isFilled, SchematicModel &model) const;
  void addLines(const XschemObject &object, size_t first, bool isFilled, SchematicModel &model) const;
  void addArc(const XschemObject &object, bool isFilled, SchematicModel &model) const;
  void addText(const XschemObject &object, SchematicModel &model) const;
  void addTextLine(const QString &text, const XschemObject &object, int index, int count, bool isCentredAcross,
                   bool isCentredDown, SchematicShape shape, SchematicModel &model) const;

  const XschemFile &file_;
  const double scale_;
  ImportReport &report_;
};

#endif
