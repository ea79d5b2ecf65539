#ifndef SCHEMATICWRITER_H
#define SCHEMATICWRITER_H

#include <QHash>
#include <QPoint>
#include <QString>

#include <oa/oaDesignDB.h>

#include "currentlayout.h"
#include "oapluginmain.h"
#include "saveguard.h"

// What the operations between saveSchematic() or saveSymbol() and saveClose() have in common.
namespace schematicwriter {

// Runs `body` under the guard of the writing operations (saveguard.h) if a design is open for writing; tells the host
// if none is. `describe()` names the object concerned, for the report of a refusal.
template <typename Body, typename Describe>
void write(oaPlugInMain &host, const char *label, Body body, Describe describe) {
  if (currentlayout::isOpen(host, label)) {
    saving(host, label, body, describe);
  }
}

// The object that a table has under the host's net number, or null. The tables outlive their design, so the object may
// be gone: the host is told then, and the number counts as unknown.
template <typename Object>
Object *liveEntry(oaPlugInMain &host, const char *label, const QHash<int, Object *> &table, int net) {
  Object *object = table.value(net);
  if (!object || object->isValid()) {
    return object;
  }
  emit host.reportError(oaPlugInMain::tr("the net is not part of this design, the object stays unconnected"), 2,
                        QString::fromLatin1("%1: net %2").arg(QLatin1String(label)).arg(net));
  return nullptr;
}

// The square around a point, cut off where coordinates end.
oa::oaBox squareAround(const QPoint &centre, int halfSideDbu);

// Gives an object a string property.
void setText(oa::oaObject *object, const char *name, const QString &value);

// The bundle net of a name, which is created when the block has none.
oa::oaBundleNet *bundleNetNamed(oa::oaBlock *block, const oa::oaBundleName &name);

} // namespace schematicwriter

#endif
