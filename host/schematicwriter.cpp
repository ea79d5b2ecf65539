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

class ContentsWriter {
public:
  ContentsWriter(oaPlugInCore &core, const SchematicModel &model, const NetPlan &plan, const QString &where,
                 ImportReport &report)
      : core_(core), model_(model), plan_(plan), where_(where), report_(report) {}
  void write();

private:
  static constexpr int kNoNet = -1;

  void tellProblems();
  void writeNets();
  void writeNet(const NetPlan::Net &net);
  void writeItem(SchematicItemRef item);
  void writeWire(const SchematicWire &wire, const NetPlan::Wire &planned);
  void writePort(const SchematicPort &port);
  void writeShape(const SchematicShape &shape);
  void writeBox(const SchematicShape &shape);
  void writePlacement(const SchematicPlacement &placement, const std::vector<NetPlan::Connection> &connections);
  void writeProperties(const SchematicPlacement &placement);

  // The number that a net was saved under.
  int numberOf(const QString &net) const { return numbers_.value(net, kNoNet); }
  QString at(const QPoint &place) const { return QStringLiteral("at ") + model_.source.placeText(place); }
  QString at(int sourceLine, const QString &object, const QPoint &place) const {
    return model_.source.prefix(sourceLine) + object + QLatin1Char(' ') + at(place);
  }
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
  const NetPlan &plan_;
  const QString where_;
  ImportReport &report_;
  QHash<QString, int> numbers_; // of single-bit nets, by name
};

void ContentsWriter::write() {
  tellProblems();
  writeNets();
  for (const SchematicItemRef &item : drawingOrder(model_))
    writeItem(item);
  for (std::size_t i = 0; i < model_.placements.size(); ++i)
    writePlacement(model_.placements[i], plan_.connections[i]);
  for (const auto &property : model_.data) {
    attempt([&] { return QStringLiteral("property %1").arg(property.first); },
            [&] { core_.savePropString(property.first, property.second); });
  }
}

void ContentsWriter::tellProblems() {
  constexpr int kShownProblems = 100;
  const auto count = static_cast<int>(plan_.problems.size());
  for (int i = 0; i < std::min(count, kShownProblems); ++i) {
    const NetPlan::Problem &problem = plan_.problems[static_cast<std::size_t>(i)];
    if (problem.object.isEmpty())
      report_.problem(problem.what, where_);
    else
      leftOut(problem.what, problem.object);
  }
  if (count > kShownProblems) {
    report_.problem(QStringLiteral("%1 more problems of the connectivity are not shown").arg(count - kShownProblems),
                    where_);
  }
}

void ContentsWriter::writeNets() {
  for (const NetPlan::Net &net : plan_.nets)
    writeNet(net);
}

void ContentsWriter::writeNet(const NetPlan::Net &net) {
  const auto object = [&] { return QStringLiteral("net %1").arg(net.name); };
  if (net.kind == NetPlan::Kind::GlobalAlone) {
    attempt(object, [&] { core_.saveGlobalPort(net.name); });
    return;
  }
  const int number = nextNetNumber();
  attempt(object, [&] {
    core_.saveNet(number, net.name, static_cast<int>(net.kind));
    numbers_.insert(net.name, number);
  });
}

