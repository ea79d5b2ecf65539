#include "plugintest.h"

#include <QTemporaryDir>

using namespace oa;

QDir PluginTest::folder() {
  static const QTemporaryDir directory;
  return QDir(directory.path());
}

PluginTest::PluginTest() {
  qputenv("HOME", folder().path().toLocal8Bit());
  QDir::setCurrent(folder().path());
  plugIn.init(false);
  plugIn.setLayerMax(256, 256);
  createLib("lib");
}

PluginTest::~PluginTest() {
  oaIter<oaLib> libs(oaLib::getOpenLibs());
  while (oaLib *lib = libs.getNext()) {
    lib->getAccess(oacWriteLibAccess);
    oaIter<oaCell> cells(lib->getCells());
    while (oaCell *cell = cells.getNext()) {
      cell->destroy();
    }
    lib->releaseAccess();
    if (oaTech *tech = oaTech::find(lib)) {
      tech->purge();
    }
    if (oaTech::exists(lib)) {
      oaTech::destroy(lib);
    }
  }
  QDir::setCurrent(QDir::rootPath());
}

void PluginTest::createLib(const std::string &name) {
  const QString path = folder().filePath(QString::fromStdString(name));
  ASSERT_TRUE(plugIn.checkLib(QString::fromStdString(name), path, true));
}
