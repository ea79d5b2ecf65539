#ifndef OACONVERT_H
#define OACONVERT_H

#include <QList>
#include <QPoint>
#include <QPolygon>
#include <QString>
#include <QStringList>

// The meta-object compiler of Qt 4 does not understand the kit's headers and needs nothing from them.
#ifndef Q_MOC_RUN
#include <oa/oaDesignDB.h>
#endif

#include "propertyitem2.h"

// Stateless conversions between the host's Qt values and OpenAccess values, start-up, and what the plug-in asks
// libraries. Coordinates are database units and pass unchanged. Bad text never raises: it yields the default named at
// the operation. OpenAccess's own exceptions pass to the caller unless an operation says otherwise.
//
// The members are defined in the folder of their subsystem: the conversions in convert/, start-up and library queries
// in library/, the cell data of the layout reader in layout/.
class oaConvert {
public:
  // Progress lines on standard output; set by oaPlugInMain::init() only.
  static bool debug;
  // OpenAccess has been started.
  static bool initDone;
  // The one name space of every conversion between text and an OpenAccess name.
  static oa::oaNativeNS ns;

  // Points and point lists.

  static QPoint toPoint(const oa::oaPoint &point);
  static oa::oaPoint toOaPoint(const QPoint &point);
  // Every point in order: no closing point is added and no repeated point removed, in either direction.
  static QPolygon toPointArray(const oa::oaPointArray &points);
  static oa::oaPointArray toOaPointArray(const QPolygon &points);
  // "x y", decimal, one blank between.
  static QString toPointString(const QPoint &point);
  // The point of "x y"; a coordinate that is no number is 0, and (0, 0) without a blank or with a blank in front.
  static QPoint stringToPoint(const QString &text);
  // The vector of "x/y"; a coordinate that is no number is 0, and (0, 0) without a slash. A slash in front is accepted.
  static oa::oaVector toOaVector(const QString &text);

  // Text and names.

  static QString toString(const oa::oaString &text);
  // The name's own text.
  static QString toString(const oa::oaName &name);
  // The name in the native name space.
  static QString toString(const oa::oaScalarName &name);
  static QString toString(unsigned int number);
  // "x/y", decimal.
  static QString toString(const oa::oaVector &vector);
  static oa::oaString toOaString(const QString &text);
  // The same conversion, for file-system paths.
  static oa::oaString toOaPath(const QString &path);
  static oa::oaScalarName toOaScalarName(const QString &text);
  // A scalar name, whatever the text looks like.
  static oa::oaName toOaName(const QString &text);

  // Buses, bundles and device names.

  // The bundle of a host's bus name: members between commas, each "base<start:stop>" or "base<start:stop:step>" (a
  // vector), "base<index>" (a bit) or any other text (a scalar), and in front of it a repeat count and "*". A number
  // that does not parse is 0; numbers pass unchecked, so a negative one is a huge index. Empty when the text has no
  // member. Names go to OpenAccess as UTF-8; a kit may refuse some (oacInvalidNameLength, oacInvalidNameSyntax,
  // oacInvalidNameChar).
  static oa::oaBundleName toBundleName(const QString &text);
  // The name under which the host knows a symbol: the cell for the view "symbol", otherwise "view@cell".
  static QString toDeviceName(const QString &cell, const QString &view);
  // The two parts of a device name, split at the first "@".
  static QString toCellName(const QString &device);
  static QString toViewName(const QString &device);

  // Orientation and text alignment. Reading and writing disagree on the sense of quarter turns on purpose:
  // toTrans(oacR90) is "R270", while toOaOrient("R90") is oacR90.

  // The host's orientation text: empty for no rotation, "R90", "R180", "R270", each also with "M" behind, or "M".
  static QString toTrans(const oa::oaOrient &orient);
  // Parses orientation text: "M" toggles the mirror, the angles (degrees) of several "R" add up, everything else is
  // skipped. An angle that is no quarter turn from 0 to 270 gives oacR0 and sets `*ok` to false; `ok` may be null.
  static oa::oaOrient toOaOrient(const QString &text, bool *ok);
  // The nearest quarter turn of an angle in degrees; never mirrored.
  static oa::oaOrient toOaOrient(int degrees);
  // The host's presentation code: horizontal (0 left, 1 centre, 2 right) plus 4 times vertical (0 upper, 1 centre, 2
  // lower); -1 for an alignment outside the enumeration.
  static int toTextPresentation(const oa::oaTextAlign &alignment);
  // The alignment of a presentation code; upper left for any other number.
  static oa::oaTextAlign toOaTextAlign(int presentation);

