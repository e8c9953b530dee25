#include "lib/convert.h"

#include <gtest/gtest.h>

#include "lib/chartype.h"
#include "support/recorder.h"

namespace {
const UChar* U(const char16_t* text) { return reinterpret_cast<const UChar*>(text); }

LStr toL(const char16_t* text) {
  LStr out;
  FToLStr(U(text), -1, out);
  return out;
}

UStr toU(const char* text) {
  UStr out;
  FToUStr(text, -1, out);
  return out;
}
}  // namespace

TEST(Convert, JapaneseTextRoundTrips) {
  LStr sjis = toL(u"日本語のファイル.txt");
  EXPECT_STREQ(sjis.ptr, "日本語のファイル.txt");  // compiled to code page 932
  EXPECT_EQ(static_cast<unsigned char>(sjis[0]), 0x93);
  UStr back = toU(sjis.ptr);
  EXPECT_TRUE(back.equals(U(u"日本語のファイル.txt"), false));
}

TEST(Convert, UnitsOutsideTheCodePageTravelAsEscapes) {
  LStr mixed = toL(u"caf\u00e9 \u20ac \U0001F600!");
  EXPECT_STREQ(mixed.ptr, "caf{%u00E9} {%u20AC} {%uD83D}{%uDE00}!");
  UStr back = toU(mixed.ptr);
  EXPECT_TRUE(back.equals(U(u"caf\u00e9 \u20ac \U0001F600!"), false));
  UStr one = toU("{%u3042}");
  ASSERT_EQ(one.length, 1);
  EXPECT_EQ(one[0], 0x3042);
  LStr custom;
  FToLStr(U(u"\u00e9"), -1, custom, 0, "<", ">");
  EXPECT_STREQ(custom.ptr, "<00E9>");
}

TEST(Convert, BrokenEscapeWarnsAndMarks) {
  RecorderScope rec;
  UStr out = toU("x{%u3042");
  ASSERT_EQ(out.length, 5);
  EXPECT_EQ(out[1], 0x3042);
  EXPECT_TRUE(out.equals(U(u"x\u3042<?>"), false));
  ASSERT_TRUE(rec->has(35009));
  EXPECT_STREQ(rec->entries[0]->text.ptr, "illegal escape sequence: {%u3042");
}

TEST(Convert, EmptyAndNullLeaveTheOutput) {
  UStr u(U(u"keep"));
  FToUStr("", -1, u);
  FToUStr(nullptr, -1, u);
  EXPECT_EQ(u.length, 4);
  LStr l("keep");
  FToLStr(U(u""), -1, l);
  FToLStr(nullptr, 3, l);
  EXPECT_STREQ(l.ptr, "keep");
}

TEST(Convert, LongTextCrossesThePieces) {
  // Pieces of 1000 units and 2000 bytes: a double-byte character must never be
  // cut at a piece boundary.
  UStr wide;
  for (int i = 0; i < 3001; i++) wide.append(static_cast<UChar>(i % 3 ? 0x3042 + i % 50 : 'a'));
  LStr narrow;
  FToLStr(wide.ptr, wide.length, narrow);
  UStr back;
  FToUStr(narrow.ptr, narrow.length, back);
  EXPECT_TRUE(back.equals(wide.ptr, false));
}

TEST(Convert, Utf8CodePage) {
  LStr utf8;
  FToLStr(U(u"日"), -1, utf8, 65001);
  EXPECT_EQ(utf8.length, 3);
  UStr back;
  FToUStr(utf8.ptr, utf8.length, back, 65001);
  EXPECT_EQ(back[0], 0x65E5);
}

TEST(ConvertExact, EscapesThatNamesHoldThemselvesAreEscaped) {
  struct Case {
    const char16_t* units;
    const char* exact;
  } cases[] = {
      {u"{%u0041}.txt", "{%u007B}%u0041}.txt"},
      {u"{%u", "{%u007B}%u"},
      {u"{%x{{%u", "{%x{{%u007B}%u"},
      {u"{%", "{%"},
      {u"caf\u00e9\\", "caf{%u00E9}{%u005C}"},
      // U+FF0B ends in the byte "{": the "%" behind it is escaped instead.
      {u"\uff0b%u0041}", "\x81\x7B{%u0025}u0041}"},
      {u"\uff0b%x", "\x81\x7B%x"},
  };
  const UChar backslash[] = {'\\', 0};
  for (const Case& c : cases) {
    LStr exact;
    FToLStrExact(U(c.units), -1, exact, backslash);
    EXPECT_STREQ(exact.ptr, c.exact);
    UStr back;
    EXPECT_TRUE(FToUStrExact(exact.ptr, exact.length, back, backslash)) << c.exact;
    EXPECT_TRUE(back.equals(U(c.units), false)) << c.exact;
  }
}

