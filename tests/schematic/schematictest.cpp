#include "schematictest.h"

#include <QTemporaryDir>

using namespace oa;

SchematicBuilder::SchematicBuilder(const std::string &cell, const std::string &view, Kind kind, const std::string &lib)
    : design_(oaDesign::open(scalar(lib), scalar(cell), scalar(view),
                             oaViewType::get(oaReservedViewType(static_cast<oaReservedViewTypeEnum>(kind))), 'w')),
      block_(oaBlock::create(design_)) {}

SchematicBuilder::~SchematicBuilder() {
  design_->save();
  design_->close();
}

OpenView::OpenView(const std::string &cell, const std::string &view, const std::string &lib)
    : design_(oaDesign::open(scalar(lib), scalar(cell), scalar(view), 'r')) {}

// Libraries live as long as the process, so all cases of a program share the folder and each leaves the libraries
// empty.
QDir SchematicTest::folder() {
  static const QTemporaryDir directory;
  return QDir(directory.path());
}

// The home directory and the working directory are the temporary folder, so that no other lib.defs is found.
SchematicTest::SchematicTest() : recorder(&plugIn) {
  qputenv("HOME", folder().path().toLocal8Bit());
  QDir::setCurrent(folder().path());
  plugIn.init(false);
  plugIn.setLayerMax(256, 256);
  createLib("lib");
}

SchematicTest::~SchematicTest() {
  oaIter<oaLib> libs(oaLib::getOpenLibs());
  while (oaLib *lib = libs.getNext()) {
    lib->getAccess(oacWriteLibAccess);
    oaIter<oaCell> cells(lib->getCells());
    while (oaCell *cell = cells.getNext()) {
      cell->destroy();
    }
    lib->releaseAccess();
  }
  QDir::setCurrent(QDir::rootPath());
}

void SchematicTest::createLib(const std::string &name) {
  const QString path = folder().filePath(QString::fromStdString(name));
  ASSERT_TRUE(plugIn.checkLib(QString::fromStdString(name), path, true));
}

Lines SchematicTest::read(const std::string &cell, const std::string &view) {
  recorder.clear();
  plugIn.openSchematic("lib", QString::fromStdString(cell), QString::fromStdString(view), QString());
  return recorder.lines();
}
