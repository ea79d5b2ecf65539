#ifndef OAPLUGINMAIN_H
#define OAPLUGINMAIN_H

#include <QHash>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QPolygon>
#include <QRect>
#include <QString>
#include <QStringList>

#include "oaconvert.h"
#include "oaplugincore.h"
#include "qttoolkit.h"

// The one object that the plug-in gives to the host: the operations that the host calls and the signals that answer.
// The host connects directly, so that a signal has been handled when its emission returns; it may call setBool() during
// existCell().
//
// The member functions are defined in the folder of their subsystem. Signals and fields are public because the walks
// over a design are small objects of their own in those folders. No OpenAccess object is closed by the destructor.
class oaPlugInMain : public QObject, public oaPlugInCore, public oaConvert {
  Q_OBJECT
  Q_INTERFACES(oaPlugInCore)
#ifdef TOOLKIT_HAS_PLUGIN_METADATA
  Q_PLUGIN_METADATA(IID OAPLUGIN_INTERFACE_ID)
#endif

public:
  oaPlugInMain();
  ~oaPlugInMain() override;

  // Plain settings (plugin/).

  void setLayerMax(int layers, int datatypes) override;
  void setGlobalNodes(QString nodes) override;
  void setBool(bool value) override;

  // Start-up, library definitions and library queries (library/).

  void init(bool debug) override;
  QString info() override;
  QString getLibDefsFilename() override;
  QStringList getLibs() override;
  QStringList getCellNames(QString lib) override;
  QStringList getViewNames(QString lib, QString cell) override;
  QString getViewType(QString lib, QString cell, QString view) override;
  QString getLibPath(QString lib) override;
  bool existLib(QString path) override;
  bool isOaLibrary(QString file, QString *lib, QString *path) override;
  QString registerLibrary(QString path) override;
  bool checkLib(QString lib, QString path, bool create) override;

  // Removal, host data and technology layers (library/).

  void removeView(QString lib, QString cell, QString view) override;
  void removeCell(QString lib, QString cell) override;
  void removeLayoutData(QString lib, QString cell) override;
  void writeLayoutData(QString lib, QString cell, QString data) override;
  void writeCdfData(QString lib, QString cell, QString data) override;
  QString importLayer(QString location, int layerCount) override;
  // Makes `currentTech` the technology of the current design's library, open in `mode` ('r', 'a' or 'w'); a library
  // without one gets one. A technology that is current already is reopened when its mode differs. Does nothing without
  // a current design. OpenAccess's exceptions pass to the caller.
  void openTech(char mode);

  // Layout reader (layout/).

  void openLayout(QString lib, QString cell, QString view, QString libPath) override;
  QString openLayout(QString lib, QString cell, QString view, QString libPath, QStringList names,
                     QStringList values) override;
  // Sends one open design, and the masters it places before their references. `cellData` is a flat list of extra
  // key/value pairs that belong to this cell (a via's parameters). Returns the name under which the host knows the
  // cell.
  QString openLayout(oa::oaDesign *design, QStringList cellData);
  // Sends a design's library, cell and view name and its parameters.
  void sendCellData(oa::oaDesign *design);

  // Layout writer (layout/).

  void saveLayout(QString lib, QString cell, QString view, bool replaceConnectivity, QStringList netNames,
                  QStringList termNames) override;
  void saveBox(QRect rect, int layer, int datatype) override;
  void savePolygon(int layer, int datatype, QPolygon points) override;
  void savePath(QPolygon points, int width, int layer, int datatype, int caps) override;
  void saveText(int layer, int datatype, QString text, QPoint origin, int presentation, QString trans,
                int height) override;
  void saveCellref(QString lib, QString cell, QString view, QPoint origin, QString trans, QString instance,
                   QStringList parameterNames, QStringList parameterValues, QStringList terminalNames,
                   QStringList netNames) override;
  void saveCellrefArray(QString lib, QString cell, QString view, QPoint origin, QString trans, QString instance,
                        QStringList parameterNames, QStringList parameterValues, int columnPitch, int rowPitch,
                        int columns, int rows) override;
  QString getInst(QString lib, QString cell, QString view, QString instance) override;
  void saveClose() override;

