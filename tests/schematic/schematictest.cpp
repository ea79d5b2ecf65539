#include "schematictest.h"

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

Lines SchematicTest::read(const std::string &cell, const std::string &view) {
  recorder.clear();
  plugIn.openSchematic("lib", QString::fromStdString(cell), QString::fromStdString(view), QString());
  return recorder.lines();
}
