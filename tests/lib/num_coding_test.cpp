#include "lib/num_coding.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "lib/mem_stream.h"
#include "support/recorder.h"

namespace {
LStr encodeNum(uint32_t value) {
  LStr out;
  LMemOutStream stream(out);
  FWriteNum(stream, value);
  return out;
}

LStr bytes(std::initializer_list<int> list) {
  LStr out;
  for (int b : list) out.append(static_cast<char>(b));
  return out;
}

// Runs a reader that must fail; returns the identification number shown in
// the format failure box, or -1 when nothing was thrown.
int formatFailure(const std::function<void()>& reader) {
  RecorderScope rec;
  try {
    reader();
  } catch (int thrown) {
    EXPECT_EQ(thrown, 2);
    EXPECT_EQ(rec->boxes.count, 1);
    if (rec->boxes.count != 1) return -1;
    LStr expectedTitle(
        "Kestrom エラー #3000|アーカイブ ファイルの形式が正しくありません (識別番号=");
    const char* box = rec->boxes[0]->ptr;
    EXPECT_EQ(std::strncmp(box, expectedTitle.ptr, expectedTitle.length), 0) << box;
    return std::atoi(box + expectedTitle.length);
  }
  return -1;
}
}  // namespace

TEST(NumCoding, ExactBytesAtEveryRangeBoundary) {
  struct Case {
    uint32_t value;
    LStr expected;
  } cases[] = {
      {0, bytes({0x00})},
      {127, bytes({0x7F})},
      {128, bytes({0x80, 0x00})},
      {16511, bytes({0xBF, 0xFF})},
      {16512, bytes({0xC0, 0x00, 0x00})},
      {2113663, bytes({0xDF, 0xFF, 0xFF})},
      {2113664, bytes({0xE0, 0x00, 0x00, 0x00})},
      {270549119, bytes({0xEF, 0xFF, 0xFF, 0xFF})},
      {270549120, bytes({0xF0, 0x00, 0x00, 0x00, 0x00})},
      {4294967295u, bytes({0xF0, 0xEF, 0xDF, 0xBF, 0x7F})},
  };
  for (const Case& c : cases) {
    LStr got = encodeNum(c.value);
    ASSERT_EQ(got.length, c.expected.length) << c.value;
    EXPECT_EQ(std::memcmp(got.ptr, c.expected.ptr, got.length), 0) << c.value;
    LMemSrm srm(got.ptr, got.length);
    EXPECT_EQ(FReadNum(srm), c.value);
    EXPECT_EQ(srm.tell(), got.length);
  }
}

TEST(NumCoding, DifferencesOfZeroAndMinusOneTakeOneByte) {
  LStr out;
  {
    LMemOutStream stream(out);
    FWriteDiff(stream, 1000, 1000);
    FWriteDiff(stream, 999, 1000);
    FWriteDiff(stream, 1001, 1000);
  }
  EXPECT_EQ(out.length, 3);
  EXPECT_EQ(out[0], 0);
  EXPECT_EQ(out[1], 3);
  EXPECT_EQ(out[2], 2);
}

TEST(NumCoding, RandomValuesAndDifferencesRoundTrip) {
  std::mt19937 random(20260101);
  // Values spread over every range, plus the extreme differences.
  std::vector<uint32_t> values = {0, 1, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu};
  for (int i = 0; i < 2000; i++) values.push_back(random() >> (random() % 32));
  LStr out;
  {
    LMemOutStream stream(out);
    LSrm buffered(&stream);
    uint32_t base = 0;
    for (uint32_t v : values) {
      FWriteNum(buffered, v);
      FWriteDiff(buffered, v, base);
      FWriteDiff(buffered, base, v);
      base = v;
    }
  }
  LMemSrm srm(out.ptr, out.length);
  uint32_t base = 0;
  for (uint32_t v : values) {
    ASSERT_EQ(FReadNum(srm), v);
    ASSERT_EQ(FReadDiff(srm, base), v) << "base " << base;
    ASSERT_EQ(FReadDiff(srm, v), base) << "value " << v;
    base = v;
  }
  EXPECT_EQ(srm.getByte(), -1);
}

TEST(NumCoding, StringsRoundTripAcrossTheBuffer) {
  LStr longText;
  for (int i = 0; i < 5000; i++) longText.append(static_cast<char>('a' + i % 26));
  LStr withNul("x\0y", 3);
  LStr out;
  {
    LMemOutStream stream(out);
    FWriteStr(stream, "");
    FWriteStr(stream, nullptr);
    FWriteStr(stream, "名前");
    FWriteStr(stream, withNul.ptr, withNul.length);
    FWriteStr(stream, longText.ptr, longText.length);
  }
  EXPECT_EQ(out[0], 0);
  EXPECT_EQ(out[1], 0);
  LMemSrm srm(out.ptr, out.length);
  const LStr* expected[] = {nullptr, nullptr, nullptr, &withNul, &longText};
  const char* expectedText[] = {"", "", "名前"};
  for (int i = 0; i < 5; i++) {
    LStr* got = FReadStr(srm);
    if (expected[i]) {
      EXPECT_EQ(got->length, expected[i]->length);
      EXPECT_EQ(std::memcmp(got->ptr, expected[i]->ptr, got->length), 0);
    } else {
      EXPECT_STREQ(got->ptr, expectedText[i]);
    }
    delete got;
  }
}

