#ifndef OAKIT_STRINGTABLE_H
#define OAKIT_STRINGTABLE_H

// The texts of a database. A text is known by its row; rows of equal texts may differ unless they came from intern().

#include "oa/oaString.h"
#include "table.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace OpenAccess_4 {
namespace kit {

// The empty text has no row.
constexpr Row kNoString = kNoRow;

class StringBytes : public Table {
public:
  explicit StringBytes(Database &database);
  Column<char> bytes{*this, 1, "bytes"};
};

class StringTable : public Table {
public:
  explicit StringTable(Database &database);

  // A new row with this text, which may hold any bytes. The empty text gives kNoString.
  Row add(std::string_view text);
  // The row of an equal text that was interned before, or a new one. For texts that repeat: names of libraries, cells,
  // layers.
  Row intern(std::string_view text);
  // Raises oacInvalidStringRef for a row that does not exist. Valid until the next add.
  std::string_view view(Row row) const {
    const std::string_view ready = readyView(row);
    return __builtin_expect(ready.data() != nullptr, 1) ? ready : findView(row);
  }
  // The text when it can be had without further ado: stored and verified. One without data otherwise.
  std::string_view readyView(Row row) const {
    const Span *span = spans.ready(row);
    if (__builtin_expect(span != nullptr && span->count != 0 && span->count <= kSegmentRows, 1)) {
      // Both ends at hand means that the text lies in segments that are verified.
      const char *first = bytes_.bytes.ready(span->begin);
      const Row last = span->begin + (span->count - 1);
      if (__builtin_expect(first != nullptr && last >= span->begin && bytes_.bytes.ready(last) != nullptr, 1)) {
        return std::string_view(first, span->count);
      }
    }
    return std::string_view();
  }
  std::string text(Row row) const { return std::string(view(row)); }
  void get(Row row, oaString &out) const {
    const std::string_view text = view(row);
    out.assign(text.data(), static_cast<oaUInt4>(text.size()));
  }

  void clear() override;
  void loaded() override;

  struct Span {
    std::uint32_t begin;
    std::uint32_t count;
  };
  Column<Span> spans{*this, 1, "spans"};

private:
  std::string_view findView(Row row) const;
  StringBytes bytes_;
  // Filled from the file's strings at the first intern().
  bool isInternBuilt_ = false;
  std::unordered_map<std::string, Row> interned_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
