// A long gap parsed on two threads gives the tokens of one thread, wherever
// the two parses meet: on text, on bytes with hardly a repeat, on many short
// repeats, on one copy that runs past the helper's start, on a first half
// the encoder's thread is through long before the helper, in a gap that
// begins inside the target, and with more copies than a block of the
// helper's record holds.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "store/codec_helpers.h"
#include "store/codec_threads.h"
#include "store/gap_encoder.h"

namespace {

Bytes Words(std::mt19937& rng, size_t n) {
  static const char* const kWords[] = {"int",     "return", "const ", "static", "(void)",  "struct",
                                       "\n",      "  ",     "{",      "};\n",   "#define", "size_t",
                                       "uint8_t", "if (",   "else",   "for (",  "while",   "x, y"};
  Bytes text;
  while (text.size() < n) text += kWords[rng() % (sizeof kWords / sizeof kWords[0])];
  return text.substr(0, n);
}

void ExpectSameOnTwoThreads(const Bytes& target, int32_t from) {
  const Bytes alone = EncodeGap(target, from, /*reseed=*/2000);
  EXPECT_EQ(EncodeGap(target, from, /*reseed=*/2000, /*splitLength=*/1), alone)
      << "size " << target.size() << ", from " << from;
}

TEST(GapSplit, TokensDoNotDependOnTheSecondThread) {
  TCodecThreadBudget budget(2);
  std::mt19937 rng(7);
  const Bytes block = RandomBytes(rng, 5000);
  Bytes repeated;
  for (int i = 0; i < 40; i++) repeated += block;
  const Bytes inputs[] = {Words(rng, 300000), RandomBytes(rng, 100000),
                          RandomBytes(rng, 200000, /*alphabet=*/4), repeated,
                          Bytes(150000, '\0') + Words(rng, 150000)};
  // Lengths that move the helper's start against the copies around it.
  for (const Bytes& input : inputs)
    for (size_t cut : {0, 1, 7, 1000, 33333}) {
      const Bytes target = input.substr(0, input.size() - cut);
      ExpectSameOnTwoThreads(target, 0);
      ExpectSameOnTwoThreads(target, static_cast<int32_t>(target.size() / 3));
    }
}

TEST(GapSplit, CopiesPastTheHelpersFirstBlockOfRecordsComeInOrder) {
  TCodecThreadBudget budget(2);
  std::mt19937 rng(8);
  // Copies of seven or eight bytes on average: over 300 000 of them in the
  // helper's half, more than its first block of 262 144.
  ExpectSameOnTwoThreads(RandomBytes(rng, 5000000, /*alphabet=*/4), 0);
}

}  // namespace
