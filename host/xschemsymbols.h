#ifndef XSCHEMSYMBOLS_H
#define XSCHEMSYMBOLS_H

#include "importreport.h"
#include "schematicmodel.h"
#include "xschemparser.h"
#include "xschemproperties.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

// What a placement is in a circuit. xschem places ports, labels and remarks the way it places devices; the symbol's
// type tells them apart.
enum class XschemRole {
  Device,
  InputPort,
  OutputPort,
  BidirectionalPort,
  Label,
  Ground,
  ShownLabel, // shows the name of the net it lies on
  OpenEnd,
  Decoration,
  Unknown // there is no such symbol
};

struct XschemSymbol {
  QString cell;
  QString source; // file name, or what else it comes from; of an unknown symbol, what is told about it
  XschemRole role = XschemRole::Device;
  bool isGlobal = false;     // of a label: it names a net of the whole design
  XschemProperties defaults; // the template of its attributes
  SymbolModel model;         // its ports are the pins in the order in which a netlist has them
  // Belongs into the library: its file was named, or it is placed as a device.
  bool isNamed = false;
  bool isPlaced = false;
};

// The properties that a file's attributes and code give its design: administrative ones as "xschem.type",
// "xschem.format", ..., those of the template, which are the defaults of a placement's, under their own names.
std::vector<QPair<QString, QString>> xschemDesignProperties(const XschemFile &file, XschemProperties *defaults,
                                                            ImportReport &report);

// Finds, reads and keeps the symbols of an import; each cell has one.
class XschemSymbols {
public:
  // `searchDirectories` are searched after the folder of the referring file and those above it. `report` is borrowed.
  XschemSymbols(const QStringList &searchDirectories, double scale, ImportReport &report);

  // Reads a symbol that the user named. Files that cannot be read, or whose cell has another symbol already, are told.
  void addFile(const QString &fileName);

  // The symbol that a placement of `file` refers to; never null, but the role may be Unknown, which is told.
  const XschemSymbol *resolve(const QString &reference, const XschemFile &file, int line);
  // A symbol that stands within the file; later references of the file find it under the same name.
  const XschemSymbol *addEmbedded(const QString &reference, const XschemFile &embedded, int line);

  // Every symbol that belongs into the library, in order of appearance.
  std::vector<const XschemSymbol *> symbols() const;

private:
  XschemSymbol *readFile(const QString &fileName, bool isNamed);
  XschemSymbol *keep(std::unique_ptr<XschemSymbol> symbol, const QString &place);
  const XschemSymbol *builtIn(const QString &reference);
  const XschemSymbol *unknown(const QString &reference, const QString &reason, const QString &place);
  const XschemSymbol *placed(XschemSymbol *symbol);
  // The file, or an empty text. With `lastParts` the reference is tried without its first folders as well.
  QString search(const QString &reference, const QString &fromDirectory, bool lastParts) const;
  std::unique_ptr<XschemSymbol> makeSymbol(const XschemFile &file, const QString &cell, const QString &source);

  const QStringList searchDirectories_;
  const double scale_;
  ImportReport &report_;
  std::vector<std::unique_ptr<XschemSymbol>> symbols_;
  QHash<QString, XschemSymbol *> symbolOfCell_;
  QHash<QString, XschemSymbol *> symbolOfFile_;       // by canonical name; null for one that cannot be read
  QHash<QString, const XschemSymbol *> symbolOfName_; // what references of a folder mean
  QHash<QString, const XschemSymbol *> embedded_;     // by file and reference
};

// The last part of a reference or file name, without ".sym" or ".sch".
QString xschemCellName(const QString &fileName);
// Of a cell, see SchematicPlacement.
QString xschemDeviceName(const QString &cell);

#endif
