#include "dumptest.h"

using namespace oa;

NewView::NewView(const std::string &cell, const std::string &view, oaReservedViewTypeEnum type, const std::string &lib)
    : design_(oaDesign::open(scalar(lib), scalar(cell), scalar(view), oaViewType::get(oaReservedViewType(type)), 'w')),
      block_(oaBlock::create(design_)) {}

NewView::~NewView() {
  design_->save();
  design_->close();
}

std::string DumpTest::dump(const std::string &cell, const std::string &view, const std::string &lib) {
  oaPlugInCore &core = plugIn;
  return core.getViewDump(QString::fromStdString(lib), QString::fromStdString(cell), QString::fromStdString(view))
      .toLatin1()
      .toStdString();
}
