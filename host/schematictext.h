#ifndef SCHEMATICTEXT_H
#define SCHEMATICTEXT_H

#include "rendergeometry.h"

#include <QColor>
#include <QFont>
#include <QHash>
#include <QString>

class QPainter;

// The height of a line of text in the database, from the lowest stroke of its letters to the highest. Schematics have
// texts of one size.
constexpr double kLineHeightDbu = 12;

// A text of a schematic; it grows and shrinks with the drawing.
struct SchematicText {
  QString text;   // lines end in line feeds, the last one excepted
  QPointF anchor; // database units, y upwards
  QColor colour;
  Orientation orientation; // of the text about its anchor
  int horizontal = 0;      // place of the anchor in the text: 0 left, 1 centre, 2 right
  int vertical = 2;        // 0 upper, 1 centre, 2 lower
};

// Widths of texts without shaping each one, as a schematic may have very many. Needs a QGuiApplication.
class TextMeasure {
public:
  TextMeasure();

  // Shows texts larger or smaller than they are in the database.
  void setLineHeight(double dbu) { lineHeightDbu_ = dbu; }
  double lineHeight() const { return lineHeightDbu_; }

  // In database units.
  QSizeF size(const QString &text);
  // The place that a text takes. Upright or reading upwards, whatever its orientation, it fills the same box.
  Extent extent(const SchematicText &text);

  // The font whose lines are `pixels` high; one of whole pixels, so it may be off by half a pixel.
  QFont font(double pixels) const;
  // The share of a line's height above its base line.
  double ascent() const { return ascent_; }

private:
  double advance(QChar character);

  QFont measured_;
  double lineHeight_; // of the measured font
  double ascent_;
  double lineHeightDbu_ = kLineHeightDbu;
  QHash<QChar, double> advances_;
};

// Paints texts in `area` of a picture.
class SchematicTextPainter {
public:
  // Leaves out texts with lines lower than `smallestPixels`, and those beyond the first `most`.
  SchematicTextPainter(QPainter *painter, TextMeasure *measure, const View &view, const QRectF &area,
                       double smallestPixels, int most);

  void paint(const SchematicText &text);
  // How many texts in the area were left out.
  int hiddenTexts() const { return hiddenTexts_; }

private:
  QPainter *painter_;
  TextMeasure *measure_;
  const View &view_;
  QRectF area_;
  double linePixels_;
  double smallestPixels_;
  QFont font_;
  double fontScale_; // fonts come in whole pixels; small ones are scaled to the height that is wanted
  int textsLeft_;
  int hiddenTexts_ = 0;
};

// Text as it can be shown: other control characters than line feeds become blanks; very long lines and very many lines
// are cut.
QString shownLines(const QString &text);

#endif
