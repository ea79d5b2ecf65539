#ifndef OAKIT_OWNERRUNS_H
#define OAKIT_OWNERRUNS_H

// The rows that belong to one owner when those of every owner stand side by side and the owners of a table ascend, as
// they do in a table that was filled object by object. A few bytes for each owner that has any, made in one pass, and
// an answer costs next to nothing when the owners are asked for in their order. It cannot change: see OwnerIndex for
// rows that come and go.

#include "table.h"

#include <vector>

namespace OpenAccess_4 {
namespace kit {

class OwnerRuns {
public:
  // Rows [begin, end); none when both are the same.
  struct Run {
    Row begin;
    Row end;
  };

  bool isBuilt() const { return isBuilt_; }
  void setBuilt() { isBuilt_ = true; }
  void clear();
  // Takes in the rows of an owner, which are behind all before. False when the owners are not in order.
  bool append(std::uint16_t tableId, Row owner, const Run &rows);
  Run rows(std::uint16_t tableId, Row owner) const {
    return has(tableId, owner) ? tables_[tableId].lastRun : Run{0, 0};
  }
  bool has(std::uint16_t tableId, Row owner) const {
    if (tableId >= tableCount_) {
      return false;
    }
    const OwnersOfTable &table = tables_[tableId];
    if (__builtin_expect(owner - table.firstKnown > table.lastKnown - table.firstKnown, 0)) {
      return seek(table, owner);
    }
    return owner == table.lastKnown && owner != kNoRow;
  }

private:
  static constexpr std::uint16_t kTables = 64; // more than there are
  struct Owner {
    Row row;
    Run rows;
  };
  // The answer is known for the owners between the two that were found last: none but the later one has rows.
  struct OwnersOfTable {
    std::vector<Owner> owners;
    mutable Row firstKnown = 0;
    mutable Row lastKnown = kNoRow;
    mutable Run lastRun = {0, 0};
    mutable std::size_t place = 0;
  };

  // Finds the owners around this one, and whether it has rows itself.
  static bool seek(const OwnersOfTable &table, Row owner);

  bool isBuilt_ = false;
  std::uint16_t tableCount_ = 0;
  std::vector<OwnersOfTable> tables_;
};

} // namespace kit
} // namespace OpenAccess_4

#endif
