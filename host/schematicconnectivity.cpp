#include "schematicconnectivity.h"

#include "busname.h"
#include "placejoiner.h"
#include "usermessage.h"

#include <QSet>

#include <algorithm>
#include <limits>

namespace {

bool isSameBits(const QString &name, const QString &other) {
  return name == other || (bitsOfName(name) == bitsOfName(other) && bitNamesOf(name) == bitNamesOf(other));
}

// A net name that a placement knows, as the group at the terminal would be called: an iterated placement whose
// instances share a net has it repeated.
QString groupName(const QString &connected, int terminalBits, int placementBits) {
  QString name = plainNetName(connected);
  if (placementBits == 1 || bitsOfName(name) == terminalBits)
    return name;
  const QString once = unrepeatedName(name, placementBits);
  return !once.isEmpty() && bitsOfName(once) == terminalBits ? once : name;
}

// One run over a model. Every wire, dot, label, port, ground and terminal is a node; nodes that belong together by
// place are a group, and groups of one name are a net.
class ConnectivityFinder {
public:
  ConnectivityFinder(const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols);
  SchematicConnectivity find();

private:
  struct Group {
    int name = -1; // index into names_
    bool hasWire = false;
    bool hasBus = false;
    bool hasGround = false;
    int firstTerminal = -1;
    bool hasMoreTerminals = false;                   // others than places of the first one
    int narrowest = std::numeric_limits<int>::max(); // bits that the narrowest terminal takes of the net
    int net = -1;
  };

  void placeTerminals();
  void joinByPlace();
  void joinPlacesOfTerminals();
  void describeGroups();
  void nameGroups();
  void connectByName(int placement);
  void claimName(int node, const QString &name, const QString &claimant, int sourceLine);
  int nameIndex(const QString &name);
  int netOf(int node);
  void makeNets();
  void nameAutomaticNets();
  void checkWidths();

  const SchematicPlacement &placementOf(int terminal) const {
    return model_.placements[static_cast<std::size_t>(result_.terminals[static_cast<std::size_t>(terminal)].placement)];
  }
  Group &groupOf(int node) { return groups_[static_cast<std::size_t>(joiner_->groupOf(node))]; }

