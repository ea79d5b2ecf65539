// What an operation does that a build does not have: it keeps its slot, tells the host through reportError() and
// returns an empty result.

#include "oapluginmain.h"

void oaPlugInMain::reportUnavailable(const char *operation) {
  Q_EMIT reportError(tr("This operation is not available in this build."), 1, QLatin1String(operation));
}
