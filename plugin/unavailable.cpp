// Operations that this build does not have yet. Each keeps its slot, tells the host through reportError() and returns
// an empty result. An operation leaves this file for the folder of its subsystem when it is written.

#include "oapluginmain.h"

void oaPlugInMain::reportUnavailable(const char *operation) {
  Q_EMIT reportError(tr("This operation is not available in this build."), 1, QLatin1String(operation));
}

// Removal, host data and technology layers.

void oaPlugInMain::removeView(QString, QString, QString) { reportUnavailable("removeView"); }
void oaPlugInMain::removeCell(QString, QString) { reportUnavailable("removeCell"); }
void oaPlugInMain::removeLayoutData(QString, QString) { reportUnavailable("removeLayoutData"); }
void oaPlugInMain::writeLayoutData(QString, QString, QString) { reportUnavailable("writeLayoutData"); }
void oaPlugInMain::writeCdfData(QString, QString, QString) { reportUnavailable("writeCdfData"); }

QString oaPlugInMain::importLayer(QString, int) {
  reportUnavailable("importLayer");
  return QString();
}

// Parameter query.

void oaPlugInMain::getParameter(QString, QString, QString, QStringList *, QStringList *, QStringList *) {
  reportUnavailable("getParameter");
}

// View dump and Tcl.

QString oaPlugInMain::getViewDump(QString, QString, QString) {
  reportUnavailable("getViewDump");
  return QString();
}

void oaPlugInMain::tclInit(Tcl_Interp *) { reportUnavailable("tclInit"); }

int oaPlugInMain::tclExecFile(Tcl_Interp *, QString) {
  reportUnavailable("tclExecFile");
  return -1;
}

int oaPlugInMain::tclExec(Tcl_Interp *, QString) {
  reportUnavailable("tclExec");
  return -1;
}
