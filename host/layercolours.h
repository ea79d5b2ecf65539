#ifndef LAYERCOLOURS_H
#define LAYERCOLOURS_H

// How a layer looks when nobody says so: well-known layer names get the colours that layout engineers are used to (red
// gates, green diffusion, blue first metal), every other layer a colour and a hatch derived from its numbers alone, so
// that one layer looks the same in every picture.

#include <QColor>
#include <QString>

enum class FillPattern { Solid, Outline, Forward, Backward, Cross, Horizontal, Vertical, Grid, Dots };

struct LayerStyle {
  QString name;  // empty when only the numbers are known
  QColor colour; // opaque
  FillPattern pattern = FillPattern::Solid;
  bool isFixed = false; // the user chose the colour: it is not adapted to the background
  // Where the layer lies in a stack of well-known layers, from wells (0) to the top metal and the boundary; -1: not
  // known.
  int stackRank = -1;
};

// The pattern called `text` ("solid", "outline", "forward", ... in any case) in `*pattern`; false when there is none of
// that name.
bool patternFromName(const QString &text, FillPattern *pattern);

// All names that patternFromName() takes, separated by blanks.
QString patternNames();

// The style of a layer by its numbers alone.
LayerStyle generatedStyle(int layer, int datatype);

// The customary style of a layer called `layerName` for the given purpose ("drawing", "pin", ..., empty: drawing).
// Names that have no custom fall back to generatedStyle(). The result's name is left empty.
LayerStyle conventionalStyle(const QString &layerName, const QString &purpose, int layer, int datatype);

// `colour` made darker or lighter, hue kept, until its contrast to the background (1 to 21, by the formula of the Web
// Content Accessibility Guidelines) reaches `contrast`.
QColor readableOn(const QColor &colour, const QColor &background, double contrast);

#endif
