#include "ownerruns.h"

#include <algorithm>

namespace OpenAccess_4 {
namespace kit {

void OwnerRuns::clear() {
  isBuilt_ = false;
  tableCount_ = 0;
  tables_ = std::vector<OwnersOfTable>();
}

bool OwnerRuns::append(std::uint16_t tableId, Row owner, const Run &rows) {
  if (tableId >= kTables || owner == kNoRow) { // which stands for the end
    return false;
  }
  if (tableId >= tableCount_) {
    tableCount_ = static_cast<std::uint16_t>(tableId + 1);
    tables_.resize(tableCount_);
  }
  OwnersOfTable &table = tables_[tableId];
  if (!table.owners.empty() && table.owners.back().row >= owner) {
    return false;
  }
  table.owners.push_back({owner, rows});
  table.lastKnown = table.owners.front().row;
  table.lastRun = table.owners.front().rows;
  return true;
}

bool OwnerRuns::seek(const OwnersOfTable &table, Row owner) {
  const std::vector<Owner> &owners = table.owners;
  std::size_t place = table.place + 1; // the usual case: a walk over the owners
  const bool isNext = owner > table.lastKnown && (place >= owners.size() || owners[place].row >= owner);
  if (!isNext) {
    place =
        static_cast<std::size_t>(std::lower_bound(owners.begin(), owners.end(), owner,
                                                  [](const Owner &entry, Row wanted) { return entry.row < wanted; }) -
                                 owners.begin());
  }
  const bool isEnd = place >= owners.size();
  table.place = place;
  table.firstKnown = place == 0 ? 0 : owners[place - 1].row + 1;
  table.lastKnown = isEnd ? kNoRow : owners[place].row;
  table.lastRun = isEnd ? Run{0, 0} : owners[place].rows;
  return !isEnd && table.lastKnown == owner;
}

} // namespace kit
} // namespace OpenAccess_4
