#ifndef SCHEMATICCOLOURS_H
#define SCHEMATICCOLOURS_H

// What things on a schematic look like when nobody says so, and what the host's colour texts mean.

#include <QColor>
#include <QHash>
#include <QString>

struct SchematicTheme {
  static SchematicTheme light();
  static SchematicTheme dark();

  QColor background;
  QColor wire;
  QColor bus;
  QColor label; // names of wires
  QColor port;  // of the schematic, and the pins of symbols
  QColor ground;
  QColor device; // shapes and texts without a colour of their own
  QColor name;   // of placements
  QColor property;
  QColor missing; // in the place of a symbol that is not there
  QColor origin;  // the cross at a symbol's origin
};

// Turns the colour texts of shapes into colours that can be seen on the theme's background. Remembers what it has seen,
// since a drawing has many shapes and few colours.
class SchematicColours {
public:
  explicit SchematicColours(const SchematicTheme &theme) : theme_(theme) {}

  // "#rgb", "#rrggbb" and the colour names of SVG mean what they say. "deviceColor", the host's text for no colour of
  // its own, gives the theme's device colour, and so does every text that is no colour. The result is opaque.
  QColor colour(const QString &text);

private:
  SchematicTheme theme_;
  QHash<QString, QColor> seen_;
};

#endif
