#include "store/byte_match.h"

#include <gtest/gtest.h>

#include "store/codec_helpers.h"
#include "store/content_sum.h"

namespace {

int32_t NaiveForward(const Bytes& a, size_t ai, size_t aEnd, const Bytes& b, size_t bi,
                     size_t bEnd) {
  int32_t n = 0;
  while (ai + n < aEnd && bi + n < bEnd && a[ai + n] == b[bi + n]) n++;
  return n;
}

// Word compares must give the exact byte count, wherever the first
// difference falls inside a word and whatever the bounds.
TEST(ByteMatch, ForwardAndBackAgreeWithByteByByteCounts) {
  std::mt19937 rng(7);
  for (int round = 0; round < 3000; round++) {
    Bytes a = RandomBytes(rng, 1 + rng() % 40, 2);
    Bytes b = RandomBytes(rng, 1 + rng() % 40, 2);
    size_t ai = rng() % a.size(), bi = rng() % b.size();
    size_t aEnd = ai + rng() % (a.size() - ai + 1), bEnd = bi + rng() % (b.size() - bi + 1);
    EXPECT_EQ(NaiveForward(a, ai, aEnd, b, bi, bEnd),
              FMatchForward(U8(a) + ai, U8(a) + aEnd, U8(b) + bi, U8(b) + bEnd));
    int32_t bound = static_cast<int32_t>(rng() % (std::min(ai, bi) + 1));
    int32_t back = 0;
    while (back < bound && a[ai - 1 - back] == b[bi - 1 - back]) back++;
    EXPECT_EQ(back, FMatchBack(U8(a) + ai, U8(b) + bi, bound));
  }
}

TEST(ByteMatch, ForwardIsZeroForEmptyOrInvertedRanges) {
  Bytes a = "same";
  EXPECT_EQ(0, FMatchForward(U8(a), U8(a), U8(a), U8(a) + 4));
  EXPECT_EQ(0, FMatchForward(U8(a) + 2, U8(a) + 1, U8(a), U8(a) + 4));
  EXPECT_EQ(0, FMatchBack(U8(a) + 4, U8(a) + 4, -3));
}

TEST(ContentSum, SumsAlternateWordsAndNeverGivesZero) {
  const uint8_t five[] = {0x01, 0x02, 0x03, 0x04, 0x05};
  // 0x0201 + 0x0403; the fifth byte is never summed.
  EXPECT_EQ(0x0604, FSum16(five, 5));
  EXPECT_EQ(0x0604, FSum16(five, 4));
  const uint8_t seven[] = {0x01, 0x00, 0x02, 0x00, 0x10, 0x20, 0x77};
  // Two words in the loop, the word at 4 as the remainder, byte 6 dropped.
  EXPECT_EQ(0x2013, FSum16(seven, 7));
  EXPECT_EQ(0x2013, FSum16(seven, 6));
  // Short inputs: below 2 bytes the sum is 1; 2 and 3 bytes are one word.
  EXPECT_EQ(1, FSum16(five, 0));
  EXPECT_EQ(1, FSum16(five, 1));
  EXPECT_EQ(0x0201, FSum16(five, 3));
  // A sum that wraps to 0 is stored as 1.
  const uint8_t wraps[] = {0xFF, 0xFF, 0x01, 0x00};
  EXPECT_EQ(1, FSum16(wraps, 4));
  const uint8_t zeros[8] = {};
  EXPECT_EQ(1, FSum16(zeros, 8));
}

}  // namespace
