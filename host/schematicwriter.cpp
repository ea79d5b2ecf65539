#include "schematicwriter.h"

#include "busname.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "usermessage.h"

#include <QSet>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

// saveSymbol() keeps the net numbers of earlier designs, and a number that means a net of a closed design must not be
// used. So no number is used twice.
int nextNetNumber() {
  static std::atomic<int> next{0};
  return next++;
}

// Points of an arc from its first to its last point, anticlockwise about the centre.
QPolygon arcPoints(const QPolygon &arc) {
  constexpr double kFullTurn = 6.283185307179586;
  constexpr double kLongestStep = kFullTurn / 64;
  const QPoint centre = arc.at(0);
  const QPoint first = arc.at(1) - centre;
  const QPoint last = arc.at(2) - centre;
  const double start = std::atan2(first.y(), first.x());
  double sweep = std::atan2(last.y(), last.x()) - start;
  if (sweep <= 0)
    sweep += kFullTurn;
  const double firstRadius = std::hypot(first.x(), first.y());
  const double lastRadius = std::hypot(last.x(), last.y());
  const int steps = std::max(1, static_cast<int>(std::ceil(sweep / kLongestStep)));
  QPolygon points;
  points.append(arc.at(1));
  for (int i = 1; i < steps; ++i) {
    const double part = double(i) / steps;
    const double radius = firstRadius + (lastRadius - firstRadius) * part;
    const double angle = start + sweep * part;
    points.append(centre + QPoint(qRound(radius * std::cos(angle)), qRound(radius * std::sin(angle))));
  }
  points.append(arc.at(2));
  return points;
}

QString at(const QPoint &place) { return QStringLiteral("at (%1, %2)").arg(place.x()).arg(place.y()); }

class ContentsWriter {
public:
  ContentsWriter(oaPlugInCore &core, const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols,
                 const QString &where, ImportReport &report)
      : core_(core), model_(model), symbols_(symbols), connectivity_(findConnectivity(model, symbols)), where_(where),
        report_(report) {}
  void write();

private:
  static constexpr int kNoNet = -1;

  void tellProblems();
  void writeNets();
  void writeNet(const QString &name, const QSet<QString> &portNames, const QSet<QString> &globalNames);
  void writeItem(SchematicItemRef item);
  void writeWire(const SchematicWire &wire, int net);
  void writePort(const SchematicPort &port);
  void writeShape(const SchematicShape &shape);
  void writeBox(const SchematicShape &shape);
  void writePlacement(const SchematicPlacement &placement, int firstTerminal, int endTerminal);
  void writeTerminal(const SchematicPlacement &placement, const PlacedTerminal &terminal, int net);
  void writeUnplacedConnections(const SchematicPlacement &placement, const QSet<QString> &written);

  // The number that a net of the connectivity was saved under.
  int numberOfNet(int net) const { return net < 0 ? kNoNet : numbers_.value(nameOfNet(net), kNoNet); }
  const QString &nameOfNet(int net) const { return connectivity_.nets[static_cast<std::size_t>(net)].name; }
  int bitsOfNet(int net) const { return connectivity_.nets[static_cast<std::size_t>(net)].bits; }
  void leftOut(const QString &what, const QString &object) {
    report_.problem(what, where_ + QStringLiteral(": ") + object);
  }
  // Some operations let the database's refusals pass through; the rest of the design is written all the same.
  // `describe` gives the object's text for the report.
  template <typename Describe, typename Operation> void attempt(Describe describe, Operation operation) {
    try {
      operation();
    } catch (const QString &message) {
      leftOut(message, describe());
    } catch (...) {
      leftOut(QStringLiteral("an object was refused by the database"), describe());
    }
  }

  oaPlugInCore &core_;
  const SchematicModel &model_;
  const QHash<QString, const SymbolModel *> &symbols_;
  const SchematicConnectivity connectivity_;
  const QString where_;
  ImportReport &report_;
  QHash<QString, int> numbers_; // of single-bit nets, by name
};

