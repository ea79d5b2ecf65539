#include "findings.h"

#include <cstdio>

namespace OpenAccess_4 {
namespace kit {
namespace check {

std::size_t characterBytes(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  const std::size_t count = first < 0x80   ? 1
                            : first < 0xc2 ? 0
                            : first < 0xe0 ? 2
                            : first < 0xf0 ? 3
                            : first < 0xf5 ? 4
                                           : 0;
  if (count > text.size()) {
    return 0;
  }
  for (std::size_t i = 1; i < count; ++i) {
    if ((byte(i) & 0xc0U) != 0x80) {
      return 0;
    }
  }
  const bool isOverlong = (first == 0xe0 && byte(1) < 0xa0) || (first == 0xf0 && byte(1) < 0x90);
  const bool isBeyond = (first == 0xed && byte(1) > 0x9f) || (first == 0xf4 && byte(1) > 0x8f);
  return isOverlong || isBeyond ? 0 : count;
}

std::string quoted(std::string_view text) {
  constexpr std::size_t kMostBytes = 80;
  std::string result = "\"";
  std::size_t at = 0;
  while (at < text.size() && at < kMostBytes) {
    const unsigned char byte = static_cast<unsigned char>(text[at]);
    const std::size_t count = characterBytes(text.substr(at));
    if (count == 0 || byte < 0x20 || byte == 0x7f) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\x%02x", byte);
      result += escape;
      ++at;
    } else {
      result += text.substr(at, count);
      at += count;
    }
  }
  return result + (at < text.size() ? "...\"" : "\"");
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
