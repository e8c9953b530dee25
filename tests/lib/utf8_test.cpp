#include "lib/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

std::vector<UChar> decode(const std::string& bytes, bool lossless) {
  UStr out;
  FUtf8ToUtf16(bytes.data(), static_cast<int32_t>(bytes.size()), out, lossless);
  return std::vector<UChar>(out.ptr, out.ptr + out.length);
}

std::string encode(const std::vector<UChar>& units, bool lossless) {
  LStr out;
  FUtf16ToUtf8(units.data(), static_cast<int32_t>(units.size()), out, lossless);
  return std::string(out.ptr, out.length);
}

}  // namespace

TEST(Utf8, WellFormedSequencesOfEveryLength) {
  std::string text = "a\xc3\xa9\xe6\x97\xa5\xf0\x9f\x98\x80\xf4\x8f\xbf\xbf";
  std::vector<UChar> units = {'a', 0x00E9, 0x65E5, 0xD83D, 0xDE00, 0xDBFF, 0xDFFF};
  EXPECT_EQ(decode(text, true), units);
  EXPECT_EQ(decode(text, false), units);
  EXPECT_EQ(encode(units, true), text);
  EXPECT_EQ(encode(units, false), text);
}

TEST(Utf8, IllFormedBytesEscapeOneByOneOrBecomeReplacements) {
  struct Case {
    std::string bytes;
    std::vector<UChar> lossless;
  };
  const Case cases[] = {
      {"\xff", {0xDCFF}},
      {"\xc0\xaf", {0xDCC0, 0xDCAF}},                          // overlong '/'
      {"\xe0\x80\xaf", {0xDCE0, 0xDC80, 0xDCAF}},              // overlong '/'
      {"\xed\xa0\x80", {0xDCED, 0xDCA0, 0xDC80}},              // an encoded surrogate
      {"\xf4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},  // above U+10FFFF
      {"\xe6\x97", {0xDCE6, 0xDC97}},                          // cut short
      {"\xe6\x97x", {0xDCE6, 0xDC97, 'x'}},                    // cut short inside
      {"\x80\xc3\xa9", {0xDC80, 0x00E9}},                      // stray continuation
  };
  for (const Case& c : cases) {
    EXPECT_EQ(decode(c.bytes, true), c.lossless) << c.bytes;
    EXPECT_EQ(encode(c.lossless, true), c.bytes) << c.bytes;
    std::vector<UChar> replaced;
    for (UChar unit : c.lossless)
      replaced.push_back(unit >= 0xDC80 && unit <= 0xDCFF ? 0xFFFD : unit);
    EXPECT_EQ(decode(c.bytes, false), replaced) << c.bytes;
  }
}

TEST(Utf8, LoneSurrogatesOnTheWayOut) {
  // Only the escape range turns back into raw bytes; other lone units keep
  // a three-byte form when lossless, and are replaced otherwise.
  EXPECT_EQ(encode({0xDC80, 0xDCFF}, true), "\x80\xff");
  EXPECT_EQ(encode({0xDC7F}, true), "\xed\xb1\xbf");
  EXPECT_EQ(encode({0xD800, 'a'}, true),
            "\xed\xa0\x80"
            "a");
  EXPECT_EQ(encode({0xDC80, 0xD800}, false), "\xef\xbf\xbd\xef\xbf\xbd");
  // A high surrogate before an escape is not a pair.
  EXPECT_EQ(encode({0xDBFF, 0xDC41}, true), "\xf4\x8f\xb1\x81");
}

TEST(Utf8, AnyByteStringSurvivesTheLosslessTrip) {
  std::mt19937 random(20240611);
  // Bytes biased to the interesting values: continuation bytes, starters and
  // the edges of the ranges.
  const unsigned char pool[] = {'a',  '/',  0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xED, 0xEF, 0xF0,
                                0xF4, 0xF5, 0xFF, 0xC3, 0xA9, 0xE6, 0x97, 0xA5, 0x98};
  for (int round = 0; round < 5000; round++) {
    std::string bytes(random() % 12, 0);
    for (char& c : bytes) {
      c = static_cast<char>(random() % 3 == 0 ? random() % 256 : pool[random() % sizeof pool]);
    }
    std::vector<UChar> units = decode(bytes, true);
    ASSERT_EQ(encode(units, true), bytes) << round;
    ASSERT_EQ(decode(encode(units, true), true), units) << round;
  }
}
