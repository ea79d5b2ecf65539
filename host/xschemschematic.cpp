#include "xschemschematic.h"

#include "junctiondots.h"
#include "xschemreport.h"

XschemSchematic::XschemSchematic(const XschemFile &file, const QString &library, double scale, XschemSymbols &symbols,
                                 ImportReport &report)
    : file_(file), library_(library), drawing_(file, scale, report), symbols_(symbols), report_(report),
      names_(report) {
  model_.source = {file.name, scale};
}

SchematicModel XschemSchematic::build() {
  addEmbeddedSymbols();
  model_.data = xschemDesignProperties(file_, nullptr, report_);
  for (const XschemObject &object : file_.objects) {
    if (object.tag == 'N')
      addWire(object);
    else if (object.tag == 'C')
      addPlacement(object);
    else
      drawing_.addShape(object, model_);
  }
  addJunctionDots(model_);
  return std::move(model_);
}

// Only one of the placements of an embedded symbol has it, and need not be the first.
void XschemSchematic::addEmbeddedSymbols() {
  for (const XschemObject &object : file_.objects) {
    if (object.embedded)
      symbols_.addEmbedded(xschemText(object.text), *object.embedded, object.line);
  }
}

void XschemSchematic::addWire(const XschemObject &object) {
  const auto from = drawing_.point(object.numbers[0], object.numbers[1], object.line);
  const auto to = from ? drawing_.point(object.numbers[2], object.numbers[3], object.line) : std::nullopt;
  if (!to)
    return;
  if (*from == *to) {
    report_.notice(QStringLiteral("a wire without length is left out"), file_.place(object.line));
    return;
  }
  // The net's name on a wire is what xschem found last, and may be out of date: it tells a bus from a wire, no more.
  const XschemProperties properties(xschemText(object.attributes));
  static const QStringList meant = {QStringLiteral("lab"), QStringLiteral("bus")};
  tellLeftOutAttributes(properties, meant, QStringLiteral("a wire"), file_.place(object.line), report_);
  const bool isBus =
      properties.isTrue(QStringLiteral("bus")) || isXschemBusName(properties.value(QStringLiteral("lab")));
  model_.wires.push_back({QPolygon(QVector<QPoint>{*from, *to}), isBus, object.line});
}

void XschemSchematic::addPlacement(const XschemObject &object) {
  const QString place = file_.place(object.line);
  const auto origin = drawing_.point(object.numbers[0], object.numbers[1], object.line);
  if (!origin)
    return;
  const double rotation = object.numbers[2], flip = object.numbers[3];
  if (!(rotation == 0 || rotation == 1 || rotation == 2 || rotation == 3) || !(flip == 0 || flip == 1))
    report_.problem(QStringLiteral("a placement's rotation is not 0 to 3, or its flip not 0 or 1"),
                    QStringLiteral("%1, found %2 and %3").arg(place).arg(rotation).arg(flip));
  const Orientation orientation = XschemDrawing::orientation(rotation, flip);
  const XschemProperties properties(xschemText(object.attributes));
  const XschemSymbol &symbol = *symbols_.resolve(xschemText(object.text).trimmed(), file_, object.line);
  // Label symbols of other libraries need not have their pin at the origin.
  const QPoint pin = symbol.model.ports.empty() ? QPoint() : symbol.model.ports.front().position;
  switch (symbol.role) {
  case XschemRole::Device:
  case XschemRole::Unknown:
    addDevice(symbol, properties, *origin, orientation, object.line);
    break;
  case XschemRole::OpenEnd:
    report_.notice(QStringLiteral("the mark of an open end is left out"), place);
    break;
  case XschemRole::ShownLabel:
    report_.notice(QStringLiteral("a label that only shows a net's name is left out"), place);
    break;
  case XschemRole::Decoration:
    keepRemark(object, symbol, properties);
    break;
  default:
    addLabelOrPort(symbol, properties, *origin + orientation.map(pin), object.line);
  }
}

