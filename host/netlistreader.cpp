#include "netlistreader.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "schematicconnectivity.h"
#include "schematicreceiver.h"
#include "tcllist.h"
#include "usermessage.h"

#include <QHash>
#include <QMap>

#include <algorithm>
#include <utility>

namespace {

const QString kSchematicView = QStringLiteral("schematic");

// Gives for all terminals of a view their names, their nets, and whether these are global; of a parametric view, those
// that it has with its default parameters.
const char kTerminalScript[] = R"(
set design [oa::DesignOpen {*}$arguments r]
if {[oa::isSuperMaster $design]} {
  set defaults [oa::getParams $design]
  oa::close $design
  set design [oa::DesignOpen {*}$arguments [oa::ParamArray $defaults]]
}
set terminals {}
try {
  set all [oa::getTerms [oa::getTopBlock $design]]
  while {[set terminal [oa::getNext $all]] ne ""} {
    set net [oa::getNet $terminal]
    lappend terminals [oa::getName $terminal] [oa::getName $net] [oa::isGlobal $net]
  }
} finally {
  oa::close $design
}
return $terminals
)";

// A terminal of a view and its net, as wholes, in host syntax.
struct ViewTerminal {
  QString name;
  QString net;
  bool isOnGlobalNet = false;
};

// What drawing and terminals tell of a cell that its netlist does not.
struct Drawing {
  bool isSchematic = false;
  QHash<QString, QString> libraries; // of a placement, by its name and device
  // Bit by bit, in the order of the drawing; of a schematic, then the terminals that are not drawn.
  QStringList ports;
  QSet<QString> globalPorts;            // bit by bit
  QSet<QString> groundNames;            // labels that lie on a ground: their nets are global
  QMap<QString, QString> netOfTerminal; // bit by bit
};

QString placementKey(const QString &name, const QString &device) { return name + QLatin1Char('\n') + device; }

// "I1<3>" is a bit of the placement I1.
QString withoutBit(const QString &name) { return name.left(name.lastIndexOf(QLatin1Char('<'))); }

// Terminals arrive in the order in which they were made, buses behind all others.
void orderTerminals(NetlistDevice &device) {
  if (device.terminals == device.symbol->terminals)
    return;
  QHash<QString, int> nodes;
  for (int i = 0; i < device.terminals.size(); ++i)
    nodes.insert(device.terminals[i], device.nodes[static_cast<std::size_t>(i)]);
  const QStringList wanted = device.symbol->terminals + device.terminals;
  device.terminals.clear();
  device.nodes.clear();
  for (const QString &terminal : wanted) {
    const auto node = nodes.find(terminal);
    if (node == nodes.end())
      continue;
    device.terminals.append(terminal);
    device.nodes.push_back(*node);
    nodes.erase(node);
  }
}

bool hasAll(const QSet<QString> &names, const QStringList &wanted) {
  return std::all_of(wanted.begin(), wanted.end(), [&](const QString &name) { return names.contains(name); });
}

bool isAllShown(const NetlistCell &cell, const std::vector<int> &externals, const QSet<QString> &shown) {
  return std::all_of(externals.begin(), externals.end(), [&](int node) { return shown.contains(cell.nodes[node]); });
}

// The ports of a cell: terminals on the nodes of their nets.
class PortFinder {
public:
  PortFinder(NetlistCell &cell, const Drawing &drawing, const std::vector<int> &externals, ImportReport &report);
  void find();

private:
  void addOfSymbol();
  void addOfDrawing();
  void addRest();
  void addPort(const QString &name, int node);
  void problem(const char *what, const char *kind, const QString &name);
  // The node that leads outside by a terminal, or by a global net of that name; -1 when there is none.
  int externalNodeOf(const QString &terminal) const;

  NetlistCell &cell_;
  const Drawing &drawing_;
  const std::vector<int> &externals_;
  const QSet<int> outside_;
  ImportReport &report_;
  QHash<QString, int> nodes_;
  QHash<int, QString> terminals_; // by node: the first that is on it
  QSet<int> taken_;
};

PortFinder::PortFinder(NetlistCell &cell, const Drawing &drawing, const std::vector<int> &externals,
                       ImportReport &report)
    : cell_(cell), drawing_(drawing), externals_(externals), outside_(externals.begin(), externals.end()),
      report_(report) {
  for (int node = 0; node < cell.nodes.size(); ++node)
    nodes_.insert(cell.nodes[node], node);
  for (auto terminal = drawing.netOfTerminal.constBegin(); terminal != drawing.netOfTerminal.constEnd(); ++terminal) {
    const int node = nodes_.value(terminal.value(), -1);
    if (!terminals_.contains(node))
      terminals_.insert(node, terminal.key());
  }
}

