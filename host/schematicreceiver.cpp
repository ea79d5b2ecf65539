#include "schematicreceiver.h"

#include "evaluatedtext.h"
#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "usermessage.h"

#include <utility>

namespace {

constexpr int kKeptProblems = 20;

using Connection = std::pair<const char *, const char *>; // signal and slot

template <std::size_t kCount>
void connectAll(QObject &plugin, QObject *receiver, const Connection (&connections)[kCount]) {
  for (const auto &[signal, slot] : connections) {
    if (!QObject::connect(&plugin, signal, receiver, slot, Qt::DirectConnection))
      throw HostError(QStringLiteral("the plug-in has no signal %1").arg(QLatin1String(signal + 1)));
  }
}

// Polygons arrive closed.
QPolygon withoutClosingPoint(QPolygon points) {
  if (points.size() > 1 && points.first() == points.last())
    points.removeLast();
  return points;
}

// A global port comes under the net's name as the database writes it.
QString toHostSyntax(QString name) {
  return name.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
}

// "name\nvalue", as compData() sends a property.
QPair<QString, QString> splitProperty(const QString &text) {
  const int end = text.indexOf(QLatin1Char('\n'));
  return end < 0 ? qMakePair(text, QString()) : qMakePair(text.left(end), text.mid(end + 1));
}

void tellProblems(const QStringList &problems, const QString &where) {
  for (const QString &problem : problems)
    tellUser(QStringLiteral("%1: %2").arg(where, problem));
}

} // namespace

void StreamProblems::add(const QString &problem) {
  ++count_;
  if (count_ <= kKeptProblems)
    messages_.append(problem);
  else if (count_ == kKeptProblems + 1)
    messages_.append(QStringLiteral("more problems of this kind are not shown"));
}

SchematicReceiver::SchematicReceiver(QObject &plugin, SchematicModel &model) : model_(model) {
  const Connection connections[] = {
      {SIGNAL(addCellNumData(int, QString)), SLOT(addCellNumData(int, QString))},
      {SIGNAL(addPlacement(QString, QString, QPoint, QString)), SLOT(addPlacement(QString, QString, QPoint, QString))},
      {SIGNAL(setDataString(QString, QString)), SLOT(setDataString(QString, QString))},
      {SIGNAL(setDataPoint(int, QPoint)), SLOT(setDataPoint(int, QPoint))},
      {SIGNAL(upgradeToVectorPlacement(int, int)), SLOT(upgradeToVectorPlacement(int, int))},
      {SIGNAL(setVectorPlacementConnection(QString, QString)), SLOT(setVectorPlacementConnection(QString, QString))},
      {SIGNAL(addWire(QPolygon)), SLOT(addWire(QPolygon))},
      {SIGNAL(addBus(QPolygon)), SLOT(addBus(QPolygon))},
      {SIGNAL(addWireDot(QPoint)), SLOT(addWireDot(QPoint))},
      {SIGNAL(addGround(QPoint)), SLOT(addGround(QPoint))},
      {SIGNAL(addWireLabel(QPoint, QString, QPoint)), SLOT(addWireLabel(QPoint, QString, QPoint))},
      {SIGNAL(addPort(QPoint, QString)), SLOT(addPort(QPoint, QString))},
      {SIGNAL(setGlobal(bool)), SLOT(setGlobal(bool))},
      {SIGNAL(addRect(QPoint, QPoint, QString)), SLOT(addRect(QPoint, QPoint, QString))},
      {SIGNAL(addCircle(QPoint, QPoint, QString)), SLOT(addCircle(QPoint, QPoint, QString))},
      {SIGNAL(addPolygon(QPolygon, QString)), SLOT(addPolygon(QPolygon, QString))},
      {SIGNAL(addPolyline(QPolygon, QString)), SLOT(addPolyline(QPolygon, QString))},
      {SIGNAL(addArc(QPolygon, QString)), SLOT(addArc(QPolygon, QString))},
      {SIGNAL(addText(QPoint, QString, QString, int)), SLOT(addText(QPoint, QString, QString, int))},
  };
  connectAll(plugin, this, connections);
}

void SchematicReceiver::addCellNumData(int, const QString &) { hasOpened_ = true; }

