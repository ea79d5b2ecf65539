#include "viewtypes.h"

#include "session.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

namespace {

struct ReservedViewType {
  const char *name;
  const char *primaryFile;
};
// In the order of oaReservedViewTypeEnum.
constexpr ReservedViewType kReserved[] = {
    {"maskLayout", "layout.oa"},
    {"schematic", "sch.oa"},
    {"schematicSymbol", "symbol.oa"},
    {"netlist", "netlist.oa"},
    {"wafer", "wafer.oa"},
    {"verilogAMSText", "verilog.vams"},
    {"VHDLAMSText", "vhdl.vhms"},
    {"verilogText", "verilog.v"},
    {"VHDLText", "vhdl.vhd"},
    {"verilogAText", "verilog.va"},
    {"oaHierDesign", "hierDesign.oa"},
    {"systemVerilogText", "verilog.sv"},
    {"SPECTREText", "spectre.scs"},
    {"SPICEText", "spice.spc"},
    {"HSPICEText", "hspice.hsp"},
    {"CDLText", "netlist.cdl"},
};
constexpr Row kReservedTypes = sizeof kReserved / sizeof kReserved[0];
constexpr const char *kOtherSuffix = ".file";

} // namespace

ViewTypes::ViewTypes(Database &session) : Table(session, kViewTypeTable, "view types", TableLife::kinds) {
  setKindColumn(kind_);
  for (const ReservedViewType &reserved : kReserved) {
    add(reserved.name);
  }
}

ViewTypes &ViewTypes::instance() {
  static ViewTypes &types = *new ViewTypes(SessionDatabase::instance());
  return types;
}

Row ViewTypes::find(const std::string &name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? kNoRow : found->second;
}

Row ViewTypes::add(const std::string &name) {
  const Row row = addRow();
  kind_.set(row, oacViewTypeType);
  names_.push_back(name);
  byName_.emplace(name, row);
  return row;
}

Row ViewTypes::findOrAdd(const std::string &name) {
  const Row row = find(name);
  return row == kNoRow ? add(name) : row;
}

std::string ViewTypes::primaryFileOf(Row type) const {
  if (type < kReservedTypes) {
    return kReserved[type].primaryFile;
  }
  const std::string &name = names_[type];
  return name.find('.') == std::string::npos ? name + kOtherSuffix : name;
}

Row ViewTypes::typeOfPrimaryFile(const std::string &fileName) {
  for (Row row = 0; row < kReservedTypes; ++row) {
    if (fileName == kReserved[row].primaryFile) {
      return row;
    }
  }
  const std::size_t dot = fileName.find('.');
  if (dot == std::string::npos || dot == 0) {
    return kNoRow;
  }
  const std::string suffix = kOtherSuffix;
  const bool isOther =
      fileName.size() > suffix.size() && fileName.compare(fileName.size() - suffix.size(), suffix.size(), suffix) == 0;
  // "a.b.file" has a dot before the suffix, and so is the name of its type.
  const std::string stem = isOther ? fileName.substr(0, fileName.size() - suffix.size()) : fileName;
  return findOrAdd(stem.find('.') == std::string::npos ? stem : fileName);
}

Row ViewTypes::rowOfType(const oaViewType *type) {
  liveTable(type);
  return kit::rowOf(type);
}

} // namespace kit
} // namespace OpenAccess_4