TEST(ConvertExact, RandomTextsRoundTrip) {
  const UChar alphabet[] = {'{', '%',  'u',  '0',    '4',    '1',    '}',
                            'A', '\\', 0xE9, 0xFF0B, 0x3042, 0xDC80, 0xD83D};
  uint32_t state = 12345;
  for (int round = 0; round < 2000; round++) {
    UStr units;
    int32_t length = static_cast<int32_t>(round % 12);
    for (int32_t i = 0; i < length; i++) {
      state = state * 1103515245u + 12345u;
      units.append(alphabet[(state >> 16) % (sizeof alphabet / sizeof alphabet[0])]);
    }
    LStr exact;
    FToLStrExact(units.ptr, units.length, exact);
    UStr plain;
    FToUStr(exact.ptr, exact.length, plain);
    ASSERT_TRUE(plain.equals(units.ptr, false)) << exact.ptr;
    UStr checked;
    ASSERT_TRUE(FToUStrExact(exact.ptr, exact.length, checked)) << exact.ptr;
  }
}

TEST(ConvertExact, OtherSpellingsAreRefusedWithoutAWord) {
  RecorderScope rec;
  const UChar backslash[] = {'\\', 0};
  for (const char* text : {"{%u2e}", "{%u002E}", "{%u0041}", "{%u00e9}", "{%u00E9", "{%u00E9x",
                           "..\x81", "\x81/", "a\\b", "{%u007B}", "\x81\x7B%u0041}"}) {
    UStr out(U(u"kept"));
    EXPECT_FALSE(FToUStrExact(text, -1, out, backslash)) << text;
    EXPECT_EQ(out.length, 4) << text;
  }
  UStr out;
  EXPECT_TRUE(FToUStrExact("a\\b", -1, out));  // no separator without the list
  EXPECT_FALSE(FToUStrExact("a{%u005C}b", -1, out));
  EXPECT_EQ(rec->entries.count, 0);
}

TEST(ParseInt, PrefixesSignsAndCommas) {
  EXPECT_EQ(FParseInt("0x1F"), 31);
  EXPECT_EQ(FParseInt("0X1f"), 31);
  EXPECT_EQ(FParseInt("0j19"), 19);
  EXPECT_EQ(FParseInt("0n101"), 5);
  EXPECT_EQ(FParseInt("-0x10"), -16);
  EXPECT_EQ(FParseInt("1,234"), 1234);
  EXPECT_EQ(FParseInt("017"), 17);
  EXPECT_EQ(FParseInt("000"), 0);
  EXPECT_EQ(FParseInt("0"), 0);
  EXPECT_EQ(FParseInt("ff", 0, 16), 255);
  EXPECT_EQ(FParseInt("12:30", ':'), 12);
}

TEST(ParseInt, NotANumberReportsInTheLanguage) {
  RecorderScope rec;
  EXPECT_EQ(FParseInt("12a"), 12);
  ASSERT_TRUE(rec->has(15000));
  EXPECT_STREQ(rec->entries[0]->text.ptr, "cannot analyze '12a' as a number");
  FSetLang('J');
  FParseInt("-0xZZ");
  FSetLang('E');
  EXPECT_STREQ(rec->entries[1]->text.ptr, "「ZZ」を数値として解釈できません");
}

TEST(ParseSize, UnitsAndUpperBounds) {
  EXPECT_EQ(FParseSize("2M", false), 2097152);
  EXPECT_EQ(FParseSize("2M", true), 3145727);
  EXPECT_EQ(FParseSize("1k", true), 2047);
  EXPECT_EQ(FParseSize("3g", false), 3221225472LL);
  EXPECT_EQ(FParseSize("100", true), 100);
}
