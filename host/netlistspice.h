#ifndef NETLISTSPICE_H
#define NETLISTSPICE_H

#include "importreport.h"
#include "netlistmodel.h"

#include <QByteArray>

// A netlist as SPICE: the global nodes, then one .subckt for each cell, masters first.
//
//  - A device with a schematic is a call: X and its name, the nodes in the order of the ports, the subcircuit, and its
//    own parameters. The defaults of a subcircuit's parameters are the properties of its symbol.
//  - Any other device is the line that its symbol prescribes ("xschem.format"). Where it prescribes none, or one that
//    cannot be followed, which is a problem: its parameter "spiceprefix" (X without one) and its name, the nodes of its
//    terminals, its parameter "model" (the name of the cell without one), and all other parameters as name=value.
//  - The letter in front is left out where the name begins with it.
//  - Names are made legal and different from each other (SpiceNames); each other name is told in a notice.
QByteArray toSpice(const Netlist &netlist, ImportReport &report);

#endif
