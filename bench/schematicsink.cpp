#include "schematicsink.h"

#include <algorithm>

#include "benchplugin.h"

using namespace schematicworkload;

bool ReceivedSchematic::operator==(const ReceivedSchematic &other) const {
  return text() == other.text(); // which has every number
}

qint64 ReceivedSchematic::signalCount() const {
  return cellData + placements + texts + points + iterations + connections + wires + buses + dots + labels + ports +
         globals + errors;
}

QString ReceivedSchematic::text() const {
  QString text = QString("%1 cell data, %2 placements, %3 texts, %4 points, %5 iterations, %6 connections, ")
                     .arg(cellData)
                     .arg(placements)
                     .arg(texts)
                     .arg(points)
                     .arg(iterations)
                     .arg(connections);
  text += QString("%1 wires, %2 buses, %3 dots, %4 labels, %5 ports, %6 global, ")
              .arg(wires)
              .arg(buses)
              .arg(dots)
              .arg(labels)
              .arg(ports)
              .arg(globals);
  return text + QString("%1 errors, checksum %2").arg(errors).arg(checksum, 16, 16, QChar('0'));
}

void SchematicSink::connectTo(QObject *sender) {
  connect(sender, SIGNAL(reportError(QString, int, QString)), SLOT(reportError(QString, int, QString)));
  connect(sender, SIGNAL(addCellNumData(int, QString)), SLOT(addCellNumData(int, QString)));
  connect(sender, SIGNAL(addPlacement(QString, QString, QPoint, QString)),
          SLOT(addPlacement(QString, QString, QPoint, QString)));
  connect(sender, SIGNAL(setDataString(QString, QString)), SLOT(setDataString(QString, QString)));
  connect(sender, SIGNAL(setDataPoint(int, QPoint)), SLOT(setDataPoint(int, QPoint)));
  connect(sender, SIGNAL(upgradeToVectorPlacement(int, int)), SLOT(upgradeToVectorPlacement(int, int)));
  connect(sender, SIGNAL(setVectorPlacementConnection(QString, QString)),
          SLOT(setVectorPlacementConnection(QString, QString)));
  connect(sender, SIGNAL(addWire(QPolygon)), SLOT(addWire(QPolygon)));
  connect(sender, SIGNAL(addBus(QPolygon)), SLOT(addBus(QPolygon)));
  connect(sender, SIGNAL(addWireDot(QPoint)), SLOT(addWireDot(QPoint)));
  connect(sender, SIGNAL(addWireLabel(QPoint, QString, QPoint)), SLOT(addWireLabel(QPoint, QString, QPoint)));
  connect(sender, SIGNAL(addPort(QPoint, QString)), SLOT(addPort(QPoint, QString)));
  connect(sender, SIGNAL(setGlobal(bool)), SLOT(setGlobal(bool)));
}

void SchematicSink::start() {
  received_ = ReceivedSchematic();
  firstSignalMs_ = -1;
  firstObjectMs_ = -1;
  mostResidentBytes_ = 0;
  nextLook_ = 0;
  firstError_.clear();
  start_ = std::chrono::steady_clock::now();
}

double SchematicSink::elapsedMs() const {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
}

void SchematicSink::lookAtMemory() {
  const int kSignalsBetweenLooks = 4096;
  const qint64 count = received_.signalCount();
  if (count >= nextLook_) {
    nextLook_ = count + kSignalsBetweenLooks;
    mostResidentBytes_ = std::max(mostResidentBytes_, residentBytes());
  }
}

namespace {

quint64 sumOf(const QPoint &point) { return quint64(point.x()) + 3 * quint64(point.y()); }

quint64 sumOf(const QString &text) {
  return text.isEmpty() ? 1
                        : 5 * quint64(text.size()) + 31 * quint64(text.at(text.size() - 1).unicode()) +
                              37 * quint64(text.at(text.size() / 2).unicode());
}

quint64 sumOf(const QPolygon &points) {
  quint64 sum = quint64(points.size());
  for (const QPoint &point : points) {
    sum = sum * 31 + sumOf(point);
  }
  return sum;
}

} // namespace

void SchematicSink::reportError(QString message, int severity, QString detail) {
  if (received_.errors++ == 0) {
    firstError_ = QString("%1 (%2): %3").arg(message).arg(severity).arg(detail);
  }
}

void SchematicSink::addCellNumData(int key, QString value) {
  if (firstSignalMs_ < 0) {
    firstSignalMs_ = elapsedMs();
  }
  ++received_.cellData;
  received_.checksum += quint64(key) * sumOf(value);
}

void SchematicSink::addPlacement(QString device, QString library, QPoint origin, QString trans) {
  noteObject();
  received_.checksum +=
      quint64(++received_.placements) * (sumOf(device) + 3 * sumOf(library) + 7 * sumOf(origin) + 11 * sumOf(trans));
}

void SchematicSink::setDataString(QString name, QString value) {
  ++received_.texts;
  received_.checksum += carrier() * (13 * sumOf(name) + 17 * sumOf(value));
}

void SchematicSink::setDataPoint(int type, QPoint value) {
  ++received_.points;
  received_.checksum += carrier() * (quint64(type) + 19 * sumOf(value));
}

