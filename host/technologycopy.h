#ifndef TECHNOLOGYCOPY_H
#define TECHNOLOGYCOPY_H

#include "importreport.h"

#include <QString>

#include <set>
#include <vector>

class PluginSession;

// What the writing operations need of a technology and do not make themselves. It is made by the plug-in's Tcl
// operations. Both throw HostError when OpenAccess refuses; the technology on disk is then as it was.

// Gives a new library a technology with the units, manufacturing grids, physical layers and purposes of another
// library's. Nothing happens when that one has no technology.
void copyTechnology(PluginSession &session, const QString &source, const QString &lib);

// The definition of vias that are copied.
struct ViaDefinition {
  QString name;
  // The master of a custom definition, as the copy places it. All empty for a standard one.
  QString lib;
  QString cell;
  QString view;
  // Numbers of the layers on which the vias are drawn.
  std::set<int> layers;
  // Numbers of the cut layers of standard vias with several cuts, which lie on the manufacturing grid.
  std::set<int> arrayCutLayers;
};

// Enters definitions of the library `source` into the technology of another one, which is made when there is none. A
// definition of that name stays. Layers that the technology lacks become like those of `source`: those of the
// definition, and those that the vias are drawn on. Nothing is entered into a technology that belongs to a third
// library. `report` gets whatever makes the vias look otherwise than in `source`.
void copyViaDefinitions(PluginSession &session, const std::vector<ViaDefinition> &definitions, const QString &source,
                        const QString &lib, ImportReport &report);

#endif
