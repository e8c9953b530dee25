#include "lib/strfunc.h"

#include <gtest/gtest.h>

#include "lib/chartype.h"

TEST(CharType, ClassesOfTheTable) {
  EXPECT_EQ(FCharType['A'], kCharUpper);
  EXPECT_EQ(FCharType['z'], kCharLower);
  EXPECT_EQ(FCharType['5'], kCharDigit);
  EXPECT_EQ(FCharType['_'], kCharPunct | kCharUnderscore);
  EXPECT_EQ(FCharType['\v'], kCharSpace);
  EXPECT_EQ(FCharType[0x81], kCharLead);
  EXPECT_EQ(FCharType[0xFC], kCharLead);
  EXPECT_EQ(FCharType[0xA1], kCharKana);
  for (int c : {0x00, 0x08, 0x7F, 0x80, 0xA0, 0xFD, 0xFF}) EXPECT_EQ(FCharType[c], 0) << c;
}

TEST(CharType, TrailByteWalksBackOverLeadValues) {
  // 0x95 0x5C is 表: its trail byte is a backslash.
  const char* text = "a\x95\\\x95\\";
  EXPECT_FALSE(FIsTrailByte(text, 1));
  EXPECT_TRUE(FIsTrailByte(text, 2));
  EXPECT_FALSE(FIsTrailByte(text, 3));
  EXPECT_TRUE(FIsTrailByte(text, 4));
  // 0x88 0x9F 0x88 0x9F: trail bytes with lead-byte values; only the parity
  // of the run decides.
  const char* run = "\x88\x9f\x88\x9f";
  EXPECT_TRUE(FIsTrailByte(run, 1));
  EXPECT_FALSE(FIsTrailByte(run, 2));
  EXPECT_TRUE(FIsTrailByte(run, 3));
  EXPECT_TRUE(FIsLeadAt(run, 2));
  EXPECT_FALSE(FIsLeadAt(run, 1));
  EXPECT_TRUE(FIsNameStart('a'));
  EXPECT_TRUE(FIsNameStart(0xB1));
  EXPECT_FALSE(FIsNameStart(0x93));
  EXPECT_FALSE(FIsNameStart('.'));
}

TEST(CharType, EucModeHasItsOwnLeadBytes) {
  FCharMode = 'e';
  EXPECT_TRUE(FIsLeadByte(0xA1));
  EXPECT_FALSE(FIsLeadByte(0x81));
  EXPECT_TRUE(FIsNameStart(0xC0));
  FCharMode = 'x';
  EXPECT_FALSE(FIsLeadByte(0xA1));
  FCharMode = 's';
}

TEST(StrCmp, FoldingAndItsRawDifference) {
  EXPECT_EQ(FStrCmp("abc", "abd", false), -1);
  EXPECT_EQ(FStrCmp("abd", "abc", false), 1);
  EXPECT_EQ(FStrCmp("\xe0", "a", false), 1);  // unsigned bytes
  EXPECT_EQ(FStrCmp("ABC", "abc", true), 0);
  EXPECT_EQ(FStrCmp("abc", "ABD", true), 'c' - 'd');
  EXPECT_EQ(FStrCmp("ab", "abc", true), -'c');
  // The trail byte 0x41 of ア is not folded against 0x61.
  EXPECT_NE(FStrCmp("\x83\x41", "\x83\x61", true), 0);
  EXPECT_EQ(FStrCmp("\x83\x41", "\x83\x41", true), 0);
}

TEST(StrCmp, NullTolerantAndLengths) {
  LStr a("x");
  LStr b("y");
  EXPECT_EQ(FStrCmpNull(nullptr, nullptr), 1);
  EXPECT_EQ(FStrCmpNull(&a, nullptr), 0);
  EXPECT_EQ(FStrCmpNull(&a, &b), -1);
  EXPECT_EQ(FStrLenDiff(LStr("abc"), LStr("a")), 2);
}

TEST(Hash, PrimeTableAndItsWrap) {
  EXPECT_EQ(FHashStr(nullptr), 0u);
  EXPECT_EQ(FHashStr(""), 0u);
  EXPECT_EQ(FHashStr("\x01\x01"), 1u + 23u);
  EXPECT_EQ(FHashStr("\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x01", 11), 1u + 29u);
  // Byte 169 of a 170-byte text is multiplied by the first entry again.
  char text[171];
  for (int i = 0; i < 170; i++) text[i] = 'a';
  text[170] = 0;
  LStr head(text, 169);
  EXPECT_EQ(FHashStr(text), FHashStr(head.ptr) + 'a' * 1u);
  const UChar wide[] = {1, 1, 0};
  EXPECT_EQ(FHashUStr(wide), 24u);
}

namespace {
int compareInts(const void* item, const void* key, void*) {
  int a = *static_cast<const int*>(item);
  int b = *static_cast<const int*>(key);
  return a < b ? -1 : a > b ? 1 : 0;
}
}  // namespace

TEST(BinSearch, FirstOfARunAndInsertionPoints) {
  int values[] = {1, 3, 3, 3, 7};
  void* items[5];
  for (int i = 0; i < 5; i++) items[i] = &values[i];
  int key = 3;
  EXPECT_EQ(FBinSearch(items, &key, 5, compareInts, nullptr), 1);
  key = 4;
  EXPECT_EQ(FBinSearch(items, &key, 5, compareInts, nullptr), ~4);
  key = 9;
  EXPECT_EQ(FBinSearch(items, &key, 5, compareInts, nullptr), ~5);
  key = 0;
  EXPECT_EQ(FBinSearch(items, &key, 5, compareInts, nullptr), ~0);
  int same[] = {2, 2, 2};
  void* sameItems[] = {&same[0], &same[1], &same[2]};
  key = 2;
  EXPECT_EQ(FBinSearch(sameItems, &key, 3, compareInts, nullptr), 0);
  EXPECT_EQ(FBinSearch(items, &key, 0, compareInts, nullptr), ~0);
}

TEST(Prefixes, StopAtCharacterBoundaries) {
  EXPECT_TRUE(FEndsWith("archive.kst", ".kst"));
  EXPECT_FALSE(FEndsWith("kst", ".kst"));
  // 日 (0x93 0xFA) against 同 (0x93 0xAF): the shared lead byte is no prefix.
  EXPECT_EQ(FCommonPrefix("ab\x93\xfa", "ab\x93\xaf"), 2);
  EXPECT_EQ(FCommonPrefix("abc", "abd"), 2);
  // 表 (0x95 0x5C) against 申 (0x90 0x5C): the shared trail byte is no tail.
  EXPECT_EQ(FCommonTail("\x95\\x", "\x90\\x"), 1);
  EXPECT_EQ(FCommonTail("a.txt", "b.txt"), 4);
}
