#include "schematicworkload.h"

#include <algorithm>
#include <stdexcept>

#include "oaplugincore.h"

namespace schematicworkload {

namespace {

const int kColumns = 256;
const int kPitchDbu = 160;
const int kBuses = 1000;
const QString kSymbolView = QStringLiteral("symbol");

QPoint place(int index, int columns) { return QPoint(index % columns * kPitchDbu, index / columns * kPitchDbu); }

// The numbers by which the writer's operations know the nets.
int netOfTerminal(const Counts &counts, int index, int terminal) { return (3 * index + 7 * terminal) % counts.nets(); }
int netOfWire(int wire) { return wire / 3; }

} // namespace

int Counts::nets() const { return std::max({1, (wires + 2) / 3, ports}); }

Counts countsOf(const std::string &name, int placements) {
  const int wires = 3 * placements;
  const int dots = placements * 6 / 10;
  const int labels = placements * 3 / 10;
  if (name == "schematic" || name == "scalar") {
    return {placements, wires, dots, labels, placements / 100, name == "schematic"};
  }
  if (name == "placements") {
    return {placements, 0, 0, 0, 0, true};
  }
  if (name == "wires") {
    return {0, wires, 0, 0, 0, true};
  }
  if (name == "dots") {
    return {0, 0, dots, 0, 0, false};
  }
  if (name == "labels") {
    return {0, 0, 0, labels, 0, false};
  }
  if (name == "ports") {
    return {0, 0, 0, 0, labels, false};
  }
  throw std::invalid_argument("there is no workload " + name);
}

// Neighbours have different masters.
QString masterName(int index) { return QStringLiteral("device%1").arg(index * 7 % kMasters); }

QPoint origin(int index) { return place(index, kColumns); }

QString trans(int index) {
  static const QString kTrans[] = {QString(), QStringLiteral("R180"), QStringLiteral("M"), QStringLiteral("R180M")};
  return kTrans[index % 4];
}

QString instanceName(int index) { return QStringLiteral("X%1").arg(index); }

QPoint labelOffset(int index) { return QPoint(20 + index % 5, -10 - index % 3); }

// A model that many placements share, a size that some share, and for every other one a value of its own.
std::vector<Property> properties(int index) {
  std::vector<Property> list;
  list.push_back({QStringLiteral("model"), QStringLiteral("fet_01v8_%1").arg(index % 8)});
  list.push_back({QStringLiteral("w"), QStringLiteral("0.%1").arg(42 + index % 50)});
  if (index % 2 == 1) {
    list.push_back({QStringLiteral("value"), QStringLiteral("%1k").arg(index)});
  }
  return list;
}

bool isIterated(const Counts &counts, int index) { return counts.hasBuses && index % 10 == 9; }

QString busName(int index) { return QStringLiteral("data%1<%2:%3>").arg(index % kBuses).arg(kFirstBit).arg(kLastBit); }

QString busOfTerminal(int index, int terminal) { return busName(index / 10 + terminal); }

bool isBus(const Counts &counts, int wire) { return counts.hasBuses && wire % 50 == 49; }

QPolygon wire(int index) {
  const QPoint start = place(index, 3 * kColumns);
  QPolygon points;
  points << start << start + QPoint(0, 40 + index % 60);
  if (index % 4 == 3) {
    points << points.last() + QPoint(30 + index % 70, 0);
  }
  return points;
}

QPoint dot(int index) { return place(index, kColumns) + QPoint(10, 30); }

QPoint labelOrigin(int index) { return place(index, kColumns) + QPoint(-10, 20); }

QString netName(int net) { return QStringLiteral("net%1").arg(net); }

QPoint port(int index) { return QPoint(-400, 40 * index); }

bool isGlobal(int port) { return port % 100 == 99; }

QString portType(int port) { return port % 2 ? QStringLiteral("output") : QStringLiteral("input"); }

QString portSymbol() { return QStringLiteral("pin"); }

QString deviceLibrary(const QString &lib) { return lib + QStringLiteral(".oa"); }

void writeMasters(oaPlugInCore &plugIn, const QString &lib) {
  const QString colour = QStringLiteral("deviceColor");
  for (int master = 0; master < kMasters; ++master) {
    plugIn.saveSymbol(lib, masterName(master), kSymbolView);
    plugIn.saveRect(0, 0, 60, 80, colour);
    int height = 0;
    for (const char *terminal : kTerminals) {
      plugIn.savePort(QLatin1String(terminal), QPoint(0, height), false, portType(height));
      height += 40;
    }
    plugIn.saveClose();
  }
}

namespace {

// Ports of global nets stand on the net itself, all others on its terminal.
void writeNets(oaPlugInCore &plugIn, const Counts &counts) {
  for (int net = 0; net < counts.nets(); ++net) {
    plugIn.saveNet(net, netName(net), net < counts.ports && !isGlobal(net) ? 1 : 0);
  }
}

void writePlacement(oaPlugInCore &plugIn, const QString &lib, const Counts &counts, int index) {
  const bool iterated = isIterated(counts, index);
  if (iterated) {
    plugIn.saveVectorPlacement(lib, masterName(index), kSymbolView, instanceName(index), origin(index), trans(index),
                               kFirstBit, kLastBit);
  } else {
    plugIn.savePlacement(lib, masterName(index), kSymbolView, instanceName(index), origin(index), trans(index));
  }
  plugIn.savePointProp(QStringLiteral("labelOffset"), labelOffset(index));
  for (const Property &property : properties(index)) {
    plugIn.saveStringProp(property.name, property.value);
  }
  int number = 0;
  for (const char *terminal : kTerminals) {
    if (iterated) {
      plugIn.saveVectorPlacementConnection(QLatin1String(terminal), busOfTerminal(index, number));
    } else {
      plugIn.savePlacementConnection(netOfTerminal(counts, index, number), QLatin1String(terminal));
    }
    ++number;
  }
}

} // namespace

void write(oaPlugInCore &plugIn, const QString &lib, const QString &cell, const Counts &counts) {
  plugIn.saveSchematic(lib, cell, QStringLiteral("schematic"));
  writeNets(plugIn, counts);
  for (int index = 0; index < counts.placements; ++index) {
    writePlacement(plugIn, lib, counts, index);
  }
  for (int index = 0; index < counts.wires; ++index) {
    if (isBus(counts, index)) {
      plugIn.saveBus(wire(index), busName(index / 50));
    } else {
      plugIn.saveWire(wire(index), netOfWire(index));
    }
  }
  for (int index = 0; index < counts.dots; ++index) {
    plugIn.saveWireDot(dot(index), index % counts.nets());
  }
  for (int index = 0; index < counts.labels; ++index) {
    plugIn.saveWireLabel(netName(index), labelOrigin(index), labelOffset(index));
  }
  for (int index = 0; index < counts.ports; ++index) {
    plugIn.savePort(index, port(index), isGlobal(index), portType(index), portSymbol());
  }
  plugIn.saveClose();
}

} // namespace schematicworkload
