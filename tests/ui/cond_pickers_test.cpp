#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "archive/stats.h"
#include "archive/string_table.h"
#include "lib/calendar.h"
#include "lib/lhash.h"
#include "ui/cond_fields.h"
#include "ui/date_pick.h"
#include "ui/number_pick.h"
#include "ui/value_picks.h"

namespace {

TEST(NumberPick, BothSidesWithAndWithoutUnit) {
  LStr text, error;
  EXPECT_EQ(kPickTaken, FNumberRangeText("1", "5", "", text, error));
  EXPECT_STREQ("1-5", text.ptr);
  EXPECT_EQ(kPickTaken, FNumberRangeText("0", "102400", "K", text, error));
  EXPECT_STREQ("0K-102400K", text.ptr);
  EXPECT_EQ(kPickTaken, FNumberRangeText(" 7 ", "-2", "", text, error));
  EXPECT_STREQ("7--2", text.ptr);
}

TEST(NumberPick, AnEmptyBoxLeavesItsSideOutAndTheDashStays) {
  LStr text, error;
  EXPECT_EQ(kPickTaken, FNumberRangeText("", "5", "K", text, error));
  EXPECT_STREQ("-5K", text.ptr);
  EXPECT_EQ(kPickTaken, FNumberRangeText("3", "  ", "", text, error));
  EXPECT_STREQ("3-", text.ptr);
}

TEST(NumberPick, BothBoxesEmptyLeaveTheFieldAlone) {
  LStr text("kept"), error;
  EXPECT_EQ(kPickUntouched, FNumberRangeText("", " ", "K", text, error));
  EXPECT_STREQ("kept", text.ptr);
  EXPECT_TRUE(error.empty());
}

TEST(NumberPick, ATextThatIsNoNumberIsRefusedWithItsName) {
  LStr text("kept"), error;
  EXPECT_EQ(kPickRefused, FNumberRangeText("1", "5x", "", text, error));
  EXPECT_STREQ("「5x」を数値として解釈できません", error.ptr);
  EXPECT_STREQ("kept", text.ptr);
  EXPECT_EQ(kPickRefused, FNumberRangeText("abc", "", "", text, error));
  EXPECT_STREQ("「abc」を数値として解釈できません", error.ptr);
  // Beyond 32 bits is no number either.
  EXPECT_EQ(kPickRefused, FNumberRangeText("4294967296", "", "", text, error));
}

TEST(NumberPick, RangesFromTheStatistics) {
  TStats stats;
  stats.storeMin = 3;
  stats.storeMax = 9;
  stats.sizeMin = 1500;
  stats.sizeMax = 5000;
  stats.maxVersions = 4;
  TNumberRange range;
  ASSERT_TRUE(FNumberRange(kFieldStoreNo, &stats, range));
  EXPECT_EQ(3, range.low);
  EXPECT_EQ(9, range.high);
  EXPECT_STREQ("", range.unit);
  ASSERT_TRUE(FNumberRange(kFieldVer, &stats, range));
  EXPECT_EQ(1, range.low);
  EXPECT_EQ(4, range.high);
  // Sizes in KB, so that the range still holds the largest file.
  ASSERT_TRUE(FNumberRange(kFieldSize, &stats, range));
  EXPECT_EQ(1, range.low);
  EXPECT_EQ(5, range.high);
  EXPECT_STREQ("K", range.unit);
}

TEST(NumberPick, SizeWithoutStatisticsAndEmptyArchives) {
  TNumberRange range;
  ASSERT_TRUE(FNumberRange(kFieldSize, nullptr, range));
  EXPECT_EQ(0, range.low);
  EXPECT_EQ(102400, range.high);
  // An archive without versions: its ranges are still at their start.
  TStats empty;
  EXPECT_FALSE(FNumberRange(kFieldSize, &empty, range));
  EXPECT_FALSE(FNumberRange(kFieldStoreNo, &empty, range));
  EXPECT_FALSE(FNumberRange(kFieldVer, &empty, range));
  EXPECT_FALSE(FNumberRange(kFieldStoreNo, nullptr, range));
  EXPECT_FALSE(FNumberRange(kFieldName, nullptr, range));
}

class ValuePickTest : public testing::Test {
 protected:
  void add(LHash& set, const char* text) {
    set.addInt(static_cast<intptr_t>(strings.intern(text)));
  }
  TStringTable strings;
};

TEST_F(ValuePickTest, TextsComeSortedAndOnce) {
  LHash ids(LHash::kInts);
  add(ids, "b.txt");
  add(ids, "a.txt");
  add(ids, "b.txt");  // the same text under a second index
  ids.addInt(0);      // the empty text is no choice
  LStrs out;
  ASSERT_TRUE(FValueCandidates(ids, strings, out));
  ASSERT_EQ(2, out.count);
  EXPECT_STREQ("a.txt", out[0]->ptr);
  EXPECT_STREQ("b.txt", out[1]->ptr);
}

TEST_F(ValuePickTest, NoIdsNoCandidates) {
  LHash ids(LHash::kInts);
  LStrs out;
  EXPECT_FALSE(FValueCandidates(ids, strings, out));
  EXPECT_EQ(0, out.count);
  EXPECT_STREQ("有効な候補がありません", kNoCandidates);
}

TEST_F(ValuePickTest, TheListIsCutAtAThousandWithALastEllipsis) {
  LHash ids(LHash::kInts);
  for (int i = 0; i < 1000; i++) add(ids, LStr().format("n%04d", i).ptr);
  LStrs out;
  ASSERT_TRUE(FValueCandidates(ids, strings, out));
  EXPECT_EQ(1000, out.count);  // exactly the limit: nothing is cut
  EXPECT_STREQ("n0999", out[999]->ptr);
  add(ids, "n1000");
  add(ids, "n1001");
  ASSERT_TRUE(FValueCandidates(ids, strings, out));
  ASSERT_EQ(1001, out.count);
  EXPECT_STREQ("n0999", out[999]->ptr);
  EXPECT_STREQ("...", out[1000]->ptr);
}

TEST_F(ValuePickTest, TheEllipsisOfACutListIsNoValueButAStoredOneIs) {
  LHash ids(LHash::kInts);
  add(ids, "...");  // a comment that is three dots
  LStrs out;
  ASSERT_TRUE(FValueCandidates(ids, strings, out));
  EXPECT_FALSE(FIsRestEntry(out, "..."));
  for (int i = 0; i < 1000; i++) add(ids, LStr().format("n%04d", i).ptr);
  ASSERT_TRUE(FValueCandidates(ids, strings, out));
  ASSERT_EQ(1001, out.count);
  EXPECT_TRUE(FIsRestEntry(out, "..."));
  EXPECT_FALSE(FIsRestEntry(out, "n0999"));
  EXPECT_FALSE(FIsRestEntry(out, ""));
}

TEST_F(ValuePickTest, EachValuesFieldHasItsSet) {
  TStats stats;
  EXPECT_EQ(&stats.names, FCandidateIds(stats, kFieldName));
  EXPECT_EQ(&stats.comments, FCandidateIds(stats, kFieldComment));
  EXPECT_EQ(&stats.users, FCandidateIds(stats, kFieldUser));
  EXPECT_EQ(&stats.checkouts, FCandidateIds(stats, kFieldCheckout));
  EXPECT_EQ(nullptr, FCandidateIds(stats, kFieldSize));
}

TDateSide side(int year, int month, int day, int hour, int minute, int second, bool withTime) {
  TDateSide out;
  out.at.year = year;
  out.at.month = month;
  out.at.day = day;
  out.at.hour = hour;
  out.at.minute = minute;
  out.at.second = second;
  out.withTime = withTime ? 1 : 0;
  return out;
}

TEST(DatePick, SidesWithAndWithoutTheirTimes) {
  EXPECT_STREQ("26/11/03", FDateSideText(side(2026, 11, 3, 4, 5, 6, false)).ptr);
  EXPECT_STREQ("26/11/03.04:05:06", FDateSideText(side(2026, 11, 3, 4, 5, 6, true)).ptr);
  EXPECT_STREQ(
      "05/01/09-26/12/31.23:59:00",
      FDateRangeText(side(2005, 1, 9, 12, 0, 0, false), side(2026, 12, 31, 23, 59, 0, true)).ptr);
  EXPECT_STREQ(
      "00/02/29.00:00:00-99/12/31",
      FDateRangeText(side(2000, 2, 29, 0, 0, 0, true), side(1999, 12, 31, 0, 0, 0, false)).ptr);
}

TEST(DatePick, WithoutVersionsTheRangeIsTheWholeOfToday) {
  LDateTime noon = {2026, 11, 23, 12, 30, 0, 0, 0};
  int64_t now = FLocalToTime(noon);
  TDateSide low, high;
  TStats empty;
  const TStats* cases[] = {nullptr, &empty};
  for (const TStats* stats : cases) {
    ASSERT_TRUE(FDateRangeStart(stats, now, low, high));
    EXPECT_EQ(0, low.withTime);
    EXPECT_EQ(0, high.withTime);
    low.withTime = high.withTime = 1;
    EXPECT_STREQ("26/11/23.00:00:00-26/11/23.23:59:59", FDateRangeText(low, high).ptr);
  }
}

TEST(DatePick, TheStatisticsGiveTheOldestAndNewestTimes) {
  LDateTime first = {2024, 2, 29, 8, 0, 1, 0, 0};
  LDateTime last = {2026, 1, 2, 21, 10, 0, 0, 0};
  TStats stats;
  stats.versions = 2;
  stats.timeMin = static_cast<int32_t>(FLocalToTime(first));
  stats.timeMax = static_cast<int32_t>(FLocalToTime(last));
  TDateSide low, high;
  ASSERT_TRUE(FDateRangeStart(&stats, 0, low, high));
  low.withTime = high.withTime = 1;
  EXPECT_STREQ("24/02/29.08:00:01-26/01/02.21:10:00", FDateRangeText(low, high).ptr);
  // A range that runs backwards offers nothing.
  std::swap(stats.timeMin, stats.timeMax);
  EXPECT_FALSE(FDateRangeStart(&stats, 0, low, high));
}

}  // namespace
