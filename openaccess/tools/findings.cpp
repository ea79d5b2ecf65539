#include "findings.h"

#include <cstdio>

namespace OpenAccess_4 {
namespace kit {
namespace check {

std::string quoted(std::string_view text) {
  constexpr std::size_t kMostBytes = 80;
  std::string result = "\"";
  for (const char c : text.substr(0, kMostBytes)) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7f) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\x%02x", byte);
      result += escape;
    } else {
      result += c;
    }
  }
  return result + (text.size() > kMostBytes ? "...\"" : "\"");
}

std::string textOf(const Finding &finding) {
  std::string text = finding.severity == Severity::damage    ? "damage: "
                     : finding.severity == Severity::warning ? "warning: "
                                                             : "foreign: ";
  text += finding.file + ": ";
  if (!finding.table.empty()) {
    text += "table " + finding.table;
    if (finding.row != kNoRow) {
      text += ", row " + std::to_string(finding.row);
    }
    if (!finding.column.empty()) {
      text += ", column " + finding.column;
    }
    text += ": ";
  }
  text += finding.fault.what;
  if (!finding.fault.expected.empty()) {
    text += "; expected " + finding.fault.expected;
  }
  return text;
}

FileReport::~FileReport() {
  if (untold_ != 0) {
    findings_.sink_({damages_ != 0 ? Severity::damage : Severity::warning,
                     file_,
                     {},
                     {},
                     kNoRow,
                     {std::to_string(untold_) + " more findings are not listed", {}}});
  }
}

void FileReport::add(Severity severity, const std::string &table, Row row, const std::string &column, Fault fault) {
  if (take(severity)) {
    tell(severity, table, row, column, std::move(fault));
  }
}

bool FileReport::take(Severity severity) {
  ++findings_.counts_[static_cast<int>(severity)];
  damages_ += severity == Severity::damage ? 1 : 0;
  if (told_ == findings_.mostPerFile_) {
    ++untold_;
    return false;
  }
  ++told_;
  return true;
}

void FileReport::tell(Severity severity, const std::string &table, Row row, const std::string &column, Fault fault) {
  findings_.sink_({severity, file_, table, column, row, std::move(fault)});
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