void SchematicReceiver::addPlacement(const QString &device, const QString &library, const QPoint &origin,
                                     const QString &trans) {
  SchematicPlacement placement;
  // A plain library name means a component of the host, which is kept in a view of its own.
  const QString suffix = QStringLiteral(".oa");
  const bool isComponent = !library.endsWith(suffix);
  placement.library = isComponent ? library : library.left(library.size() - suffix.size());
  placement.device = isComponent ? QStringLiteral("TarnwickdaleComponent@") + device : device;
  placement.origin = origin;
  const std::optional<Orientation> orientation = Orientation::fromSignalText(trans);
  if (!orientation) {
    problems_.add(QStringLiteral("the placement of %1 at (%2, %3): orientation \"%4\" is not known, taken as unrotated")
                      .arg(device)
                      .arg(origin.x())
                      .arg(origin.y())
                      .arg(trans));
  }
  placement.orientation = orientation.value_or(Orientation());
  model_.placements.push_back(placement);
  target_ = Target::Placement;
  isNamed_ = false;
  isOffsetBehindName_ = false;
}

void SchematicReceiver::setDataString(const QString &key, const QString &value) {
  if (target_ == Target::Port) {
    SchematicPort &port = model_.ports.back();
    if (key == QLatin1String("type"))
      port.type = value;
    else if (key == QLatin1String("symbol"))
      port.symbol = value;
    else
      problems_.add(QStringLiteral("port %1: \"%2\" is no data of a port").arg(port.name, key));
    return;
  }
  SchematicPlacement *placement = currentPlacement("setDataString");
  if (placement == nullptr)
    return;
  if (key != QLatin1String("devicename")) {
    placement->data.push_back(qMakePair(key, value));
    return;
  }
  // The name comes after all properties; what came earlier under this key was one of them.
  if (isNamed_) {
    placement->data.insert(placement->data.begin() + static_cast<std::ptrdiff_t>(namePlace_),
                           qMakePair(key, placement->name));
    if (isOffsetBehindName_)
      ++placement->labelOffsetPlace;
  }
  placement->name = value;
  isNamed_ = true;
  namePlace_ = placement->data.size();
  isOffsetBehindName_ = false;
}

void SchematicReceiver::setDataPoint(int type, const QPoint &point) {
  SchematicPlacement *placement = currentPlacement("setDataPoint");
  constexpr int kLabelOffset = 1;
  if (placement != nullptr && type == kLabelOffset) {
    placement->labelOffset = point;
    placement->labelOffsetPlace = placement->data.size();
    isOffsetBehindName_ = isNamed_;
  } else if (placement != nullptr) {
    problems_.add(QStringLiteral("setDataPoint with the unknown type %1").arg(type));
  }
}

void SchematicReceiver::upgradeToVectorPlacement(int start, int stop) {
  if (SchematicPlacement *placement = currentPlacement("upgradeToVectorPlacement")) {
    placement->isVector = true;
    placement->start = start;
    placement->stop = stop;
  }
}

void SchematicReceiver::setVectorPlacementConnection(const QString &port, const QString &net) {
  if (SchematicPlacement *placement = currentPlacement("setVectorPlacementConnection"))
    placement->connections.push_back(qMakePair(port, net));
}

void SchematicReceiver::addWire(const QPolygon &points) {
  model_.wires.push_back({points, false});
  addItem(SchematicItem::Wire, model_.wires.size());
}

void SchematicReceiver::addBus(const QPolygon &points) {
  model_.wires.push_back({points, true});
  addItem(SchematicItem::Wire, model_.wires.size());
}

void SchematicReceiver::addWireDot(const QPoint &centre) {
  model_.wireDots.push_back(centre);
  addItem(SchematicItem::Dot, model_.wireDots.size());
}

void SchematicReceiver::addGround(const QPoint &position) {
  model_.grounds.push_back({position});
  addItem(SchematicItem::Ground, model_.grounds.size());
}

void SchematicReceiver::addWireLabel(const QPoint &origin, const QString &name, const QPoint &offset) {
  model_.labels.push_back({name, origin, offset});
  addItem(SchematicItem::Label, model_.labels.size());
}

void SchematicReceiver::addPort(const QPoint &position, const QString &name) {
  SchematicPort port;
  port.name = name;
  port.position = position;
  model_.ports.push_back(port);
  addItem(SchematicItem::Port, model_.ports.size());
  target_ = Target::Port;
}

void SchematicReceiver::setGlobal(bool isGlobal) {
  if (target_ != Target::Port) {
    problems_.add(QStringLiteral("setGlobal without a port"));
    return;
  }
  SchematicPort &port = model_.ports.back();
  port.isGlobal = isGlobal;
  if (isGlobal)
    port.name = toHostSyntax(port.name);
}

void SchematicReceiver::addRect(const QPoint &corner, const QPoint &opposite, const QString &colour) {
  addShape(SchematicShape::Kind::Rect, QPolygon(QVector<QPoint>{corner, opposite}), colour);
}

void SchematicReceiver::addCircle(const QPoint &corner, const QPoint &opposite, const QString &colour) {
  addShape(SchematicShape::Kind::Circle, QPolygon(QVector<QPoint>{corner, opposite}), colour);
}

