#ifndef NETLISTWALK_H
#define NETLISTWALK_H

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "buffers.h"
#include "directsignal.h"
#include "netlistmaster.h"
#include "netlistnodes.h"
#include "oapluginmain.h"
#include "walkfaults.h"

// Sends the netlist of one block: all nodes, then all devices. Nodes come in the order of the block's explicit nets,
// the bits of each in written order, then one for each terminal without a net as the devices meet them. Devices come in
// the order of the instances, the bits of an iterated instance in written order, with the terminals of their master in
// its order.
//
// The walk first finds every connection and then sends, since a terminal without a net makes a node, and the nodes go
// first.
class NetlistWalk {
public:
  // `path` names the design in reports.
  NetlistWalk(oaPlugInMain &host, WalkFaults &faults, const QString &path);
  // What cannot be read is reported; everything else is sent.
  void send(oa::oaBlock *block);

private:
  // A terminal of an instance and the net on it.
  struct Connection {
    NetlistMaster::Terminal *terminal;
    NetlistNodes::Bits bits;
  };
  // All bits of one instance.
  struct Device {
    oa::oaInst *inst;
    const NetlistMaster *master;
    // Those of the master and then those that it lacks.
    QStringList terminals;
    // The row of the first bit in deviceNodes_; each bit has one node for each terminal.
    size_t firstNode;
    size_t bitCount;
  };
  // The terminal for which an unnamed node was made.
  struct OpenTerminal {
    size_t device, bit, terminal;
  };

  void collect(oa::oaBlock *block);
  void addInst(oa::oaInst *inst);
  NetlistMaster &masterOf(oa::oaInst *inst);
  void findConnections(oa::oaInst *inst, NetlistMaster &master);
  void connect(Device &device);
  void connectBit(size_t row, size_t bit, const Device &device);
  size_t strideOf(const Connection &connection, const Device &device);
  void addOpenNodes(const Device &device);

  void sendNodes();
  void sendDevice(const Device &device);
  const QList<int> &nodesOf(const Device &device, size_t bit);
  const QString &nameOf(const OpenTerminal &open);
  void readProperties(oa::oaInst *inst);

  void reportMissing(oa::oaInst *inst, const NetlistMaster &master);
  void report(const QString &message, oa::oaInst *inst, const NetlistMaster &master, const QString &rest);

  oaPlugInMain &host_;
  WalkFaults &faults_;
  const QString path_;
  const DirectSignal<QString, int, bool> addNode_;
  const DirectSignal<QString, QString, QStringList, QList<int>, QStringList, QStringList> addDevice_;

  NetlistNodes nodes_;
  std::unordered_map<const oa::oaObject *, std::unique_ptr<NetlistMaster>> mastersByHeader_;
  int lackingReports_ = 0;
  std::unordered_set<const NetlistMaster *> reportedMasters_;
  std::vector<Device> devices_;
  std::vector<int> deviceNodes_;
  // In the order of their nodes.
  std::vector<OpenTerminal> openTerminals_;
  // Of the instance in hand.
  std::vector<Connection> connections_;

  TextBuffer name_;
  oa::oaString text_;
  QList<int> bitNodes_;
  QStringList propertyNames_;
  QStringList propertyValues_;
};

#endif
