#include "schematicnetplan.h"

#include "busname.h"
#include "schematicfacts.h"

#include <QSet>

#include <algorithm>

namespace {

class DrawnNets {
public:
  DrawnNets(const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols)
      : model_(model), connectivity_(findConnectivity(model, symbols)) {}
  NetPlan plan();

private:
  void addNets();
  void addNet(const QString &name);
  void addConnections();
  void addConnection(std::size_t placement, const PlacedTerminal &terminal, const SchematicNet &net);
  void addUnplacedConnections(std::size_t placement, const QSet<QString> &connected);
  QStringList namesOf(const std::vector<int> &nets) const;
  QString objectText(const SchematicPlacement &placement, const QString &terminal) const {
    return model_.source.prefix(placement.sourceLine) +
           QStringLiteral("terminal %1 of placement %2").arg(terminal, placement.name);
  }

  const SchematicModel &model_;
  const SchematicConnectivity connectivity_;
  NetPlan plan_;
  QSet<QString> portNames_;
  QSet<QString> added_;
};

NetPlan DrawnNets::plan() {
  for (const QString &problem : connectivity_.problems)
    plan_.problems.push_back({problem, QString()});
  addNets();
  for (const QString &net : namesOf(connectivity_.netOfWire))
    plan_.wires.push_back({net, bitsOfName(net) > 1});
  plan_.dots = namesOf(connectivity_.netOfDot);
  plan_.grounds = namesOf(connectivity_.netOfGround);
  addConnections();
  return std::move(plan_);
}

void DrawnNets::addNets() {
  for (const SchematicPort &port : model_.ports) {
    if (!port.isGlobal)
      portNames_.insert(plainNetName(port.name));
  }
  for (const SchematicNet &net : connectivity_.nets) {
    if (net.bits == 1)
      addNet(net.name);
  }
  // A port of another name than its net has (told by the connectivity) keeps its own.
  for (const SchematicPort &port : model_.ports) {
    const QString name = plainNetName(port.name);
    if (!name.isEmpty() && bitsOfName(name) == 1 && !added_.contains(name))
      addNet(name);
  }
}

void DrawnNets::addNet(const QString &name) {
  plan_.nets.push_back({name, portNames_.contains(name) ? NetPlan::Kind::WithTerminal : NetPlan::Kind::Plain});
  added_.insert(name);
}

void DrawnNets::addConnections() {
  plan_.connections.resize(model_.placements.size());
  // The terminals are in the order of their placements.
  std::size_t i = 0;
  for (std::size_t placement = 0; placement < model_.placements.size(); ++placement) {
    QSet<QString> connected;
    for (; i < connectivity_.terminals.size(); ++i) {
      const PlacedTerminal &terminal = connectivity_.terminals[i];
      if (terminal.placement != static_cast<int>(placement))
        break;
      // A terminal with several places is connected once.
      if (connected.contains(terminal.terminal))
        continue;
      connected.insert(terminal.terminal);
      const int net = connectivity_.netOfTerminal[i];
      if (net >= 0)
        addConnection(placement, terminal, connectivity_.nets[static_cast<std::size_t>(net)]);
    }
    addUnplacedConnections(placement, connected);
  }
}

void DrawnNets::addConnection(std::size_t placementNumber, const PlacedTerminal &terminal, const SchematicNet &net) {
  const SchematicPlacement &placement = model_.placements[placementNumber];
  std::vector<NetPlan::Connection> &connections = plan_.connections[placementNumber];
  const int terminalBits = bitsOfName(terminal.terminal);
  const int placementBits = placement.bits();
  // What does not fit is told by the connectivity.
  if (!isFittingWidth(net.bits, terminalBits, placementBits))
    return;
  if (terminalBits == 1 && !placement.isVector) {
    connections.push_back({terminal.terminal, net.name});
    return;
  }
  // The database wants a bit of the net for each bit of the terminal in each instance.
  const bool isShared = net.bits == terminalBits;
  constexpr int kMostBits = 1 << 20;
  if (isShared && qint64(terminalBits) * placementBits > kMostBits) {
    plan_.problems.push_back({QStringLiteral("a connection of more than %1 bits is left out").arg(kMostBits),
                              objectText(placement, terminal.terminal)});
    return;
  }
  connections.push_back({terminal.terminal, isShared ? repeatedName(net.name, placementBits) : net.name, true});
}

// Connections of terminals that the symbol does not have, or whose symbol is missing, are made by name.
void DrawnNets::addUnplacedConnections(std::size_t placementNumber, const QSet<QString> &connected) {
  const SchematicPlacement &placement = model_.placements[placementNumber];
  for (const auto &[terminal, net] : placement.connections) {
    if (connected.contains(terminal))
      continue;
    if (std::any_of(terminal.begin(), terminal.end(), [](QChar c) { return QStringLiteral(",:*").contains(c); }))
      plan_.problems.push_back(
          {QStringLiteral("a connection of several bits is left out, since the symbol lacks the terminal"),
           objectText(placement, terminal)});
    else
      plan_.connections[placementNumber].push_back({terminal, net, true});
  }
}

QStringList DrawnNets::namesOf(const std::vector<int> &nets) const {
  QStringList names;
  for (const int net : nets)
    names.append(net < 0 ? QString() : connectivity_.nets[static_cast<std::size_t>(net)].name);
  return names;
}

class KnownNets {
public:
  KnownNets(const SchematicModel &model, const SchematicFacts &facts) : model_(model), facts_(facts) {}
  NetPlan plan();

private:
  void findTerminals();
  void tellExchangedTerminals();
  QSet<QString> wideBits() const;
  void addNets();
  void addNet(const SchematicFacts::Net &net);
  void addWires();
  void addConnections(const SchematicPlacement &placement);
  bool isFitting(std::size_t found, std::size_t drawn, const char *what);
  QStringList fitted(const QStringList &nets, std::size_t count, const char *what);
  const QString &nameOf(const QString &net) const;