TEST(NumCoding, DamagedInputGivesTheDocumentedFailure) {
  // At the end of the stream.
  EXPECT_EQ(formatFailure([] {
              LMemSrm srm("", 0);
              FReadNum(srm);
            }),
            312);
  // Tag bits in a five-byte number: reported after the four bytes are read.
  LStr tagged = bytes({0xF1, 0, 0, 0, 0, 0x55});
  LMemSrm taggedSrm(tagged.ptr, tagged.length);
  EXPECT_EQ(formatFailure([&] { FReadNum(taggedSrm); }), 309);
  EXPECT_EQ(taggedSrm.tell(), 5);
  // A five-byte number beyond 32 bits.
  LStr wide = bytes({0xF0, 0xEF, 0xDF, 0xBF, 0x80});
  EXPECT_EQ(formatFailure([&] {
              LMemSrm srm(wide.ptr, wide.length);
              FReadNum(srm);
            }),
            309);
  for (int first = 0xF8; first <= 0xFF; first++) {
    LStr reserved = bytes({first, 0, 0, 0, 0});
    EXPECT_EQ(formatFailure([&] {
                LMemSrm srm(reserved.ptr, reserved.length);
                FReadNum(srm);
              }),
              312)
        << first;
  }
}

TEST(NumCoding, TruncatedInputIsRefusedAtEveryCut) {
  LStr out;
  {
    LMemOutStream stream(out);
    FWriteNum(stream, 4000000000u);
    FWriteStr(stream, "hello");
  }
  // Every proper prefix ends inside the number or the string.
  for (int32_t cut = 0; cut < out.length; cut++) {
    EXPECT_EQ(formatFailure([&] {
                LMemSrm srm(out.ptr, cut);
                FReadNum(srm);
                delete FReadStr(srm);
              }),
              312)
        << cut;
  }
}

TEST(NumCoding, HugeStringLengthIsRefusedWithoutAllocatingIt) {
  LStr out;
  {
    LMemOutStream stream(out);
    FWriteNum(stream, 0x80000000u);
  }
  EXPECT_EQ(formatFailure([&] {
              LMemSrm srm(out.ptr, out.length);
              delete FReadStr(srm);
            }),
            309);
  LStr big;
  {
    LMemOutStream stream(big);
    FWriteNum(stream, 0x7FFFFFFFu);
    stream.writeText("abc");
  }
  EXPECT_EQ(formatFailure([&] {
              LMemSrm srm(big.ptr, big.length);
              delete FReadStr(srm);
            }),
            312);
}

namespace {
const uint8_t* bytesOf(const LStr& s) { return reinterpret_cast<const uint8_t*>(s.ptr); }
}  // namespace

TEST(NumReader, ReadsWhatTheStreamReadsWithTheSameFailures) {
  std::mt19937 random(20261123);
  std::vector<uint32_t> values = {0,       127,        128,        16511,     16512,
                                  2113663, 2113664,    270549119,  270549120, 0xFFFFFFFFu,
                                  1,       0x7FFFFFFF, 0x80000000u};
  for (int i = 0; i < 2000; i++) values.push_back(random() >> (random() % 32));
  LStr out;
  {
    LMemOutStream stream(out);
    uint32_t base = 0;
    for (uint32_t v : values) {
      FWriteNum(stream, v);
      FWriteDiff(stream, v, base);
      stream.write("ab", 2);
      base = v;
    }
  }
  LNumReader reader(bytesOf(out), out.length);
  uint32_t base = 0;
  for (uint32_t v : values) {
    ASSERT_EQ(reader.readNum(), v);
    ASSERT_EQ(reader.readDiff(base), v) << "base " << base;
    const uint8_t* taken = reader.take(2);
    ASSERT_NE(taken, nullptr);
    ASSERT_EQ(std::memcmp(taken, "ab", 2), 0);
    base = v;
  }
  EXPECT_TRUE(reader.atEnd());
  EXPECT_NE(reader.take(0), nullptr);
  EXPECT_EQ(reader.take(1), nullptr);

  // Every cut of a long number ends the data; the reserved first bytes and
  // a number past 32 bits fail as from a stream.
  LStr longest = encodeNum(4000000000u);
  for (int32_t cut = 0; cut < longest.length; cut++)
    EXPECT_EQ(formatFailure([&] { LNumReader(bytesOf(longest), cut).readNum(); }), 312) << cut;
  LStr reserved = bytes({0xF8, 0, 0, 0, 0});
  EXPECT_EQ(formatFailure([&] { LNumReader(bytesOf(reserved), 5).readNum(); }), 312);
  LStr tagged = bytes({0xF1, 0, 0, 0, 0});
  EXPECT_EQ(formatFailure([&] { LNumReader(bytesOf(tagged), 5).readNum(); }), 309);
  LStr wide = bytes({0xF0, 0xEF, 0xDF, 0xBF, 0x80});
  EXPECT_EQ(formatFailure([&] { LNumReader(bytesOf(wide), 5).readNum(); }), 309);
  // A length that is more than what is left takes nothing.
  LNumReader shortOne(bytesOf(tagged), 5);
  EXPECT_EQ(shortOne.take(6), nullptr);
  EXPECT_EQ(shortOne.take(-1), nullptr);
  EXPECT_NE(shortOne.take(5), nullptr);
}
