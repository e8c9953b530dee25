#include "store/version_ratio.h"

#include <gtest/gtest.h>

namespace {

TEST(VersionRatio, SmallValuesAndTheOneByteRule) {
  EXPECT_EQ(37, FUniqueRatio(/*heldLen=*/1000, /*matched=*/630));
  EXPECT_EQ(0, FUniqueRatio(1000, 1000));
  // Anything unique shows at least 1, even below one percent.
  EXPECT_EQ(1, FUniqueRatio(1000, 999));
  // Empty held forms and empty raw files give 0.
  EXPECT_EQ(0, FUniqueRatio(0, 0));
  EXPECT_EQ(1, FCompRatio(/*storedLen=*/3, /*rawSize=*/0));
  EXPECT_EQ(0, FCompRatio(0, 0));
  // A stored form of 3 bytes for 1 raw byte is 300 percent; one byte keeps 44.
  EXPECT_EQ(44, FCompRatio(3, 1));
  // Percentages of large versions do not overflow.
  EXPECT_EQ(50, FCompRatio(1500000000, 3000000000LL));
}

}  // namespace