  // Schematic reader, component library, netlist and parameter query (schematic/).

  void openSchematic(QString lib, QString cell, QString view, QString libPath) override;
  QStringList getComponents(QString lib, QString path, bool useCache) override;
  bool existComponent(QString lib, QString device) override;
  void loadComponent(QString lib, QString device) override;
  void loadNetlist(QString lib, QString cell, QString view) override;
  void getParameter(QString lib, QString cell, QString view, QStringList *names, QStringList *types,
                    QStringList *values) override;

  // Schematic writer: designs, shapes, nets (schematic/).

  void saveSchematic(QString lib, QString cell, QString view) override;
  void saveSymbol(QString lib, QString cell, QString view) override;
  void saveNet(int net, QString name, int kind) override;
  void saveWire(QPolygon points, int net) override;
  void saveBus(QPolygon points, QString name) override;
  void saveWireDot(QPoint centre, int net) override;
  void saveWireLabel(QString text, QPoint origin, QPoint offset) override;
  void saveRect(int x1, int y1, int x2, int y2, QString colour) override;
  void savePolygon(QPolygon points, QString colour) override;
  void saveCircle(int x1, int y1, int x2, int y2, QString colour) override;
  void savePolyline(QPolygon points, QString colour) override;
  void saveText(QString text, QPoint origin, QString colour, int rotation) override;
  void saveEvalText(QString text, QPoint origin) override;

  // Schematic writer: ports, placements, properties (schematic/).

  void savePort(QString name, QPoint position, bool global, QString type) override;
  void saveGlobalPort(QString name) override;
  void savePortPolygon(QPolygon points, QString name) override;
  void savePortRect(int x1, int y1, int x2, int y2, QString name) override;
  void savePort(int net, QPoint position, bool global, QString type, QString symbol) override;
  void saveBusport(QString name, QPoint position, bool global, QString type, QString symbol) override;
  void saveGround(int net, QPoint position) override;
  void savePlacement(QString lib, QString cell, QString view, QString instance, QPoint origin, QString trans) override;
  void saveVectorPlacement(QString lib, QString cell, QString view, QString instance, QPoint origin, QString trans,
                           int start, int stop) override;
  void saveStringProp(QString name, QString value) override;
  void saveIntProp(QString name, int value) override;
  void saveDoubleProp(QString name, double value) override;
  void saveBoolProp(QString name, bool value) override;
  void savePointProp(QString name, QPoint value) override;
  void savePlacementConnection(int net, QString terminal) override;
  void saveVectorPlacementConnection(QString terminal, QString net) override;
  void savePropString(QString name, QString value) override;
  void savePropInt(QString name, int value) override;

  // View dump (dump/).

  QString getViewDump(QString lib, QString cell, QString view) override;

  // Tcl bridge (tcl/).

  void tclInit(Tcl_Interp *interp) override;
  int tclExecFile(Tcl_Interp *interp, QString file) override;
  int tclExec(Tcl_Interp *interp, QString command) override;

  // Order, types and parameter names of the signals are part of the interface; where a parameter has no name there, it
  // has none here. Qt 4 would make them protected, so only the meta-object compiler sees the section's real name.
#ifdef Q_MOC_RUN
Q_SIGNALS:
#endif

  // Technology layers.

  void disableLayer(int layer);
  void enableLayer(int layer);
  void setLayerName(int layer, QString name);

  // Message, severity (1 an error, 2 a notice) and detail.
  void reportError(QString, int, QString);

  // Layout reader.

