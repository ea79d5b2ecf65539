#ifndef NETLISTJSON_H
#define NETLISTJSON_H

#include "netlistmodel.h"

#include <QByteArray>

// A netlist as one JSON object, names in host syntax:
//   {"top": "LIB/CELL/VIEW", "cells": [
//     {"library", "name", "view", "ports": [names], "globals": [names], "nets": [names], "devices": [
//       {"name", "master", "library", "view", "subcircuit": true when its schematic is among the cells,
//        "connections": {terminal: net}, "parameters": {name: value}}]}]}
// Masters come before their users. "master" and "view" are the cell and its symbol; the parameters are the device's own
// over those of its symbol.
QByteArray toJson(const Netlist &netlist);

#endif
