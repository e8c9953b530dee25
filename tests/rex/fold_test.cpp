#include "rex/fold.h"

#include <gtest/gtest.h>

#include "rex/context.h"
#include "rex_helpers.h"
#include "support/recorder.h"

namespace {
int32_t fold(int32_t c, int32_t flags) {
  URexCtx ctx(nullptr, flags);
  return ctx.foldChar(c);
}

void expectHit(const char16_t* pattern, const char16_t* text, int32_t flags, int32_t start,
               int32_t length) {
  Hit hit = searchFor(pattern, text, flags);
  EXPECT_EQ(hit.start, start);
  EXPECT_EQ(hit.length, length);
}
}  // namespace

TEST(RexFold, TablesHoldExactlyTheirCharacters) {
  const int32_t pairs[][2] = {
      {0xFF01, '!'},    {0xFF0C, ','},    {0xFF0E, '.'},    {0xFF5D, '}'},    {0xFF5E, 0xFF5E},
      {0xFF66, 0x30F2}, {0xFF70, 0x30FC}, {0xFF71, 0x30A2}, {0xFF9D, 0x30F3}, {0xFF9E, 0xFF9E},
      {0xFF65, 0x30FB}, {0xFFE3, '~'},    {0xFFE5, '\\'},   {0x3000, ' '},    {0x2018, '\''},
      {0x2019, '\''},   {0x201C, '"'},    {0x201D, '"'},    {0xFF62, 0x300C}, {0xFF63, 0x300D},
      {0xFF61, '.'},    {0x3002, '.'},    {0xFF64, ','},    {0x3001, ','},    {0x2017, 0x2017},
  };
  for (const auto& pair : pairs)
    EXPECT_EQ(FRexWidthLookup(pair[0]), pair[1]) << std::hex << pair[0];
  int32_t mapped = 0;
  int32_t ignorable = 0;
  for (int32_t c = 0; c <= 0xFFFF; c++) {
    // The guard that spares common characters the lookup agrees with it.
    ASSERT_EQ(FRexWidthFold(c), FRexWidthLookup(c)) << std::hex << c;
    ASSERT_EQ(FRexIgnorable(c), FRexIgnoreLookup(c)) << std::hex << c;
    if (FRexWidthLookup(c) != c) mapped++;
    if (FRexIgnoreLookup(c)) ignorable++;
  }
  // Full-width ASCII 93, half-width katakana 56, and 14 more.
  EXPECT_EQ(mapped, 163);
  EXPECT_EQ(ignorable, 6);
  for (int32_t c : {0x3000, 0x20, 0x30FC, 0xFF70, 0x30FB, 0xFF65}) EXPECT_TRUE(FRexIgnorable(c));
}

TEST(RexFold, FlagsApplyInOrder) {
  EXPECT_EQ(fold('A', kRexFoldCase), 'a');
  EXPECT_EQ(fold(0xC0, kRexFoldCase), 0xC0);  // only ASCII letters
  // Case comes before width, so a full-width capital stays a capital.
  EXPECT_EQ(fold(0xFF21, kRexFoldCase | kRexFoldWidth), 'A');
  EXPECT_EQ(fold(0xFF70, kRexFoldWidth), 0x30FC);
  EXPECT_EQ(fold(0xFF70, kRexFoldWidth | kRexSkipBlanks), -1);
  EXPECT_EQ(fold(0x3000, kRexSkipBlanks), -1);
  EXPECT_EQ(fold(1, kRexSkipOnes), -1);
  EXPECT_EQ(fold(1, kRexSkipBlanks), 1);
}

TEST(RexFold, SearchesFoldTextAndPattern) {
  expectHit(u"ABC", u"xabc", kRexFoldCase, 1, 3);
  expectHit(u"abc", u"xABC", kRexFoldCase, 1, 3);
  expectHit(u"ABC", u"xabc", 0, -1, -1);
  expectHit(u"[A-C]+", u"xaBc", kRexFoldCase, 1, 3);
  expectHit(u"ｱ", u"xア", kRexFoldWidth, 1, 1);
  expectHit(u"テスト", u"ﾃｽﾄ", kRexFoldWidth, 0, 3);
  expectHit(u"ﾃｽﾄ", u"テスト", kRexFoldWidth, 0, 3);
  expectHit(u"ﾃｽﾄ", u"テスト", 0, -1, -1);
  expectHit(u"file.txt", u"ｆｉｌｅ．ｔｘｔ", kRexFoldWidth, 0, 8);
  expectHit(u"[ｱ-ｳ]", u"イ", kRexFoldWidth, 0, 1);
}

TEST(RexFold, DroppedCharactersCountInTheMatch) {
  expectHit(u"ab", u"a b", kRexSkipBlanks, 0, 3);
  expectHit(u"ab", u"a b", 0, -1, -1);
  expectHit(u"a b", u"xab", kRexSkipBlanks, 1, 2);
  expectHit(u"データ", u"デ　ー タ", kRexFoldWidth | kRexSkipBlanks, 0, 5);
  expectHit(u"ab",
            u"a\x01"
            u"b",
            kRexSkipOnes, 0, 3);
  // A blank never matches when blanks drop out of the text.
  expectHit(u"[ ]", u"a b", kRexSkipBlanks, -1, -1);
}

TEST(RexFold, ARangeWhoseHighEndDropsOutMatchesNothing) {
  RecorderScope rec;
  expectHit(u"[a-\u3000]", u"b", kRexSkipBlanks, -1, -1);
  ASSERT_GT(rec->entries.count, 0);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "[A-B] expression: only B disappears");
  expectHit(u"[ -!a]", u"a", kRexSkipBlanks, 0, 1);
}