void SchematicSink::upgradeToVectorPlacement(int start, int stop) {
  ++received_.iterations;
  received_.checksum += carrier() * (23 * quint64(start) + 29 * quint64(stop));
}

void SchematicSink::setVectorPlacementConnection(QString terminal, QString net) {
  ++received_.connections;
  received_.checksum += carrier() * (41 * sumOf(terminal) + 43 * sumOf(net));
}

void SchematicSink::addWire(QPolygon points) {
  noteObject();
  received_.checksum += quint64(++received_.wires) * sumOf(points);
}

void SchematicSink::addBus(QPolygon points) {
  noteObject();
  received_.checksum += 3 * quint64(++received_.buses) * sumOf(points);
}

void SchematicSink::addWireDot(QPoint centre) {
  noteObject();
  received_.checksum += 5 * quint64(++received_.dots) * sumOf(centre);
}

void SchematicSink::addWireLabel(QPoint origin, QString text, QPoint offset) {
  noteObject();
  received_.checksum += quint64(++received_.labels) * (sumOf(origin) + 47 * sumOf(text) + 53 * sumOf(offset));
}

void SchematicSink::addPort(QPoint position, QString name) {
  noteObject();
  received_.checksum += quint64(++received_.ports) * (sumOf(position) + 59 * sumOf(name));
}

void SchematicSink::setGlobal(bool isGlobal) {
  ++received_.globals;
  received_.checksum += carrier() * (61 + quint64(isGlobal));
}

SchematicFloor::SchematicFloor(const Counts &counts, const QString &lib, const QString &cell) : lib_(lib), cell_(cell) {
  addPlacements(counts, lib);
  for (int index = 0; index < counts.wires; ++index) {
    for (const QPoint &point : wire(index)) {
      points_.push_back(point);
    }
    wires_.push_back({points_.size(), isBus(counts, index)});
  }
  for (int index = 0; index < counts.dots; ++index) {
    dots_.push_back(dot(index));
  }
  for (int index = 0; index < counts.labels; ++index) {
    labels_.push_back({labelOrigin(index), labelOffset(index), netName(index)});
  }
  for (int index = 0; index < counts.ports; ++index) {
    ports_.push_back({port(index), netName(index), portType(index), isGlobal(index)});
  }
}

void SchematicFloor::addPlacements(const Counts &counts, const QString &lib) {
  const QString library = deviceLibrary(lib);
  QString devices[kMasters];
  QString terminals[3];
  for (int master = 0; master < kMasters; ++master) {
    devices[master] = masterName(master);
  }
  for (int terminal = 0; terminal < 3; ++terminal) {
    terminals[terminal] = QLatin1String(kTerminals[terminal]);
  }
  for (int index = 0; index < counts.placements; ++index) {
    for (const Property &property : properties(index)) {
      properties_.push_back(property);
    }
    const bool iterated = isIterated(counts, index);
    for (int terminal = 0; iterated && terminal < 3; ++terminal) {
      connections_.push_back({terminals[terminal], busOfTerminal(index, terminal)});
    }
    placements_.push_back({devices[index % kMasters], library, origin(index), trans(index), instanceName(index),
                           labelOffset(index), properties_.size(), connections_.size(), iterated});
  }
}

void SchematicFloor::send() {
  emit addCellNumData(1, lib_);
  emit addCellNumData(3, cell_);
  emit addCellNumData(4, QStringLiteral("schematic"));
  sendPlacements();
  sendDrawing();
}

void SchematicFloor::sendPlacements() {
  const QString nameKey = QStringLiteral("devicename");
  size_t property = 0;
  size_t connection = 0;
  for (const Placement &placement : placements_) {
    emit addPlacement(placement.device, placement.library, placement.origin, placement.trans);
    emit setDataPoint(1, placement.labelOffset);
    for (; property < placement.propertyEnd; ++property) {
      emit setDataString(properties_[property].name, properties_[property].value);
    }
    emit setDataString(nameKey, placement.name);
    if (placement.isIterated) {
      emit upgradeToVectorPlacement(kFirstBit, kLastBit);
    }
    for (; connection < placement.connectionEnd; ++connection) {
      emit setVectorPlacementConnection(connections_[connection].name, connections_[connection].value);
    }
  }
}

// A fresh polygon for each emission, which is what a sender without buffers of its own has to make.
void SchematicFloor::sendDrawing() {
  size_t point = 0;
  for (const Wire &wire : wires_) {
    QPolygon points(int(wire.pointEnd - point));
    std::copy(points_.begin() + qptrdiff(point), points_.begin() + qptrdiff(wire.pointEnd), points.begin());
    point = wire.pointEnd;
    if (wire.isBus) {
      emit addBus(points);
    } else {
      emit addWire(points);
    }
  }
  for (const QPoint &dot : dots_) {
    emit addWireDot(dot);
  }
  for (const Label &label : labels_) {
    emit addWireLabel(label.origin, label.text, label.offset);
  }
  const QString typeKey = QStringLiteral("type");
  const QString symbolKey = QStringLiteral("symbol");
  const QString symbol = portSymbol();
  for (const Port &port : ports_) {
    emit addPort(port.position, port.name);
    emit setDataString(typeKey, port.type);
    emit setDataString(symbolKey, symbol);
    if (port.isGlobal) {
      emit setGlobal(true);
    }
  }
}
