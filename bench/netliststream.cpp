#include "netliststream.h"

#include <cstdio>

namespace {

const char kAddNode[] = SIGNAL(netlistAddNode(QString, int, bool));
const char kAddDevice[] = SIGNAL(netlistAddDevice(QString, QString, QStringList, QList<int>, QStringList, QStringList));

} // namespace

bool ReceivedNetlist::operator==(const ReceivedNetlist &other) const {
  return nodes == other.nodes && externals == other.externals && devices == other.devices &&
         connections == other.connections && errors == other.errors && checksum == other.checksum;
}

QString ReceivedNetlist::text() const {
  return QString("%1 nodes, %2 external, %3 devices, %4 connections, %5 errors, checksum %6")
      .arg(nodes)
      .arg(externals)
      .arg(devices)
      .arg(connections)
      .arg(errors)
      .arg(checksum, 16, 16, QChar('0'));
}

void NetlistSink::connectTo(QObject *sender) {
  connect(sender, SIGNAL(reportError(QString, int, QString)), SLOT(reportError(QString, int, QString)));
  connect(sender, kAddNode, SLOT(netlistAddNode(QString, int, bool)));
  connect(sender, kAddDevice,
          SLOT(netlistAddDevice(QString, QString, QStringList, QList<int>, QStringList, QStringList)));
}

void NetlistSink::reportError(QString message, int severity, QString detail) {
  if (received_.errors++ == 0) {
    std::fprintf(stderr, "%s (%d): %s\n", qPrintable(message), severity, qPrintable(detail));
  }
}

void NetlistSink::netlistAddNode(QString name, int number, bool isExternal) {
  ++received_.nodes;
  received_.externals += isExternal ? 1 : 0;
  add(quint64(number) + quint64(name.size()));
}

void NetlistSink::netlistAddDevice(QString device, QString master, QStringList terminals, QList<int> nodes,
                                   QStringList names, QStringList values) {
  ++received_.devices;
  received_.connections += nodes.size();
  for (int i = 0; i < nodes.size(); ++i) {
    add(quint64(nodes.at(i)) + quint64(terminals.at(i).size()));
  }
  add(quint64(device.size()) + quint64(master.size()) + quint64(names.size()) + quint64(values.size()));
}

void NetlistFloor::keepFrom(QObject *sender) {
  connect(sender, kAddNode, SLOT(keepNode(QString, int, bool)));
  connect(sender, kAddDevice, SLOT(keepDevice(QString, QString, QStringList, QList<int>, QStringList, QStringList)));
}

void NetlistFloor::keepNode(QString name, int number, bool isExternal) { nodes_.push_back({name, number, isExternal}); }

void NetlistFloor::keepDevice(QString device, QString master, QStringList terminals, QList<int> nodes,
                              QStringList names, QStringList values) {
  devices_.push_back({device, master, terminals, nodes, names, values});
}

void NetlistFloor::send() {
  for (const Node &node : nodes_) {
    emit netlistAddNode(node.name, node.number, node.isExternal);
  }
  for (const Device &device : devices_) {
    emit netlistAddDevice(device.name, device.master, device.terminals, device.nodes, device.names, device.values);
  }
}