void ContentsWriter::write() {
  tellProblems();
  writeNets();
  for (const SchematicItemRef &item : drawingOrder(model_))
    writeItem(item);
  // The terminals are in the order of their placements.
  int terminal = 0;
  const auto terminalCount = static_cast<int>(connectivity_.terminals.size());
  for (std::size_t i = 0; i < model_.placements.size(); ++i) {
    const int first = terminal;
    while (terminal < terminalCount &&
           connectivity_.terminals[static_cast<std::size_t>(terminal)].placement == static_cast<int>(i))
      ++terminal;
    writePlacement(model_.placements[i], first, terminal);
  }
  for (const auto &property : model_.data) {
    attempt([&] { return QStringLiteral("property %1").arg(property.first); },
            [&] { core_.savePropString(property.first, property.second); });
  }
}

void ContentsWriter::tellProblems() {
  constexpr int kShownProblems = 100;
  const QStringList &problems = connectivity_.problems;
  for (const QString &problem : problems.mid(0, kShownProblems))
    report_.problem(problem, where_);
  if (problems.size() > kShownProblems) {
    report_.problem(
        QStringLiteral("%1 more problems of the connectivity are not shown").arg(problems.size() - kShownProblems),
        where_);
  }
}

void ContentsWriter::writeNets() {
  QSet<QString> portNames;
  QSet<QString> globalNames;
  for (const SchematicPort &port : model_.ports)
    (port.isGlobal ? globalNames : portNames).insert(plainNetName(port.name));
  for (const SchematicNet &net : connectivity_.nets) {
    if (net.isGlobal)
      globalNames.insert(net.name);
  }
  for (const SchematicNet &net : connectivity_.nets) {
    if (net.bits == 1)
      writeNet(net.name, portNames, globalNames);
  }
  // A port of another name than its net has (told by the connectivity) keeps its own.
  for (const SchematicPort &port : model_.ports) {
    const QString name = plainNetName(port.name);
    if (!name.isEmpty() && bitsOfName(name) == 1 && !numbers_.contains(name))
      writeNet(name, portNames, globalNames);
  }
}

void ContentsWriter::writeNet(const QString &name, const QSet<QString> &portNames, const QSet<QString> &globalNames) {
  enum Kind { Plain = 0, WithTerminal = 1, Global = 2 };
  const Kind kind = globalNames.contains(name) ? Global : portNames.contains(name) ? WithTerminal : Plain;
  const int number = nextNetNumber();
  attempt([&] { return QStringLiteral("net %1").arg(name); },
          [&] {
            core_.saveNet(number, name, kind);
            numbers_.insert(name, number);
          });
}

void ContentsWriter::writeItem(SchematicItemRef item) {
  const std::size_t index = item.index;
  switch (item.kind) {
  case SchematicItem::Wire:
    writeWire(model_.wires[index], connectivity_.netOfWire[index]);
    break;
  case SchematicItem::Dot: {
    const QPoint &dot = model_.wireDots[index];
    attempt([&] { return QString(QStringLiteral("dot ") + at(dot)); },
            [&] { core_.saveWireDot(dot, numberOfNet(connectivity_.netOfDot[index])); });
    break;
  }
  case SchematicItem::Ground: {
    const QPoint &place = model_.grounds[index].position;
    attempt([&] { return QString(QStringLiteral("ground ") + at(place)); },
            [&] { core_.saveGround(numberOfNet(connectivity_.netOfGround[index]), place); });
    break;
  }
  case SchematicItem::Label: {
    const SchematicLabel &label = model_.labels[index];
    attempt([&] { return QString(QStringLiteral("label %1 ").arg(label.text) + at(label.origin)); },
            [&] { core_.saveWireLabel(label.text, label.origin, label.offset); });
    break;
  }
  case SchematicItem::Port:
    writePort(model_.ports[index]);
    break;
  case SchematicItem::Shape:
    writeShape(model_.shapes[index]);
    break;
  }
}

void ContentsWriter::writeWire(const SchematicWire &wire, int net) {
  if (wire.points.size() < 2) {
    leftOut(QStringLiteral("a wire with fewer than two points is left out"),
            wire.points.isEmpty() ? QStringLiteral("wire") : QStringLiteral("wire ") + at(wire.points.first()));
    return;
  }
  const auto object = [&] { return QString(QStringLiteral("wire ") + at(wire.points.first())); };
  attempt(object, [&] {
    if (bitsOfNet(net) == 1) {
      if (wire.isBus)
        report_.notice(QStringLiteral("a bus on a net of one bit is written as a wire"),
                       where_ + QStringLiteral(": %1 of net %2").arg(object(), nameOfNet(net)));
      core_.saveWire(wire.points, numberOfNet(net));
    } else {
      core_.saveBus(wire.points, nameOfNet(net));
    }
  });
}

