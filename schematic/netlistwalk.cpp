#include "netlistwalk.h"

#include "hostsyntax.h"

using namespace oa;

namespace {

const int kOpen = -1;

// A design that fits its symbols nowhere need not be told instance by instance.
const int kMostReports = 100;

// More connections than a design can have that a machine of today holds; only a damaged one asks for them.
const size_t kMostConnections = size_t(1) << 28;

// Says where the label of a placement stands and nothing about the device.
const char kLabelOffset[] = "labelOffset";

// The name of one bit of an instance in host syntax.
void getBitName(oaInst *inst, size_t bit, oaString &name) {
  if (inst->getType() == oacVectorInstType) {
    oaVectorName range;
    static_cast<oaVectorInst *>(inst)->getName(range);
    range.getBitName(oaConvert::ns, oaUInt4(bit), name);
  } else {
    inst->getName(oaConvert::ns, name);
  }
  toHostName(name);
}

} // namespace

NetlistWalk::NetlistWalk(oaPlugInMain &host, WalkFaults &faults, const QString &path)
    : host_(host), faults_(faults), path_(path), addNode_(host, "netlistAddNode(QString,int,bool)"),
      addDevice_(host, "netlistAddDevice(QString,QString,QStringList,QList<int>,QStringList,QStringList)") {}

void NetlistWalk::send(oaBlock *block) {
  collect(block);
  sendNodes();
  faults_.guardKind([&] {
    for (const Device &device : devices_) {
      faults_.guardObject([&] { sendDevice(device); });
    }
  });
}

void NetlistWalk::collect(oaBlock *block) {
  faults_.guardKind([&] { nodes_.addBlock(block); });
  faults_.guardKind([&] {
    oaIter<oaInst> insts(block->getInsts());
    while (oaInst *inst = insts.getNext()) {
      faults_.guardObject([&] { addInst(inst); });
    }
  });
}

void NetlistWalk::addInst(oaInst *inst) {
  NetlistMaster &master = masterOf(inst);
  findConnections(inst, master);
  Device device = {inst, &master, master.terminals(), deviceNodes_.size(), inst->getNumBits()};
  reportMissing(inst, master);
  for (const Connection &connection : connections_) {
    if (connection.terminal->isMissing()) {
      device.terminals += connection.terminal->bitNames;
    }
  }
  const size_t width = size_t(device.terminals.size());
  if (width > 0 && device.bitCount > (kMostConnections - deviceNodes_.size()) / width) {
    report(oaPlugInMain::tr("too many connections, the instance is left out"), inst, master, QString());
    return;
  }
  connect(device);
  addOpenNodes(device);
  devices_.push_back(device);
}

NetlistMaster &NetlistWalk::masterOf(oaInst *inst) {
  std::unique_ptr<NetlistMaster> &master = mastersByHeader_[inst->getHeader()];
  if (!master) {
    master.reset(new NetlistMaster(inst));
  }
  return *master;
}

void NetlistWalk::findConnections(oaInst *inst, NetlistMaster &master) {
  connections_.clear();
  oaIter<oaInstTerm> instTerms(inst->getInstTerms());
  while (oaInstTerm *instTerm = instTerms.getNext()) {
    faults_.guardObject([&] {
      NetlistMaster::Terminal &terminal = master.terminalOf(instTerm, connections_.size());
      connections_.push_back({&terminal, nodes_.bitsOf(instTerm->getNet())});
    });
  }
}

// Fills in the rows of all bits of an instance.
void NetlistWalk::connect(Device &device) {
  const size_t width = size_t(device.terminals.size());
  deviceNodes_.resize(device.firstNode + device.bitCount * width, kOpen);
  size_t added = size_t(device.master->terminals().size());
  bool isReported = false;
  for (const Connection &connection : connections_) {
    const NetlistMaster::Terminal &terminal = *connection.terminal;
    const size_t stride = strideOf(connection, device);
    for (size_t bit = 0; bit < device.bitCount; ++bit) {
      int *row = &deviceNodes_[device.firstNode + bit * width];
      for (size_t i = 0; i < terminal.width() && bit * stride + i < connection.bits.count; ++i) {
        int &place = row[terminal.isMissing() ? added + i : terminal.places[i]];
        const int node = nodes_.nodeOf(connection.bits, bit * stride + i);
        if (place != kOpen && place != node && !isReported) {
          isReported = true;
          report(oaPlugInMain::tr("a terminal is connected to two nets"), device.inst, *device.master,
                 oaPlugInMain::tr("terminal %1").arg(terminal.name));
        }
        place = node;
      }
    }
    added += terminal.isMissing() ? terminal.width() : 0;
  }
}

// How many bits of the net lie between those of one bit of the instance and those of the next: each takes its slice of
// a wide net, or all take the whole of one as wide as the terminal. What fits neither way is reported and taken in
// slices as far as it goes.
size_t NetlistWalk::strideOf(const Connection &connection, const Device &device) {
  const size_t width = connection.terminal->width();
  const size_t count = connection.bits.count;
  if (count == width * device.bitCount || count == 0) {
    return width;
  }
  if (count == width) {
    return 0;
  }
  report(oaPlugInMain::tr("the width of a net does not fit"), device.inst, *device.master,
         oaPlugInMain::tr("terminal %1 has %2 bits, the instance %3, the net %4")
             .arg(connection.terminal->name)
             .arg(qulonglong(width))
             .arg(qulonglong(device.bitCount))
             .arg(qulonglong(count)));
  return width;
}

