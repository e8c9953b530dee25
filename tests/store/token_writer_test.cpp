// The writer's buffer must not change the bytes: tokens that straddle its
// end, literals that fill it exactly or are larger than it, and copies
// between them all come out in order, and nothing is written before finish.
// Short literals and copies are written in place while the buffer has room
// for them and go the long way near its end, so they meet it at every
// offset.
#include "store/token_writer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "lib/mem_stream.h"
#include "store/codec_helpers.h"

namespace {

TEST(TokenWriter, BufferedTokensComeOutInOrderAcrossTheBuffersEnd) {
  std::mt19937 rng(11);
  const Bytes text = RandomBytes(rng, 50000, /*alphabet=*/26);
  LStr written;
  LMemOutStream out(written);
  TTokenWriter writer(out);
  std::string expected;
  size_t at = 0;
  for (int32_t n : {1, 8180, 5, 8192, 20000, 0, 3, 8191}) {
    writer.literal(U8(text) + at, n);
    if (n > 0)
      expected +=
          (expected.empty() ? "" : " ") + ("L" + std::to_string(n) + ":") + text.substr(at, n);
    at += n;
    writer.selfCopy(100000 + n, -n);
    writer.refCopy(7, n);
    expected +=
        " S" + std::to_string(100000 + n) + "@" + std::to_string(-n) + " R7@" + std::to_string(n);
  }
  writer.finish();
  EXPECT_EQ(expected, Describe(Bytes(written.ptr, written.length)));
}

TEST(TokenWriter, ShortTokensMeetTheBuffersEndAtEveryOffset) {
  std::mt19937 rng(12);
  const Bytes text = RandomBytes(rng, 40000, /*alphabet=*/26);
  LStr written;
  LMemOutStream out(written);
  TTokenWriter writer(out);
  std::string expected;
  size_t at = 0;
  for (int32_t i = 0; i < 3000; i++) {
    // Up to one past the longest literal written in place.
    const int32_t n = i % 18;
    writer.literal(U8(text) + at, n);
    if (n > 0) expected += " L" + std::to_string(n) + ":" + text.substr(at, n);
    at += n;
    const int32_t length = 6 + i % 50;
    const int32_t distance = (i % 3 == 0 ? -1 : 1) * (i * 7919 % 300000);
    writer.selfCopy(length, distance);
    expected += " S" + std::to_string(length) + "@" + std::to_string(distance);
  }
  // A copy longer than a token holds goes in pieces with one distance.
  writer.selfCopy(INT32_MAX, 9);
  expected += " S" + std::to_string(kTokenMaxLength) + "@9 S" + std::to_string(kTokenMaxLength) +
              "@9 S1@9";
  writer.finish();
  EXPECT_EQ(expected.substr(1), Describe(Bytes(written.ptr, written.length)));
}

}  // namespace