void PortFinder::find() {
  if (cell_.symbol != nullptr)
    addOfSymbol();
  addOfDrawing();
  addRest();
}

int PortFinder::externalNodeOf(const QString &terminal) const {
  const auto net = drawing_.netOfTerminal.constFind(terminal);
  const bool isTerminal = net != drawing_.netOfTerminal.constEnd();
  const int node = nodes_.value(isTerminal ? *net : terminal, -1);
  const bool isOfOther = !isTerminal && terminals_.contains(node);
  return outside_.contains(node) && !isOfOther ? node : -1;
}

// A second port on a node has none, since a subcircuit cannot say that two of its ports are one.
void PortFinder::addPort(const QString &name, int node) {
  const bool isShared = node >= 0 && taken_.contains(node);
  if (isShared)
    problem("two terminals are on one net, which a netlist cannot say: the second one is open", "terminal", name);
  cell_.ports.push_back({name, isShared ? -1 : node});
  taken_.insert(node);
}

void PortFinder::problem(const char *what, const char *kind, const QString &name) {
  report_.problem(QString::fromLatin1(what), QStringLiteral("%1, %2 %3").arg(cell_.path(), QLatin1String(kind), name));
}

void PortFinder::addOfSymbol() {
  for (const QString &terminal : cell_.symbol->terminals) {
    int node = externalNodeOf(terminal);
    if (node < 0) {
      problem("a terminal of the symbol is no port of the schematic", "terminal", terminal);
      const int inner = nodes_.value(terminal, -1);
      node = terminals_.contains(inner) ? -1 : inner;
    }
    addPort(terminal, node);
  }
  for (const QString &name : cell_.symbol->extraNames()) {
    if (nodes_.contains(name) && !taken_.contains(nodes_.value(name)))
      addPort(name, nodes_.value(name));
  }
}

// A port may be drawn more than once.
void PortFinder::addOfDrawing() {
  QSet<QString> seen = drawing_.globalPorts;
  for (const QString &name : drawing_.ports) {
    if (seen.contains(name))
      continue;
    seen.insert(name);
    const int node = externalNodeOf(name);
    if (cell_.symbol == nullptr) {
      if (node < 0)
        problem("the net of a port cannot be found, the port is open", "port", name);
      addPort(name, node);
    } else if (node >= 0 && !taken_.contains(node)) {
      problem("a port of the schematic is no terminal of the symbol", "port", name);
      taken_.insert(node);
    }
  }
}

void PortFinder::addRest() {
  for (const int node : externals_) {
    if (taken_.contains(node))
      continue;
    if (cell_.symbol == nullptr && !drawing_.isSchematic)
      addPort(terminals_.value(node, cell_.nodes[node]), node);
    else
      cell_.globals.push_back(node);
  }
}

class NetlistBuilder {
public:
  NetlistBuilder(PluginSession &session, ImportReport &report) : session_(session), report_(report) {}
  Netlist build(const QString &lib, const QString &cell, const QString &view,
                const std::function<void(qint64)> &progress);

private:
  enum class State { Unread, Open, Complete };
  struct OpenCell {
    int cell;
    std::size_t nextDevice;
  };

  int cellIndex(const QString &lib, const QString &cell, const QString &view);
  void begin(int index);
  void visit(OpenCell &open);
  Drawing readDrawing(const NetlistCell &cell, const QString &viewType);
  void addTerminals(const NetlistCell &cell, const std::vector<int> &externals, Drawing &drawing);
  void findMaster(const NetlistCell &cell, const Drawing &drawing, NetlistDevice &device);
  bool hasSchematic(const QString &lib, const QString &cell);
  const NetlistSymbol *symbolOf(const QString &lib, const QString &device);
  void addUndrawnTerminals(const QString &lib, const QString &device, QSet<QString> shown, NetlistSymbol &symbol);
  std::vector<ViewTerminal> terminalsOf(const NetlistCell &view);

  PluginSession &session_;
  ImportReport &report_;
  Netlist netlist_;
  QHash<QString, int> indexes_;
  std::vector<State> states_;
  std::vector<OpenCell> openCells_;
  QHash<QString, bool> hasSchematic_;
  QSet<QString> missingSymbols_;
};

