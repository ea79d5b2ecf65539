#ifndef OAPLUGINCORE_H
#define OAPLUGINCORE_H

// The operations that the host editor calls. The order of the virtual functions is the binary interface: a new
// operation goes to the end, and none is ever moved or removed. Every operation runs on the calling thread; those that
// read answer with the signals of the object that implements this interface (see docs/interface.md), which arrive
// before the operation returns.
//
// Names travel as text in the native name space. Coordinates, widths, heights and pitches are database units.
// Operations that meet an OpenAccess error print "ERROR (<operation>): <message> \n" on standard output and return an
// empty or false result; saveSchematic() and openSchematic() are exceptions.

#include <QPoint>
#include <QPolygon>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QtPlugin>

struct Tcl_Interp;

// What the signal compData() carries. A property is its name, a line feed, and its value as text.
enum ComponentDataType {
  // Parameter text of a parametric symbol, one parameter a line.
  ComponentParameterText = 0,
  // The component description that writeCdfData() keeps with the cell.
  ComponentCdfData = 1,
  ComponentLibraryProperty = 2,
  ComponentCellProperty = 3,
  // A property of the symbol's design.
  ComponentDesignProperty = 4
};

class oaPlugInCore {
public:
  virtual ~oaPlugInCore() {}

  // Start-up and library definitions.

  // Starts OpenAccess on the first call. `debug` switches the progress lines on standard output on or off.
  virtual void init(bool debug) = 0;
  // A report of the kit, its directories and the library definition file; lines end in CR LF.
  virtual QString info() = 0;
  // Full path of the active lib.defs, or an empty text.
  virtual QString getLibDefsFilename() = 0;

  // Queries. Lists are sorted by character code, but for components, which come in the library's order.

  virtual QStringList getLibs() = 0;
  virtual QStringList getCellNames(QString lib) = 0;
  virtual QStringList getViewNames(QString lib, QString cell) = 0;
  virtual QStringList getComponents(QString lib, QString path, bool useCache) = 0;
  // The database's name of the view type ("maskLayout", "schematic", ...), or an empty text.
  virtual QString getViewType(QString lib, QString cell, QString view) = 0;
  // Directory of a library, or an empty text when it is not known.
  virtual QString getLibPath(QString lib) = 0;
  virtual QString getViewDump(QString lib, QString cell, QString view) = 0;
  virtual void getParameter(QString lib, QString cell, QString view, QStringList *names, QStringList *types,
                            QStringList *values) = 0;
  virtual bool existLib(QString path) = 0;

  // Removal and data that the host keeps with a cell.

  virtual void removeView(QString lib, QString cell, QString view) = 0;
  virtual void removeCell(QString lib, QString cell) = 0;
  virtual void removeLayoutData(QString lib, QString cell) = 0;
  virtual void writeLayoutData(QString lib, QString cell, QString data) = 0;
  virtual void writeCdfData(QString lib, QString cell, QString data) = 0;

  // True for a design file (*.oa) inside a library that can be made known; fills in the library's name and directory.
  virtual bool isOaLibrary(QString file, QString *lib, QString *path) = 0;
  virtual bool existComponent(QString lib, QString device) = 0;
  // Adds a library directory to lib.defs, named after the directory. Returns an error text, or an empty one.
  virtual QString registerLibrary(QString path) = 0;
  // Makes sure that a library is known: finds it, opens it at `path`, or creates it there when `create` is set.
  virtual bool checkLib(QString lib, QString path, bool create) = 0;
  virtual QString importLayer(QString location, int layerCount) = 0;

  // Reading a layout.

  virtual void openLayout(QString lib, QString cell, QString view, QString libPath) = 0;
  // Loads one further cell, evaluated with the parameters `names`/`values` when it is parametric.
  virtual QString openLayout(QString lib, QString cell, QString view, QString libPath, QStringList names,
                             QStringList values) = 0;

  // Tcl. The interpreter belongs to the host.

  virtual void tclInit(Tcl_Interp *interp) = 0;
  virtual int tclExecFile(Tcl_Interp *interp, QString file) = 0;
  virtual int tclExec(Tcl_Interp *interp, QString command) = 0;

  // Opens an existing layout for appending as the current design, keeping its contents, and returns the master of the
  // named instance as "lib/cell/view", or an empty text when the block has no such instance.
  virtual QString getInst(QString lib, QString cell, QString view, QString instance) = 0;

  // Plain settings.

  virtual void setLayerMax(int layers, int datatypes) = 0;
  virtual void setGlobalNodes(QString nodes) = 0;
  // The host's answer to the signal existCell(): true when it already holds that cell.
  virtual void setBool(bool value) = 0;

  // Writing: one of the three begin operations, any number of save operations, then saveClose().

  virtual void saveLayout(QString lib, QString cell, QString view, bool replaceConnectivity, QStringList netNames,
                          QStringList termNames) = 0;
  // What OpenAccess refuses here reaches the caller as its exception.
  virtual void saveSchematic(QString lib, QString cell, QString view) = 0;
  virtual void saveSymbol(QString lib, QString cell, QString view) = 0;

