#include "store/token_expander.h"

#include <gtest/gtest.h>

#include "store/codec_helpers.h"
#include "store/reference_codec.h"

namespace {

// Expands hand-made tokens into a room of outCap bytes; the reference "REF!"
// is there only when refLen is 4.
int Failure(const Bytes& tokens, int32_t outCap, int32_t refLen) {
  static const uint8_t kRef[] = {'R', 'E', 'F', '!'};
  Bytes out(outCap + 16, '\0');
  return FormatFailure([&] {
    FExpandTokens(U8(tokens), static_cast<int32_t>(tokens.size()),
                  reinterpret_cast<uint8_t*>(&out[0]), outCap, refLen == 4 ? kRef : nullptr,
                  refLen);
  });
}

TEST(TokenExpander, ExpandsEveryKind) {
  // "ab", then 6 bytes from 2 back (overlapping: "ababab"), then 3 from the
  // reference at offset 8 - 7 = 1.
  Bytes tokens = Bytes(
      "\x09"
      "ab"
      "\x1A\x04"
      "\x0F\x0E",
      7);
  uint8_t ref[] = {'R', 'E', 'F', '!'};
  uint8_t out[16] = {};
  EXPECT_EQ(11, FExpandTokens(U8(tokens), 7, out, 16, ref, 4));
  EXPECT_EQ("ababababEF!", Bytes(reinterpret_cast<char*>(out), 11));
  EXPECT_EQ(0, FExpandTokens(nullptr, 0, out, 0, nullptr, -1));
}

TEST(TokenExpander, EachDamageHasItsNumber) {
  // A literal longer than the room, and one cut short by the end.
  EXPECT_EQ(775, Failure("\x0D"
                         "abc",
                         2, -1));
  EXPECT_EQ(777, Failure("\x0D"
                         "ab",
                         8, -1));
  // Self copies: from the position itself, from before the start, and one
  // whose source would end past the room.
  EXPECT_EQ(784, Failure(Bytes("\x05"
                               "a"
                               "\x06\x00",
                               4),
                         8, -1));
  EXPECT_EQ(784, Failure("\x05"
                         "a"
                         "\x06\x04",
                         8, -1));
  EXPECT_EQ(784, Failure("\x11"
                         "abcd"
                         "\x26\x02",
                         8, -1));
  // Reference copies: with no reference (-1, and 0 for the second layer),
  // before its start, past its end.
  EXPECT_EQ(792, Failure(Bytes("\x07\x00", 2), 8, -1));
  EXPECT_EQ(792, Failure(Bytes("\x07\x00", 2), 8, 0));
  EXPECT_EQ(792, Failure("\x07\x02", 8, 4));
  EXPECT_EQ(792, Failure(Bytes("\x17\x00", 2), 8, 4));
  EXPECT_EQ(803, Failure("\x04", 8, 4));
  // Copies that run past the room are caught at the end, and nothing is
  // written behind the room meanwhile.
  EXPECT_EQ(806, Failure("\x0D"
                         "abc"
                         "\x1A\x02",
                         8, -1));
  EXPECT_EQ(806, Failure("\x0D"
                         "abc"
                         "\x13\x06",
                         6, 4));
  // A number cut short belongs to the number reader.
  EXPECT_EQ(312, Failure("\x05"
                         "a"
                         "\x82",
                         8, -1));
}

TEST(TokenExpander, SecondLayerMustGiveTheRawSize) {
  EXPECT_EQ(1859, FormatFailure([] {
              ExpandRaw(
                  "\x0D"
                  "abc",
                  4);
            }));
  EXPECT_EQ(775, FormatFailure([] {
              ExpandRaw(
                  "\x0D"
                  "abc",
                  2);
            }));
  EXPECT_EQ("abc", ExpandRaw("\x0D"
                             "abc",
                             3));
}

// Every single damaged byte of a real stored form either still expands or
// ends in the same format failure as in the plain reader, never in a crash.
TEST(TokenExpander, DamagedBytesEndInTheSameFailureAsThePlainReader) {
  std::mt19937 rng(21);
  Bytes newer = RandomBytes(rng, 3000, 8);
  Bytes older = newer.substr(100, 1500) + RandomBytes(rng, 300, 8) + newer.substr(1700);
  Bytes stored = Encode(older, &newer);
  const int32_t room = static_cast<int32_t>(older.size()) + 100;
  for (size_t i = 0; i < stored.size(); i++) {
    for (int flip : {0x01, 0x80, 0xFF}) {
      Bytes bad = stored;
      bad[i] = static_cast<char>(bad[i] ^ flip);
      Bytes fast(room, '\0'), plain(room, '\0');
      int32_t fastLen = -1, plainLen = -1;
      int fastFailure = FormatFailure([&] {
        fastLen = FExpandTokens(U8(bad), static_cast<int32_t>(bad.size()),
                                reinterpret_cast<uint8_t*>(&fast[0]), room, U8(newer),
                                static_cast<int32_t>(newer.size()));
      });
      int plainFailure = FormatFailure([&] {
        plainLen = RefExpandTokens(U8(bad), static_cast<int32_t>(bad.size()),
                                   reinterpret_cast<uint8_t*>(&plain[0]), room, U8(newer),
                                   static_cast<int32_t>(newer.size()));
      });
      ASSERT_EQ(plainFailure, fastFailure) << "byte " << i;
      if (plainFailure == 0) {
        ASSERT_EQ(plainLen, fastLen);
        ASSERT_EQ(plain.substr(0, plainLen), fast.substr(0, fastLen));
      }
    }
  }
}

}  // namespace