Netlist NetlistBuilder::build(const QString &lib, const QString &cell, const QString &view,
                              const std::function<void(qint64)> &progress) {
  begin(cellIndex(lib, cell, view));
  qint64 complete = 0;
  while (!openCells_.empty()) {
    OpenCell &open = openCells_.back();
    const auto index = static_cast<std::size_t>(open.cell);
    if (open.nextDevice < netlist_.cells[index].devices.size()) {
      visit(open);
      continue;
    }
    states_[index] = State::Complete;
    netlist_.mastersFirst.push_back(open.cell);
    openCells_.pop_back();
    progress(++complete);
  }
  return std::move(netlist_);
}

int NetlistBuilder::cellIndex(const QString &lib, const QString &cell, const QString &view) {
  const QString key = cellViewName(lib, cell, view);
  const auto known = indexes_.constFind(key);
  if (known != indexes_.constEnd())
    return *known;
  const int index = static_cast<int>(netlist_.cells.size());
  netlist_.cells.push_back({lib, cell, view, {}, {}, {}, {}, nullptr});
  states_.push_back(State::Unread);
  indexes_.insert(key, index);
  return index;
}

// Goes to the master of the next device before the rest of the cell, if it is to be read.
void NetlistBuilder::visit(OpenCell &open) {
  const NetlistCell &cell = netlist_.cells[static_cast<std::size_t>(open.cell)];
  const NetlistDevice &device = cell.devices[open.nextDevice++];
  if (device.master < 0)
    return;
  const State state = states_[static_cast<std::size_t>(device.master)];
  if (state == State::Unread) {
    begin(device.master);
  } else if (state == State::Open) {
    report_.problem(QStringLiteral("a cell contains itself, the netlist is endless"),
                    QStringLiteral("%1, device %2 of %3").arg(cell.path(), device.name, device.cell));
  }
}

void NetlistBuilder::begin(int index) {
  const auto place = static_cast<std::size_t>(index);
  NetlistCell cell = netlist_.cells[place];
  const QString viewType = session_.requireView(cell.library, cell.cell, cell.view);
  const int errorsBefore = session_.errorCount();
  NetlistReceiver receiver(session_.object(), cell, report_);
  session_.core().loadNetlist(cell.library, cell.cell, cell.view);
  session_.synchronise();
  session_.object().disconnect(&receiver);
  const bool isUnreadable = cell.nodes.isEmpty() && cell.devices.empty() && session_.errorCount() > errorsBefore;
  if (isUnreadable && openCells_.empty())
    throw HostError(QStringLiteral("%1 could not be read as a netlist").arg(cell.path()));
  cell.symbol = symbolOf(cell.library, cell.cell);
  if (!isUnreadable) {
    Drawing drawing = readDrawing(cell, viewType);
    addTerminals(cell, receiver.externals(), drawing);
    for (NetlistDevice &device : cell.devices)
      findMaster(cell, drawing, device);
    PortFinder(cell, drawing, receiver.externals(), report_).find();
  } else if (cell.symbol != nullptr) {
    // What calls it can still be printed.
    for (const QString &terminal : cell.symbol->terminals)
      cell.ports.push_back({terminal, -1});
  }
  netlist_.cells[place] = std::move(cell);
  states_[place] = State::Open;
  openCells_.push_back({index, 0});
}

// The signals of the netlist name the cell of a device and not its library; those of the drawing do. What is wrong with
// the view has been told.
Drawing NetlistBuilder::readDrawing(const NetlistCell &cell, const QString &viewType) {
  Drawing drawing;
  drawing.isSchematic = viewType == QLatin1String("schematic");
  SchematicModel model;
  session_.setReportsIgnored(true);
  try {
    model = readSchematic(session_, cell.library, cell.cell, cell.view);
  } catch (const HostError &) {
    report_.problem(QStringLiteral("the placements cannot be read, every master is looked for in the same library"),
                    cell.path());
  }
  session_.setReportsIgnored(false);
  for (const SchematicPlacement &placement : model.placements)
    drawing.libraries.insert(placementKey(placement.name, placement.device), placement.library);
  for (const SchematicPort &port : model.ports) {
    for (const QString &bit : bitNamesOf(port.name)) {
      if (port.isGlobal)
        drawing.globalPorts.insert(bit);
      else
        drawing.ports.append(bit);
    }
  }
  QSet<QPair<int, int>> grounds;
  for (const SchematicGround &ground : model.grounds)
    grounds.insert({ground.position.x(), ground.position.y()});
  for (const SchematicLabel &label : model.labels) {
    if (grounds.contains({label.origin.x(), label.origin.y()}))
      drawing.groundNames.insert(label.text);
  }
  return drawing;
}

