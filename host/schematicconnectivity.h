#ifndef SCHEMATICCONNECTIVITY_H
#define SCHEMATICCONNECTIVITY_H

#include "schematicmodel.h"

#include <QHash>
#include <QStringList>

#include <vector>

// The nets of a schematic, found from places and names as an editor does:
//  - wires are connected where an end of one lies on the other, where a dot lies on both, and where they run on top of
//    one another; wires that merely cross are not;
//  - a terminal of a placed symbol, a port, a label or a ground is connected to every wire it lies on, and to each
//  other
//    at the same place;
//  - the places of one terminal of a placement are connected, as many as its symbol has;
//  - groups with the same name are one net. A name may mean several bits (A<3:0>, A,B): bits are shared by name.
//
// A group is named by its first port, else its first label, else a connection that a placement knows by name, else it
// is called "GND" when it has a ground, else "net1", "net2" and so on, past the names that are used. An automatic net
// has as many bits as its narrowest terminal (times the bits of the placement) takes.

// A terminal of a placement, in the schematic's coordinates.
struct PlacedTerminal {
  int placement; // index into SchematicModel::placements
  QString terminal;
  QPoint position;
};

struct SchematicNet {
  QString name; // host syntax; automatic ("net1", ...) for a group without label, port or ground
  bool isAutomatic = false;
  bool isGlobal = false;
  // 0 for a bus whose width nothing tells: it has neither a name nor terminals.
  int bits = 1;
  // Indexes into the model's wires, dots, labels, ports and grounds, and into SchematicConnectivity::terminals.
  std::vector<int> wires, dots, labels, ports, grounds, terminals;
};

struct SchematicConnectivity {
  std::vector<PlacedTerminal> terminals;
  std::vector<SchematicNet> nets; // in order of first appearance: ports, labels, wires, terminals
  // Index into nets. -1 for a terminal and a dot that nothing touches.
  std::vector<int> netOfWire, netOfDot, netOfLabel, netOfPort, netOfGround, netOfTerminal;
  // Two names on one group, a name that says another width than the terminal it meets, and the like; each names the
  // objects and the place, and the file and line in front where the model has them.
  QStringList problems;
};

// A terminal t of a placement of n instances takes a net of t * n bits, each instance its slice in order, or one of t
// bits, which all instances share.
inline bool isFittingWidth(int netBits, int terminalBits, int placementBits) {
  return netBits == terminalBits || netBits == qint64(terminalBits) * placementBits;
}

// Number of bits that a name in host syntax means: 1 for A or A<3>, 8 for D<0:7>, 5 for CLK,2*D<0:1>. At least 1;
// ranges beyond 2^20 bits count as that many.
int bitsOfName(const QString &name);
// The single-bit names of it in order: D<0>, D<1>, ...; at most 2^20 of them.
QStringList bitNamesOf(const QString &name);

// `symbols` gives the symbol of a placement by "library/device"; a placement whose symbol is missing has no terminals.
SchematicConnectivity findConnectivity(const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols);

#endif
