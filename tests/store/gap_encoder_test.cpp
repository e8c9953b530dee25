#include "store/gap_encoder.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

#include "store/codec_helpers.h"

namespace {

// All bytes of "abcdefgh12" differ, so no earlier six bytes repeat until the
// probe at 10 finds position 0: 8 bytes in common ('1' against '3'). The
// probes stop below 24 - 6 = 18, which is where the copy ends.
TEST(GapEncoder, CopiesFromTheTargetsOwnEarlierBytes) {
  Bytes tokens = Encode("abcdefgh12abcdefgh345678", nullptr);
  EXPECT_EQ(Bytes("\x29"
                  "abcdefgh12"
                  "\x22\x14"
                  "\x19"
                  "345678"),
            tokens);
}

// The probe at 8 finds 0 with 8 bytes in common, bounded by the end: a copy
// may end exactly there and cover the last 6 bytes, though no probe starts
// among them.
TEST(GapEncoder, CopyMayEndExactlyAtTheRangesEnd) {
  EXPECT_EQ("L8:abcdefgh S8@8", Describe(Encode("abcdefghabcdefgh", nullptr)));
  // A target of 6 bytes or fewer is never probed.
  EXPECT_EQ("L6:aaaaaa", Describe(Encode("aaaaaa", nullptr)));
  EXPECT_EQ(Bytes(), Encode(Bytes(), nullptr));
}

// Before a gap only `reseed` positions are hashed again; the positions of
// the range itself go in as it is probed.
TEST(GapEncoder, ReseedsOnlyTheWindowBeforeTheGap) {
  Bytes target = "abcdefghijXXXXabcdefghij";
  EXPECT_EQ("S10@14", Describe(EncodeGap(target, 14, 2000)));
  EXPECT_EQ("L10:abcdefghij", Describe(EncodeGap(target, 14, 5)));
}

// A ring keeps the last 50 positions of its bucket. Position 0 matches the
// probe on 10 bytes, the decoys on 6; once 50 decoys follow it, it is gone.
TEST(GapChains, RingKeepsTheLastFiftyAndNewestWinsTies) {
  Bytes target = "abcdefLONG";
  for (int i = 0; i < 50; i++) target += "abcdef-" + Bytes(1, static_cast<char>('A' + i % 26));
  const int32_t probe = static_cast<int32_t>(target.size());
  target += "abcdefLONG";
  THeldBuf buf = Held(target);
  const uint8_t* at = buf.data() + probe;
  const int32_t end = buf.size();

  TGapChains table(buf.data());
  table.insert(0);
  for (int i = 0; i < 49; i++) table.insert(10 + 8 * i);
  int32_t from = -1;
  EXPECT_EQ(10, table.longest(*table.ring(TGapChains::bucketOf(at)), TGapChains::tagOf(at), probe,
                              end, &from));
  EXPECT_EQ(0, from);

  table.insert(10 + 8 * 49);
  EXPECT_EQ(6, table.longest(*table.ring(TGapChains::bucketOf(at)), TGapChains::tagOf(at), probe,
                             end, &from));
  EXPECT_EQ(10 + 8 * 49, from);
  EXPECT_EQ(1, table.ringCount());
}

// The positions of a ring with their fingerprints, newest first.
std::vector<std::pair<int32_t, uint16_t>> NewestFirst(const TChainRing* ring) {
  std::vector<std::pair<int32_t, uint16_t>> entries;
  if (ring == nullptr) return entries;
  for (int32_t i = 1; i <= ring->count; i++) {
    const int32_t slot = (ring->head - i + TChainRing::kSlots) % TChainRing::kSlots;
    entries.emplace_back(ring->positions[slot], ring->tags[slot]);
  }
  return entries;
}

void ExpectSameRings(const TGapChains& a, const TGapChains& b, const char* when) {
  for (uint32_t bucket = 0; bucket < TGapChains::kBuckets; bucket++)
    ASSERT_EQ(NewestFirst(a.ring(bucket)), NewestFirst(b.ring(bucket)))
        << "bucket " << bucket << " " << when;
}

// Filling backward must leave every ring as inserting forward does: rings
// that overflow many times, rings with fewer than fifty, and rings that the
// next insertions then wrap around.
TEST(GapChains, FillingAnEmptyTableBackwardMatchesInsertingForward) {
  std::mt19937 rng(3);
  Bytes target = RandomBytes(rng, 30000, /*alphabet=*/3) + RandomBytes(rng, 30000);
  const THeldBuf buf = Held(target);
  const int32_t from = 700;
  const int32_t to = 45000;
  TGapChains forward(buf.data());
  forward.insertRun(from, to);
  TGapChains filled(buf.data());
  filled.insertRun(0, 10);
  filled.reset(buf.data());
  int32_t polls = 0;
  filled.fillEmpty(from, to, [&polls] { polls++; });
  ExpectSameRings(forward, filled, "after the fill");
  EXPECT_EQ(forward.ringCount(), filled.ringCount());
  EXPECT_EQ(1, polls);  // at the first position only

  forward.insertRun(to, buf.size() - 8);
  filled.insertRun(to, buf.size() - 8);
  ExpectSameRings(forward, filled, "after more insertions");
}

TEST(GapChains, HashesThreeLittleEndianWords) {
  const uint8_t six[] = {0x01, 0x00, 0x02, 0x00, 0x03, 0x00};
  // ((2 << 2) | 3) << 1 | 1 = 23
  EXPECT_EQ(23u, TGapChains::bucketOf(six));
  const uint8_t high[] = {0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00};
  // ((0xFFFF << 2) << 1) | 0xFFFF = 0x7FFFF = 524287, mod 10000
  EXPECT_EQ(4287u, TGapChains::bucketOf(high));
}

}  // namespace
