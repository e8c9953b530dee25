// The fast codec against the plain one on seeded random inputs: the same
// bytes out, token for token, and the same matched counts.
#include <gtest/gtest.h>

#include "store/coarse_match.h"
#include "store/codec_helpers.h"
#include "store/reference_codec.h"

namespace {

// Text of a small vocabulary, so that words and lines repeat.
Bytes Text(std::mt19937& rng, size_t size) {
  static const char* const kWords[] = {"int ", "return ", "value", "(x)",   ";\n", "    ",
                                       "if ",  "{\n",     "}\n",   "count", "= ",  "0x10"};
  Bytes text;
  while (text.size() < size) text += kWords[rng() % 12];
  return text;
}

// Inserts, deletes, overwrites and moves pieces of `b`.
Bytes Edit(std::mt19937& rng, Bytes b, int edits) {
  for (int i = 0; i < edits && !b.empty(); i++) {
    size_t at = rng() % b.size();
    size_t n = 1 + rng() % 64;
    switch (rng() % 4) {
      case 0:
        b.insert(at, RandomBytes(rng, n, 64));
        break;
      case 1:
        b.erase(at, n);
        break;
      case 2:
        b.replace(at, n, RandomBytes(rng, n));
        break;
      default: {
        Bytes piece = b.substr(at, n * 8);
        b.erase(at, piece.size());
        b.insert(rng() % (b.size() + 1), piece);
      }
    }
  }
  return b;
}

Bytes Sample(std::mt19937& rng) {
  size_t size = rng() % 4 == 0 ? rng() % 40 : rng() % 20000;
  switch (rng() % 4) {
    case 0:
      return RandomBytes(rng, size);
    case 1:
      return RandomBytes(rng, size, 3);
    case 2:
      return Text(rng, size);
    default: {
      Bytes b;
      while (b.size() < size) b += Bytes(rng() % 300, static_cast<char>(rng() % 4)) + Text(rng, 50);
      return b;
    }
  }
}

TCodecSettings Settings(std::mt19937& rng) {
  TCodecSettings s;
  if (rng() % 3 == 0) {
    s.coarseDiv = 1 + rng() % 40;
    s.gapWindow = rng() % 3000;
    s.stopPercent = rng() % 30;
  }
  return s;
}

TEST(CodecOracle, PackWritesWhatThePlainPackWrites) {
  std::mt19937 rng(101);
  for (int round = 0; round < 300; round++) {
    Bytes raw = Sample(rng);
    TRefCodecOptions plain;
    LStr expected;
    RefPackBytes(U8(raw), static_cast<int32_t>(raw.size()), expected, plain);
    ASSERT_EQ(Bytes(expected.ptr, expected.length), Pack(raw)) << "round " << round;
  }
}

TEST(CodecOracle, CoarseMatcherFindsWhatThePlainOneFinds) {
  std::mt19937 rng(202);
  for (int round = 0; round < 400; round++) {
    Bytes reference = Sample(rng);
    Bytes target = Edit(rng, rng() % 2 ? reference : Sample(rng), rng() % 20);
    THeldBuf t = Held(target), r = Held(reference);
    TCoarseInput in{t.data(), t.size(), r.data(), r.size(), 1 + static_cast<int32_t>(rng() % 30)};
    // Sub-ranges too, so that backward probes read past a range's end into
    // the rest of the reference.
    int32_t tFrom = t.size() ? static_cast<int32_t>(rng() % t.size()) : 0;
    int32_t rFrom = r.size() ? static_cast<int32_t>(rng() % r.size()) : 0;
    int32_t tTo = tFrom + static_cast<int32_t>(rng() % (t.size() - tFrom + 1));
    int32_t rTo = rFrom + static_cast<int32_t>(rng() % (r.size() - rFrom + 1));
    if (round % 2 == 0) tFrom = 0, tTo = t.size(), rFrom = 0, rTo = r.size();
    // Searching the same input again, as later passes do, turns to the
    // index of the reference's words once enough has been scanned; the
    // matches must not change.
    for (int search = 0; search < (round % 4 == 0 ? 4 : 1); search++) {
      TMatchList fast, plain;
      FFindMatches(in, tFrom, tTo, rFrom, rTo, fast);
      RefFindMatches(in, tFrom, tTo, rFrom, rTo, plain, true);
      ASSERT_EQ(plain.count, fast.count) << "round " << round;
      for (int32_t i = 0; i < plain.count; i++) {
        ASSERT_EQ(plain[i]->pos, fast[i]->pos);
        ASSERT_EQ(plain[i]->len, fast[i]->len);
        ASSERT_EQ(plain[i]->refPos, fast[i]->refPos);
      }
    }
  }
}

TEST(CodecOracle, EncoderWritesWhatThePlainEncoderWrites) {
  std::mt19937 rng(303);
  for (int round = 0; round < 300; round++) {
    TRefCodecOptions plain;
    plain.settings = Settings(rng);
    Bytes newer = Sample(rng);
    Bytes older = rng() % 4 == 0 ? Sample(rng) : Edit(rng, newer, 1 + rng() % 40);
    const bool withReference = rng() % 4 != 0;
    THeldBuf t = Held(older), r = Held(newer);
    LStr expected;
    int32_t expectedCount = RefEncodeVersion(t.data(), t.size(), withReference ? r.data() : nullptr,
                                             withReference ? r.size() : 0, expected, plain);
    int32_t matched = -1;
    Bytes stored = Encode(older, withReference ? &newer : nullptr, &matched, plain.settings);
    ASSERT_EQ(Bytes(expected.ptr, expected.length), stored) << "round " << round;
    ASSERT_EQ(expectedCount, matched);
  }
}

}  // namespace
