#include "viewchoice.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"

QString defaultView(PluginSession &session, const QString &lib, const QString &cell) {
  session.requireLibrary(lib);
  const QStringList views = session.requireViewNames(lib, cell);
  for (const char *name : {"layout", "schematic", "symbol"}) {
    QString view = QLatin1String(name);
    if (views.contains(view))
      return view;
  }
  session.requireCell(lib, cell);
  if (views.isEmpty())
    throw HostError(QStringLiteral("cell %1 of library %2 has no views").arg(cell, lib));
  throw HostError(
      QStringLiteral("cell %1 of library %2 has no view layout, schematic or symbol; name one of its views: %3")
          .arg(cell, lib, views.join(QStringLiteral(", "))));
}
