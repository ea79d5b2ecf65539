#ifndef SCHEMATICFACTS_H
#define SCHEMATICFACTS_H

#include "schematicmodel.h"

#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class PluginSession;

// What a cell view is connected like, as loadNetlist() tells. Names are in host syntax.
struct ViewNetlist {
  struct Device {
    QString name; // with its bit: "I1<3>"
    // Terminal and net, bit by bit; the net is empty for a terminal that is not connected.
    std::vector<QPair<QString, QString>> connections;
  };
  QStringList nets;                 // of one bit each, in order
  QHash<QString, bool> isExternal;  // by net: whether a terminal is on it or it is global
  std::vector<Device> devices;      // in order
  QHash<QString, int> deviceNumber; // by name: index into `devices`
};

// What is wrong with the view is not told.
ViewNetlist readViewNetlist(PluginSession &session, const QString &lib, const QString &cell, const QString &view);

// What a schematic or symbol that is to be copied holds beyond its drawing: the signals of openSchematic() do not tell
// which nets there are and what is on them. Names are in host syntax.
struct SchematicFacts {
  struct Net {
    QString name;
    bool isBundle = false; // or a bus; a bundle can be of one bit
    bool isBit = false;    // of a bus, and no scalar of such a name
    bool isGlobal = false;
  };
  struct Terminal {
    QString name;
    QString net;
  };
  struct Wire {
    QString net; // empty for none
    bool isOnBundle = false;
  };
  ViewNetlist netlist;
  std::vector<Net> nets; // those that are there explicitly, in order of their creation
  std::vector<Terminal> terminals;
  // The net of each wire, dot and ground of the drawing, in its order; empty for none.
  std::vector<Wire> wires;
  QStringList dots, grounds;
  // Of each rectangle and each text that is drawn, in its order.
  std::vector<bool> isOnInstanceLayer, isEvaluated;
  // Of a placement that is iterated or a bit of an iterated one, its range: the signals tell only that of one with
  // several bits, and for placements that share a name, that of the first.
  struct Iteration {
    int start = 0;
    int stop = 0;
  };
  std::vector<std::optional<Iteration>> iterations; // of each placement, in order
  // Placements that set parameters.
  QStringList parametric;
};

// Of a parametric symbol, that with its default parameters, as openSchematic() sends it. Throws HostError when the view
// cannot be read.
SchematicFacts readSchematicFacts(PluginSession &session, const QString &lib, const QString &cell, const QString &view);

// Tells a model that was read from the same view which of its texts are evaluated; its rectangles of the instance
// layer, in their colours, as saveRect() takes that; and the ranges of its placements.
void completeModel(SchematicModel &model, const SchematicFacts &facts);

#endif
