#include "rex/fold.h"

#include <gtest/gtest.h>

#include "rex/context.h"
#include "rex_helpers.h"
#include "support/recorder.h"

namespace {
const char16_t kFullKana[] =
    u"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホ"
    u"マミムメモヤユヨラリルレロワン";

// The width table written out once more, range by range.
int32_t expectedWidth(int32_t c) {
  if (c >= 0xFF01 && c <= 0xFF5D) return c - 0xFEE0;
  if (c >= 0xFF66 && c <= 0xFF9D) return kFullKana[c - 0xFF66];
  switch (c) {
    case 0xFF65:
      return 0x30FB;
    case 0xFFE3:
      return '~';
    case 0xFFE5:
      return '\\';
    case 0x3000:
      return ' ';
    case 0x2018:
    case 0x2019:
      return '\'';
    case 0x201C:
    case 0x201D:
      return '"';
    case 0xFF62:
      return 0x300C;
    case 0xFF63:
      return 0x300D;
    case 0xFF61:
    case 0x3002:
      return '.';
    case 0xFF64:
    case 0x3001:
      return ',';
    default:
      return c;
  }
}

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
  int32_t ignorable = 0;
  for (int32_t c = 0; c <= 0xFFFF; c++) {
    ASSERT_EQ(FRexWidthLookup(c), expectedWidth(c)) << std::hex << c;
    // The guard that spares common characters the lookup agrees with it.
    ASSERT_EQ(FRexWidthFold(c), FRexWidthLookup(c)) << std::hex << c;
    ASSERT_EQ(FRexIgnorable(c), FRexIgnoreLookup(c)) << std::hex << c;
    if (FRexIgnoreLookup(c)) ignorable++;
  }
  EXPECT_EQ(ignorable, 6);
  for (int32_t c : {0x3000, 0x20, 0x30FC, 0xFF70, 0x30FB, 0xFF65}) EXPECT_TRUE(FRexIgnorable(c));
}

TEST(RexFold, FlagsApplyInOrder) {
  EXPECT_EQ(fold('A', 0), 'A');
  EXPECT_EQ(fold('A', kRexFoldCase), 'a');
  EXPECT_EQ(fold(0xC0, kRexFoldCase), 0xC0);  // only ASCII letters
  EXPECT_EQ(fold(0xFF71, kRexFoldWidth), 0x30A2);
  // Case comes before width, so a full-width capital stays a capital.
  EXPECT_EQ(fold(0xFF21, kRexFoldCase | kRexFoldWidth), 'A');
  EXPECT_EQ(fold(0xFF70, kRexFoldWidth), 0x30FC);
  EXPECT_EQ(fold(0xFF70, kRexFoldWidth | kRexSkipBlanks), -1);
  EXPECT_EQ(fold(0x3000, kRexSkipBlanks), -1);
  EXPECT_EQ(fold('\t', kRexSkipBlanks), '\t');
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