void ContentsWriter::writePort(const SchematicPort &port) {
  const QString name = plainNetName(port.name);
  if (name.isEmpty()) {
    leftOut(QStringLiteral("a port without a name is left out"), QStringLiteral("port ") + at(port.position));
    return;
  }
  attempt([&] { return QString(QStringLiteral("port %1 ").arg(port.name) + at(port.position)); },
          [&] {
            if (bitsOfName(name) == 1)
              core_.savePort(numbers_.value(name, kNoNet), port.position, port.isGlobal, port.type, port.symbol);
            else
              core_.saveBusport(name, port.position, port.isGlobal, port.type, port.symbol);
          });
}

void ContentsWriter::writeShape(const SchematicShape &shape) {
  using Kind = SchematicShape::Kind;
  const bool isText = shape.kind == Kind::Text || shape.kind == Kind::EvalText;
  const int needed = isText ? 1 : shape.kind == Kind::Arc || shape.kind == Kind::Polygon ? 3 : 2;
  const auto object = [&] {
    if (isText)
      return QStringLiteral("text \"%1\"").arg(shape.text);
    return QStringLiteral("shape %1").arg(shape.points.isEmpty() ? QString() : at(shape.points.first()));
  };
  if (shape.points.size() < needed) {
    leftOut(QStringLiteral("a shape with too few points is left out"), object());
    return;
  }
  attempt(object, [&] {
    switch (shape.kind) {
    case Kind::Rect:
    case Kind::Circle:
      writeBox(shape);
      break;
    case Kind::Polygon:
      core_.savePolygon(shape.points, shape.colour);
      break;
    case Kind::Polyline:
      core_.savePolyline(shape.points, shape.colour);
      break;
    case Kind::Arc:
      report_.notice(QStringLiteral("an arc is written as a line of many points"),
                     where_ + QStringLiteral(": arc about ") + at(shape.points.first()).mid(3));
      core_.savePolyline(arcPoints(shape.points), shape.colour);
      break;
    case Kind::Text:
      core_.saveText(shape.text, shape.points.first(), shape.colour, shape.rotation);
      break;
    case Kind::EvalText:
      core_.saveEvalText(shape.text, shape.points.first());
      break;
    }
  });
}

// The database refuses boxes that are flat or upside down.
void ContentsWriter::writeBox(const SchematicShape &shape) {
  const auto [left, right] = std::minmax({shape.points.at(0).x(), shape.points.at(1).x()});
  const auto [bottom, top] = std::minmax({shape.points.at(0).y(), shape.points.at(1).y()});
  if (left == right || bottom == top)
    core_.savePolyline(QPolygon(QVector<QPoint>{QPoint(left, bottom), QPoint(right, top)}), shape.colour);
  else if (shape.kind == SchematicShape::Kind::Rect)
    core_.saveRect(left, bottom, right, top, shape.colour);
  else
    core_.saveCircle(left, bottom, right, top, shape.colour);
}

void ContentsWriter::writePlacement(const SchematicPlacement &placement, int firstTerminal, int endTerminal) {
  const DeviceName master = splitDevice(placement.device);
  const QString trans = placement.orientation.toWriterText();
  const auto object = [&] { return QStringLiteral("placement %1").arg(placement.name); };
  bool isPlaced = false;
  attempt(object, [&] {
    if (placement.isVector)
      core_.saveVectorPlacement(placement.library, master.cell, master.view, placement.name, placement.origin, trans,
                                placement.start, placement.stop);
    else
      core_.savePlacement(placement.library, master.cell, master.view, placement.name, placement.origin, trans);
    isPlaced = true;
  });
  // Properties would go to the placement before this one.
  if (!isPlaced)
    return;
  attempt(object, [&] {
    if (placement.labelOffset)
      core_.savePointProp(QStringLiteral("labelOffset"), *placement.labelOffset);
  });
  for (const auto &property : placement.data)
    attempt(object, [&] { core_.saveStringProp(property.first, property.second); });
  QSet<QString> written;
  for (int i = firstTerminal; i < endTerminal; ++i) {
    const PlacedTerminal &terminal = connectivity_.terminals[static_cast<std::size_t>(i)];
    // A terminal with several places is connected once.
    if (written.contains(terminal.terminal))
      continue;
    written.insert(terminal.terminal);
    const int net = connectivity_.netOfTerminal[static_cast<std::size_t>(i)];
    if (net >= 0)
      attempt([&] { return QString(object() + QStringLiteral(", terminal ") + terminal.terminal); },
              [&] { writeTerminal(placement, terminal, net); });
  }
  writeUnplacedConnections(placement, written);
}

