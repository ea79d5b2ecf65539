#ifndef OAKIT_TEXTS_H
#define OAKIT_TEXTS_H

#include "stringtable.h"

#include <string_view>
#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// The texts of a database, read with care. Texts are compared by number: a hostile file may let a million rows share
// one text of many megabytes.
class Texts {
public:
  // `isSound` tells for each row of the table whether its bytes can be read.
  Texts(const StringTable &strings, std::vector<bool> isSound) : strings_(strings), isSound_(std::move(isSound)) {}

  // There is such a row, or it is the empty text.
  bool exists(Row row) const { return row == kNoString || row < isSound_.size(); }
  // Its bytes can be read. What is wrong with other texts is told once, not for each reference to them.
  bool isReadable(Row row) const { return row == kNoString || (row < isSound_.size() && isSound_[row]); }
  bool isEmpty(Row row) const { return row == kNoString || strings_.spans[row].count == 0; }
  std::string_view view(Row row) const { return isReadable(row) ? strings_.view(row) : std::string_view(); }
  // The first row with the same text, kNoString for the empty one. A text that cannot be read is like no other.
  Row number(Row row) const;
  // kNoString when no readable row has it.
  Row find(std::string_view text) const;

private:
  void build() const;

  const StringTable &strings_;
  std::vector<bool> isSound_;
  mutable std::vector<Row> numbers_; // empty before the first question
  // Hash and row, sorted by hash and text.
  mutable std::vector<std::pair<std::size_t, Row>> order_;
};

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
