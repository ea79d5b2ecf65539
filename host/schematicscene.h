#ifndef SCHEMATICSCENE_H
#define SCHEMATICSCENE_H

#include "schematiccolours.h"
#include "schematicgeometry.h"
#include "schematictext.h"

#include <QHash>

#include <map>
#include <vector>

class JunctionSides;

// A line of the drawing in database units, y upwards.
struct SceneStroke {
  QPolygonF points;
  QColor colour;
  double fill = 0; // the strength, 0 to 1, with which the line's inside is filled
};

// What all placements of one symbol share.
struct SymbolDrawing {
  const SymbolModel *symbol = nullptr; // null when it is missing
  std::vector<SceneStroke> strokes;
  std::vector<QPointF> pins;
  std::vector<Side> pinBodies;               // where the body lies, seen from each pin
  std::vector<const SchematicShape *> texts; // with their colours
  std::vector<QColor> textColours;
  Extent extent;         // of strokes and pins
  QStringList shownKeys; // what its own texts say about a placement: "name" and properties
  int segments = 0;      // of all strokes, pins included: what it costs to paint it
};

// Everything that is drawn of a schematic or symbol, in database units, the wires excepted, which are drawn from the
// model. Borrows the model and the symbols.
class SchematicScene {
public:
  enum class Kind { Schematic, Symbol };

  // `symbols` by "library/device"; null or absent for what is missing. In a symbol, texts are shown as they are written
  // and ports as pins.
  SchematicScene(const SchematicModel &model, Kind kind, const QHash<QString, const SymbolModel *> &symbols,
                 const SchematicTheme &theme, bool hasTexts);

  const SchematicModel &model() const { return model_; }
  Kind kind() const { return kind_; }
  // Of everything, texts included. Empty when there is nothing to draw.
  const Extent &extent() const { return extent_; }
  const SymbolDrawing &drawing(std::size_t placement) const { return *drawingOfPlacement_[placement]; }
  // Shapes, ports and grounds.
  const std::vector<SceneStroke> &strokes() const { return strokes_; }
  const std::vector<SchematicText> &texts() const { return texts_; }
  // Placements whose symbol is missing.
  int missingSymbols() const { return missingSymbols_; }
  TextMeasure &measure() { return measure_; }
  // How much larger than in the database texts are, and with them the signs for ports, pins and the like: 1, or more
  // where the drawing has a coarse grid on which texts could not be read.
  double unit() const { return unit_; }

private:
  const SymbolDrawing *drawingOf(const QString &key, const QHash<QString, const SymbolModel *> &symbols);
  SymbolDrawing makeDrawing(const SymbolModel &symbol);
  SymbolDrawing makeMissing() const;

  void chooseUnit();
  double gap() const;
  // The text of a shape in a symbol with the extent `body`, which is empty for texts of the schematic itself.
  SchematicText textOfShape(const SchematicShape &shape, const QColor &colour, const Extent &body);
  void addStroke(SceneStroke stroke);
  void addText(const SchematicText &text);
  void addShape(const SchematicShape &shape);
  void addPlacement(const SchematicPlacement &placement, const SymbolDrawing &drawing);
  void addPlacementName(const SchematicPlacement &placement, const SymbolDrawing &drawing, const Extent &box);
  void addNameBlock(const SchematicPlacement &placement, const SymbolDrawing &drawing, SchematicText name);
  void addPort(const SchematicPort &port, const JunctionSides &sides);
  void addPins(const Extent &body);
  void addLabel(const SchematicLabel &label, const JunctionSides &sides);
  void findJunctions(JunctionSides *sides) const;

  const SchematicModel &model_;
  Kind kind_;
  SchematicTheme theme_;
  bool hasTexts_;
  SchematicColours colours_;
  TextMeasure measure_;
  std::map<QString, SymbolDrawing> drawings_; // by "library/device"
  std::vector<const SymbolDrawing *> drawingOfPlacement_;
  std::vector<SceneStroke> strokes_;
  std::vector<SchematicText> texts_;
  Extent extent_;
  double unit_ = 1;
  int missingSymbols_ = 0;
};

// The origin and orientation of a placement.
Placement placementOf(const SchematicPlacement &placement);

#endif
