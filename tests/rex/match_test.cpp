#include <gtest/gtest.h>

#include "lib/mem_stream.h"
#include "rex/context.h"
#include "rex/node.h"
#include "rex_helpers.h"
#include "support/recorder.h"

namespace {
void expectHit(const char16_t* pattern, const char16_t* text, int32_t start, int32_t length,
               int32_t flags = 0) {
  Hit hit = searchFor(pattern, text, flags);
  EXPECT_EQ(hit.start, start) << "start";
  EXPECT_EQ(hit.length, start < 0 ? -1 : length) << "length";
}

int32_t fixedLengthOf(const char16_t* pattern) {
  std::unique_ptr<URex> rex(FRexCompile(U(pattern)));
  return rex->fixedLength();
}
}  // namespace

TEST(RexMatch, BacktrackGivesBackExactlyOnce) {
  expectHit(u"a*a", u"aaa", 0, 3);
  expectHit(u"a*aa", u"aaa", -1, -1);  // two repeats would have to go back
  expectHit(u"(a|ab)c", u"abc", 0, 3);
  expectHit(u"(a|ab|abc)d", u"abcd", -1, -1);  // the second alternative is the last try
  expectHit(u"a*", u"baa", 0, 0);
  expectHit(u"a+b", u"xaab", 1, 3);
  expectHit(u"ab?c", u"ac abc", 0, 2);
  expectHit(u"(ab)+", u"ababa", 0, 4);
}

TEST(RexMatch, LineEdgesAndWordBoundaries) {
  expectHit(u"^b", u"a\nb", 2, 1);
  expectHit(u"^b", u"ab", -1, -1);
  expectHit(u"a$", u"xa\r\n", 1, 1);
  expectHit(u"a$", u"ab\na", 3, 1);
  expectHit(u"$", u"ab", 2, 0);
  expectHit(u"\\wfoo", u"foo", 0, 3);
  expectHit(u"\\wfoo", u"xfoo", -1, -1);
  expectHit(u"\\wfoo", u"x_foo foo", 6, 3);
  expectHit(u"o\\w", u"foo bar", 2, 1);
  // Japanese text is not word text.
  expectHit(u"\\wあ", u" あxあ", 3, 1);
}

TEST(RexMatch, SetsAndIntersections) {
  expectHit(u"[a-c]+", u"xxbcad", 2, 3);
  expectHit(u"[^a]", u"aab", 2, 1);
  expectHit(u"[^a]", u"aa", -1, -1);  // nothing left to exclude at the end
  expectHit(u"[]", u"abc", -1, -1);
  expectHit(u"ab&a", u"ab", 0, 2);
  expectHit(u"[a-z]*&[^x]*", u"abx", 0, 3);
  expectHit(u"a.c", u"abc a.c", 4, 3);
}

TEST(RexMatch, LookAroundConsumesNothing) {
  expectHit(u"~a", u"a", 0, 0);
  expectHit(u"!a", u"b", 0, 0);
  expectHit(u"!a", u"a", 1, 0);
  expectHit(u"x~y", u"xzxy", 2, 1);
  expectHit(u"x!y", u"xyxz", 2, 1);
  expectHit(u"~~ab", u"ab", 1, 1);
  expectHit(u"~~(ab)c", u"acabc", 4, 1);
  expectHit(u"!!ab", u"abxb", 3, 1);
  expectHit(u"~~(a|b)c", u"xcbc", 3, 1);
}

TEST(RexMatch, LookBehindOfUnknownLengthWarnsAndLooksAtNothing) {
  RecorderScope rec;
  expectHit(u"~~a*b", u"b", 0, 1);
  expectHit(u"!!a*b", u"ab", -1, -1);
  ASSERT_GT(rec->entries.count, 0);
  EXPECT_EQ(rec->entries[0]->number, 35000);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "unknown length for repeat [0] - [2147483647]\n  flat:a");
}

TEST(RexMatch, EmptyGroupMatchesTheEmptyText) {
  RecorderScope rec;
  expectHit(u"()", u"", 0, 0);
  expectHit(u"x()y", u"xy", 0, 2);
}

TEST(RexMatch, FixedLengths) {
  EXPECT_EQ(fixedLengthOf(u"abc"), 3);
  EXPECT_EQ(fixedLengthOf(u"a[bc]^$\\w~x!y"), 2);
  EXPECT_EQ(fixedLengthOf(u"(ab)"), 2);
  EXPECT_EQ(fixedLengthOf(u"a*"), -1);
  EXPECT_EQ(fixedLengthOf(u"xa?"), -1);
  EXPECT_EQ(fixedLengthOf(u"ab&a"), 2);
  EXPECT_EQ(fixedLengthOf(u"ab&a*"), -1);
  EXPECT_EQ(fixedLengthOf(u"ab|cd"), 2);
  EXPECT_EQ(fixedLengthOf(u"ab|c"), -1);
  EXPECT_EQ(URexOr().fixedLength(), 0);
  EXPECT_EQ(URexAnd().fixedLength(), 0);
  RecorderScope rec;
  EXPECT_EQ(fixedLengthOf(u"()"), 0);
}