  virtual void saveBox(QRect rect, int layer, int datatype) = 0;
  virtual void savePolygon(int layer, int datatype, QPolygon points) = 0;
  // `caps`: 1 round, 2 extended by half the width, otherwise flush. A width of 0 or less writes a line.
  virtual void savePath(QPolygon points, int width, int layer, int datatype, int caps) = 0;
  // `presentation` is the horizontal position (0 left, 1 centre, 2 right) plus 4 times the vertical one (0 upper, 1
  // centre, 2 lower).
  virtual void saveText(int layer, int datatype, QString text, QPoint origin, int presentation, QString trans,
                        int height) = 0;
  // Places lib/cell/view at `origin`. `parameterNames`/`parameterValues` run parallel; so do
  // `terminalNames`/`netNames`, which connect the instance's terminals (by name) to nets of the current block; a net
  // that does not exist is created. An empty `instance` gets an automatic name.
  virtual void saveCellref(QString lib, QString cell, QString view, QPoint origin, QString trans, QString instance,
                           QStringList parameterNames, QStringList parameterValues, QStringList terminalNames,
                           QStringList netNames) = 0;
  // The same as an array. `columnPitch` runs in x and `rowPitch` in y of the placing cell; both may be negative.
  virtual void saveCellrefArray(QString lib, QString cell, QString view, QPoint origin, QString trans, QString instance,
                                QStringList parameterNames, QStringList parameterValues, int columnPitch, int rowPitch,
                                int columns, int rows) = 0;
  virtual void saveClose() = 0;

  // Netlists, components and schematics.

  virtual void loadNetlist(QString lib, QString cell, QString view) = 0;
  virtual void loadComponent(QString lib, QString device) = 0;
  // Throws a QString for the user when there is nothing to show: "can not open", "no data", "can not create parametric
  // cell".
  virtual void openSchematic(QString lib, QString cell, QString view, QString libPath) = 0;

  virtual void saveNet(int net, QString name, int kind) = 0;
  virtual void saveWire(QPolygon points, int net) = 0;
  virtual void saveBus(QPolygon points, QString name) = 0;
  virtual void saveWireDot(QPoint centre, int net) = 0;
  virtual void saveWireLabel(QString text, QPoint origin, QPoint offset) = 0;
  virtual void saveRect(int x1, int y1, int x2, int y2, QString colour) = 0;
  virtual void savePolygon(QPolygon points, QString colour) = 0;
  virtual void saveCircle(int x1, int y1, int x2, int y2, QString colour) = 0;
  virtual void savePolyline(QPolygon points, QString colour) = 0;
  virtual void saveText(QString text, QPoint origin, QString colour, int rotation) = 0;
  virtual void saveEvalText(QString text, QPoint origin) = 0;

  virtual void savePort(QString name, QPoint position, bool global, QString type) = 0;
  virtual void saveGlobalPort(QString name) = 0;
  virtual void savePortPolygon(QPolygon points, QString name) = 0;
  virtual void savePortRect(int x1, int y1, int x2, int y2, QString name) = 0;
  virtual void savePort(int net, QPoint position, bool global, QString type, QString symbol) = 0;
  virtual void saveBusport(QString name, QPoint position, bool global, QString type, QString symbol) = 0;
  virtual void saveGround(int net, QPoint position) = 0;
  virtual void savePlacement(QString lib, QString cell, QString view, QString instance, QPoint origin,
                             QString trans) = 0;
  virtual void saveVectorPlacement(QString lib, QString cell, QString view, QString instance, QPoint origin,
                                   QString trans, int start, int stop) = 0;

  // Properties of the last placed instance.
  virtual void saveStringProp(QString name, QString value) = 0;
  virtual void saveIntProp(QString name, int value) = 0;
  virtual void saveDoubleProp(QString name, double value) = 0;
  virtual void saveBoolProp(QString name, bool value) = 0;
  virtual void savePointProp(QString name, QPoint value) = 0;

  virtual void savePlacementConnection(int net, QString terminal) = 0;
  virtual void saveVectorPlacementConnection(QString terminal, QString net) = 0;

  // Properties of the current design.
  virtual void savePropString(QString name, QString value) = 0;
  virtual void savePropInt(QString name, int value) = 0;
};

// The build may put the maker's own reverse-domain prefix in front; host and plug-in must agree on it.
#ifndef OAPLUGIN_INTERFACE_PREFIX
#define OAPLUGIN_INTERFACE_PREFIX "org.tarnwickdale"
#endif
#define OAPLUGIN_INTERFACE_ID OAPLUGIN_INTERFACE_PREFIX ".Tarnwickdale.oaPlugInCore/1.6"

Q_DECLARE_INTERFACE(oaPlugInCore, OAPLUGIN_INTERFACE_ID)

#endif
