#include "dumpentries.h"

#include <algorithm>
#include <tuple>

void DumpEntries::add(const Key &key) {
  const std::size_t begin = entries_.empty() ? 0 : entries_.back().end;
  entries_.push_back(Entry{key, begin, text_.size()});
}

bool DumpEntries::isBefore(const Entry &a, const Entry &b) const {
  const auto first = std::tie(a.key.layer, a.key.purpose, a.key.kind, a.key.place);
  const auto second = std::tie(b.key.layer, b.key.purpose, b.key.kind, b.key.place);
  if (first != second) {
    return first < second;
  }
  return text_.string().compare(a.begin, a.end - a.begin, text_.string(), b.begin, b.end - b.begin) < 0;
}

void DumpEntries::moveTo(DumpText &out) {
  std::sort(entries_.begin(), entries_.end(), [this](const Entry &a, const Entry &b) { return isBefore(a, b); });
  for (const Entry &entry : entries_) {
    out.append(text_.string().data() + entry.begin, entry.end - entry.begin);
  }
  *this = DumpEntries();
}