void SchematicReceiver::addPolygon(const QPolygon &points, const QString &colour) {
  addShape(SchematicShape::Kind::Polygon, withoutClosingPoint(points), colour);
}

void SchematicReceiver::addPolyline(const QPolygon &points, const QString &colour) {
  addShape(SchematicShape::Kind::Polyline, points, colour);
}

void SchematicReceiver::addArc(const QPolygon &points, const QString &colour) {
  addShape(SchematicShape::Kind::Arc, points, colour);
}

void SchematicReceiver::addText(const QPoint &origin, const QString &colour, const QString &text, int rotation) {
  // The colour that is sent where there is none.
  const bool hasColour = colour != QLatin1String("deviceColor");
  const bool isEvaluated = !hasColour && rotation == 0 && isEvaluatedText(text);
  addShape(isEvaluated ? SchematicShape::Kind::EvalText : SchematicShape::Kind::Text, QPolygon(QVector<QPoint>{origin}),
           colour);
  model_.shapes.back().text = text;
  model_.shapes.back().rotation = rotation;
}

SchematicPlacement *SchematicReceiver::currentPlacement(const char *signal) {
  if (target_ == Target::Placement)
    return &model_.placements.back();
  problems_.add(QStringLiteral("%1 without a placement").arg(QLatin1String(signal)));
  return nullptr;
}

// Notes the last of `count` items of a kind.
void SchematicReceiver::addItem(SchematicItem kind, std::size_t count) {
  model_.order.push_back({kind, static_cast<std::uint32_t>(count - 1)});
  target_ = Target::None;
}

void SchematicReceiver::addShape(SchematicShape::Kind kind, const QPolygon &points, const QString &colour) {
  SchematicShape shape{kind, points, colour, QString()};
  model_.shapes.push_back(shape);
  addItem(SchematicItem::Shape, model_.shapes.size());
}

SymbolReceiver::SymbolReceiver(QObject &plugin, SymbolModel &symbol) : symbol_(symbol) {
  const Connection connections[] = {
      {SIGNAL(compPolygon(QPolygon, QString)), SLOT(compPolygon(QPolygon, QString))},
      {SIGNAL(compPolyline(QPolygon, QString)), SLOT(compPolyline(QPolygon, QString))},
      {SIGNAL(compPort(QPoint, QString)), SLOT(compPort(QPoint, QString))},
      {SIGNAL(compSetGlobal(bool)), SLOT(compSetGlobal(bool))},
      {SIGNAL(compText(QPoint, QString, QString)), SLOT(compText(QPoint, QString, QString))},
      {SIGNAL(compCircle(QPoint, QPoint, QString)), SLOT(compCircle(QPoint, QPoint, QString))},
      {SIGNAL(compRect(QPoint, QPoint, QString)), SLOT(compRect(QPoint, QPoint, QString))},
      {SIGNAL(compOffset(QPoint)), SLOT(compOffset(QPoint))},
      {SIGNAL(compData(QString, int)), SLOT(compData(QString, int))},
  };
  connectAll(plugin, this, connections);
}

void SymbolReceiver::compPolygon(const QPolygon &points, const QString &colour) {
  addShape(SchematicShape::Kind::Polygon, withoutClosingPoint(points), colour);
}

void SymbolReceiver::compPolyline(const QPolygon &points, const QString &colour) {
  addShape(SchematicShape::Kind::Polyline, points, colour);
}

void SymbolReceiver::compPort(const QPoint &position, const QString &name) {
  hasReceived_ = true;
  SchematicPort port;
  port.name = name;
  port.position = position;
  symbol_.order.push_back({SchematicItem::Port, static_cast<std::uint32_t>(symbol_.ports.size())});
  symbol_.ports.push_back(port);
}

void SymbolReceiver::compSetGlobal(bool isGlobal) {
  if (symbol_.ports.empty()) {
    problems_.add(QStringLiteral("compSetGlobal without a port"));
    return;
  }
  SchematicPort &port = symbol_.ports.back();
  port.isGlobal = isGlobal;
  if (isGlobal)
    port.name = toHostSyntax(port.name);
}

void SymbolReceiver::compText(const QPoint &origin, const QString &colour, const QString &text) {
  addShape(SchematicShape::Kind::Text, QPolygon(QVector<QPoint>{origin}), colour);
  symbol_.shapes.back().text = text;
}

void SymbolReceiver::compCircle(const QPoint &corner, const QPoint &opposite, const QString &colour) {
  addShape(SchematicShape::Kind::Circle, QPolygon(QVector<QPoint>{corner, opposite}), colour);
}