// A terminal may have another name than its net. When the terminals cannot be asked for, as in a kit without Tcl, they
// are taken to have that of their net.
void NetlistBuilder::addTerminals(const NetlistCell &cell, const std::vector<int> &externals, Drawing &drawing) {
  QSet<QString> shown = drawing.globalPorts + drawing.groundNames;
  for (const QString &port : qAsConst(drawing.ports))
    shown.insert(port);
  for (const QString &terminal : cell.symbol != nullptr ? cell.symbol->terminals : QStringList())
    shown.insert(terminal);
  std::vector<ViewTerminal> terminals;
  session_.setReportsIgnored(true);
  try {
    terminals = terminalsOf(cell);
  } catch (const HostError &error) {
    if (!isAllShown(cell, externals, shown))
      report_.problem(error.message(), cell.path());
  }
  session_.setReportsIgnored(false);
  for (const ViewTerminal &terminal : terminals) {
    const QStringList bits = bitNamesOf(terminal.name);
    const QStringList nets = bitNamesOf(terminal.net);
    for (int i = 0; i < bits.size() && i < nets.size(); ++i)
      drawing.netOfTerminal.insert(bits[i], nets[i]);
    if (drawing.isSchematic && !terminal.isOnGlobalNet && !hasAll(shown, bits))
      drawing.ports += bits;
  }
}

void NetlistBuilder::findMaster(const NetlistCell &cell, const Drawing &drawing, NetlistDevice &device) {
  const auto exact = drawing.libraries.constFind(placementKey(device.name, device.device));
  const auto found = exact != drawing.libraries.constEnd()
                         ? exact
                         : drawing.libraries.constFind(placementKey(withoutBit(device.name), device.device));
  device.library = found != drawing.libraries.constEnd() ? *found : cell.library;
  device.cell = splitDevice(device.device).cell;
  device.symbol = symbolOf(device.library, device.device);
  if (device.symbol != nullptr)
    orderTerminals(device);
  if (hasSchematic(device.library, device.cell))
    device.master = cellIndex(device.library, device.cell, kSchematicView);
}

// A library or cell that is not there has been told as a missing master.
bool NetlistBuilder::hasSchematic(const QString &lib, const QString &cell) {
  const QString key = cellViewName(lib, cell, kSchematicView);
  const auto known = hasSchematic_.constFind(key);
  if (known != hasSchematic_.constEnd())
    return *known;
  const bool isThere = session_.core().getLibs().contains(lib) && session_.core().getCellNames(lib).contains(cell) &&
                       session_.core().getViewNames(lib, cell).contains(kSchematicView);
  hasSchematic_.insert(key, isThere);
  return isThere;
}

std::vector<ViewTerminal> NetlistBuilder::terminalsOf(const NetlistCell &view) {
  QStringList texts = runTclScript(session_, kTerminalScript, {view.library, view.cell, view.view},
                                   QStringLiteral("the terminals of %1 cannot be read").arg(view.path()));
  for (QString &text : texts)
    text.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
  std::vector<ViewTerminal> terminals;
  for (int i = 0; i + 2 < texts.size(); i += 3)
    terminals.push_back({texts[i], texts[i + 1], texts[i + 2] != QLatin1String("0")});
  return terminals;
}

// Terminals that the drawing of the symbol does not show. It shows those whose ports are rectangles, and global nets;
// these are `shown`, bit by bit. There are others only when more nets lead outside, which may again be global ones.
void NetlistBuilder::addUndrawnTerminals(const QString &lib, const QString &device, QSet<QString> shown,
                                         NetlistSymbol &symbol) {
  const DeviceName name = splitDevice(device);
  NetlistCell view;
  view.library = lib;
  view.cell = name.cell;
  view.view = name.view;
  ImportReport ignored;
  NetlistReceiver receiver(session_.object(), view, ignored);
  session_.setReportsIgnored(true);
  session_.core().loadNetlist(lib, name.cell, name.view);
  session_.synchronise();
  session_.setReportsIgnored(false);
  if (isAllShown(view, receiver.externals(), shown))
    return;
  try {
    for (const ViewTerminal &terminal : terminalsOf(view)) {
      const QStringList bits = bitNamesOf(terminal.name);
      if (terminal.isOnGlobalNet || hasAll(shown, bits))
        continue;
      symbol.pins.append(terminal.name);
      for (const QString &bit : bits) {
        if (!shown.contains(bit))
          symbol.terminals.append(bit);
        shown.insert(bit);
      }
    }
  } catch (const HostError &error) {
    report_.problem(error.message(), view.path());
  }
}

