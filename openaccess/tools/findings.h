#ifndef OAKIT_FINDINGS_H
#define OAKIT_FINDINGS_H

// What a check has found. Faults are told as they are met; a file with millions of them is told briefly.

#include "table.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace OpenAccess_4 {
namespace kit {
namespace check {

enum class Severity {
  damage,  // contents that cannot be right
  warning, // what a user may want to know, but a sound library may have
  foreign  // a file of another format, or of a newer kit, which cannot be checked
};

struct Fault {
  std::string what;
  std::string expected; // empty when `what` says it
};

struct Finding {
  Severity severity;
  std::string file;
  std::string table, column; // empty when it is about the file as a whole
  Row row = kNoRow;
  Fault fault;
};

// "damage: /lib/inv/layout/layout.oa: table nets, row 3, column bits: ..., expected ..."
std::string textOf(const Finding &finding);
// Length of the UTF-8 character at the beginning of a text that is not empty; 0 when there is none.
std::size_t characterBytes(std::string_view text);
// A text out of a file, in quotes, without control characters and bytes that are no UTF-8, and not longer than a line
// takes.
std::string quoted(std::string_view text);

class Findings {
public:
  using Sink = std::function<void(const Finding &)>;
  // `sink` gets at most `mostPerFile` findings of one file, and one more that tells the number of the others.
  explicit Findings(Sink sink, std::uint64_t mostPerFile = 100) : sink_(std::move(sink)), mostPerFile_(mostPerFile) {}

  std::uint64_t count(Severity severity) const { return counts_[static_cast<int>(severity)]; }
  bool isDamaged() const { return count(Severity::damage) != 0; }

private:
  friend class FileReport;
  Sink sink_;
  std::uint64_t mostPerFile_;
  std::uint64_t counts_[3] = {};
};

// The findings of one file, or of one directory.
class FileReport {
public:
  FileReport(Findings &findings, std::string file) : findings_(findings), file_(std::move(file)) {}
  ~FileReport();
  FileReport(const FileReport &) = delete;
  FileReport &operator=(const FileReport &) = delete;

  const std::string &file() const { return file_; }
  bool isDamaged() const { return damages_ != 0; }

  void damage(Fault fault) { add(Severity::damage, {}, kNoRow, {}, std::move(fault)); }
  void warning(std::string what) { add(Severity::warning, {}, kNoRow, {}, {std::move(what), {}}); }
  void foreign(std::string what) { add(Severity::foreign, {}, kNoRow, {}, {std::move(what), {}}); }
  // About a row; `describe` gives the fault and is called only when somebody wants to know it.
  template <typename Describe> void damage(const Table &table, Row row, const char *column, Describe describe) {
    if (take(Severity::damage)) {
      tell(Severity::damage, table.name(), row, column, describe());
    }
  }
  void damage(const Table &table, Row row, const char *column, const char *what, const char *expected = "") {
    damage(table, row, column, [&] { return Fault{what, expected}; });
  }
  template <typename Describe> void warning(const Table &table, Row row, const char *column, Describe describe) {
    if (take(Severity::warning)) {
      tell(Severity::warning, table.name(), row, column, describe());
    }
  }
  // About a column or table as a whole, by names out of the file's directory.
  void damage(const std::string &table, const std::string &column, Fault fault) {
    add(Severity::damage, table, kNoRow, column, std::move(fault));
  }

private:
  void add(Severity severity, const std::string &table, Row row, const std::string &column, Fault fault);
  bool take(Severity severity);
  void tell(Severity severity, const std::string &table, Row row, const std::string &column, Fault fault);

  Findings &findings_;
  std::string file_;
  std::uint64_t damages_ = 0;
  std::uint64_t told_ = 0;
  std::uint64_t untold_ = 0;
};

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
