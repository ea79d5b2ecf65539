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

// Schematic reader, component library, netlist and parameter query.

void oaPlugInMain::openSchematic(QString, QString, QString, QString) { reportUnavailable("openSchematic"); }

QStringList oaPlugInMain::getComponents(QString, QString, bool) {
  reportUnavailable("getComponents");
  return QStringList();
}

bool oaPlugInMain::existComponent(QString, QString) {
  reportUnavailable("existComponent");
  return false;
}

void oaPlugInMain::loadComponent(QString, QString) { reportUnavailable("loadComponent"); }
void oaPlugInMain::loadNetlist(QString, QString, QString) { reportUnavailable("loadNetlist"); }

void oaPlugInMain::getParameter(QString, QString, QString, QStringList *, QStringList *, QStringList *) {
  reportUnavailable("getParameter");
}

// Schematic writer.

void oaPlugInMain::saveSchematic(QString, QString, QString) { reportUnavailable("saveSchematic"); }
void oaPlugInMain::saveSymbol(QString, QString, QString) { reportUnavailable("saveSymbol"); }
void oaPlugInMain::saveNet(int, QString, int) { reportUnavailable("saveNet"); }
void oaPlugInMain::saveWire(QPolygon, int) { reportUnavailable("saveWire"); }
void oaPlugInMain::saveBus(QPolygon, QString) { reportUnavailable("saveBus"); }
void oaPlugInMain::saveWireDot(QPoint, int) { reportUnavailable("saveWireDot"); }
void oaPlugInMain::saveWireLabel(QString, QPoint, QPoint) { reportUnavailable("saveWireLabel"); }
void oaPlugInMain::saveRect(int, int, int, int, QString) { reportUnavailable("saveRect"); }
void oaPlugInMain::savePolygon(QPolygon, QString) { reportUnavailable("savePolygon"); }
void oaPlugInMain::saveCircle(int, int, int, int, QString) { reportUnavailable("saveCircle"); }
void oaPlugInMain::savePolyline(QPolygon, QString) { reportUnavailable("savePolyline"); }
void oaPlugInMain::saveText(QString, QPoint, QString, int) { reportUnavailable("saveText"); }
void oaPlugInMain::saveEvalText(QString, QPoint) { reportUnavailable("saveEvalText"); }
void oaPlugInMain::savePort(QString, QPoint, bool, QString) { reportUnavailable("savePort"); }
void oaPlugInMain::saveGlobalPort(QString) { reportUnavailable("saveGlobalPort"); }
void oaPlugInMain::savePortPolygon(QPolygon, QString) { reportUnavailable("savePortPolygon"); }
void oaPlugInMain::savePortRect(int, int, int, int, QString) { reportUnavailable("savePortRect"); }
void oaPlugInMain::savePort(int, QPoint, bool, QString, QString) { reportUnavailable("savePort"); }
void oaPlugInMain::saveBusport(QString, QPoint, bool, QString, QString) { reportUnavailable("saveBusport"); }
void oaPlugInMain::saveGround(int, QPoint) { reportUnavailable("saveGround"); }

void oaPlugInMain::savePlacement(QString, QString, QString, QString, QPoint, QString) {
  reportUnavailable("savePlacement");
}

void oaPlugInMain::saveVectorPlacement(QString, QString, QString, QString, QPoint, QString, int, int) {
  reportUnavailable("saveVectorPlacement");
}

void oaPlugInMain::saveStringProp(QString, QString) { reportUnavailable("saveStringProp"); }
void oaPlugInMain::saveIntProp(QString, int) { reportUnavailable("saveIntProp"); }
void oaPlugInMain::saveDoubleProp(QString, double) { reportUnavailable("saveDoubleProp"); }
void oaPlugInMain::saveBoolProp(QString, bool) { reportUnavailable("saveBoolProp"); }
void oaPlugInMain::savePointProp(QString, QPoint) { reportUnavailable("savePointProp"); }
void oaPlugInMain::savePlacementConnection(int, QString) { reportUnavailable("savePlacementConnection"); }

void oaPlugInMain::saveVectorPlacementConnection(QString, QString) {
  reportUnavailable("saveVectorPlacementConnection");
}

void oaPlugInMain::savePropString(QString, QString) { reportUnavailable("savePropString"); }
void oaPlugInMain::savePropInt(QString, int) { reportUnavailable("savePropInt"); }

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
