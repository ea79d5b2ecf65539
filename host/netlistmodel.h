#ifndef NETLISTMODEL_H
#define NETLISTMODEL_H

#include <QPair>
#include <QString>
#include <QStringList>

#include <map>
#include <vector>

// The netlist of a cell and of everything under it, as far as there are schematics. Names are in host syntax.

using NetlistParameters = std::vector<QPair<QString, QString>>; // name and value

// The value of the first parameter with that name; null when there is none.
const QString *findParameter(const NetlistParameters &parameters, const QString &name);

// What a netlist needs of a symbol.
struct NetlistSymbol {
  // Bit by bit, each once: in the order of the drawing, then those that no port of the drawing shows.
  QStringList terminals;
  // Properties of the symbol's design: defaults of its placements, and administrative ones, which have a dot in their
  // name ("xschem.format").
  NetlistParameters properties;
  // The same terminals as wholes; one that is drawn more than once comes as often.
  QStringList pins = {};

  // Names that "xschem.extra" lists: properties that stand for nets or for parts of a netlist line, not for
  // parameters.
  QStringList extraNames() const;
};

struct NetlistDevice {
  QString name;   // with its bit: "I1<3>"
  QString device; // "cell", or "view@cell" for a symbol under another name
  QString library;
  QString cell;
  // Index of its subcircuit in Netlist::cells; -1 for a device that has no schematic.
  int master = -1;
  const NetlistSymbol *symbol = nullptr; // null when it is missing
  QStringList terminals;                 // in the order of the symbol, then those that it lacks
  std::vector<int> nodes;                // one for each terminal
  NetlistParameters parameters;

  // -1 when there is no such terminal.
  int nodeOf(const QString &terminal) const;
  // Its own parameters over the properties of its symbol, in the symbol's order first; administrative ones left out.
  NetlistParameters allParameters() const;
};

// A connection to the outside. The node is -1 when the schematic has no net for it.
struct NetlistPort {
  QString name;
  int node = -1;
};

struct NetlistCell {
  QString library;
  QString cell;
  QString view;
  QStringList nodes; // each name once
  std::vector<NetlistPort> ports;
  // Nodes that are the same in all cells.
  std::vector<int> globals;
  std::vector<NetlistDevice> devices;
  const NetlistSymbol *symbol = nullptr;

  QString path() const { return library + QLatin1Char('/') + cell + QLatin1Char('/') + view; }
};

struct Netlist {
  Netlist() = default;
  // Cells and devices point at symbols, which a move leaves in place.
  Netlist(Netlist &&) = default;
  Netlist &operator=(Netlist &&) = default;

  // The first one is the top. None comes twice.
  std::vector<NetlistCell> cells;
  // Indexes into `cells`, each master before its users (unless a cell contains itself), so the top comes last.
  std::vector<int> mastersFirst;
  std::map<QString, NetlistSymbol> symbols;
};

#endif
