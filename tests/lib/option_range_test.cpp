#include <gtest/gtest.h>

#include <cstdint>

#include "lib/option.h"
#include "support/recorder.h"

TEST(RangeOptions, OpenEndsBlanksAndUnits) {
  RecorderScope rec;
  LIntPairs* sizes = nullptr;
  LIntPairsOpt option("size", &sizes);
  ASSERT_NE(option.parse("-size:10K-,-5, 1 - 2K ,7"), 0);
  ASSERT_NE(sizes, nullptr);
  ASSERT_EQ(sizes->count, 4);
  EXPECT_EQ((*sizes)[0]->key, 10240);
  EXPECT_EQ((*sizes)[0]->value, INT32_MAX);  // "10K-": ten kilobytes and above
  EXPECT_EQ((*sizes)[1]->key, INT32_MIN);    // "-5": up to five
  EXPECT_EQ((*sizes)[1]->value, 5);
  EXPECT_EQ((*sizes)[2]->key, 1);       // blanks around members
  EXPECT_EQ((*sizes)[2]->value, 3071);  // a unit on the high end reaches to its end
  EXPECT_EQ((*sizes)[3]->key, 7);
  EXPECT_EQ((*sizes)[3]->value, 7);
  EXPECT_EQ(rec->entries.count, 0);
  delete sizes;

  LDtPairs* dates = nullptr;
  LDtPairsOpt dateOption("date", &dates);
  ASSERT_NE(dateOption.parse("-date:-231231"), 0);
  ASSERT_NE(dates, nullptr);
  EXPECT_EQ((*dates)[0]->low, INT64_MIN);
  EXPECT_GT((*dates)[0]->high, 1700000000);
  delete dates;
}
