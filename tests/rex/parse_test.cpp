#include "rex/parse.h"

#include <gtest/gtest.h>

#include "rex_helpers.h"
#include "support/recorder.h"

namespace {
struct Compiled {
  LStr tree;
  LStr messages;  // one per line
};

Compiled compile(const char16_t* pattern, bool escaped = false) {
  RecorderScope rec;
  Compiled result;
  result.tree = treeOf(pattern, escaped);
  for (TestRecorder::Entry* entry : rec->entries) {
    EXPECT_EQ(entry->number, 15000);
    result.messages.append(entry->text).append('\n');
  }
  return result;
}

LStr messagesOf(const char16_t* pattern) { return compile(pattern).messages; }

// The tree of a pattern that must compile without a message.
LStr cleanTree(const char16_t* pattern, bool escaped = false) {
  Compiled result = compile(pattern, escaped);
  EXPECT_STREQ(result.messages.ptr, "");
  return result.tree;
}
}  // namespace

TEST(RexParse, LiteralsMergeButRepeatsStayApart) {
  EXPECT_STREQ(cleanTree(u"abc").ptr, "flat:abc\n");
  EXPECT_STREQ(cleanTree(u"ab*").ptr, "tree\n  flat:a\n  repeat [0] - [2147483647]\n    flat:b\n");
  EXPECT_STREQ(cleanTree(u"ab*cd").ptr,
               "tree\n  flat:a\n  tree\n    repeat [0] - [2147483647]\n      flat:b\n"
               "    flat:cd\n");
  // A leading repeat sign has nothing to repeat and is a literal; "." is one too.
  EXPECT_STREQ(cleanTree(u"*a.").ptr, "flat:*a.\n");
  EXPECT_STREQ(cleanTree(u"\\101\\x0042\\u0043").ptr, "flat:ABC\n");
}

TEST(RexParse, RepeatsStackAndCoverEveryKindOfItem) {
  EXPECT_STREQ(cleanTree(u"a+?").ptr,
               "repeat [0] - [1]\n  repeat [1] - [2147483647]\n    flat:a\n");
  EXPECT_STREQ(cleanTree(u"(a)*").ptr, "repeat [0] - [2147483647]\n  brace\n    flat:a\n");
  EXPECT_STREQ(cleanTree(u"^$\\w").ptr, "tree\n  line-top\n  tree\n    line-end\n    word\n");
}

TEST(RexParse, SetsRangesAndExclusion) {
  EXPECT_STREQ(cleanTree(u"[a-cx\\]]").ptr, "char set: 61-63 78 5D\n");
  EXPECT_STREQ(cleanTree(u"[*(|]").ptr, "char set: 2A 28 7C\n");
  EXPECT_STREQ(cleanTree(u"[]").ptr, "char set: \n");
  EXPECT_STREQ(cleanTree(u"[^]").ptr, "char set:  (exclude)\n");
  EXPECT_STREQ(cleanTree(u"[^^a]").ptr, "char set: 5E 61 (exclude)\n");
}

TEST(RexParse, LookAroundTakesOneItemWithItsRepeats) {
  EXPECT_STREQ(cleanTree(u"~~ab").ptr, "tree\n  equ behind\n    flat:a\n  flat:b\n");
  EXPECT_STREQ(cleanTree(u"!a*").ptr, "not\n  repeat [0] - [2147483647]\n    flat:a\n");
  EXPECT_STREQ(cleanTree(u"!!(ab)").ptr, "not behind\n  brace\n    flat:ab\n");
  EXPECT_STREQ(cleanTree(u"~!a").ptr, "equ\n  not\n    flat:a\n");
}

TEST(RexParse, AlternativesAndIntersections) {
  EXPECT_STREQ(cleanTree(u"ab|c").ptr, "or (num=2)\n  flat:ab\n  flat:c\n");
  EXPECT_STREQ(cleanTree(u"a&b&c").ptr, "and (num=3)\n  flat:a\n  flat:b\n  flat:c\n");
  EXPECT_STREQ(cleanTree(u"(a|b)c").ptr,
               "tree\n  brace\n    or (num=2)\n      flat:a\n      flat:b\n  flat:c\n");
  // Mixing is reported, and the last operator decides.
  EXPECT_STREQ(messagesOf(u"a|b&c").ptr, "| and & are mixed. Use ( ).\n");
  EXPECT_STREQ(compile(u"a|b&c").tree.ptr, "and (num=3)\n  flat:a\n  flat:b\n  flat:c\n");
  EXPECT_STREQ(messagesOf(u"(a|b)&c").ptr, "");
}

