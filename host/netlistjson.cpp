#include "netlistjson.h"

#include "schematicmodel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonObject deviceToJson(const NetlistCell &cell, const NetlistDevice &device) {
  QJsonObject connections;
  for (int i = 0; i < device.terminals.size(); ++i)
    connections.insert(device.terminals[i], cell.nodes[device.nodes[static_cast<std::size_t>(i)]]);
  QJsonObject parameters;
  for (const auto &[name, value] : device.allParameters())
    parameters.insert(name, value);
  return {{QStringLiteral("name"), device.name},
          {QStringLiteral("master"), device.cell},
          {QStringLiteral("library"), device.library},
          {QStringLiteral("view"), splitDevice(device.device).view},
          {QStringLiteral("subcircuit"), device.master >= 0},
          {QStringLiteral("connections"), connections},
          {QStringLiteral("parameters"), parameters}};
}

QJsonObject cellToJson(const NetlistCell &cell) {
  QJsonArray ports;
  QJsonArray portNets; // which may be called otherwise
  for (const NetlistPort &port : cell.ports) {
    ports.append(port.name);
    portNets.append(port.node < 0 ? QJsonValue() : QJsonValue(cell.nodes[port.node]));
  }
  QJsonArray globals;
  for (const int node : cell.globals)
    globals.append(cell.nodes[node]);
  QJsonArray devices;
  for (const NetlistDevice &device : cell.devices)
    devices.append(deviceToJson(cell, device));
  return {{QStringLiteral("library"), cell.library},
          {QStringLiteral("name"), cell.cell},
          {QStringLiteral("view"), cell.view},
          {QStringLiteral("ports"), ports},
          {QStringLiteral("portNets"), portNets},
          {QStringLiteral("globals"), globals},
          {QStringLiteral("nets"), QJsonArray::fromStringList(cell.nodes)},
          {QStringLiteral("devices"), devices}};
}

} // namespace

QByteArray toJson(const Netlist &netlist) {
  QJsonArray cells;
  for (const int index : netlist.mastersFirst)
    cells.append(cellToJson(netlist.cells[static_cast<std::size_t>(index)]));
  const QJsonObject top{{QStringLiteral("top"), netlist.cells.front().path()}, {QStringLiteral("cells"), cells}};
  return QJsonDocument(top).toJson(QJsonDocument::Indented);
}
