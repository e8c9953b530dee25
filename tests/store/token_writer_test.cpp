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

// Tokens written, beside what Describe must make of them.
class Transcript {
 public:
  Transcript() : out_(written_), writer_(out_) {}

  void literal(const Bytes& text, size_t at, int32_t n) {
    writer_.literal(U8(text) + at, n);
    if (n > 0) expect("L" + std::to_string(n) + ":" + text.substr(at, n));
  }
  void selfCopy(int32_t n, int32_t d) {
    writer_.selfCopy(n, d);
    expect("S" + std::to_string(n) + "@" + std::to_string(d));
  }
  void refCopy(int32_t n, int32_t d) {
    writer_.refCopy(n, d);
    expect("R" + std::to_string(n) + "@" + std::to_string(d));
  }
  TTokenWriter& writer() { return writer_; }
  void expect(const std::string& token) { expected_ += (expected_.empty() ? "" : " ") + token; }
  void check() {
    writer_.finish();
    EXPECT_EQ(expected_, Describe(Bytes(written_.ptr, written_.length)));
  }

 private:
  LStr written_;
  LMemOutStream out_;
  TTokenWriter writer_;
  std::string expected_;
};

TEST(TokenWriter, BufferedTokensComeOutInOrderAcrossTheBuffersEnd) {
  std::mt19937 rng(11);
  const Bytes text = RandomBytes(rng, 50000, /*alphabet=*/26);
  Transcript tokens;
  size_t at = 0;
  for (int32_t n : {1, 8180, 5, 8192, 20000, 0, 3, 8191}) {
    tokens.literal(text, at, n);
    at += n;
    tokens.selfCopy(100000 + n, -n);
    tokens.refCopy(7, n);
  }
  tokens.check();
}

TEST(TokenWriter, ShortTokensMeetTheBuffersEndAtEveryOffset) {
  std::mt19937 rng(12);
  const Bytes text = RandomBytes(rng, 40000, /*alphabet=*/26);
  Transcript tokens;
  size_t at = 0;
  for (int32_t i = 0; i < 3000; i++) {
    // Up to one past the longest literal written in place.
    const int32_t n = i % 18;
    tokens.literal(text, at, n);
    at += n;
    tokens.selfCopy(6 + i % 50, (i % 3 == 0 ? -1 : 1) * (i * 7919 % 300000));
  }
  // A copy longer than a token holds goes in pieces with one distance.
  tokens.writer().selfCopy(INT32_MAX, 9);
  const std::string piece = "S" + std::to_string(kTokenMaxLength) + "@9";
  tokens.expect(piece + " " + piece + " S1@9");
  tokens.check();
}

}  // namespace
