#include "stringtable.h"

#include "database.h"
#include "oa/oaBaseMsgIds.h"
#include "raise.h"

#include <cstddef>
#include <limits>

namespace OpenAccess_4 {
namespace kit {

StringBytes::StringBytes(Database &database) : Table(database, kStringBytesTable, "stringBytes", TableLife::pool) {}

StringTable::StringTable(Database &database)
    : Table(database, kStringTable, "strings", TableLife::referenced), bytes_(database) {
  spans.spansPool(kStringBytesTable, offsetof(Span, begin), offsetof(Span, count));
}

Row StringTable::add(std::string_view text) {
  if (text.empty()) {
    return kNoString;
  }
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    raiseMemory(database().label() + ": a text of " + std::to_string(text.size()) + " bytes is too long");
  }
  const Row count = static_cast<Row>(text.size());
  const Row begin = bytes_.addRows(count);
  bytes_.bytes.append(text.data(), count);
  const Row row = addRow();
  spans.set(row, {begin, count});
  return row;
}

Row StringTable::intern(std::string_view text) {
  if (text.empty()) {
    return kNoString;
  }
  if (!isInternBuilt_) {
    for (Row row = 0; row < rowCount(); ++row) {
      interned_.emplace(view(row), row);
    }
    isInternBuilt_ = true;
  }
  const auto entry = interned_.find(std::string(text));
  if (entry != interned_.end()) {
    return entry->second;
  }
  const Row row = add(text);
  interned_.emplace(text, row);
  return row;
}

std::string_view StringTable::findView(Row row) const {
  if (row == kNoString) {
    return std::string_view();
  }
  if (row >= rowCount()) {
    raiseBase(oacInvalidStringRef, database().label() + ": damaged: text " + std::to_string(row) +
                                       " is asked for, but there are " + std::to_string(rowCount()));
  }
  const Span span = spans[row];
  const Row stored = bytes_.bytes.size();
  if (span.begin > stored || span.count > stored - span.begin) {
    bytes_.checkSpan(span.begin, span.count, "a text");
  }
  return std::string_view(bytes_.bytes.span(span.begin, span.count), span.count);
}

void StringTable::clear() {
  Table::clear();
  interned_.clear();
  isInternBuilt_ = true; // nothing to take in
}

void StringTable::loaded() {
  Table::loaded();
  isInternBuilt_ = false;
}

} // namespace kit
} // namespace OpenAccess_4