  const SchematicModel &model_;
  const QHash<QString, const SymbolModel *> &symbols_;
  SchematicConnectivity result_;
  // First node of each kind.
  int dotNodes_ = 0, labelNodes_ = 0, portNodes_ = 0, groundNodes_ = 0, terminalNodes_ = 0;
  std::vector<int> firstTerminal_; // of each placement, and one more entry for the end
  std::optional<PlaceJoiner> joiner_;
  std::vector<Group> groups_; // by group number of the joiner
  std::vector<QString> names_;
  QHash<QString, int> nameIndexes_;
  std::vector<int> netOfName_;
};

ConnectivityFinder::ConnectivityFinder(const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols)
    : model_(model), symbols_(symbols) {}

SchematicConnectivity ConnectivityFinder::find() {
  placeTerminals();
  joinByPlace();
  joinPlacesOfTerminals();
  describeGroups();
  nameGroups();
  makeNets();
  nameAutomaticNets();
  checkWidths();
  return std::move(result_);
}

void ConnectivityFinder::placeTerminals() {
  QHash<QString, int> placesWithoutSymbol;
  QStringList missing; // in order
  std::vector<const SchematicPlacement *> missingPlacements;
  for (std::size_t i = 0; i < model_.placements.size(); ++i) {
    const SchematicPlacement &placement = model_.placements[i];
    firstTerminal_.push_back(static_cast<int>(result_.terminals.size()));
    const QString key = symbolKey(placement.library, placement.device);
    const SymbolModel *symbol = symbols_.value(key, nullptr);
    if (symbol == nullptr) {
      if (++placesWithoutSymbol[key] == 1) {
        missing.append(key);
        missingPlacements.push_back(&placement);
      }
      continue;
    }
    for (const SchematicPort &port : symbol->ports) {
      result_.terminals.push_back(
          {static_cast<int>(i), port.name, placement.origin + placement.orientation.map(port.position)});
    }
  }
  firstTerminal_.push_back(static_cast<int>(result_.terminals.size()));
  for (int i = 0; i < missing.size(); ++i) {
    const int others = placesWithoutSymbol.value(missing[i]) - 1;
    const QString more = others > 0 ? QStringLiteral(" and %1 more").arg(others) : QString();
    const SchematicPlacement &first = *missingPlacements[static_cast<std::size_t>(i)];
    result_.problems.append(model_.source.prefix(first.sourceLine) +
                            QStringLiteral("the symbol %1 of placement %2%3 is missing: it has no terminals to connect")
                                .arg(missing[i], first.name, more));
  }
}

void ConnectivityFinder::joinByPlace() {
  dotNodes_ = static_cast<int>(model_.wires.size());
  labelNodes_ = dotNodes_ + static_cast<int>(model_.wireDots.size());
  portNodes_ = labelNodes_ + static_cast<int>(model_.labels.size());
  groundNodes_ = portNodes_ + static_cast<int>(model_.ports.size());
  terminalNodes_ = groundNodes_ + static_cast<int>(model_.grounds.size());
  joiner_.emplace(terminalNodes_ + static_cast<int>(result_.terminals.size()));
  int node = 0;
  for (const SchematicWire &wire : model_.wires) {
    if (!wire.points.isEmpty()) {
      joiner_->addPoint(wire.points.first(), node);
      joiner_->addPoint(wire.points.last(), node);
    }
    for (int i = 1; i < wire.points.size(); ++i)
      joiner_->addSegment(wire.points.at(i - 1), wire.points.at(i), node);
    ++node;
  }
  for (const QPoint &dot : model_.wireDots)
    joiner_->addPoint(dot, node++);
  for (const SchematicLabel &label : model_.labels)
    joiner_->addPoint(label.origin, node++);
  for (const SchematicPort &port : model_.ports)
    joiner_->addPoint(port.position, node++);
  for (const SchematicGround &ground : model_.grounds)
    joiner_->addPoint(ground.position, node++);
  for (const PlacedTerminal &terminal : result_.terminals)
    joiner_->addPoint(terminal.position, node++);
  joiner_->join();
}

void ConnectivityFinder::joinPlacesOfTerminals() {
  QHash<QString, int> terminalNodes;
  for (std::size_t i = 0; i < model_.placements.size(); ++i) {
    terminalNodes.clear();
    for (int terminal = firstTerminal_[i]; terminal < firstTerminal_[i + 1]; ++terminal) {
      const int node = terminalNodes_ + terminal;
      const QString &name = result_.terminals[static_cast<std::size_t>(terminal)].terminal;
      const auto known = terminalNodes.constFind(name);
      if (known == terminalNodes.constEnd())
        terminalNodes.insert(name, node);
      else
        joiner_->unite(*known, node);
    }
  }
}

void ConnectivityFinder::describeGroups() {
  groups_.resize(static_cast<std::size_t>(terminalNodes_) + result_.terminals.size());
  for (std::size_t i = 0; i < model_.wires.size(); ++i) {
    Group &group = groupOf(static_cast<int>(i));
    group.hasWire = true;
    group.hasBus = group.hasBus || model_.wires[i].isBus;
  }
  for (std::size_t i = 0; i < model_.grounds.size(); ++i)
    groupOf(groundNodes_ + static_cast<int>(i)).hasGround = true;
  for (std::size_t i = 0; i < result_.terminals.size(); ++i) {
    const PlacedTerminal &terminal = result_.terminals[i];
    const auto number = static_cast<int>(i);
    Group &group = groupOf(terminalNodes_ + number);
    const qint64 bits = qint64(bitsOfName(terminal.terminal)) * placementOf(number).bits();
    group.narrowest = static_cast<int>(std::min<qint64>(group.narrowest, bits));
    if (group.firstTerminal < 0) {
      group.firstTerminal = number;
      continue;
    }
    const PlacedTerminal &first = result_.terminals[static_cast<std::size_t>(group.firstTerminal)];
    if (first.placement != terminal.placement || first.terminal != terminal.terminal)
      group.hasMoreTerminals = true;
  }
}

void ConnectivityFinder::nameGroups() {
  for (std::size_t i = 0; i < model_.ports.size(); ++i) {
    const SchematicPort &port = model_.ports[i];
    claimName(portNodes_ + static_cast<int>(i), plainNetName(port.name),
              QStringLiteral("the port at %1").arg(model_.source.placeText(port.position)), port.sourceLine);
  }
  for (std::size_t i = 0; i < model_.labels.size(); ++i) {
    const SchematicLabel &label = model_.labels[i];
    claimName(labelNodes_ + static_cast<int>(i), plainNetName(label.text),
              QStringLiteral("the label at %1").arg(model_.source.placeText(label.origin)), label.sourceLine);
  }
  for (std::size_t i = 0; i < model_.placements.size(); ++i)
    connectByName(static_cast<int>(i));
  for (Group &group : groups_) {
    if (group.hasGround && group.name < 0)
      group.name = nameIndex(QStringLiteral("GND"));
  }
}

void ConnectivityFinder::connectByName(int placementNumber) {
  const SchematicPlacement &placement = model_.placements[static_cast<std::size_t>(placementNumber)];
  if (placement.connections.empty())
    return;
  const auto begin = result_.terminals.begin() + firstTerminal_[static_cast<std::size_t>(placementNumber)];
  const auto end = result_.terminals.begin() + firstTerminal_[static_cast<std::size_t>(placementNumber) + 1];
  const bool hasSymbol = symbols_.value(symbolKey(placement.library, placement.device), nullptr) != nullptr;
  QHash<QString, int> nodes;
  for (auto terminal = begin; terminal != end; ++terminal)
    nodes.insert(terminal->terminal, terminalNodes_ + static_cast<int>(terminal - result_.terminals.begin()));
  for (const auto &[terminal, net] : placement.connections) {
    const auto node = nodes.constFind(terminal);
    if (node != nodes.constEnd()) {
      claimName(*node, groupName(net, bitsOfName(terminal), placement.bits()),
                QStringLiteral("the connection of terminal %1 of placement %2").arg(terminal, placement.name),
                placement.sourceLine);
      continue;
    }
    // The name is used all the same, so that no automatic net takes it.
    nameIndex(plainNetName(net));
    if (hasSymbol) {
      result_.problems.append(
          model_.source.prefix(placement.sourceLine) +
          QStringLiteral("terminal %1 of placement %2 is connected to net %3, but the symbol %4 has no "
                         "such terminal")
              .arg(terminal, placement.name, net, symbolKey(placement.library, placement.device)));
    }
  }
}

void ConnectivityFinder::claimName(int node, const QString &name, const QString &claimant, int sourceLine) {
  if (name.isEmpty())
    return;
  Group &group = groupOf(node);
  const int index = nameIndex(name);
  if (group.name < 0) {
    group.name = index;
    return;
  }
  const QString &present = names_[static_cast<std::size_t>(group.name)];
  if (group.name != index && !isSameBits(name, present))
    result_.problems.append(model_.source.prefix(sourceLine) +
                            QStringLiteral("net %1 is also called %2 by %3").arg(present, name, claimant));
}

int ConnectivityFinder::nameIndex(const QString &name) {
  const auto known = nameIndexes_.constFind(name);
  if (known != nameIndexes_.constEnd())
    return *known;
  const auto index = static_cast<int>(names_.size());
  nameIndexes_.insert(name, index);
  names_.push_back(name);
  netOfName_.push_back(-1);
  return index;
}

// Makes the net when it is the first time that it is asked for; -1 for what nothing touches.
int ConnectivityFinder::netOf(int node) {
  Group &group = groupOf(node);
  if (group.net >= 0)
    return group.net;
  if (group.name < 0 && !group.hasWire && !group.hasMoreTerminals)
    return -1;
  int *known = group.name < 0 ? nullptr : &netOfName_[static_cast<std::size_t>(group.name)];
  if (known == nullptr || *known < 0) {
    SchematicNet net;
    net.isAutomatic = group.name < 0;
    if (!net.isAutomatic) {
      net.name = names_[static_cast<std::size_t>(group.name)];
      net.bits = bitsOfName(net.name);
    } else if (group.firstTerminal >= 0) {
      net.bits = group.narrowest;
    } else {
      net.bits = group.hasBus ? 0 : 1;
    }
    group.net = static_cast<int>(result_.nets.size());
    result_.nets.push_back(std::move(net));
    if (known != nullptr)
      *known = group.net;
  } else {
    group.net = *known;
  }
  return group.net;
}

void ConnectivityFinder::makeNets() {
  const auto assign = [this](std::vector<int> &nets, int firstNode, std::size_t count, auto member) {
    for (std::size_t i = 0; i < count; ++i) {
      const int net = netOf(firstNode + static_cast<int>(i));
      nets.push_back(net);
      if (net >= 0)
        (result_.nets[static_cast<std::size_t>(net)].*member).push_back(static_cast<int>(i));
    }
  };
  assign(result_.netOfPort, portNodes_, model_.ports.size(), &SchematicNet::ports);
  assign(result_.netOfLabel, labelNodes_, model_.labels.size(), &SchematicNet::labels);
  assign(result_.netOfWire, 0, model_.wires.size(), &SchematicNet::wires);
  assign(result_.netOfGround, groundNodes_, model_.grounds.size(), &SchematicNet::grounds);
  assign(result_.netOfTerminal, terminalNodes_, result_.terminals.size(), &SchematicNet::terminals);
  assign(result_.netOfDot, dotNodes_, model_.wireDots.size(), &SchematicNet::dots);
  for (SchematicNet &net : result_.nets) {
    net.isGlobal = !net.grounds.empty() || std::any_of(net.ports.begin(), net.ports.end(), [this](int port) {
      return model_.ports[static_cast<std::size_t>(port)].isGlobal;
    });
  }
}

void ConnectivityFinder::nameAutomaticNets() {
  const QString prefix = QStringLiteral("net");
  QSet<QString> used;
  for (const QString &name : names_) {
    if (!name.contains(prefix))
      continue;
    used.insert(name);
    for (const NameMember &member : membersOfName(name))
      used.insert(member.base);
  }
  int number = 0;
  for (SchematicNet &net : result_.nets) {
    if (!net.isAutomatic || net.bits == 0)
      continue;
    do
      net.name = prefix + QString::number(++number);
    while (used.contains(net.name));
    if (net.bits > 1)
      net.name += QStringLiteral("<%1:0>").arg(net.bits - 1);
  }
}

void ConnectivityFinder::checkWidths() {
  for (std::size_t i = 0; i < result_.terminals.size(); ++i) {
    const int netNumber = result_.netOfTerminal[i];
    if (netNumber < 0)
      continue;
    const PlacedTerminal &terminal = result_.terminals[i];
    const SchematicNet &net = result_.nets[static_cast<std::size_t>(netNumber)];
    const SchematicPlacement &placement = placementOf(static_cast<int>(i));
    const int terminalBits = bitsOfName(terminal.terminal);
    if (isFittingWidth(net.bits, terminalBits, placement.bits()))
      continue;
    const QString times = placement.isVector ? QStringLiteral(" times %1").arg(placement.bits()) : QString();
    result_.problems.append(
        model_.source.prefix(placement.sourceLine) +
        QStringLiteral("terminal %1 of placement %2 at %3 has %4%5, but net %6 has %7")
            .arg(terminal.terminal, placement.name, model_.source.placeText(terminal.position))
            .arg(counted(static_cast<quint64>(terminalBits), QStringLiteral("bit")), times, net.name)
            .arg(net.bits));
  }
}

} // namespace

SchematicConnectivity findConnectivity(const SchematicModel &model,
                                       const QHash<QString, const SymbolModel *> &symbols) {
  return ConnectivityFinder(model, symbols).find();
}