void SymbolReceiver::compRect(const QPoint &corner, const QPoint &opposite, const QString &colour) {
  addShape(SchematicShape::Kind::Rect, QPolygon(QVector<QPoint>{corner, opposite}), colour);
}

void SymbolReceiver::compOffset(const QPoint &offset) {
  hasReceived_ = true;
  symbol_.offset = offset;
}

void SymbolReceiver::compData(const QString &data, int type) {
  hasReceived_ = true;
  switch (type) {
  case ComponentParameterText:
    symbol_.parameters = data;
    break;
  case ComponentCdfData:
    symbol_.description = data;
    break;
  case ComponentLibraryProperty:
    symbol_.libraryData.push_back(splitProperty(data));
    break;
  case ComponentCellProperty:
    symbol_.cellData.push_back(splitProperty(data));
    break;
  case ComponentDesignProperty:
    symbol_.data.push_back(splitProperty(data));
    break;
  default:
    problems_.add(QStringLiteral("compData with the unknown type %1").arg(type));
  }
}

void SymbolReceiver::addShape(SchematicShape::Kind kind, const QPolygon &points, const QString &colour) {
  hasReceived_ = true;
  symbol_.order.push_back({SchematicItem::Shape, static_cast<std::uint32_t>(symbol_.shapes.size())});
  SchematicShape shape{kind, points, colour, QString()};
  symbol_.shapes.push_back(shape);
}

DesignPropertyReceiver::DesignPropertyReceiver(QObject &plugin, DesignProperties &properties)
    : properties_(properties) {
  const Connection connections[] = {{SIGNAL(compData(QString, int)), SLOT(compData(QString, int))}};
  connectAll(plugin, this, connections);
}

void DesignPropertyReceiver::compData(const QString &data, int type) {
  if (type == ComponentDesignProperty)
    properties_.push_back(splitProperty(data));
}

void openSchematicView(PluginSession &session, const QString &lib, const QString &cell, const QString &view) {
  try {
    session.core().openSchematic(lib, cell, view, QString());
  } catch (const QString &message) {
    session.synchronise();
    throw HostError(QStringLiteral("%1: %2").arg(cellViewName(lib, cell, view), message));
  }
}

SchematicModel readSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view) {
  session.requireView(lib, cell, view);
  SchematicModel model;
  SchematicReceiver receiver(session.object(), model);
  openSchematicView(session, lib, cell, view);
  session.synchronise();
  tellProblems(receiver.problems(), cellViewName(lib, cell, view));
  if (!receiver.hasOpened())
    throw HostError(QStringLiteral("%1 could not be read as a schematic").arg(cellViewName(lib, cell, view)));
  return model;
}

DesignProperties readDesignProperties(PluginSession &session, const QString &lib, const QString &cell,
                                      const QString &view) {
  DesignProperties properties;
  DesignPropertyReceiver receiver(session.object(), properties);
  session.core().loadComponent(lib, joinDevice({cell, view}));
  session.synchronise();
  return properties;
}

SymbolModel readComponent(PluginSession &session, const QString &lib, const QString &device) {
  session.requireLibrary(lib);
  requireComponent(session, lib, device);
  SymbolModel symbol;
  SymbolReceiver receiver(session.object(), symbol);
  session.core().loadComponent(lib, device);
  session.synchronise();
  tellProblems(receiver.problems(), symbolKey(lib, device));
  if (!receiver.hasReceived())
    throw HostError(QStringLiteral("component %1 of library %2 could not be read").arg(device, lib));
  return symbol;
}

void requireComponent(PluginSession &session, const QString &lib, const QString &device) {
  if (session.core().existComponent(lib, device))
    return;
  const DeviceName name = splitDevice(device);
  throw HostError(
      QStringLiteral("library %1 has no component %2: cell %3 has no view %4").arg(lib, device, name.cell, name.view));
}

void SymbolCache::load(const SchematicModel &model) {
  for (const SchematicPlacement &placement : model.placements)
    symbol(placement.library, placement.device);
}

const SymbolModel *SymbolCache::symbol(const QString &library, const QString &device) {
  const QString key = symbolKey(library, device);
  const auto known = symbols_.constFind(key);
  if (known != symbols_.constEnd())
    return *known;
  const SymbolModel *found = nullptr;
  try {
    owned_.push_back(std::make_unique<SymbolModel>(readComponent(session_, library, device)));
    found = owned_.back().get();
  } catch (const HostError &error) {
    tellUser(QStringLiteral("the placed symbol %1 is missing: %2").arg(key, error.message()));
    missing_.append(key);
  }
  symbols_.insert(key, found);
  return found;
}