  // User units per database unit, metres per database unit.
  void setUnits(double, double);
  void setCurrentCell(QString);
  void addCell(QString cellname);
  // Key and value.
  void addCellData(QString, QString);
  void addCellNumData(int, QString);
  void addCellDataInt(QString, int);
  void addCellDataFloat(QString, float);
  void addBox(int left, int bottom, int width, int height, int layer, int datatype);
  void addPath(QPolygon pa, int layer, int datatype, int width, int caps, int bExt, int eExt);
  void addPolygon(QPolygon pa, int layer, int datatype);
  // Text, origin, height, layer, datatype, presentation code, orientation text.
  void addText(QString, QPoint, int width, int layer, int datatype, int, QString trans);
  void addCellRef(QString cell, QPoint, QString trans, QString devicename);
  void addCellRefArray(QString cell, QPoint, int sx, int sy, int nx, int ny, QString trans, QString devicename);
  void existCell(QString cellname);
  void endCell();

  // Schematic reader.

  void addPolygon(QPolygon pa, QString color);
  void addPolyline(QPolygon pa, QString color);
  void addPort(QPoint, QString name);
  void addText(QPoint, QString color, QString text, int rot);
  void addCircle(QPoint, QPoint, QString color);
  void addRect(QPoint, QPoint, QString color);
  void addArc(QPolygon pa, QString color);
  void addWireLabel(QPoint, QString name, QPoint offset);
  void addWire(QPolygon pa);
  void addBus(QPolygon pa);
  void addWireDot(QPoint);
  void addGround(QPoint);
  void setGlobal(bool);
  void addPlacement(QString, QString, QPoint, QString trans);
  void upgradeToVectorPlacement(int start, int stop);
  void setVectorPlacementConnection(QString port, QString net);
  void setDataString(QString, QString);
  void setDataPoint(int type, QPoint);

  // Component symbols.

  void compPolygon(QPolygon pa, QString color);
  void compPolyline(QPolygon pa, QString color);
  void compPort(QPoint, QString name);
  void compText(QPoint, QString color, QString text);
  void compCircle(QPoint, QPoint, QString color);
  void compRect(QPoint, QPoint, QString color);
  void compOffset(QPoint);
  void compSetGlobal(bool);

  // Netlists.

  void netlistAddNode(QString name, int nodeCount, bool external);
  void netlistAddDevice(QString devicename, QString cellname, QStringList connections, QList<int> toNode,
                        QStringList parameter, QStringList parameterValue);

  // Data of the component being loaded; `type` is a ComponentDataType (oaplugincore.h).
  void compData(QString data, int type);

public:
  // The order of the fields is part of the interface. A field is meaningful once the operation that owns it has run;
  // until then numbers are 0 and pointers null.

  // Kept for the object's layout, used by no operation.
  QString reservedText;
  // Layer and purpose numbers that are negative or not below these are sent as 0.
  int layerMax;
  int datatypeMax;
  // Global net names for the schematic writer.
  QString globalNodes;
  // The host's answer to existCell(): it holds that cell already. Keeps its value until the next setBool().
  bool cellExistsReply;
  // The design being written and its top block, from a begin operation to saveClose().
  oa::oaDesign *currentDesign;
  oa::oaBlock *currentBlock;
  // Technology of the current library. saveClose() leaves the pointer in place, so test it with isValid() before use.
  oa::oaTech *currentTech;
  // The last placed instances, and the one that property operations apply to.
  oa::oaScalarInst *currentScalarInst;
  oa::oaVectorInst *currentVectorInst;
  oa::oaObject *propertyTarget;
  // What the layout writer created, by name.
  QHash<QString, oa::oaPin *> pinsByName;
  QHash<QString, oa::oaNet *> netsByName;
  // What the schematic writer created, by the host's net number.
  QHash<int, oa::oaPin *> pinsByNumber;
  QHash<int, oa::oaTerm *> termsByNumber;
  QHash<int, oa::oaNet *> netsByNumber;

private:
  // Tells the host that an operation is not available in this build.
  void reportUnavailable(const char *operation);
};

#endif
