#ifndef SCHEMATICHOST_H
#define SCHEMATICHOST_H

#include "hostprocess.h"
#include "oapluginmain.h"
#include "schematicreceiver.h"
#include "schematicwriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

inline QPolygon points(std::initializer_list<QPoint> list) { return QPolygon(QVector<QPoint>(list)); }

inline SchematicPort portAt(const char *name, int x, int y, const char *type = "", const char *symbol = "",
                            bool isGlobal = false) {
  SchematicPort port;
  port.name = name;
  port.position = QPoint(x, y);
  port.type = type;
  port.symbol = symbol;
  port.isGlobal = isGlobal;
  return port;
}

inline SchematicShape shapeOf(SchematicShape::Kind kind, std::initializer_list<QPoint> list, const char *colour = "red",
                              const char *text = "", int rotation = 0) {
  return {kind, points(list), colour, text, rotation};
}

inline SchematicPlacement placementOf(const QString &library, const char *device, const char *name, int x, int y,
                                      Orientation orientation = {}) {
  SchematicPlacement placement;
  placement.library = library;
  placement.device = device;
  placement.name = name;
  placement.origin = QPoint(x, y);
  placement.orientation = orientation;
  return placement;
}

// Writes models into libraries through a plug-in object in this process, and runs oahost on the same libraries. The
// libraries live as long as the process, so each case takes library names of its own.
class SchematicHost : public testing::Test {
protected:
  SchematicHost() {
    qputenv("HOME", host().path("").toLocal8Bit());
    QDir::setCurrent(host().path(""));
    plugIn.init(false);
    plugIn.setLayerMax(1 << 20, 1 << 20);
  }

  static HostProcess &host() {
    static HostProcess process;
    return process;
  }
  void createLib(const QString &lib) { ASSERT_TRUE(plugIn.checkLib(lib, host().path(lib), true)); }

  void writeSymbol(const QString &lib, const QString &device, const SymbolModel &symbol) {
    const DeviceName name = splitDevice(device);
    plugIn.saveSymbol(lib, name.cell, name.view);
    writeSchematicContents(plugIn, symbol, {}, device, report);
    plugIn.saveClose();
    owned.push_back(std::make_unique<SymbolModel>(symbol));
    symbols.insert(symbolKey(lib, device), owned.back().get());
  }
  void writeSchematic(const QString &lib, const QString &cell, const SchematicModel &model) {
    plugIn.saveSchematic(lib, cell, "schematic");
    writeSchematicContents(plugIn, model, symbols, cell, report);
    plugIn.saveClose();
  }
  SchematicModel read(const QString &lib, const QString &cell, const QString &view = "schematic") {
    SchematicModel model;
    SchematicReceiver receiver(plugIn, model);
    plugIn.openSchematic(lib, cell, view, QString());
    EXPECT_EQ(receiver.problems(), QStringList());
    return model;
  }
  // What oahost prints, with the library's name taken out.
  std::string output(const QString &arguments, const QString &lib) {
    const HostResult result = host().run(arguments.split(' '));
    EXPECT_EQ(result.exitCode, 0) << arguments.toStdString() << '\n' << result.errors;
    QString text = QString::fromUtf8(result.output);
    return text.replace('"' + lib + ".oa\"", "LIB.oa").replace('"' + lib + '"', "LIB").toStdString();
  }

  oaPlugInMain plugIn;
  ImportReport report;
  std::vector<std::unique_ptr<SymbolModel>> owned;
  QHash<QString, const SymbolModel *> symbols;
};

#endif
