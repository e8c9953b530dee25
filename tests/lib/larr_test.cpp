#include "lib/larr.h"

#include <gtest/gtest.h>

#include "lib/lhash.h"
#include "lib/strfunc.h"

TEST(LArr, SentinelFollowsTheLastElement) {
  LArrOf<const char*> names;
  EXPECT_EQ(names.capacity, 0);
  EXPECT_EQ(names[0], nullptr);
  names.add("a");
  EXPECT_EQ(names.capacity, 1);
  names.add("b");
  names.insert("first", 0);
  names.insert("last", -1);
  ASSERT_EQ(names.count, 4);
  int walked = 0;
  for (const char* const* p = names.data(); *p; p++) walked++;
  EXPECT_EQ(walked, 4);
  EXPECT_STREQ(names.pop(), "last");
  EXPECT_EQ(names[3], nullptr);
  EXPECT_STREQ(names.last(), "b");
}

TEST(LArr, GrowthCountsElementsAndClearReleases) {
  LInts numbers;
  for (int i = 0; i < 1000; i++) numbers.add(i);
  EXPECT_GE(numbers.capacity, 1000);
  numbers.removeRange(10, 980);
  ASSERT_EQ(numbers.count, 20);
  EXPECT_EQ(numbers[10], 990);
  EXPECT_EQ(numbers[20], 0);
  numbers.clear();
  EXPECT_EQ(numbers.capacity, 0);
  EXPECT_EQ(numbers.count, 0);
  EXPECT_EQ(numbers.pop(), 0);
  EXPECT_EQ(numbers.last(), 0);
}

TEST(LArr, OwningFormsFreeWhatTheyHold) {
  LStrs strings;
  strings.add(new LStr("one"));
  strings.add(new LStr("two"));
  strings.add(new LStr("three"));
  strings.removeRange(0, 1);
  EXPECT_STREQ(strings[0]->ptr, "two");
  LStrPairs pairs;
  pairs.add(new LStrPair{"k", "v"});
  EXPECT_STREQ(pairs[0]->second.ptr, "v");
  // The sanitizer build proves there is no leak when these go out of scope.
}

TEST(LHash, DuplicatesAreKeptAndFoundInOrder) {
  LHash table(LHash::kStrs);
  table.addStr(new LStr("name"));
  table.addStr(new LStr("name"));
  table.addStr(new LStr("other"));
  EXPECT_EQ(table.elementCount, 3);
  auto same = [](intptr_t element, const void* key) {
    return FStrCmp(reinterpret_cast<LStr*>(element)->ptr, static_cast<const char*>(key), false);
  };
  intptr_t found = table.findStr("name", same);
  ASSERT_NE(found, 0);
  LArr all;
  table.collect(all);
  EXPECT_EQ(all.count, 3);
  EXPECT_EQ(table.findStr("missing", same), 0);
}

TEST(LHash, IntegerKeysAndPairs) {
  LHash ints(LHash::kInts);
  EXPECT_FALSE(ints.containsInt(5));
  ints.addInt(5);
  ints.addInt(5 + 256);  // same bucket
  EXPECT_TRUE(ints.containsInt(5));
  EXPECT_TRUE(ints.containsInt(261));
  EXPECT_FALSE(ints.containsInt(517));
  LHash pairs(LHash::kPairs);
  pairs.addPair(7, 70);
  pairs.addPair(7, 71);
  intptr_t pair = pairs.findInt(7, [](intptr_t element, const void* key) {
    return reinterpret_cast<LIntPair*>(element)->key == *static_cast<const intptr_t*>(key) ? 0 : 1;
  });
  ASSERT_NE(pair, 0);
  EXPECT_EQ(reinterpret_cast<LIntPair*>(pair)->value, 70);
  pairs.clear();
  EXPECT_EQ(pairs.elementCount, 0);
}
