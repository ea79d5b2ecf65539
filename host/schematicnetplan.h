#ifndef SCHEMATICNETPLAN_H
#define SCHEMATICNETPLAN_H

#include "schematicconnectivity.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

struct SchematicFacts;

// Which nets a schematic or symbol is written with, and what is put on them. Names are in host syntax.
struct NetPlan {
  enum class Kind {
    // As saveNet() takes them. The ports and grounds on it make a plain net a global one.
    Plain = 0,
    WithTerminal = 1,
    GlobalWithTerminal = 2,
    // Global without terminal, port and ground, as only saveGlobalPort() makes one: it has no number.
    GlobalAlone
  };
  struct Net {
    QString name;
    Kind kind;
  };
  struct Connection {
    QString terminal;
    QString net;
    bool isByName = false; // of several bits or of an iterated placement, or to a net without a number
  };
  struct Wire {
    QString net;
    bool isByName = false; // the same
  };
  struct Problem {
    QString what;
    QString object; // may be empty
  };
  std::vector<Net> nets; // of one bit each, in the order to be written in; those of more come with what is on them
  // What each wire, dot and ground of the model is put on; an empty name for no net.
  std::vector<Wire> wires;
  QStringList dots, grounds;
  std::vector<std::vector<Connection>> connections; // of each placement
  // What the drawing says that cannot be.
  std::vector<Problem> problems;
};

// Of a model that was drawn: by places and names, see schematicconnectivity.h.
NetPlan planDrawnNets(const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols);

// Of a model that was read from a cell view: as they are there, whatever the drawing looks like.
NetPlan planKnownNets(const SchematicModel &model, const SchematicFacts &facts);

#endif
