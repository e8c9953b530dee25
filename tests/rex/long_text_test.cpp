// Texts longer than the stream's buffer: matches that run across refills,
// give back into an earlier buffer or look behind across a boundary.
#include <gtest/gtest.h>

#include <random>

#include "rex_helpers.h"

namespace {
UStr repeated(char16_t c, int32_t n) {
  UStr text;
  for (int32_t i = 0; i < n; i++) text.append(static_cast<UChar>(c));
  return text;
}

Hit search(const char16_t* pattern, const UStr& text, URexGroups* groups = nullptr) {
  std::unique_ptr<URex> rex(FRexCompile(U(pattern)));
  Hit hit;
  hit.start = FRexSearch(rex.get(), text.ptr, text.length, &hit.length, groups, 0);
  return hit;
}
}  // namespace

TEST(RexLongText, MatchesRunAcrossTheBuffer) {
  UStr as = repeated(u'a', 1500);
  Hit hit = search(u"a*a", as);
  EXPECT_EQ(hit.start, 0);
  EXPECT_EQ(hit.length, 1500);  // the give-back lands in an earlier buffer
  UStr text = repeated(u'x', 700).append(repeated(u'a', 600)).append(U(u"b"));
  URexGroups groups;
  hit = search(u"(a+)b", text, &groups);
  EXPECT_EQ(hit.start, 700);
  EXPECT_EQ(hit.length, 601);
  // One entry for each position tried, all showing the group's last capture.
  ASSERT_EQ(groups.count, 701);
  EXPECT_TRUE(groups.last()->text.equals(repeated(u'a', 600).ptr, false));
}

TEST(RexLongText, LookBehindAndLineTopAcrossABoundary) {
  UStr text = repeated(u'x', 498).append(U(u"abc\nd")).append(repeated(u'x', 2000));
  Hit hit = search(u"~~(ab)c", text);
  EXPECT_EQ(hit.start, 500);
  hit = search(u"^d", text);
  EXPECT_EQ(hit.start, 502);
  UStr tail = repeated(u'y', 3000).append(U(u"zz"));
  EXPECT_EQ(search(u"zz$", tail).start, 3000);
}

TEST(RexLongText, LiteralSearchAgreesWithAPlainScan) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 200; round++) {
    UStr text;
    for (int32_t i = 0; i < 2500; i++) text.append(static_cast<UChar>(u"ab"[random() % 2]));
    UStr pattern;
    int32_t length = 4 + static_cast<int32_t>(random() % 9);
    for (int32_t i = 0; i < length; i++) pattern.append(static_cast<UChar>(u"ab"[random() % 2]));
    int32_t start = static_cast<int32_t>(random() % 2000);
    std::unique_ptr<URex> rex(FRexCompile(pattern.ptr));
    int32_t matchLength;
    int32_t found =
        FRexSearchFrom(rex.get(), text.ptr, text.length, start, &matchLength, nullptr, 0);
    ASSERT_EQ(found, text.find(pattern.ptr, pattern.length, start)) << round;
    EXPECT_EQ(matchLength, found >= 0 ? pattern.length : -1);
  }
}
