#include "dumptest.h"

#include <QTemporaryDir>

using namespace oa;

namespace {

// Libraries live as long as the process, so all cases of a program share the folder and each leaves the libraries
// empty.
QDir folder() {
  static const QTemporaryDir directory;
  return QDir(directory.path());
}

} // namespace

NewView::NewView(const std::string &cell, const std::string &view, oaReservedViewTypeEnum type, const std::string &lib)
    : design_(oaDesign::open(scalar(lib), scalar(cell), scalar(view), oaViewType::get(oaReservedViewType(type)), 'w')),
      block_(oaBlock::create(design_)) {}

NewView::~NewView() {
  design_->save();
  design_->close();
}

DumpTest::DumpTest() {
  qputenv("HOME", folder().path().toLocal8Bit());
  QDir::setCurrent(folder().path());
  plugIn.init(false);
  createLib("lib");
}

DumpTest::~DumpTest() {
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

void DumpTest::createLib(const std::string &name) {
  const QString path = folder().filePath(QString::fromStdString(name));
  ASSERT_TRUE(plugIn.checkLib(QString::fromStdString(name), path, true));
}

std::string DumpTest::dump(const std::string &cell, const std::string &view, const std::string &lib) {
  oaPlugInCore &core = plugIn;
  return core.getViewDump(QString::fromStdString(lib), QString::fromStdString(cell), QString::fromStdString(view))
      .toLatin1()
      .toStdString();
}
