#include "texts.h"

#include <algorithm>
#include <functional>

namespace OpenAccess_4 {
namespace kit {
namespace check {

void Texts::build() const {
  if (!numbers_.empty() || isSound_.empty()) {
    return;
  }
  order_.reserve(isSound_.size());
  for (Row row = 0; row < isSound_.size(); ++row) {
    if (isSound_[row]) {
      order_.emplace_back(std::hash<std::string_view>()(strings_.view(row)), row);
    }
  }
  std::sort(order_.begin(), order_.end(), [&](const auto &a, const auto &b) {
    if (a.first != b.first) {
      return a.first < b.first;
    }
    const int order = strings_.view(a.second).compare(strings_.view(b.second));
    return order != 0 ? order < 0 : a.second < b.second;
  });
  numbers_.assign(isSound_.size(), kNoString);
  for (std::size_t i = 0; i < order_.size(); ++i) {
    const Row row = order_[i].second;
    const bool isSame =
        i != 0 && order_[i - 1].first == order_[i].first && strings_.view(order_[i - 1].second) == strings_.view(row);
    numbers_[row] = isSame ? numbers_[order_[i - 1].second] : row;
  }
}

Row Texts::number(Row row) const {
  if (!isReadable(row)) {
    return row;
  }
  if (isEmpty(row)) {
    return kNoString;
  }
  build();
  return numbers_[row];
}

Row Texts::find(std::string_view text) const {
  build();
  const std::size_t hash = std::hash<std::string_view>()(text);
  auto at = std::lower_bound(order_.begin(), order_.end(), hash,
                             [](const auto &entry, std::size_t wanted) { return entry.first < wanted; });
  for (; at != order_.end() && at->first == hash; ++at) {
    if (strings_.view(at->second) == text) {
      return numbers_[at->second];
    }
  }
  return kNoString;
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
