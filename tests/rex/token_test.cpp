#include "rex/token.h"

#include <gtest/gtest.h>

#include "rex_helpers.h"
#include "support/recorder.h"

namespace {
int32_t tokenLength(const char16_t* pattern) { return FRexPeekToken(U(pattern)).length; }
int32_t valueOf(const char16_t* pattern) { return FRexPeekToken(U(pattern)).value(); }
}  // namespace

TEST(RexToken, MeasuresEscapesByTheirFirstCharacter) {
  EXPECT_EQ(tokenLength(u""), 0);
  EXPECT_EQ(tokenLength(u"ab"), 1);
  EXPECT_EQ(tokenLength(u"\\u0041z"), 6);
  EXPECT_EQ(tokenLength(u"\\x0041z"), 6);
  EXPECT_EQ(tokenLength(u"\\101z"), 4);
  EXPECT_EQ(tokenLength(u"\\777"), 4);
  EXPECT_EQ(tokenLength(u"\\8zz"), 2);
  EXPECT_EQ(tokenLength(u"\\*a"), 2);
  // Cut where the pattern ends.
  EXPECT_EQ(tokenLength(u"\\x00"), 4);
  EXPECT_EQ(tokenLength(u"\\1"), 2);
  EXPECT_EQ(tokenLength(u"\\"), 1);
}

TEST(RexToken, LiteralValues) {
  RecorderScope rec;
  EXPECT_EQ(valueOf(u"z"), 'z');
  EXPECT_EQ(valueOf(u"\\101"), 65);
  EXPECT_EQ(valueOf(u"\\000"), 0);
  EXPECT_EQ(valueOf(u"\\777"), 511);
  EXPECT_EQ(valueOf(u"\\x0041"), 'A');
  EXPECT_EQ(valueOf(u"\\u0041"), 'A');
  EXPECT_EQ(valueOf(u"\\uFFfe"), 0xFFFE);
  const char16_t* letters[] = {u"\\a", u"\\f", u"\\n", u"\\r", u"\\t", u"\\v"};
  const int32_t codes[] = {7, 12, 10, 13, 9, 11};
  for (int i = 0; i < 6; i++) EXPECT_EQ(valueOf(letters[i]), codes[i]);
  // Below "0", above "x", and the letters without a meaning stand for themselves.
  EXPECT_EQ(valueOf(u"\\*"), '*');
  EXPECT_EQ(valueOf(u"\\ "), ' ');
  EXPECT_EQ(valueOf(u"\\|"), '|');
  EXPECT_EQ(valueOf(u"\\y"), 'y');
  EXPECT_EQ(valueOf(u"\\8"), '8');
  EXPECT_EQ(valueOf(u"\\9"), '9');
  EXPECT_EQ(valueOf(u"\\b"), 'b');
  EXPECT_EQ(valueOf(u"\\w"), 'w');
  EXPECT_EQ(rec->entries.count, 0);
}

TEST(RexToken, BadEscapesReportAndGiveMinusOne) {
  const char16_t* bad[] = {u"\\18", u"\\1", u"\\7a7", u"\\u12", u"\\x00G1", u"\\uZZZZ", u"\\"};
  const char* shown[] = {"\\18", "\\1", "\\7a7", "\\u12", "\\x00G1", "\\uZZZZ", "\\"};
  for (int i = 0; i < 7; i++) {
    RecorderScope rec;
    EXPECT_EQ(valueOf(bad[i]), -1) << shown[i];
    ASSERT_EQ(rec->entries.count, 1) << shown[i];
    EXPECT_EQ(rec->entries[0]->number, 15000);
    EXPECT_STREQ(rec->entries[0]->text.ptr,
                 LStr("エスケープ文字列が不正です : ").append(shown[i]).ptr);
  }
}
