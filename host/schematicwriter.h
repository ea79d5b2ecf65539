#ifndef SCHEMATICWRITER_H
#define SCHEMATICWRITER_H

#include "importreport.h"
#include "schematicnetplan.h"

class PluginSession;
class oaPlugInCore;

// Writes models through the writer operations of the plug-in: saveSchematic() or saveSymbol(), the contents,
// saveClose(). What cannot be expressed goes to `report` as a problem with the object's name.

// The symbols that the schematic places have to be in their libraries already: terminals of several bits are connected
// by terminal objects of the master. `symbols` as in findConnectivity().
// False when the design cannot be begun.
bool writeSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const SchematicModel &model, const QHash<QString, const SymbolModel *> &symbols,
                    ImportReport &report);

// With the component description where the symbol has one.
bool writeSymbol(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                 const SymbolModel &symbol, ImportReport &report);

// The same with nets that are known. `plan` has an entry for each wire, dot, ground and placement of the model; the
// component description is not written.
bool writeSchematic(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const SchematicModel &model, const NetPlan &plan, ImportReport &report);
bool writeSymbol(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                 const SymbolModel &symbol, const NetPlan &plan, ImportReport &report);

// The calls between the begin operation and saveClose(): nets, everything that is drawn, placements with their
// properties and connections, properties of the design. `where` is the cell view's name in reports.
void writeSchematicContents(oaPlugInCore &core, const SchematicModel &model,
                            const QHash<QString, const SymbolModel *> &symbols, const QString &where,
                            ImportReport &report);

#endif
