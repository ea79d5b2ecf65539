// The rows of owners against a plain map, through the ways in which tables fill and change the index.

#include "ownerruns.h"
#include "table.h"

#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

using OpenAccess_4::kit::OwnerIndex;
using OpenAccess_4::kit::OwnerRuns;
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

class FilledIndex : public testing::TestWithParam<bool> {};

// With the rows of each owner side by side, and not.
INSTANTIATE_TEST_SUITE_P(OwnerIndex, FilledIndex, testing::Bool());

TEST_P(FilledIndex, IsAsFilledOneByOneAndCanBeChanged) {
  const bool isInOrder = GetParam();
  const std::vector<std::uint64_t> owners = manyOwners();
  OwnerIndex index;
  Expected expected;
  const Row kRows = isInOrder ? 1200 : 3000; // each owner comes once
  ASSERT_GE(owners.size() * 3, std::size_t(1200));
  index.fill<std::uint64_t>(kRows, [&](Row row, std::uint64_t &owner) {
    owner = owners[isInOrder ? row / 3 : (row / 3 * 7 + row % 2) % owners.size()];
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

std::vector<Row> rowsOf(const OwnerRuns &runs, std::uint16_t table, Row owner) {
  const OwnerRuns::Run run = runs.rows(table, owner);
  std::vector<Row> rows;
  for (Row row = run.begin; row != run.end; ++row) {
    rows.push_back(row);
  }
  EXPECT_EQ(runs.has(table, owner), !rows.empty());
  return rows;
}

TEST(OwnerRuns, AnswerInWhateverOrderTheyAreAsked) {
  OwnerRuns runs;
  std::map<std::pair<std::uint16_t, Row>, std::vector<Row>> expected;
  Row row = 0;
  for (Row owner = 3; owner < 300; owner += 1 + owner % 4) { // two tables by turns
    const std::uint16_t table = owner % 3 == 0 ? 19 : 34;
    const Row end = row + 1 + owner % 5;
    ASSERT_TRUE(runs.append(table, owner, {row, end}));
    for (; row < end; ++row) {
      expected[{table, owner}].push_back(row);
    }
    row += owner % 2; // of nobody
  }
  const auto expectRows = [&](std::uint16_t table, Row owner) {
    const auto known = expected.find({table, owner});
    EXPECT_EQ(rowsOf(runs, table, owner), known == expected.end() ? std::vector<Row>() : known->second)
        << table << ' ' << owner;
  };
  std::mt19937 random(3);
  for (Row i = 0; i <= 310; ++i) {
    for (const Row owner : {i, 310 - i, Row(random() % 310), ~Row(0) - i}) {
      for (const std::uint16_t table : {18, 19, 34, 35}) {
        expectRows(table, owner);
      }
    }
    expectRows(19, i);
  }
  runs.clear();
  EXPECT_TRUE(rowsOf(runs, 19, 3).empty());
}

TEST(OwnerRuns, RefuseWhatIsNotInOrder) {
  const struct {
    const char *what;
    std::uint16_t table;
    Row owner;
  } cases[] = {{"an owner once more", 19, 7},
               {"an earlier owner", 19, 6},
               {"the number that stands for no row", 19, ~Row(0)},
               {"a table that no database has", 65535, 8}};
  for (const auto &c : cases) {
    OwnerRuns runs;
    EXPECT_TRUE(runs.append(19, 7, {0, 2}));
    EXPECT_FALSE(runs.append(c.table, c.owner, {3, 4})) << c.what;
  }
}

} // namespace
