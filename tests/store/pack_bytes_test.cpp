#include <gtest/gtest.h>

#include <random>

#include "store/codec_helpers.h"
#include "store/pack_scan.h"

namespace {

// 20 bytes 'a'. Probes at 0 (no candidate) and 3: the word at 3 equals the
// word at 2; back 2 (bounded by c = 2), forward 13 (to the end): 4 + 13 + 2 =
// 19. So one literal byte and a copy from 1 back that runs to the very end.
TEST(PackBytes, RunIsOneLiteralByteAndOneCopyToTheEnd) {
  EXPECT_EQ(Bytes("\x05"
                  "a"
                  "\x4E\x02"),
            Pack(Bytes(20, 'a')));
  EXPECT_EQ("L1:z S999@1", Describe(Pack(Bytes(1000, 'z'))));
}

// "abcdefgh" three times. Probes at 0, 3, 6 find nothing within 8 bytes back;
// at 9 the word "bcde" is found at 1: back 1, forward 11 (end - 9 - 4), so
// exactly the 16 bytes needed.
TEST(PackBytes, RepeatedRecordNeedsSixteenBytes) {
  EXPECT_EQ(Bytes("\x21"
                  "abcdefgh"
                  "\x42\x10"),
            Pack("abcdefghabcdefghabcdefgh"));
  // One byte shorter, every hit (at 9, 12, 15 and 18) comes to 15 bytes.
  EXPECT_EQ("L23:abcdefghabcdefghabcdefg", Describe(Pack("abcdefghabcdefghabcdefg")));
}

TEST(PackBytes, ShortInputsEmptyAndNoPack) {
  EXPECT_EQ(Bytes(), Pack(Bytes()));
  // The loop probes only below end - 4.
  EXPECT_EQ("L4:xxxx", Describe(Pack("xxxx")));
  TCodecSettings noPack;
  noPack.noPack = 1;
  EXPECT_EQ("L300:" + Bytes(300, 'q'), Describe(Pack(Bytes(300, 'q'), noPack)));
}

TEST(PackBytes, RoundTripsAndKeepsLastBytesLiteral) {
  std::mt19937 rng(11);
  for (int round = 0; round < 200; round++) {
    Bytes raw;
    while (raw.size() < rng() % 3000) {
      if (rng() % 2)
        raw += Bytes(rng() % 40, static_cast<char>(rng() % 3));
      else
        raw += RandomBytes(rng, rng() % 30, 4);
    }
    Bytes held = Pack(raw);
    ASSERT_EQ(raw, ExpandRaw(held, static_cast<int32_t>(raw.size())));
    // A copy saves more than the literal header it may cost, so a held form
    // exceeds its raw bytes by one literal header at most.
    EXPECT_LE(held.size(), raw.size() + 5);
  }
}

// A stop is taken at the scan's progress points, so they must come in
// bytes that do not pack too, where no probe has a candidate: a megabyte of
// random bytes passes sixteen strides of 64 KiB.
TEST(PackBytes, ProgressPointsComeInBytesWithoutRepeats) {
  class Counter : public TPackSink {
   public:
    void at(int32_t p) override {
      EXPECT_GE(p, last);
      last = p;
      points++;
    }
    bool copy(int32_t, int32_t, int32_t, int32_t) override { return true; }
    int32_t points = 0;
    int32_t last = 0;
  } counter;
  std::mt19937 rng(2);
  const THeldBuf raw = Held(RandomBytes(rng, 1 << 20));
  FScanPack(raw.data(), raw.size(), TPackState(), raw.size(), counter);
  EXPECT_GE(counter.points, 15);
  EXPECT_GT(counter.last, raw.size() - 70000);
}

}  // namespace
