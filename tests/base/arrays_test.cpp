#include "oa/oaArray.h"

#include <gtest/gtest.h>

#include <utility>

using namespace OpenAccess_4;

namespace {

oaStringArray arrayOf(std::initializer_list<const char *> texts) {
  oaStringArray array;
  for (const char *text : texts)
    array.append(text);
  return array;
}

TEST(Arrays, ElementsMayBeSetBeforeTheyAreCounted) {
  oaArray<int> array;
  array.setSize(3);
  EXPECT_EQ(array.getNumElements(), 0U);
  for (oaUInt4 i = 0; i < 3; ++i)
    array[i] = static_cast<int>(i) * 10;
  array.setNumElements(3);
  EXPECT_EQ(array[2], 20);
  array.setNumElements(0);
  array.setNumElements(5); // grows, with default elements behind
  EXPECT_EQ(array.getSize(), 5U);
  EXPECT_EQ(array[4], 0);
}

TEST(Arrays, SizeBelowTheElementsCutsThem) {
  oaStringArray array = arrayOf({"a", "b", "c"});
  array.setSize(2);
  EXPECT_EQ(array, arrayOf({"a", "b"}));
  array.setSize(100);
  EXPECT_EQ(array, arrayOf({"a", "b"}));
  array.setSize(0);
  EXPECT_EQ(array.getNumElements(), 0U);
}

TEST(Arrays, OwnElementsMayBeAppended) {
  oaStringArray array = arrayOf({"first of all the elements in here"});
  for (int i = 0; i < 9; ++i)
    array.append(array[0]);
  array.append(array);
  ASSERT_EQ(array.getNumElements(), 20U);
  for (oaUInt4 i = 0; i < 20; ++i)
    EXPECT_EQ(array[i], "first of all the elements in here");
  array.set(array.getElements() + 10, 3);
  EXPECT_EQ(array.getNumElements(), 3U);
}

TEST(Arrays, RemoveTakesTheFirstEqualElement) {
  oaStringArray array = arrayOf({"a", "b", "a", "c"});
  array.remove("a");
  EXPECT_EQ(array, arrayOf({"b", "a", "c"}));
  array.remove("x");
  array.remove("c");
  EXPECT_EQ(array, arrayOf({"b", "a"}));
  EXPECT_EQ(array.find("a"), 1U);
  EXPECT_EQ(array.find("c"), oacNullIndex);
}

TEST(Arrays, CopiesAndMoves) {
  oaStringArray array = arrayOf({"a", "b"});
  oaStringArray copy(array);
  copy[0] = "x";
  EXPECT_EQ(array[0], "a");
  EXPECT_NE(array, copy);
  const oaStringArray taken(std::move(array));
  EXPECT_EQ(taken, arrayOf({"a", "b"}));
  // Moved-from arrays are empty and usable. NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
  EXPECT_EQ(array.getNumElements(), 0U);
  array.append("again");
  EXPECT_EQ(array, arrayOf({"again"}));
}

TEST(Arrays, SortAndSubset) {
  oaSubset<int> set;
  for (int value : {3, 1, 3, 2, 1})
    set.add(value);
  ASSERT_EQ(set.getNumElements(), 3U);
  EXPECT_TRUE(set.includes(2));
  EXPECT_FALSE(set.includes(4));
  set.sort([](const int *a, const int *b) { return *a - *b; });
  EXPECT_EQ(set[0], 1);
  EXPECT_EQ(set[2], 3);
}

} // namespace