// A terminal without a net gets a node of its own.
void NetlistWalk::addOpenNodes(const Device &device) {
  const size_t width = size_t(device.terminals.size());
  for (size_t i = device.firstNode; i < deviceNodes_.size(); ++i) {
    if (deviceNodes_[i] == kOpen) {
      deviceNodes_[i] = nodes_.addUnnamed();
      const size_t place = i - device.firstNode;
      openTerminals_.push_back({devices_.size(), place / width, place % width});
    }
  }
}

void NetlistWalk::sendNodes() {
  int number = 0;
  size_t open = 0;
  faults_.guardKind([&] {
    for (const NetlistNodes::Node &node : nodes_.nodes()) {
      faults_.guardObject([&] {
        if (node.net) {
          node.net->getName(oaConvert::ns, text_);
          toHostName(text_);
          emit addNode_(name_.set(text_), number, node.isExternal);
        } else {
          emit addNode_(nameOf(openTerminals_[open]), number, false);
        }
      });
      open += node.net ? 0 : 1;
      ++number;
    }
  });
}

// "I1/A". No net is called so, since a slash separates levels of hierarchy. Two of these may be: names of scalars may
// hold brackets, and then an instance V<2> and a bit of an instance V read alike. The numbers tell the nodes apart.
const QString &NetlistWalk::nameOf(const OpenTerminal &open) {
  const Device &device = devices_[open.device];
  getBitName(device.inst, open.bit, text_);
  text_ += '/';
  text_ += oaConvert::toOaString(device.terminals.at(int(open.terminal)));
  return name_.set(text_);
}

void NetlistWalk::sendDevice(const Device &device) {
  readProperties(device.inst);
  for (size_t bit = 0; bit < device.bitCount; ++bit) {
    getBitName(device.inst, bit, text_);
    emit addDevice_(name_.set(text_), device.master->deviceName(), device.terminals, nodesOf(device, bit),
                    propertyNames_, propertyValues_);
  }
}

// The memory of the last list serves again unless a receiver kept it.
const QList<int> &NetlistWalk::nodesOf(const Device &device, size_t bit) {
  const int width = device.terminals.size();
  const int *row = deviceNodes_.data() + device.firstNode + bit * size_t(width);
  if (!bitNodes_.isDetached() || bitNodes_.size() != width) {
    bitNodes_ = QList<int>();
    bitNodes_.reserve(width);
    for (int i = 0; i < width; ++i) {
      bitNodes_.append(row[i]);
    }
  } else {
    for (int i = 0; i < width; ++i) {
      bitNodes_[i] = row[i];
    }
  }
  return bitNodes_;
}

// All properties but the one that only places text.
void NetlistWalk::readProperties(oaInst *inst) {
  propertyNames_ = QStringList();
  propertyValues_ = QStringList();
  if (!inst->hasProp()) {
    return;
  }
  oaIter<oaProp> props(inst->getProps());
  while (oaProp *prop = props.getNext()) {
    prop->getName(text_);
    if (text_ == kLabelOffset) {
      continue;
    }
    propertyNames_.append(oaConvert::toString(text_));
    prop->getValue(text_);
    propertyValues_.append(oaConvert::toString(text_));
  }
}

// With very many instances the first one stands for all: a master that is missing is told once, and so is each terminal
// that a master lacks.
void NetlistWalk::reportMissing(oaInst *inst, const NetlistMaster &master) {
  const bool isUnknown = !master.fault().isEmpty();
  if (isUnknown && !reportedMasters_.insert(&master).second) {
    return;
  }
  QStringList names;
  for (const Connection &connection : connections_) {
    NetlistMaster::Terminal &terminal = *connection.terminal;
    if (terminal.isMissing() && !terminal.isReported) {
      terminal.isReported = true;
      names.append(terminal.name);
    }
  }
  const QString terminals = oaPlugInMain::tr("connected by name: %1").arg(names.join(QLatin1String(", ")));
  if (isUnknown) {
    report(oaPlugInMain::tr("the master of an instance cannot be read"), inst, master,
           names.isEmpty() ? master.fault() : master.fault() + QLatin1String(", ") + terminals);
  } else if (!names.isEmpty() && ++lackingReports_ <= kMostReports) {
    report(oaPlugInMain::tr("the master of an instance lacks a terminal"), inst, master, terminals);
  }
}

void NetlistWalk::report(const QString &message, oaInst *inst, const NetlistMaster &master, const QString &rest) {
  inst->getName(oaConvert::ns, text_);
  toHostName(text_);
  QString detail = oaPlugInMain::tr("%1, instance %2 of %3").arg(path_, oaConvert::toString(text_), master.path());
  if (!rest.isEmpty()) {
    detail += QLatin1String(", ") + rest;
  }
  emit host_.reportError(message, 1, detail);
}