TEST(RexParse, EscapedSyntaxSwapsBareAndBackslashForms) {
  EXPECT_STREQ(cleanTree(u"a*", true).ptr, "flat:a*\n");
  EXPECT_STREQ(cleanTree(u"a\\*", true).ptr, "repeat [0] - [2147483647]\n  flat:a\n");
  EXPECT_STREQ(cleanTree(u"\\(a\\|b\\)(|)", true).ptr,
               "tree\n  brace\n    or (num=2)\n      flat:a\n      flat:b\n  flat:(|)\n");
  EXPECT_STREQ(cleanTree(u"\\[^a\\]", true).ptr, "char set: 61 (exclude)\n");
  // The plain table is back afterwards.
  EXPECT_STREQ(cleanTree(u"a*").ptr, "repeat [0] - [2147483647]\n  flat:a\n");
}

TEST(RexParse, EveryFaultHasItsMessage) {
  EXPECT_STREQ(messagesOf(u"()").ptr, "正規表現に空の ( ) があります\n");
  EXPECT_STREQ(compile(u"()").tree.ptr, "brace\n  empty\n");
  EXPECT_STREQ(messagesOf(u"(a").ptr, "正規表現: ')' が必要です\n");
  EXPECT_STREQ(messagesOf(u"(a||b)").ptr,
               "'|' または '&' の引数が空です : |b)\n'|' の代わりに ')' が必要です\n"
               "構文エラー : )\n");
  EXPECT_STREQ(messagesOf(u"a|").ptr, "'|' または '&' の引数が空です : \n");
  EXPECT_STREQ(messagesOf(u"[z-a]").ptr, "正規表現の [A-B] は A <= B でなければなりません\n");
  EXPECT_STREQ(compile(u"[z-a]").tree.ptr, "char set: 7A-61\n");
  EXPECT_STREQ(messagesOf(u"[a-]").ptr, "[ ] 内の '-' の後に文字がありません\n");
  EXPECT_STREQ(compile(u"[a-]b").tree.ptr, "tree\n  char set: 61\n  flat:b\n");
  EXPECT_STREQ(messagesOf(u"[a-").ptr,
               "[ ] 内の '-' の後に文字がありません\nmissing ']' in '[a-'\n");
  EXPECT_STREQ(messagesOf(u"x[ab").ptr, "missing ']' in '[ab'\n");
  EXPECT_STREQ(messagesOf(u"a)b").ptr, "構文エラー : )b\n");
  EXPECT_STREQ(messagesOf(u"a~~").ptr, "'~~' の後に正規表現がありません\n");
  EXPECT_STREQ(compile(u"a!").tree.ptr, "tree\n  flat:a\n  not\n    empty\n");
  EXPECT_STREQ(messagesOf(u"\\18").ptr, "エスケープ文字列が不正です : \\18\n");
}

TEST(RexParse, NothingToParseGivesNull) {
  EXPECT_STREQ(messagesOf(u"").ptr, "正規表現が空です\n");
  EXPECT_STREQ(compile(u"").tree.ptr, "(null)");
  EXPECT_STREQ(messagesOf(u"|a").ptr, "構文エラー : |a\n正規表現が空です\n");
  RecorderScope rec;
  EXPECT_EQ(FRexCompile(nullptr), nullptr);
  EXPECT_EQ(rec->entries.count, 0);
}

TEST(RexParse, ParseStopsAtTheCloseOfTheCallersGroup) {
  const UChar* pattern = U(u"a|b)c");
  const UChar* cursor = pattern;
  URex* rex = FRexParse(&cursor);
  ASSERT_NE(rex, nullptr);
  EXPECT_EQ(cursor - pattern, 3);
  delete rex;
}
