#include <gtest/gtest.h>

#include "cond_fixture.h"
#include "store/add_cond.h"

namespace {
TAddCandidate candidate(const char* name, int64_t size) {
  return TAddCandidate{name,
                       /*time=*/1500,
                       size,
                       "C:\\src\\docs\\a.txt",
                       kAttrArchive,
                       /*hasFile=*/false};
}
}  // namespace

TEST_F(CondTest, AddTestsEachCondition) {
  TCond cond;
  cond.existingOnly = 1;
  TAddCandidate file = candidate("a.txt", 100);
  EXPECT_FALSE(FAddCondTest(file, cond));
  file.hasFile = true;
  EXPECT_TRUE(FAddCondTest(file, cond));

  cond.nameText = "*.txt";
  cond.sizeText = "50-150";
  cond.pathText = "\\docs\\";
  cond.pathMode = kCondPartial;
  cond.attrWant[1] = kAttrOn;
  ASSERT_FALSE(cond.Parse());
  cond.dates = new LDtPairs;
  cond.dates->add(new LDtPair{1000, 2000});
  EXPECT_TRUE(FAddCondTest(file, cond));
  TAddCandidate other[5] = {file, file, file, file, file};
  other[0].name = "a.c";
  other[1].size = 151;
  other[2].time = 2001;
  other[3].path = "C:\\src\\a.txt";
  other[4].attrs = kAttrReadOnly;
  for (const TAddCandidate& refused : other) EXPECT_FALSE(FAddCondTest(refused, cond));
  EXPECT_EQ(recorder->entries.count, 0);
}

TEST_F(CondTest, AddTestWarnsOfFilesTooLargeForASizeCondition) {
  TCond cond;
  EXPECT_TRUE(FAddCondTest(candidate("big.bin", kTooLargeSize), cond));  // no size condition
  cond.sizeText = "0-2147483647";
  cond.Parse();
  EXPECT_TRUE(FAddCondTest(candidate("max.bin", kTooLargeSize - 1), cond));
  EXPECT_FALSE(FAddCondTest(candidate("big.bin", kTooLargeSize), cond));
  ASSERT_EQ(recorder->entries.count, 1);
  EXPECT_EQ(recorder->entries[0]->number, kMsgWarning);
  EXPECT_STREQ(recorder->entries[0]->text.ptr, "ファイルが大きすぎます: C:\\src\\docs\\a.txt");
  // A file that the name already refuses is not weighed.
  cond.nameText = "*.txt";
  cond.Parse();
  EXPECT_FALSE(FAddCondTest(candidate("big.bin", int64_t{5} << 32), cond));
  EXPECT_EQ(recorder->entries.count, 1);
}