TEST(RexMatch, GroupsAreNumberedInOrderOfEntry) {
  URexGroups groups;
  Hit hit = searchFor(u"(a)x(b|c)", u"axc", 0, &groups);
  EXPECT_EQ(hit.length, 3);
  ASSERT_EQ(groups.count, 2);
  EXPECT_TRUE(sameText(groups[0]->name, u"1"));
  EXPECT_TRUE(sameText(groups[0]->text, u"a"));
  EXPECT_TRUE(sameText(groups[1]->name, u"2"));
  EXPECT_TRUE(sameText(groups[1]->text, u"c"));
  LStr dumped;
  FRexDumpGroups(groups, dumped);
  EXPECT_STREQ(dumped.ptr, "1: a\n---- 2 ----\n2: c\n");
  // A capture keeps the text as written, not as folded.
  searchFor(u"(ab)", u"AB", kRexFoldCase, &groups);
  ASSERT_EQ(groups.count, 1);
  EXPECT_TRUE(sameText(groups[0]->text, u"AB"));
  searchFor(u"(a)", u"b", 0, &groups);
  EXPECT_EQ(groups.count, 0);
}

TEST(RexMatch, NamedGroupsDoNotTakeANumber) {
  std::unique_ptr<URex> rex(FRexCompile(U(u"(a)(b)(c)")));
  URexBin* top = static_cast<URexBin*>(rex.get());
  URexBrace* middle = static_cast<URexBrace*>(static_cast<URexBin*>(top->right)->left);
  middle->name.assign(U(u"mid"));
  URexGroups groups;
  EXPECT_EQ(FRexSearch(rex.get(), U(u"abc"), -1, nullptr, &groups, 0), 0);
  ASSERT_EQ(groups.count, 3);
  EXPECT_TRUE(sameText(groups[0]->name, u"1"));
  EXPECT_TRUE(sameText(groups[1]->name, u"mid"));
  EXPECT_TRUE(sameText(groups[1]->text, u"b"));
  EXPECT_TRUE(sameText(groups[2]->name, u"2"));
  EXPECT_TRUE(sameText(groups[2]->text, u"c"));
}

TEST(RexMatch, AGroupStandsOncePerEntry) {
  URexGroups groups;
  // Entered at position 0, again by the retry there, and at position 1.
  EXPECT_EQ(searchFor(u"(a)b", u"aab", 0, &groups).start, 1);
  ASSERT_EQ(groups.count, 3);
  for (URexGroup* group : groups) EXPECT_TRUE(sameText(group->text, u"a"));
  EXPECT_TRUE(sameText(groups[2]->name, u"3"));
  // Two repeats and the attempt that ended the repeat, which left it empty.
  EXPECT_EQ(searchFor(u"x(a)*", u"xaa", 0, &groups).length, 3);
  ASSERT_EQ(groups.count, 3);
  EXPECT_TRUE(sameText(groups[2]->text, u""));
}

TEST(RexMatch, SearchLimitsAndStartingPoints) {
  std::unique_ptr<URex> rex(FRexCompile(U(u"ab")));
  const UChar* text = U(u"xxab");
  for (int32_t limit : {2, 3, 4, -1}) {
    LMemSrm srm(text, 8);
    URexCtx ctx(&srm, 0);
    int32_t length;
    int32_t found = FRexSearchCtx(rex.get(), ctx, limit, &length, nullptr);
    EXPECT_EQ(found, limit == 4 || limit < 0 ? 2 : -1) << limit;
  }
  std::unique_ptr<URex> top(FRexCompile(U(u"^b|~~ab")));
  int32_t length;
  EXPECT_EQ(FRexSearchFrom(top.get(), U(u"ab"), -1, 1, &length, nullptr, 0), 1);
  EXPECT_EQ(FRexSearchFrom(rex.get(), text, -1, 3, &length, nullptr, 0), -1);
  EXPECT_EQ(FRexSearchFrom(rex.get(), text, -1, 5, &length, nullptr, 0), -1);
  EXPECT_EQ(length, -1);
  EXPECT_EQ(FRexSearch(rex.get(), text, 3, &length, nullptr, 0), -1);  // the length bounds the text
  EXPECT_EQ(FRexSearch(rex.get(), nullptr, -1, &length, nullptr, 0), -1);
  EXPECT_EQ(FRexSearch(nullptr, text, -1, &length, nullptr, 0), -1);
}

TEST(RexMatch, SearchGoesOnFromTheStreamPositionAndHandsOverWhatItSkips) {
  std::unique_ptr<URex> rex(FRexCompile(U(u"c")));
  UStr skipped;
  LMemOutStreamU out(skipped);
  LMemSrm srm(U(u"cabcd"), 10);
  srm.seek(2);
  URexCtx ctx(&srm, 0);
  ctx.out = &out;
  EXPECT_EQ(FRexSearchCtx(rex.get(), ctx, -1, nullptr, nullptr), 2);
  EXPECT_TRUE(sameText(skipped, u"ab"));
  EXPECT_EQ(srm.tell(), 6);
}

TEST(RexMatchDeath, BrokenNodesAreInternalFailures) {
  LMemSrm srm(U(u"a"), 2);
  URexCtx ctx(&srm, 0);
  URexSpChar odd(5);
  EXPECT_EXIT(odd.match(ctx, 0), ::testing::ExitedWithCode(2), "626");
  URexRepeat orphan(nullptr, 0, 1);
  EXPECT_EXIT(orphan.match(ctx, 0), ::testing::ExitedWithCode(2), "733");
  URexRepeat negative(new URexEmpty, -1, 1);
  EXPECT_EXIT(negative.match(ctx, 0), ::testing::ExitedWithCode(2), "734");
}