void ContentsWriter::writeTerminal(const SchematicPlacement &placement, const PlacedTerminal &terminal, int net) {
  const int terminalBits = bitsOfName(terminal.terminal);
  const int placementBits = placement.bits();
  // What does not fit is told by the connectivity.
  if (!isFittingWidth(bitsOfNet(net), terminalBits, placementBits))
    return;
  if (terminalBits == 1 && !placement.isVector) {
    core_.savePlacementConnection(numberOfNet(net), terminal.terminal);
    return;
  }
  // The database wants a bit of the net for each bit of the terminal in each instance.
  const bool isShared = bitsOfNet(net) == terminalBits;
  constexpr int kMostBits = 1 << 20;
  if (isShared && qint64(terminalBits) * placementBits > kMostBits) {
    leftOut(QStringLiteral("a connection of more than %1 bits is left out").arg(kMostBits),
            QStringLiteral("terminal %1 of placement %2").arg(terminal.terminal, placement.name));
    return;
  }
  core_.saveVectorPlacementConnection(terminal.terminal,
                                      isShared ? repeatedName(nameOfNet(net), placementBits) : nameOfNet(net));
}

// Connections of terminals that the symbol does not have, or whose symbol is missing, are made by name.
void ContentsWriter::writeUnplacedConnections(const SchematicPlacement &placement, const QSet<QString> &written) {
  for (const auto &connection : placement.connections) {
    const QString &terminal = connection.first;
    const QString &net = connection.second;
    if (written.contains(terminal))
      continue;
    const auto object = [&] { return QStringLiteral("terminal %1 of placement %2").arg(terminal, placement.name); };
    if (std::any_of(terminal.begin(), terminal.end(), [](QChar c) { return QStringLiteral(",:*").contains(c); })) {
      leftOut(QStringLiteral("a connection of several bits is left out, since the symbol lacks the terminal"),
              object());
      continue;
    }
    attempt(object, [&] { core_.saveVectorPlacementConnection(terminal, net); });
  }
}

// Begins, writes and closes one design. False when it cannot be begun.
template <typename Begin>
bool writeDesign(PluginSession &session, const QString &where, const SchematicModel &model,
                 const QHash<QString, const SymbolModel *> &symbols, ImportReport &report, Begin begin) {
  session.synchronise();
  const int errorsBefore = session.errorCount();
  bool isBegun = true;
  QString reason;
  try {
    begin();
  } catch (const QString &message) {
    isBegun = false;
    reason = QStringLiteral(": ") + message;
  } catch (...) {
    isBegun = false;
  }
  session.synchronise();
  if (!isBegun || session.errorCount() > errorsBefore) {
    report.problem(QStringLiteral("a design could not be opened for writing and is left out%1").arg(reason), where);
    return false;
  }
  writeSchematicContents(session.core(), model, symbols, where, report);
  session.core().saveClose();
  session.synchronise();
  const int errors = session.errorCount() - errorsBefore;
  if (errors > 0) {
    tellUser(QStringLiteral("%1: %2 while it was written")
                 .arg(where, counted(static_cast<quint64>(errors), QStringLiteral("error"))));
  }
  return true;
}

} // namespace

void writeSchematicContents(oaPlugInCore &core, const SchematicModel &model,
                            const QHash<QString, const SymbolModel *> &symbols, const QString &where,
                            ImportReport &report) {
  ContentsWriter(core, model, symbols, where, report).write();
}

bool writeSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols,
                    ImportReport &report) {
  return writeDesign(session, cellViewName(lib, cell, view), model, symbols, report,
                     [&] { session.core().saveSchematic(lib, cell, view); });
}

bool writeSymbol(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                 const SymbolModel &symbol, ImportReport &report) {
  const QHash<QString, const SymbolModel *> none;
  const bool isWritten = writeDesign(session, cellViewName(lib, cell, view), symbol, none, report,
                                     [&] { session.core().saveSymbol(lib, cell, view); });
  if (isWritten && !symbol.description.isEmpty())
    session.core().writeCdfData(lib, cell, symbol.description);
  return isWritten;
}
