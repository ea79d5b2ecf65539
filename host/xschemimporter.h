#ifndef XSCHEMIMPORTER_H
#define XSCHEMIMPORTER_H

#include "xschemsymbols.h"

#include <QSet>

#include <functional>
#include <memory>
#include <vector>

struct XschemImportOptions {
  QString library;
  QStringList inputs;            // files .sch and .sym, and directories, with all such files below them
  QStringList symbolDirectories; // where else placed symbols are searched
  double scale = 4;              // database units for one of xschem's
  bool isRecursive = false;      // read the schematics of placed symbols as well
};

struct XschemCellSchematic {
  QString cell;
  QString source;
  SchematicModel model;
};

// Reads schematics with the symbols that they place into models. Everything that is not as the files say goes to the
// report.
class XschemImporter {
public:
  // `report` is borrowed.
  XschemImporter(const XschemImportOptions &options, ImportReport &report);

  // Throws HostError when an input does not exist, or there is none. `onProgress` is called with the number of bytes
  // read and those known of so far.
  void run(const std::function<void(qint64, qint64)> &onProgress);

  std::vector<const XschemSymbol *> symbols() const { return symbols_.symbols(); }
  const std::vector<XschemCellSchematic> &schematics() const { return schematics_; }
  // By "library/cell", as findConnectivity() wants them.
  QHash<QString, const SymbolModel *> symbolTable() const;

private:
  void addInput(const QString &input);
  void addDirectory(const QString &directory, int depth);
  void addFile(const QString &fileName);
  void readSchematic(const QString &fileName);
  void addSchematicsOfSymbols();

  const XschemImportOptions options_;
  ImportReport &report_;
  XschemSymbols symbols_;
  QStringList symbolFiles_, schematicFiles_;
  QSet<QString> seenFiles_, seenDirectories_; // by canonical name
  std::vector<XschemCellSchematic> schematics_;
  QHash<QString, QString> schematicSources_; // by cell
};

#endif
