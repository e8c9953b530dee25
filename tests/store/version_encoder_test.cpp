#include "store/version_encoder.h"

#include <gtest/gtest.h>

#include "store/coarse_match.h"
#include "store/codec_helpers.h"
#include "store/reference_codec.h"

namespace {

const Bytes kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

// A reference of 36 distinct bytes, and a target that is the same with 4
// bytes put in front. Target 40, reference 36: step 40 / 40 = 1, raised to 4;
// samples at 4, 12, 20 and 28. Sample 4 ("ABCD") has r = 0.1 * 36 = 3.6,
// so 3, radius 33. Probes: d 0 at 3, 3; d 1 at 4, 2; d 2 at 5, 1; d 3 at 6,
// then backward at 0, which holds "ABCD": back 0 (the probe is at the range
// start), forward 32 to both ends, a hit of 36, above 2 * 4 + 6, so the
// search ends. The other samples lie inside that match. A second pass finds
// nothing (no reference bytes before offset 0), so the count stays 1.
// Tokens: the 4 new bytes, then 36 bytes from the reference with d = 4.
// Matched: 36 - 3.
TEST(VersionEncoder, InsertionAtTheStartIsOneReferenceCopy) {
  int32_t matched = 0;
  Bytes stored = Encode("xyzw" + kAlphabet, &kAlphabet, &matched);
  EXPECT_EQ(Bytes("\x11"
                  "xyzw"
                  "\x80\x13\x08"),
            stored);
  EXPECT_EQ(33, matched);
}

// The first sample's probes reach back to the range start and forward to its
// end: one copy with d = 0 that reports the whole length.
TEST(VersionEncoder, IdenticalVersionsAreOneCopyOfEverything) {
  std::mt19937 rng(5);
  for (size_t size : {9, 10, 100, 4096, 100000}) {
    Bytes held = RandomBytes(rng, size);
    int32_t matched = 0;
    EXPECT_EQ("R" + std::to_string(size) + "@0", Describe(Encode(held, &held, &matched)));
    EXPECT_EQ(static_cast<int32_t>(size), matched);
  }
}

// Held forms of 8 bytes or fewer get no coarse sample. Equal ones of 0 to 3
// bytes still report their full length (a count of 0 is within 3 of it);
// equal ones of 4 to 8 bytes report 0 and so are not recognised as equal.
TEST(VersionEncoder, ShortEqualHeldFormsAreRecognisedOnlyUpToThreeBytes) {
  for (int32_t size = 0; size <= 9; size++) {
    Bytes held = kAlphabet.substr(0, size);
    int32_t matched = -1;
    Encode(held, &held, &matched);
    EXPECT_EQ(size <= 3 || size == 9 ? size : 0, matched) << size;
  }
}

// Sample 1000 of 40000 has r = 1000 (0.025 * 40000). There the reference
// holds 600 bytes of the target's (back 300, forward 296: a hit of 600, long
// but below 2 * 1000 + 6). At d = 0 the forward and the backward probe are
// the same position, so the same long hit counts twice and ends the search:
// the copy at 6000, which would give 2000 bytes, is never probed.
TEST(VersionEncoder, LongHitAtDistanceZeroCountsTwice) {
  std::mt19937 rng(3);
  Bytes reference = RandomBytes(rng, 40000);
  reference.replace(700, 600, reference.substr(5700, 600));
  Bytes target = reference.substr(5000, 2000) + RandomBytes(rng, 38000);
  reference[699] = static_cast<char>(~target[699]);
  reference[1300] = static_cast<char>(~target[1300]);
  THeldBuf t = Held(target), r = Held(reference);
  TCoarseInput in{t.data(), t.size(), r.data(), r.size(), 20};
  TMatchList found;
  FFindMatches(in, 0, t.size(), 0, r.size(), found);
  ASSERT_GE(found.count, 1);
  EXPECT_EQ(700, found[0]->pos);
  EXPECT_EQ(600, found[0]->len);
  EXPECT_EQ(700, found[0]->refPos);
}

// Reference "ABCDEFGH" (8), target 40 bytes with "ABCDEFGH" and a zero at
// 23 to 31. Sample 28 has r = 0.7 * 8 = 5.6, so 5; no forward probe is
// allowed (5 is not below 8 - 4), and the backward probe at 5 would compare
// "FGH" and the zero behind the reference's end with the target's "FGH\0":
// a hit of 4 plus 5 back, a copy of 9 bytes from a reference of 8. That probe
// is not made, so the version stays readable.
TEST(VersionEncoder, BackwardProbeNeverRunsPastTheReferencesEnd) {
  const Bytes reference = "ABCDEFGH";
  const Bytes target = "abcdefghijklmnopqrstuvw" + reference + Bytes(1, '\0') + "xyz!#%&+";
  THeldBuf t = Held(target), r = Held(reference);
  TCoarseInput in{t.data(), t.size(), r.data(), r.size(), 20};
  TMatchList found;
  FFindMatches(in, 0, t.size(), 0, r.size(), found);
  EXPECT_EQ(0, found.count);
  Bytes stored = Encode(target, &reference);
  EXPECT_EQ(target, ExpandStored(stored, static_cast<int32_t>(target.size()), &reference));

  // Without the guard the same input gives the 9-byte copy, which no reader
  // can expand.
  TRefCodecOptions unguarded;
  unguarded.guardReferenceEnd = false;
  TMatchList broken;
  RefFindMatches(in, 0, t.size(), 0, r.size(), broken, false);
  ASSERT_EQ(1, broken.count);
  EXPECT_EQ(23, broken[0]->pos);
  EXPECT_EQ(9, broken[0]->len);
  LStr bad;
  RefEncodeVersion(t.data(), t.size(), r.data(), r.size(), bad, unguarded);
  EXPECT_EQ(792, FormatFailure([&] {
              ExpandStored(Bytes(bad.ptr, bad.length), static_cast<int32_t>(target.size()),
                           &reference);
            }));
}

}  // namespace