  const SchematicModel &model_;
  const SchematicFacts &facts_;
  NetPlan plan_;
  // A terminal made by the operations has the name of its net; so a net takes that of its first terminal.
  QHash<QString, QString> newNames_;
  QSet<QString> terminals_;
  QHash<QString, NetPlan::Kind> kinds_; // of the nets that were added
};

NetPlan KnownNets::plan() {
  findTerminals();
  plan_.dots = fitted(facts_.dots, model_.wireDots.size(), "wire dots");
  plan_.grounds = fitted(facts_.grounds, model_.grounds.size(), "grounds");
  addNets();
  addWires();
  for (const SchematicPlacement &placement : model_.placements)
    addConnections(placement);
  return std::move(plan_);
}

void KnownNets::findTerminals() {
  const bool isAnyRenamed =
      std::any_of(facts_.terminals.begin(), facts_.terminals.end(),
                  [](const SchematicFacts::Terminal &terminal) { return terminal.name != terminal.net; });
  const QSet<QString> wide = isAnyRenamed ? wideBits() : QSet<QString>();
  for (const SchematicFacts::Terminal &terminal : facts_.terminals) {
    terminals_.insert(terminal.name);
    // A name that another net has would short the two, and a bundle or bus would keep the old name of its bit.
    if (!facts_.netlist.isExternal.contains(terminal.name) && !newNames_.contains(terminal.net) &&
        !wide.contains(terminal.net) && bitsOfName(terminal.name) == 1 && bitsOfName(terminal.net) == 1)
      newNames_.insert(terminal.net, terminal.name);
  }
  // That of its own name comes first.
  for (const SchematicFacts::Terminal &terminal : facts_.terminals) {
    if (terminal.name == terminal.net)
      newNames_.remove(terminal.net);
  }
  tellExchangedTerminals();
}

// In the copy, a terminal is on the net of its name. That of a new net, or of none, shows in the netlist.
void KnownNets::tellExchangedTerminals() {
  for (const SchematicFacts::Terminal &terminal : facts_.terminals) {
    if (terminal.name == terminal.net)
      continue;
    const QStringList bits = bitNamesOf(terminal.name);
    const QStringList nets = bitNamesOf(terminal.net);
    for (int i = 0; i < std::min(bits.size(), nets.size()); ++i) {
      if (bits[i] == nameOf(nets[i]) || !facts_.netlist.isExternal.contains(bits[i]))
        continue;
      plan_.problems.push_back({QStringLiteral("a terminal is not kept on its net, since another net has its name"),
                                QStringLiteral("terminal %1 on net %2").arg(bits[i], nets[i])});
      break;
    }
  }
}

// Bits of bundles and buses under other names than that of the whole.
QSet<QString> KnownNets::wideBits() const {
  QSet<QString> wide;
  for (const SchematicFacts::Net &net : facts_.nets) {
    if (!net.isBundle)
      continue;
    for (const QString &bit : bitNamesOf(net.name)) {
      if (bit != net.name)
        wide.insert(bit);
    }
  }
  return wide;
}

void KnownNets::addNets() {
  QSet<QString> shownGlobals(plan_.grounds.begin(), plan_.grounds.end());
  for (const SchematicPort &port : model_.ports) {
    if (port.isGlobal)
      shownGlobals.insert(nameOf(port.name));
  }
  for (const SchematicFacts::Net &net : facts_.nets) {
    const QString &name = nameOf(net.name);
    if (!net.isBundle && !kinds_.contains(name))
      addNet({name, false, net.isBit, net.isGlobal && !shownGlobals.contains(name)});
  }
  // Bits that are only there as part of a bus get a net of their own when something is on just them.
  QStringList used = plan_.dots + plan_.grounds;
  for (const SchematicFacts::Wire &wire : facts_.wires) {
    if (!wire.isOnBundle)
      used.append(nameOf(wire.net));
  }
  for (const QString &name : used) {
    if (!name.isEmpty() && bitsOfName(name) == 1 && !kinds_.contains(name))
      addNet({name});
  }
  for (const SchematicPort &port : model_.ports) {
    const QString &name = port.isGlobal ? nameOf(port.name) : port.name;
    if (bitsOfName(name) == 1 && !kinds_.contains(name))
      addNet({name});
  }
}

void KnownNets::addWires() {
  if (!isFitting(facts_.wires.size(), model_.wires.size(), "wires")) {
    plan_.wires.resize(model_.wires.size());
    return;
  }
  for (std::size_t i = 0; i < facts_.wires.size(); ++i) {
    const QString &net = nameOf(facts_.wires[i].net);
    const auto kind = kinds_.constFind(net);
    const bool isNumbered = kind != kinds_.constEnd() && *kind != NetPlan::Kind::GlobalAlone;
    if (facts_.wires[i].isOnBundle || net.isEmpty())
      plan_.wires.push_back({net, !net.isEmpty()});
    else if (model_.wires[i].isBus && bitsOfName(net) == 1)
      plan_.wires.push_back({QString(), true}); // marked as a bus: no operation puts that on a net
    else
      plan_.wires.push_back({net, !isNumbered});
  }
}

void KnownNets::addNet(const SchematicFacts::Net &net) {
  using Kind = NetPlan::Kind;
  Kind kind = Kind::Plain;
  if (terminals_.contains(net.name))
    kind = net.isGlobal ? Kind::GlobalWithTerminal : Kind::WithTerminal;
  else if (net.isGlobal && !net.isBit) // of a bit, saveGlobalPort() would make a scalar of that name
    kind = Kind::GlobalAlone;
  plan_.nets.push_back({net.name, kind});
  kinds_.insert(net.name, kind);
}

// The signals tell connections of several bits and those of placements of several bits, the netlist all others.
void KnownNets::addConnections(const SchematicPlacement &placement) {
  std::vector<NetPlan::Connection> connections;
  QSet<QString> connected; // bit by bit
  for (const auto &[terminal, net] : placement.connections) {
    connections.push_back({terminal, net, true});
    const QStringList bits = bitNamesOf(terminal);
    connected += QSet<QString>(bits.begin(), bits.end());
  }
  int number = -1;
  if (!placement.isVector)
    number = facts_.netlist.deviceNumber.value(placement.name, -1);
  else if (placement.bits() == 1)
    number = facts_.netlist.deviceNumber.value(QStringLiteral("%1<%2>").arg(placement.name).arg(placement.start), -1);
  if (number >= 0) {
    for (const auto &[terminal, net] : facts_.netlist.devices[static_cast<std::size_t>(number)].connections) {
      if (net.isEmpty() || connected.contains(terminal))
        continue;
      const QString &name = nameOf(net);
      const auto kind = kinds_.constFind(name);
      const bool isNumbered = kind != kinds_.constEnd() && *kind != NetPlan::Kind::GlobalAlone;
      connections.push_back({terminal, name, placement.isVector || !isNumbered});
    }
  }
  plan_.connections.push_back(std::move(connections));
}

// A shape that cannot be read is told by the reader.
bool KnownNets::isFitting(std::size_t found, std::size_t drawn, const char *what) {
  if (found == drawn)
    return true;
  plan_.problems.push_back(
      {QStringLiteral("%1 were read, but %2 are there: they are put on no net").arg(drawn).arg(found),
       QLatin1String(what)});
  return false;
}

// The nets of `count` shapes by their new names.
QStringList KnownNets::fitted(const QStringList &nets, std::size_t count, const char *what) {
  const bool isKnown = isFitting(static_cast<std::size_t>(nets.size()), count, what);
  QStringList names;
  for (int i = 0; i < static_cast<int>(count); ++i)
    names.append(isKnown ? nameOf(nets[i]) : QString());
  return names;
}

const QString &KnownNets::nameOf(const QString &net) const {
  const auto found = newNames_.constFind(net);
  return found == newNames_.constEnd() ? net : *found;
}

} // namespace

NetPlan planDrawnNets(const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols) {
  return DrawnNets(model, symbols).plan();
}

NetPlan planKnownNets(const SchematicModel &model, const SchematicFacts &facts) {
  return KnownNets(model, facts).plan();
}
