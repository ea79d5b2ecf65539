#include "checkoutput.h"

#include <algorithm>
#include <cstdio>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

const char *nameOf(Severity severity) {
  return severity == Severity::damage ? "damage" : severity == Severity::warning ? "warning" : "foreign";
}

std::string counted(std::uint64_t count, const char *one, const char *many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string sizeText(std::uint64_t bytes) {
  char text[32];
  if (bytes < 1000000) {
    std::snprintf(text, sizeof text, "%.1f kB", static_cast<double>(bytes) / 1e3);
  } else {
    std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / 1e6);
  }
  return text;
}

} // namespace

std::string jsonString(std::string_view text) {
  std::string result = "\"";
  while (!text.empty()) {
    const unsigned char byte = static_cast<unsigned char>(text[0]);
    const std::size_t count = characterBytes(text);
    if (count == 0) {
      result += "\\ufffd";
    } else if (byte < 0x20 || byte == 0x7f) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", byte);
      result += escape;
    } else {
      result += byte == '"' || byte == '\\' ? "\\" : "";
      result += text.substr(0, count);
    }
    text.remove_prefix(std::max<std::size_t>(count, 1));
  }
  return result + "\"";
}

std::string jsonOf(const Finding &finding) {
  std::string json =
      std::string("{\"severity\": \"") + nameOf(finding.severity) + "\", \"file\": " + jsonString(finding.file);
  if (!finding.table.empty()) {
    json += ", \"table\": " + jsonString(finding.table);
  }
  if (finding.row != kNoRow) {
    json += ", \"row\": " + std::to_string(finding.row);
  }
  if (!finding.column.empty()) {
    json += ", \"column\": " + jsonString(finding.column);
  }
  json += ", \"what\": " + jsonString(finding.fault.what);
  if (!finding.fault.expected.empty()) {
    json += ", \"expected\": " + jsonString(finding.fault.expected);
  }
  return json + "}";
}

std::string summaryOf(const Findings &findings, const Totals &totals) {
  std::string text = counted(totals.cells, "cell", "cells") + ", " + counted(totals.views, "view", "views") + ", " +
                     counted(totals.databases, "database", "databases") + " of " + sizeText(totals.bytes);
  if (totals.otherFiles != 0) {
    text += ", " + counted(totals.otherFiles, "other file", "other files") + " not looked into";
  }
  if (totals.mastersElsewhere != 0) {
    text += ", " + counted(totals.mastersElsewhere, "master", "masters") + " in other libraries not looked for";
  }
  const std::uint64_t damages = findings.count(Severity::damage);
  text += damages == 0 ? ": no damage" : ": " + counted(damages, "damage", "damages");
  const std::uint64_t warnings = findings.count(Severity::warning), foreign = findings.count(Severity::foreign);
  text += warnings == 0 ? "" : ", " + counted(warnings, "warning", "warnings");
  text += foreign == 0 ? "" : ", " + counted(foreign, "foreign file", "foreign files") + " not checked";
  return text;
}

void writeJson(std::ostream &out, const std::vector<std::string> &paths, const std::vector<Finding> &listed,
               const Findings &findings, const Totals &totals) {
  const auto writeList = [&](const auto &members, auto toText, const char *separator) {
    for (std::size_t i = 0; i < members.size(); ++i) {
      out << (i == 0 ? "" : separator) << toText(members[i]);
    }
  };
  out << "{\"paths\": [";
  writeList(
      paths, [](const std::string &path) { return jsonString(path); }, ", ");
  out << "],\n \"findings\": [";
  writeList(listed, jsonOf, ",\n  ");
  out << "],\n \"summary\": {\"cells\": " << totals.cells << ", \"views\": " << totals.views
      << ", \"databases\": " << totals.databases << ", \"bytes\": " << totals.bytes
      << ", \"otherFiles\": " << totals.otherFiles << ", \"mastersElsewhere\": " << totals.mastersElsewhere
      << ", \"damages\": " << findings.count(Severity::damage)
      << ", \"warnings\": " << findings.count(Severity::warning)
      << ", \"foreign\": " << findings.count(Severity::foreign) << "}}\n";
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
