#include "lib/lstr.h"

#include <gtest/gtest.h>

#include "lib/ustr.h"

namespace {
const UChar* U(const char16_t* text) { return reinterpret_cast<const UChar*>(text); }
}  // namespace

TEST(LStr, EmptyStringSaysCapacityZeroAndFirstAppendGrowsToThree) {
  LStr s;
  EXPECT_EQ(s.capacity, 0);
  EXPECT_EQ(s.length, 0);
  EXPECT_STREQ(s.ptr, "");
  s.append('x');
  // (1 * 5) / 4 + 1 = 2 bytes asked, a block of usable 4, one for the NUL.
  EXPECT_EQ(s.capacity, 3);
  EXPECT_STREQ(s.ptr, "x");
}

TEST(LStr, GrowthLandsOnBlockSizes) {
  LStr s;
  for (int i = 0; i < 200; i++) {
    s.append('a' + i % 26);
    int32_t usable;
    FRoundSize(FBlockSize(s.ptr), &usable);
    EXPECT_EQ(s.capacity, usable - 1) << i;
    EXPECT_EQ(s.ptr[s.length], 0);
  }
  EXPECT_EQ(s.length, 200);
}

TEST(LStr, ClearAndAssignGiveTheBlockBack) {
  LStr s;
  for (int i = 0; i < 1000; i++) s.append('z');
  EXPECT_GT(s.capacity, 1000);
  s.clear();
  EXPECT_EQ(s.capacity, 3);
  EXPECT_EQ(FBlockSize(s.ptr), 1);
  LStr fresh;
  fresh.assign("ab");
  EXPECT_EQ(fresh.capacity, 3);
  EXPECT_STREQ(fresh.ptr, "ab");
}

TEST(LStr, AssignAndInsertFromItself) {
  LStr s("hello world");
  s.assign(s.ptr + 6);
  EXPECT_STREQ(s.ptr, "world");
  s.insert(s.ptr, 3, 2);
  EXPECT_STREQ(s.ptr, "woworrld");
  s.insert('!', -1);
  s.insert('<', 0);
  EXPECT_STREQ(s.ptr, "<woworrld!");
}

TEST(LStr, NullAndNegativeLengths) {
  LStr s("abc");
  s.append(nullptr);
  s.append("defgh", -1);
  s.append("xyz", 2);
  EXPECT_STREQ(s.ptr, "abcdefghxy");
  EXPECT_EQ(s.length, 10);
}

TEST(LStr, FormatAppendsAPiece) {
  LStr s("n=");
  s.format("%d/%s", 42, "x");
  EXPECT_STREQ(s.ptr, "n=42/x");
}

TEST(LStr, CaseChangesStepOverDoubleByteCharacters) {
  // "ア" is 0x83 0x41: its trail byte has the value of "A" and must not fold.
  LStr s("Ab\x83\x41z");
  s.toLower();
  EXPECT_STREQ(s.ptr, "ab\x83\x41z");
  s.toUpper();
  EXPECT_STREQ(s.ptr, "AB\x83\x41Z");
}

TEST(LStr, PopCharactersJoinDoubleBytes) {
  LStr s(
      "\x93\xfa"
      "a\x96\x7b");  // 日 a 本
  EXPECT_EQ(s.popFirstChar(false), 0x93fa);
  EXPECT_EQ(s.popLastChar(false), 0x967b);
  EXPECT_EQ(s.popLastChar(true), 0x967b);
  // Only one byte goes: the lead byte of 本 is left behind.
  EXPECT_EQ(s.length, 4);
  EXPECT_EQ(s.popFirstChar(true), 0x93fa);
  EXPECT_STREQ(s.ptr, "a\x96");
  LStr empty;
  EXPECT_EQ(empty.popFirstChar(true), -1);
  EXPECT_EQ(empty.popLastChar(true), -1);
}

TEST(LStr, TrimBlankAndLineEnds) {
  LStr s("  \tword \n");
  EXPECT_EQ(s.trimLeft(" \t"), 3);
  EXPECT_EQ(s.trimRight(" \n"), 2);
  EXPECT_STREQ(s.ptr, "word");
  EXPECT_FALSE(s.isBlank());
  EXPECT_TRUE(LStr("").isBlank());
  EXPECT_TRUE(LStr(" \r\n\t").isBlank());
  LStr lines("a\nb\r\nc\n");
  lines.lfToCrLf();
  EXPECT_STREQ(lines.ptr, "a\r\nb\r\nc\r\n");
  lines.crLfToLf();
  EXPECT_STREQ(lines.ptr, "a\nb\nc\n");
}

TEST(LStr, ReplaceAllNeverSearchesTheReplacement) {
  LStr s("aaa");
  EXPECT_EQ(s.replaceAll("a", "aa"), 3);
  EXPECT_STREQ(s.ptr, "aaaaaa");
  LStr t("x; y ;z");
  EXPECT_EQ(t.replaceAll(" ", ""), 2);
  EXPECT_STREQ(t.ptr, "x;y;z");
  EXPECT_EQ(t.replaceAll("", "q"), 0);
}

TEST(LStr, EqualsFoldsOnlyWhenAsked) {
  LStr s("Readme.TXT");
  EXPECT_TRUE(s.equals("README.txt", true));
  EXPECT_FALSE(s.equals("README.txt", false));
  EXPECT_FALSE(s.equals(nullptr, true));
}

TEST(UStr, MirrorsTheEightBitString) {
  UStr u;
  EXPECT_EQ(u.capacity, 0);
  u.append(U(u"日本"));
  u.appendAscii("Ab");
  EXPECT_EQ(u.length, 4);
  u.toLower();
  EXPECT_EQ(u[2], 'a');
  EXPECT_EQ(u[3], 'b');
  EXPECT_EQ(u.popFirstChar(true), 0x65E5);
  EXPECT_EQ(u.popLastChar(true), 'b');
  u.clear();
  EXPECT_EQ(u.capacity, 1);
  UStr r(U(u"a ; b"));
  EXPECT_EQ(r.replaceAll(U(u" "), U(u"")), 2);
  EXPECT_TRUE(r.equals(U(u"A;B"), true));
}
