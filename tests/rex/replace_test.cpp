#include "rex/replace.h"

#include <gtest/gtest.h>

#include "rex_helpers.h"
#include "support/recorder.h"

namespace {
UStr replaced(const char16_t* text, const char16_t* pattern, const char16_t* replacement) {
  UStr string(U(text));
  FRexReplaceAll(string, U(pattern), replacement ? U(replacement) : nullptr);
  return string;
}
}  // namespace

TEST(RexReplace, TidiesListSeparators) {
  EXPECT_TRUE(sameText(replaced(u"a ; b;c  ;  d", u" *; *", u";"), u"a;b;c;d"));
  EXPECT_TRUE(sameText(replaced(u" ;x; ", u" *; *", u";"), u";x;"));
  EXPECT_TRUE(sameText(replaced(u"*.txt , *.doc,a", u" *, *", u","), u"*.txt,*.doc,a"));
}

TEST(RexReplace, ReplacesLeftToRightWithoutSearchingTheReplacement) {
  EXPECT_TRUE(sameText(replaced(u"aa", u"a", u"aa"), u"aaaa"));
  EXPECT_TRUE(sameText(replaced(u"axbxc", u"x", nullptr), u"abc"));
  EXPECT_TRUE(sameText(replaced(u"abc", u"z", u"-"), u"abc"));
  EXPECT_TRUE(sameText(replaced(u"", u"a", u"-"), u""));
  // "^" sees the text before the point, so only the true start matches.
  EXPECT_TRUE(sameText(replaced(u"aaa", u"^a", u"b"), u"baa"));
  EXPECT_TRUE(sameText(replaced(u"a1b22c", u"[0-9]+", u"#"), u"a#b#c"));
}

TEST(RexReplace, APatternWithoutExpressionLeavesTheString) {
  RecorderScope rec;
  EXPECT_TRUE(sameText(replaced(u"abc", u"", u"-"), u"abc"));
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "正規表現が空です");
}

TEST(RexReplace, EightBitTextTravelsThroughSixteenBits) {
  LStr list("ファイル ; 名前 ;表");
  FRexReplaceAll(list, " *; *", ";");
  EXPECT_STREQ(list.ptr, "ファイル;名前;表");
  LStr kana("ソース表示");
  FRexReplaceAll(kana, "表", nullptr);
  EXPECT_STREQ(kana.ptr, "ソース示");
}

TEST(RexFind, CompilesSearchesAndReportsEmptyPatterns) {
  EXPECT_EQ(FRexFind(U(u"b+"), U(u"abb"), -1), 1);
  EXPECT_EQ(FRexFind(U(u"b+"), U(u"abb"), 1), -1);
  EXPECT_EQ(FRexFindSyntax(U(u"a*b"), U(u"xa*b"), -1, 1), 1);
  EXPECT_EQ(FRexFindSyntax(U(u"a\\*b"), U(u"xaab"), -1, 1), 1);
  EXPECT_EQ(FRexFindSyntax(U(u"a\\*b"), U(u"xaab"), -1, 0), -1);
  RecorderScope rec;
  EXPECT_EQ(FRexFind(U(u""), U(u"abc"), -1), -1);
  EXPECT_EQ(FRexFindSyntax(U(u""), U(u"abc"), -1, 1), -1);
  EXPECT_EQ(rec->entries.count, 2);
}
