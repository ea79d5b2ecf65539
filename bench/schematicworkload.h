#ifndef SCHEMATICWORKLOAD_H
#define SCHEMATICWORKLOAD_H

#include <string>
#include <vector>

#include <QPoint>
#include <QPolygon>
#include <QString>

class oaPlugInCore;

// Contents of the measured schematics, computed from an object's number alone, so that the plug-in and the floor work
// on the same data.
namespace schematicworkload {

// How many objects of each kind a schematic has.
struct Counts {
  int placements, wires, dots, labels, ports;
  // One in ten placements is iterated, and one in fifty wires is a bus.
  bool hasBuses;

  int objects() const { return placements + wires + dots + labels + ports; }
  int nets() const;
};

struct Named {
  const char *name;
  const char *description;
};
const Named kAll[] = {
    {"schematic", "three wires, 0.6 dots, 0.3 labels and 0.01 ports for each placement"},
    {"scalar", "the same without buses and iterated placements"},
    {"placements", "only the placements"},
    {"wires", "only the wires"},
    {"dots", "only the dots"},
    {"labels", "only the labels"},
    {"ports", "only the ports, as many as labels"},
};
// Raises std::invalid_argument for an unknown name.
Counts countsOf(const std::string &name, int placements);

// A placement of one of twenty masters with two or three properties, and with its connections.
const int kMasters = 20;
struct Property {
  QString name, value;
};
QString masterName(int index);
QPoint origin(int index);
// Only orientations whose text reads the same in both directions.
QString trans(int index);
QString instanceName(int index);
QPoint labelOffset(int index);
std::vector<Property> properties(int index);
// An iterated placement has the bits kFirstBit to kLastBit; all of kTerminals are connected to buses, those of any
// other placement to single nets.
const int kFirstBit = 7;
const int kLastBit = 0;
const char *const kTerminals[] = {"d", "g", "s"};
bool isIterated(const Counts &counts, int index);
QString busName(int index);
QString busOfTerminal(int index, int terminal);

bool isBus(const Counts &counts, int wire);
// Two points, or three for every fourth wire.
QPolygon wire(int index);
QPoint dot(int index);
QPoint labelOrigin(int index);
QString netName(int net);
// Ports are on the first nets and have their names; one in a hundred is that of a global net.
QPoint port(int index);
bool isGlobal(int port);
QString portType(int port);
QString portSymbol();

QString deviceLibrary(const QString &lib);

// Writes the symbols that write() places.
void writeMasters(oaPlugInCore &plugIn, const QString &lib);
// Writes lib/`cell`/schematic. What was there is replaced.
void write(oaPlugInCore &plugIn, const QString &lib, const QString &cell, const Counts &counts);

} // namespace schematicworkload

#endif
