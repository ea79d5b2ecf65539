#include "claimedrows.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

// The bits of a word from row `begin` on that belong to [begin, end).
std::uint64_t maskOf(std::uint64_t begin, std::uint64_t end) {
  const std::uint64_t first = begin % 64;
  const std::uint64_t count = std::min<std::uint64_t>(64 - first, end - begin);
  return (count == 64 ? ~std::uint64_t(0) : (std::uint64_t(1) << count) - 1) << first;
}

std::uint64_t nextWord(std::uint64_t row) { return (row / 64 + 1) * 64; }

} // namespace

bool ClaimedRows::claim(Row begin, Row count) {
  constexpr std::uint64_t kMostVainLooks = 8; // at each row
  if (begin > rows_ || count > rows_ - begin || claimed_ + count > rows_ || lookedAt_ > kMostVainLooks * rows_) {
    return false;
  }
  const std::uint64_t end = std::uint64_t(begin) + count;
  for (std::uint64_t row = begin; row < end; row = nextWord(row)) {
    if ((words_[row / 64] & maskOf(row, end)) != 0) {
      lookedAt_ += row - begin + 1;
      return false;
    }
  }
  for (std::uint64_t row = begin; row < end; row = nextWord(row)) {
    words_[row / 64] |= maskOf(row, end);
  }
  claimed_ += count;
  return true;
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
