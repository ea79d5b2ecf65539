#ifndef SCHEMATICMODEL_H
#define SCHEMATICMODEL_H

#include "orientation.h"

#include <QPair>
#include <QPoint>
#include <QPolygon>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// A schematic or symbol in memory, as a host sees it: filled from the signals of openSchematic() or loadComponent(), or
// from a file that is imported, and read by drawing, copying and import. Coordinates are database units, y upwards.
// Names are in the host's syntax: A<3>, D<0:7>, CLK,D<0:3>, 4*EN.
//
// Connectivity is not stored: wires, labels, ports and the terminals of placed symbols belong together by place and by
// name; see schematicconnectivity.h.

// What is drawn without a meaning in connectivity.
struct SchematicShape {
  enum class Kind {
    Rect,     // points: two opposite corners
    Circle,   // points: two opposite corners of the ellipse's box
    Polygon,  // points: the first one is not repeated at the end
    Polyline, // points
    Arc,      // points: centre, first point, last point; anticlockwise from the first to the last
    Text,     // points: the origin, which is the lower left of the text
    EvalText  // the same; the text is an expression such as @name
  };
  Kind kind;
  QPolygon points;
  QString colour;
  QString text;
  int rotation = 0; // of a text, in degrees: 0, 90, 180 or 270
};

// Where a model was imported from, for messages. Objects have the number of their line there, or 0.
struct SchematicSource {
  QString file;
  double scale = 1; // database units for one of the file's

  // "FILE:LINE: ", or nothing.
  QString prefix(int line) const;
  // "(x, y)" as the file has it, where y runs downwards; without a file in database units.
  QString placeText(const QPoint &place) const;
};

struct SchematicWire {
  QPolygon points;
  bool isBus = false;
  int sourceLine = 0;
};

struct SchematicLabel {
  QString text;
  QPoint origin;
  QPoint offset;
  int sourceLine = 0;
};

struct SchematicPort {
  QString name;
  QPoint position;
  QString type;   // "input", "output", "input output" or empty
  QString symbol; // what the host draws for it; may be empty
  bool isGlobal = false;
  int sourceLine = 0;
};

struct SchematicPlacement {
  QString library; // plain name, without the ".oa" of the signal
  QString device;  // "cell", or "view@cell" for a view that is not called "symbol"
  QString name;    // without the range
  QPoint origin;
  Orientation orientation; // of the placement, whatever the sense of the text it was read from
  // An iterated instance has the range start..stop.
  bool isVector = false;
  int start = 0;
  int stop = 0;
  std::optional<QPoint> labelOffset;
  std::size_t labelOffsetPlace = 0; // how many of `data` come before it
  // Properties: name and value, in order.
  std::vector<QPair<QString, QString>> data;
  // Terminal and net of what is connected by name: everything of an iterated instance, and terminals of several bits.
  std::vector<QPair<QString, QString>> connections;
  int sourceLine = 0;

  // Number of instances: 1 unless iterated.
  int bits() const;
};

// A ground symbol.
struct SchematicGround {
  QPoint position;
};

enum class SchematicItem : std::uint8_t { Wire, Dot, Ground, Label, Port, Shape };

struct SchematicItemRef {
  SchematicItem kind;
  std::uint32_t index; // into the list of that kind
};

struct SchematicModel {
  std::vector<SchematicPlacement> placements;
  std::vector<SchematicWire> wires;
  std::vector<QPoint> wireDots;
  std::vector<SchematicGround> grounds;
  std::vector<SchematicLabel> labels;
  std::vector<SchematicPort> ports;
  std::vector<SchematicShape> shapes;
  // The order in which everything but the placements was drawn, when it is known: empty, or each entry of the lists
  // above once, the entries of one kind in their order.
  std::vector<SchematicItemRef> order;
  // Properties of the design, in order.
  std::vector<QPair<QString, QString>> data;
  // Empty unless it was imported.
  SchematicSource source;
};

// Everything but the placements, each once: in the model's own order when that is complete, else kind by kind.
std::vector<SchematicItemRef> drawingOrder(const SchematicModel &model);

// The cell and view name of a device: "nand2" has the view "symbol", "small@nand2" the view "small".
struct DeviceName {
  QString cell;
  QString view;
};
DeviceName splitDevice(const QString &device);
QString joinDevice(const DeviceName &name);

// How tables of symbols name one: "library/device".
inline QString symbolKey(const QString &library, const QString &device) { return library + QLatin1Char('/') + device; }

// A symbol is a schematic of shapes and ports.
struct SymbolModel : SchematicModel {
  QPoint offset; // of the symbol's origin, see compOffset()
  // Component description, parameter text, and properties of the cell and the library.
  QString description;
  QString parameters;
  std::vector<QPair<QString, QString>> cellData;
  std::vector<QPair<QString, QString>> libraryData;
};

#endif
