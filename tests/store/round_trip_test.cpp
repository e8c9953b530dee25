// Every pair of versions comes back byte for byte: raw, held, stored against
// the newer held form, and back.
#include <gtest/gtest.h>

#include "store/codec_helpers.h"

namespace {

void RoundTrip(const Bytes& older, const Bytes& newer) {
  const int32_t olderSize = static_cast<int32_t>(older.size());
  const int32_t newerSize = static_cast<int32_t>(newer.size());
  Bytes newerHeld = Pack(newer), olderHeld = Pack(older);
  // The newest version is stored without a reference, the older against it.
  Bytes newerStored = Encode(newerHeld, nullptr);
  Bytes olderStored = Encode(olderHeld, &newerHeld);
  Bytes newerBack = ExpandStored(newerStored, newerSize, nullptr);
  ASSERT_EQ(newerHeld, newerBack);
  ASSERT_EQ(newer, ExpandRaw(newerBack, newerSize));
  Bytes olderBack = ExpandStored(olderStored, olderSize, &newerBack);
  ASSERT_EQ(olderHeld, olderBack);
  ASSERT_EQ(older, ExpandRaw(olderBack, olderSize));
}

Bytes Lines(int from, int to) {
  Bytes text;
  for (int i = from; i < to; i++)
    text += "line " + std::to_string(i * 7919 % 1000) + " of the text\n";
  return text;
}

TEST(RoundTrip, ShortRunAndRandomVersions) {
  std::mt19937 rng(1);
  RoundTrip(Bytes(), Bytes());
  RoundTrip(Bytes(), "x");
  for (size_t n = 1; n <= 8; n++) {
    RoundTrip(RandomBytes(rng, n), RandomBytes(rng, n));
    RoundTrip(Bytes(n, 'k'), Bytes(n, 'k'));
  }
  RoundTrip(Bytes(100000, '\0'), Bytes(99999, '\0'));
  RoundTrip(Bytes(5000, 'a') + Bytes(5000, 'b'), Bytes(5000, 'b') + Bytes(5000, 'a'));
  RoundTrip(RandomBytes(rng, 70000), RandomBytes(rng, 70001));
}

TEST(RoundTrip, TextWithInsertionsAtStartMiddleAndEnd) {
  Bytes text = Lines(0, 2000);
  Bytes added = Lines(5000, 5020);
  RoundTrip(text, added + text);
  RoundTrip(added + text, text);
  RoundTrip(text, text.substr(0, 30000) + added + text.substr(30000));
  RoundTrip(text.substr(0, 30000) + added + text.substr(30000), text);
  RoundTrip(text, text + added);
  RoundTrip(text + added, text);
}

TEST(RoundTrip, BinaryPatchesIdenticalAndUnrelatedPairs) {
  std::mt19937 rng(2);
  Bytes binary = RandomBytes(rng, 200000, 256);
  for (size_t i = 0; i < binary.size(); i += 1 + rng() % 5000)
    binary.replace(i, 200, Bytes(200, '\0'));
  Bytes patched = binary;
  for (int i = 0; i < 40; i++)
    patched.replace(rng() % (patched.size() - 8), 4, RandomBytes(rng, 4));
  patched.insert(rng() % patched.size(), RandomBytes(rng, 1000));
  patched.erase(rng() % (patched.size() - 500), 500);
  RoundTrip(binary, patched);
  RoundTrip(patched, binary);
  RoundTrip(binary, binary);
  RoundTrip(Lines(0, 3000), binary);
}

}  // namespace