void ContentsWriter::writeItem(SchematicItemRef item) {
  const std::size_t index = item.index;
  switch (item.kind) {
  case SchematicItem::Wire:
    writeWire(model_.wires[index], plan_.wires[index]);
    break;
  case SchematicItem::Dot: {
    const QPoint &dot = model_.wireDots[index];
    attempt([&] { return QString(QStringLiteral("dot ") + at(dot)); },
            [&] { core_.saveWireDot(dot, numberOf(plan_.dots[static_cast<int>(index)])); });
    break;
  }
  case SchematicItem::Ground: {
    const QPoint &place = model_.grounds[index].position;
    attempt([&] { return QString(QStringLiteral("ground ") + at(place)); },
            [&] { core_.saveGround(numberOf(plan_.grounds[static_cast<int>(index)]), place); });
    break;
  }
  case SchematicItem::Label: {
    const SchematicLabel &label = model_.labels[index];
    attempt([&] { return at(label.sourceLine, QStringLiteral("label ") + label.text, label.origin); },
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

void ContentsWriter::writeWire(const SchematicWire &wire, const NetPlan::Wire &planned) {
  if (wire.points.size() < 2) {
    leftOut(QStringLiteral("a wire with fewer than two points is left out"),
            wire.points.isEmpty() ? QStringLiteral("wire")
                                  : at(wire.sourceLine, QStringLiteral("wire"), wire.points.first()));
    return;
  }
  const auto object = [&] { return at(wire.sourceLine, QStringLiteral("wire"), wire.points.first()); };
  attempt(object, [&] {
    // Without a name, the line itself is marked as a bus.
    if (planned.isByName || (planned.net.isEmpty() && wire.isBus)) {
      core_.saveBus(wire.points, planned.net);
      return;
    }
    if (wire.isBus)
      report_.notice(QStringLiteral("a bus on a net of one bit is written as a wire"),
                     where_ + QStringLiteral(": %1 of net %2").arg(object(), planned.net));
    core_.saveWire(wire.points, numberOf(planned.net));
  });
}

void ContentsWriter::writePort(const SchematicPort &port) {
  const QString name = plainNetName(port.name);
  if (name.isEmpty()) {
    leftOut(QStringLiteral("a port without a name is left out"),
            at(port.sourceLine, QStringLiteral("port"), port.position));
    return;
  }
  attempt([&] { return at(port.sourceLine, QStringLiteral("port ") + port.name, port.position); },
          [&] {
            if (bitsOfName(name) == 1)
              core_.savePort(numberOf(name), port.position, port.isGlobal, port.type, port.symbol);
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

void ContentsWriter::writePlacement(const SchematicPlacement &placement,
                                    const std::vector<NetPlan::Connection> &connections) {
  const DeviceName master = splitDevice(placement.device);
  const QString trans = placement.orientation.toWriterText();
  const auto object = [&] {
    return QString(model_.source.prefix(placement.sourceLine) + QStringLiteral("placement ") + placement.name);
  };
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
  writeProperties(placement);
  for (const NetPlan::Connection &connection : connections) {
    attempt([&] { return QString(object() + QStringLiteral(", terminal ") + connection.terminal); },
            [&] {
              if (connection.isByName)
                core_.saveVectorPlacementConnection(connection.terminal, connection.net);
              else
                core_.savePlacementConnection(numberOf(connection.net), connection.terminal);
            });
  }
}

void ContentsWriter::writeProperties(const SchematicPlacement &placement) {
  const auto describe = [&](const QString &property) {
    return model_.source.prefix(placement.sourceLine) +
           QStringLiteral("property %1 of placement %2").arg(property, placement.name);
  };
  const QString offsetName = QStringLiteral("labelOffset");
  for (std::size_t i = 0; i <= placement.data.size(); ++i) {
    if (placement.labelOffset && i == placement.labelOffsetPlace)
      attempt([&] { return describe(offsetName); }, [&] { core_.savePointProp(offsetName, *placement.labelOffset); });
    if (i == placement.data.size())
      return;
    const QPair<QString, QString> &property = placement.data[i];
    attempt([&] { return describe(property.first); }, [&] { core_.saveStringProp(property.first, property.second); });
  }
}

// Begins, writes and closes one design. False when it cannot be begun.
template <typename Begin>
bool writeDesign(PluginSession &session, const QString &where, const SchematicModel &model, const NetPlan &plan,
                 ImportReport &report, Begin begin) {
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
  ContentsWriter(session.core(), model, plan, where, report).write();
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
  ContentsWriter(core, model, planDrawnNets(model, symbols), where, report).write();
}

bool writeSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols,
                    ImportReport &report) {
  return writeSchematic(session, lib, cell, view, model, planDrawnNets(model, symbols), report);
}

bool writeSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const SchematicModel &model, const NetPlan &plan, ImportReport &report) {
  return writeDesign(session, cellViewName(lib, cell, view), model, plan, report,
                     [&] { session.core().saveSchematic(lib, cell, view); });
}

bool writeSymbol(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                 const SymbolModel &symbol, ImportReport &report) {
  const bool isWritten = writeSymbol(session, lib, cell, view, symbol, planDrawnNets(symbol, {}), report);
  if (isWritten && !symbol.description.isEmpty())
    session.core().writeCdfData(lib, cell, symbol.description);
  return isWritten;
}

bool writeSymbol(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                 const SymbolModel &symbol, const NetPlan &plan, ImportReport &report) {
  return writeDesign(session, cellViewName(lib, cell, view), symbol, plan, report,
                     [&] { session.core().saveSymbol(lib, cell, view); });
}
