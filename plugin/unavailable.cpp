// Operations that this build does not have yet. Each keeps its slot, tells the host through reportError() and returns
// an empty result. An operation leaves this file for the folder of its subsystem when it is written.

#include "oapluginmain.h"

void oaPlugInMain::reportUnavailable(const char *operation) {
  Q_EMIT reportError(tr("This operation is not available in this build."), 1, QLatin1String(operation));
}

// Parameter query.

void oaPlugInMain::getParameter(QString, QString, QString, QStringList *, QStringList *, QStringList *) {
  reportUnavailable("getParameter");
}
