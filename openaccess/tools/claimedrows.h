#ifndef OAKIT_CLAIMEDROWS_H
#define OAKIT_CLAIMEDROWS_H

#include "column.h"

#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

// The rows of a pool or payload table, each of which may be claimed by one owner. The time that a hostile file can cost
// is limited: spans that cannot all be apart are refused without a look.
class ClaimedRows {
public:
  explicit ClaimedRows(Row rows) : rows_(rows), words_((std::size_t(rows) + 63) / 64) {}

  Row rows() const { return rows_; }
  // False when a row of the span is beyond the end or taken already; nothing is claimed then.
  bool claim(Row begin, Row count);
  bool claim(Row row) { return claim(row, 1); }

private:
  Row rows_;
  std::uint64_t claimed_ = 0;
  std::uint64_t lookedAt_ = 0; // in vain
  std::vector<std::uint64_t> words_;
};

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