  // Parameter text, parameter arrays and the names of variants.

  // One token of parameter text, escaped so that it holds no blank and is never empty. Ampersands stay as they are, so
  // the escape cannot be undone for text that already holds "&sp;" and the like.
  static QString putString(QString text);
  // One line for each parameter of a super or sub master, the last one first; empty for any other design. A boolean
  // becomes a choice list with its current value in front, a float a "<double".
  static QString toParameterString(oa::oaDesign *design);
  // The parameters with the values that the host sends under their names. A name that occurs twice gives the parameter
  // twice; names that match no parameter are ignored. `names` and `values` run parallel.
  static oa::oaParamArray mergeParameter(const oa::oaParamArray &params, const QStringList &names,
                                         const QStringList &values);
  // The value beside the first exact occurrence of `name`, or `defaultValue`. `names` and `values` run parallel.
  static QString getParameter_(const QString &name, const QStringList &names, const QStringList &values,
                               const QString &defaultValue);
  // MD5 of the items with a text name, as 32 hexadecimal digits.
  static QString toHash(const QList<propertyItem2> &items);
  // The name under which the host knows one variant of a cell: cell, "_" and view unless it is "layout", "~" and
  // library unless it is `currentLib`, and for a parametric variant "~" and the hash.
  static QString toCellName(const QList<propertyItem2> &items, const QString &currentLib);
  // Lists the parameters on standard output.
  static void printOaParamArray(const oa::oaParamArray &params);

  // Cell data of the layout reader (layout/).

  // Library, cell and view name, then the design's parameters, then the key/value pairs of `cellData`.
  static QList<propertyItem2> toCellData(oa::oaDesign *design, const QStringList &cellData);
  // The flat key/value list that stands for a standard via's parameters.
  static QStringList toViaParameterList(const oa::oaViaParam &params, const QString &viaDefName, oa::oaLayerNum layer1,
                                        oa::oaLayerNum layer2);

  // Start-up and library definitions (library/).

  // Starts OpenAccess and its library definitions, once per process; a start that raised is tried again by the next
  // call. Throws the character 'E' when the OpenAccess base library cannot be loaded.
  static void init();
  // Makes sure that a library definition list is loaded, creating lib.defs in the home directory if need be.
  static void createLibDefs();
  // Whether a directory is an OpenAccess library. The home directory never is.
  static bool existLib(const oa::oaString &path);
  // Makes sure that a library is known: open already, opened at `path`, or created there when `create` is set. A
  // library that was opened or created is entered into lib.defs, unless lib.defs has an entry of that name.
  static bool checkLib(const oa::oaScalarName &lib, const oa::oaString &path, bool create);
  static bool checkLib(const QString &lib, const QString &path, bool create);
  // Finds, opens or registers a library; null when that fails. `path` may be empty.
  static oa::oaLib *getLib(const oa::oaScalarName &lib, const oa::oaString &path);
  // Full path of a library; empty when it is not known.
  static QString getLibPath(const QString &lib);

  // Library queries (library/). Lists are sorted by character code. They print OpenAccess's exceptions themselves and
  // then return what they have.

  static QStringList getLibraries();
  static QStringList getCells(const QString &lib);
  static QStringList getViews(const QString &lib, const QString &cell);
  static QString getViewType(const QString &lib, const QString &cell, const QString &view);
  // Whether a design file (.../library/cell/view/name.oa) lies in a library that can be made known; fills in the
  // library's name and directory, where the pointers are not null. Never creates a library, never raises.
  static bool isOaLibrary(const QString &file, QString *lib, QString *path);

  // Technology (library/).

  // The technology of a library, opened for reading; the caller closes it. Waits up to 20 seconds for another process
  // that writes the library. Null when the library is not known, and after a line on standard output when OpenAccess
  // raises.
  static oa::oaTech *openTechLib(const QString &lib);

  // Component library (schematic/).

  // The cells of a library that have a view named "symbol", of whatever type, in the library's order. `path` may be
  // empty for a library that is known. Prints what goes wrong and is empty then.
  static QStringList getComponents(const QString &lib, const QString &path);
  // Whether the view that a device name stands for exists. False for every failure.
  static bool existComponent(const QString &lib, const QString &device);
};

#endif
