#ifndef RENDERSCHEMATIC_H
#define RENDERSCHEMATIC_H

#include "schematicscene.h"

#include <QLineF>
#include <QVector>

class QPainter;

// How thick lines are in a picture, in pixels: thicker when the drawing is shown large, never too thin to be told
// apart.
struct SchematicLineWidths {
  // `unit` in pixels: what a database unit would be if texts had their height in the database.
  explicit SchematicLineWidths(double unit);

  double device;
  double wire;
  double bus;
  double dotRadius;
};

// Paints a scene on a picture. Work is bounded by what the picture can show: symbols of a few pixels become boxes, and
// what is out of sight is skipped.
class SchematicPainter {
public:
  // `area` bounds the drawing in the picture. In a vector picture, which can be enlarged, small texts stay.
  SchematicPainter(QPainter *painter, SchematicScene *scene, const SchematicTheme &theme, const View &view,
                   const QRectF &area, bool isVector);

  void paint();

  // How many texts were left out: too small to be read, or too many.
  int hiddenTexts() const { return hiddenTexts_; }
  // True when some symbols were painted as boxes though they are large, as there are so many of them.
  bool isSimplified() const { return isSimplified_; }

private:
  void usePen(const QColor &colour, double width, Qt::PenStyle style = Qt::SolidLine);
  void paintLine(const QPolygonF &points);
  void paintStroke(const QPolygonF &points, const QColor &colour, double fill);
  void flushSegments();
  void paintPlacements();
  void paintSymbol(const SymbolDrawing &drawing, const CellToPicture &toPicture);
  void paintBox(const QRectF &box, const SymbolDrawing &drawing);
  void paintWires(bool areBuses);
  void paintDots();
  void paintTexts();
  void paintOrigin();
  QPolygonF toPicture(const QPolygonF &points) const;

  QPainter *painter_;
  SchematicScene *scene_;
  SchematicTheme theme_;
  View view_;
  QRectF area_;
  bool isVector_;
  SchematicLineWidths widths_;
  // Straight lines of the pen in use that wait to be painted together, which is many times faster than one by one.
  QVector<QLineF> segments_;
  int segmentBudget_; // of the symbols
  int hiddenTexts_ = 0;
  bool isSimplified_ = false;
};

#endif
