#ifndef NETLISTREADER_H
#define NETLISTREADER_H

#include "importreport.h"
#include "netlistmodel.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <functional>

class PluginSession;

// Fills a cell's nodes and devices from the signals of one loadNetlist() call. Connect before the call.
class NetlistReceiver : public QObject {
  Q_OBJECT

public:
  NetlistReceiver(QObject &plugin, NetlistCell &cell, ImportReport &report);

  // Nodes that a terminal or a global net leads out of, in order.
  const std::vector<int> &externals() const { return externals_; }

private slots:
  void netlistAddNode(const QString &name, int number, bool isExternal);
  void netlistAddDevice(const QString &name, const QString &master, const QStringList &terminals,
                        const QList<int> &nodes, const QStringList &parameterNames, const QStringList &parameterValues);

private:
  NetlistCell &cell_;
  ImportReport &report_;
  QSet<QString> names_;
  std::vector<int> externals_;
};

// Reads the netlist of a view and of the schematics under it: a placed cell that has a view "schematic" is a
// subcircuit. Throws HostError when the view is unknown or cannot be read at all; what is wrong further down goes to
// `report` or is told by the plug-in. `progress` is called with the number of cells read.
//
// Where a node leads outside, the symbol of the cell says whether it is a port: one of its terminals is; anything else
// is global. A cell without a symbol has the terminals of its schematic as ports; in views of other types every
// external node is a port. A port has the name of its terminal, whatever the terminal's net is called.
Netlist readNetlist(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    ImportReport &report, const std::function<void(qint64)> &progress);

#endif