void XschemSchematic::addDevice(const XschemSymbol &symbol, const XschemProperties &properties, const QPoint &origin,
                                Orientation orientation, int line) {
  const QString place = file_.place(line);
  SchematicPlacement placement;
  placement.sourceLine = line;
  placement.library = library_;
  placement.device = xschemDeviceName(symbol.cell);
  latin1Name(symbol.cell, place, report_); // tells what the device's name lacks
  placement.origin = origin;
  placement.orientation = orientation;
  const QString nameKey = QStringLiteral("name");
  QString name = properties.value(nameKey).trimmed();
  if (name.isEmpty()) {
    name = symbol.defaults.contains(nameKey) ? symbol.defaults.value(nameKey) : QStringLiteral("x1");
    report_.notice(QStringLiteral("a placement without name gets one"), place);
  }
  names_.nameInstance(placement, name, place);
  for (const auto &property : properties.all()) {
    if (property.first == nameKey)
      continue;
    tellLostCharacters(property.second, place, report_);
    placement.data.push_back({latin1Name(property.first, place, report_), property.second});
  }
  model_.placements.push_back(std::move(placement));
}

void XschemSchematic::addLabelOrPort(const XschemSymbol &symbol, const XschemProperties &properties,
                                     const QPoint &position, int line) {
  const QString place = file_.place(line);
  const QString labelKey = QStringLiteral("lab");
  const QString text = properties.contains(labelKey) ? properties.value(labelKey) : symbol.defaults.value(labelKey);
  if (text.trimmed().isEmpty() || isTclExpression(text)) {
    report_.problem(text.isEmpty() ? QStringLiteral("a port or label without name is left out")
                                   : QStringLiteral("a name that is a program is not computed and left out"),
                    place);
    return;
  }
  const auto name = names_.netName(text, place);
  if (!name)
    return;
  static const QStringList meant = {QStringLiteral("name"), labelKey, QStringLiteral("global"),
                                    QStringLiteral("sig_type")};
  tellLeftOutAttributes(properties, meant, QStringLiteral("a port or label"), place, report_);
  const bool isGlobal = symbol.isGlobal || properties.isTrue(QStringLiteral("global"));
  if (symbol.role == XschemRole::InputPort) {
    model_.ports.push_back({*name, position, QStringLiteral("input"), QString(), false, line});
  } else if (symbol.role == XschemRole::OutputPort) {
    model_.ports.push_back({*name, position, QStringLiteral("output"), QString(), false, line});
  } else if (symbol.role == XschemRole::BidirectionalPort) {
    model_.ports.push_back({*name, position, QStringLiteral("input output"), QString(), false, line});
  } else if (symbol.role == XschemRole::Ground) {
    model_.grounds.push_back({position});
    model_.labels.push_back({*name, position, QPoint(), line});
  } else if (isGlobal) {
    model_.ports.push_back({*name, position, QString(), QString(), true, line});
  } else {
    model_.labels.push_back({*name, position, QPoint(), line});
  }
}

// What is written on a title or in a block of code becomes a property of the design: "xschem.title.l1".
void XschemSchematic::keepRemark(const XschemObject &object, const XschemSymbol &symbol,
                                 const XschemProperties &properties) {
  report_.notice(QStringLiteral("a title or block of code becomes a property of the schematic"),
                 file_.place(object.line));
  const QString text = xschemText(object.attributes).trimmed();
  if (text.isEmpty())
    return;
  tellLostCharacters(text, file_.place(object.line), report_);
  QString key = QStringLiteral("xschem.") + symbol.cell;
  const QString name = properties.value(QStringLiteral("name"));
  if (!name.isEmpty())
    key += QLatin1Char('.') + name;
  key = latin1Name(key, file_.place(object.line), report_);
  const int number = ++remarks_[key];
  model_.data.push_back({number == 1 ? key : QStringLiteral("%1.%2").arg(key).arg(number), text});
}
