// The rows of owners against a plain map, through the ways in which tables fill and change the index.

#include "table.h"

#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

using OpenAccess_4::kit::OwnerIndex;
using OpenAccess_4::kit::Row;

namespace {

typedef std::map<std::uint64_t, std::set<Row>> Expected;

std::vector<Row> rowsOf(const OwnerIndex &index, std::uint64_t owner) { return index.rows(owner).copy(); }

void expectSame(const OwnerIndex &index, const Expected &expected) {
  for (const auto &entry : expected) {
    EXPECT_EQ(rowsOf(index, entry.first), std::vector<Row>(entry.second.begin(), entry.second.end())) << entry.first;
  }
}

// Neighbours, the same numbers under another table, and numbers that lie anywhere.
std::vector<std::uint64_t> manyOwners() {
  std::vector<std::uint64_t> owners;
  std::mt19937_64 random(1);
  for (std::uint64_t i = 0; i < 100; ++i) {
    owners.push_back(i);
    owners.push_back(std::uint64_t(7) << 32 | i);
    owners.push_back(64 * i + 5);
    owners.push_back(random());
  }
  owners.push_back(~std::uint64_t(0));
  return owners;
}

TEST(OwnerIndex, KeepsTheRowsOfManyOwnersThroughChanges) {
  const std::vector<std::uint64_t> owners = manyOwners();
  std::mt19937 random(2);
  OwnerIndex index;
  Expected expected;
  for (int change = 0; change < 20000; ++change) {
    const std::uint64_t owner = owners[random() % owners.size()];
    const Row row = random() % 50;
    std::set<Row> &rows = expected[owner];
    if (rows.count(row) != 0) {
      index.remove(owner, row);
      rows.erase(row);
    } else {
      index.add(owner, row);
      rows.insert(row);
    }
  }
  expectSame(index, expected);
}

TEST(OwnerIndex, FilledAtOnceIsAsFilledOneByOneAndCanBeChanged) {
  const std::vector<std::uint64_t> owners = manyOwners();
  OwnerIndex index;
  Expected expected;
  const Row kRows = 3000;
  index.fill<std::uint64_t>(kRows, [&](Row row, std::uint64_t &owner) {
    owner = owners[(row / 3 * 7 + row % 2) % owners.size()];
    if (row % 5 == 0) {
      return false; // has no owner
    }
    expected[owner].insert(row);
    return true;
  });
  expectSame(index, expected);
  for (auto &entry : expected) {
    const Row first = *entry.second.begin();
    index.remove(entry.first, first);
    entry.second.erase(first);
    for (const Row row : {kRows + 1, kRows, first}) {
      index.add(entry.first, row);
      entry.second.insert(row);
    }
  }
  expectSame(index, expected);
}

TEST(OwnerIndex, KnowsNothingOfOwnersWithoutRows) {
  OwnerIndex index;
  EXPECT_TRUE(index.rows(1).empty());
  index.remove(1, 2);
  index.add(1, 2);
  EXPECT_TRUE(index.rows(2).empty()); // a neighbour
  EXPECT_TRUE(index.rows(1000).empty());
  index.remove(1, 2);
  EXPECT_TRUE(index.rows(1).empty());
  index.add(1, 3);
  index.clear();
  EXPECT_TRUE(index.rows(1).empty());
}

} // namespace
