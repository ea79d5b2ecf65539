#ifndef VIEWCHOICE_H
#define VIEWCHOICE_H

#include <QString>

class PluginSession;

// The view of a cell that a command takes when none is named: the first of layout, schematic and symbol that exists.
// Throws HostError when the library or the cell is not known, or when the cell has none of them.
QString defaultView(PluginSession &session, const QString &lib, const QString &cell);

// True for the types of views that openSchematic() reads.
inline bool isSchematicType(const QString &viewType) {
  return viewType == QLatin1String("schematic") || viewType == QLatin1String("schematicSymbol");
}

#endif