// Null when there is none, which has been told as a missing master.
const NetlistSymbol *NetlistBuilder::symbolOf(const QString &lib, const QString &device) {
  const QString key = symbolKey(lib, device);
  const auto known = netlist_.symbols.find(key);
  if (known != netlist_.symbols.end())
    return &known->second;
  if (missingSymbols_.contains(key))
    return nullptr;
  if (!session_.core().existComponent(lib, device)) {
    missingSymbols_.insert(key);
    return nullptr;
  }
  NetlistSymbol symbol;
  try {
    const SymbolModel model = readComponent(session_, lib, device);
    QSet<QString> seen;
    for (const SchematicPort &port : model.ports) {
      if (!port.isGlobal)
        symbol.pins.append(port.name);
      for (const QString &bit : bitNamesOf(port.name)) {
        // A global port is a net of that name, and no terminal.
        if (!seen.contains(bit) && !port.isGlobal)
          symbol.terminals.append(bit);
        seen.insert(bit);
      }
    }
    addUndrawnTerminals(lib, device, seen, symbol);
    symbol.properties = model.data;
  } catch (const HostError &error) {
    report_.problem(error.message(), key);
    missingSymbols_.insert(key);
    return nullptr;
  }
  return &netlist_.symbols.emplace(key, std::move(symbol)).first->second;
}

} // namespace

NetlistReceiver::NetlistReceiver(QObject &plugin, NetlistCell &cell, ImportReport &report)
    : cell_(cell), report_(report) {
  const std::pair<const char *, const char *> connections[] = {
      {SIGNAL(netlistAddNode(QString, int, bool)), SLOT(netlistAddNode(QString, int, bool))},
      {SIGNAL(netlistAddDevice(QString, QString, QStringList, QList<int>, QStringList, QStringList)),
       SLOT(netlistAddDevice(QString, QString, QStringList, QList<int>, QStringList, QStringList))},
  };
  for (const auto &[signal, slot] : connections) {
    if (!connect(&plugin, signal, this, slot, Qt::DirectConnection))
      throw HostError(QStringLiteral("the plug-in has no signal %1").arg(QLatin1String(signal + 1)));
  }
}

void NetlistReceiver::netlistAddNode(const QString &name, int number, bool isExternal) {
  if (number != cell_.nodes.size()) {
    report_.problem(QStringLiteral("a node has the wrong number and is left out"),
                    QStringLiteral("%1, node %2").arg(cell_.path(), name));
    return;
  }
  QString unique = name;
  for (int i = 2; names_.contains(unique); ++i)
    unique = QStringLiteral("%1_%2").arg(name).arg(i);
  if (unique != name) {
    report_.problem(QStringLiteral("two nets have the same name, one is renamed"),
                    QStringLiteral("%1, net %2, now %3").arg(cell_.path(), name, unique));
  }
  names_.insert(unique);
  cell_.nodes.append(unique);
  if (isExternal)
    externals_.push_back(number);
}

void NetlistReceiver::netlistAddDevice(const QString &name, const QString &master, const QStringList &terminals,
                                       const QList<int> &nodes, const QStringList &parameterNames,
                                       const QStringList &parameterValues) {
  NetlistDevice device;
  device.name = name;
  device.device = master;
  for (int i = 0; i < terminals.size() && i < nodes.size(); ++i) {
    if (nodes[i] < 0 || nodes[i] >= cell_.nodes.size()) {
      report_.problem(QStringLiteral("a device is connected to an unknown node"),
                      QStringLiteral("%1, device %2, terminal %3").arg(cell_.path(), name, terminals[i]));
      continue;
    }
    device.terminals.append(terminals[i]);
    device.nodes.push_back(nodes[i]);
  }
  for (int i = 0; i < parameterNames.size() && i < parameterValues.size(); ++i)
    device.parameters.push_back({parameterNames[i], parameterValues[i]});
  cell_.devices.push_back(std::move(device));
}

Netlist readNetlist(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    ImportReport &report, const std::function<void(qint64)> &progress) {
  session.requireView(lib, cell, view);
  return NetlistBuilder(session, report).build(lib, cell, view, progress);
}
