#ifndef RENDERPAGE_H
#define RENDERPAGE_H

#include <vector>

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include "layercolours.h"

class QPainter;
class RenderCanvas;

// The colours of a page that are not those of layers.
struct RenderTheme {
  static RenderTheme dark();
  static RenderTheme light();

  QColor background;
  QColor text;
  QColor dimText;
  QColor rule; // borders and outlines
};

struct LegendEntry {
  LayerStyle style;
  QString numbers; // layer/datatype
  double shapeCount = 0;
};

// What stands around a drawing.
struct PageContent {
  QString title;
  QString subtitle;
  std::vector<LegendEntry> legend;
  double metresPerDbu = 0; // 0: not known, lengths are given in database units
};

// The sheet around a drawing: title above, scale bar and remarks below, legend to the right. Nothing of it lies on the
// drawing.
class RenderPage {
public:
  RenderPage(const QSizeF &size, const RenderTheme &theme, PageContent content);

  // The frame that the drawing's texts may fill, and the part of it that the shapes are to fill.
  QRectF panel() const { return panel_; }
  QRectF drawingArea() const;

  // `pixelsPerDbu` is the drawing's scale; 0 leaves the scale bar away. `remarks` stand below the drawing.
  void paint(QPainter *painter, RenderCanvas *canvas, double pixelsPerDbu, const QString &remarks) const;

  // Says in the middle of the panel why there is no drawing.
  void paintMessage(QPainter *painter, const QString &message) const;

private:
  struct LegendLayout {
    int fontPixels = 0;
    int rows = 0;    // entries in a column
    int columns = 0; // 0: there is no room for any
    int shown = 0;   // entries; the others are only counted
    double nameWidth = 0, numbersWidth = 0, countWidth = 0;

    double rowHeight() const { return fontPixels * 1.55; }
    double swatchWidth() const { return fontPixels * 2.0; }
    double gap() const { return fontPixels * 0.8; }
    double columnWidth() const { return swatchWidth() + nameWidth + numbersWidth + countWidth + 4 * gap(); }
  };

  LegendLayout legendFor(int fontPixels, double height, double widest) const;
  LegendLayout chooseLegend(double height) const;
  QFont font(double pixels, bool isBold = false) const;
  void paintHeader(QPainter *painter) const;
  void paintLegend(QPainter *painter, RenderCanvas *canvas) const;
  void paintLegendEntry(QPainter *painter, RenderCanvas *canvas, const LegendEntry &entry, const QPointF &corner) const;
  // Returns where its text ends.
  double paintScaleBar(QPainter *painter, double pixelsPerDbu) const;

  QSizeF size_;
  RenderTheme theme_;
  PageContent content_;
  int fontPixels_;
  double margin_;
  LegendLayout legend_;
  QRectF panel_;
};

// A length as text with a unit that suits it: "1.38 µm", "350 nm", "12.5 mm"; in database units when `metresPerDbu` is
// 0.
QString lengthText(double dbu, double metresPerDbu);

// A count in full as far as it can be read at a glance, else with a decimal prefix: "17423", "2.31 M".
QString countText(double count);

#endif
