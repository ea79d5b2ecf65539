#ifndef RENDERLABELS_H
#define RENDERLABELS_H

#include <vector>

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

#include "orientation.h"

class QPainter;

// A text of the drawing, in picture coordinates.
struct RenderLabel {
  QString text;
  QPointF anchor;
  double height = 0;       // of the letters, as the layout asks for; 0 when it does not say
  int horizontal = 0;      // place of the anchor in the text: 0 left, 1 centre, 2 right
  int vertical = 0;        // 0 upper, 1 centre, 2 lower
  Orientation orientation; // of the text about its anchor
  QColor colour;
  int depth = 0;         // level of its cell; what lies higher is placed first
  bool hasMarker = true; // a small cross marks an anchor beside the text
  double widest = 0;     // a longer text is cut with an ellipsis, and left out when little would remain; 0: it is not
  bool isCounted = true; // among those that paintLabels() reports as left out
};

// Splits the presentation code of a text: horizontal + 4 * vertical. Codes that are none count as upper left.
void setPresentation(RenderLabel *label, int presentation);

// The largest and smallest letters that are painted, in pixels. Smaller texts are enlarged, as nobody could read them.
constexpr double kSmallestLetters = 10;
constexpr double kLargestLetters = 44;

// The place that a text of the given size (width along its reading direction) takes, by its anchor and orientation.
QRectF labelBox(const RenderLabel &label, const QSizeF &size);

// Paints labels upright or reading upwards, whatever their orientation, at the place that the orientation gives them.
// Texts move as far as needed to stay inside `area`; those that would cover one already painted are left out. Returns
// how many were left out, those that are not counted excepted.
int paintLabels(QPainter *painter, std::vector<RenderLabel> labels, const QRectF &area, const QColor &background);

// Text as it can be shown on one line: control characters become blanks, long texts end in an ellipsis.
QString shownText(const QString &text);

#endif
