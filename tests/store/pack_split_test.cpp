// The self compression of a long input scanned on two threads gives the
// bytes of one thread: where copies are many, where they are few or only
// on one side of the half, where a run crosses the half, and where the two
// scans find copies with different starts around it.
#include <gtest/gtest.h>

#include <random>

#include "store/codec_helpers.h"
#include "store/codec_threads.h"

namespace {

TCodecSettings Split(int32_t splitLength) {
  TCodecSettings settings;
  settings.splitLength = splitLength;
  return settings;
}

void ExpectSameOnTwoThreads(const Bytes& raw) {
  EXPECT_EQ(Pack(raw, Split(1)), Pack(raw, Split(0))) << "size " << raw.size();
}

// Records of a few fields with runs of zeros between them, as in
// executables.
Bytes Records(std::mt19937& rng, size_t n) {
  Bytes bytes;
  while (bytes.size() < n) {
    bytes += RandomBytes(rng, 1 + rng() % 40, /*alphabet=*/8);
    bytes += Bytes(rng() % 30, '\0');
  }
  return bytes.substr(0, n);
}

TEST(PackSplit, BytesDoNotDependOnTheSecondThread) {
  TCodecThreadBudget budget(2);
  std::mt19937 rng(5);
  const Bytes random = RandomBytes(rng, 60000);
  const Bytes inputs[] = {
      Records(rng, 200000),
      random,
      Records(rng, 30000) + random,
      random + Records(rng, 30000),
      RandomBytes(rng, 29990) + Bytes(40, 'x') + RandomBytes(rng, 29970),
      Bytes(100000, 'a'),
  };
  for (const Bytes& input : inputs)
    for (size_t cut : {0, 1, 2, 5, 333})
      ExpectSameOnTwoThreads(input.substr(0, input.size() - cut));
}

}  // namespace
