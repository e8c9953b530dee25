#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "lib/calendar.h"
#include "lib/chartype.h"
#include "lib/file_time.h"
#include "support/recorder.h"

namespace {
// 2024-01-05 11:10:45 UTC, a Friday far from any change of the clock.
const int64_t kFriday = 1704453045;

// The calendar time whose local clock reads what the UTC clock reads at
// kFriday, whatever the zone of the machine.
int64_t localFriday() {
  return kFriday -
         SysLocalOffset(static_cast<SysTime>(kFriday * kTicksPerSecond + kUnixEpochTicks));
}

SysTime ticksOf(int64_t seconds) {
  return static_cast<SysTime>(seconds * kTicksPerSecond + kUnixEpochTicks);
}
}  // namespace

TEST(Calendar, KnownDays) {
  EXPECT_EQ(FDaysFromDate(1970, 1, 1), 0);
  EXPECT_EQ(FDaysFromDate(2000, 3, 1), 11017);
  EXPECT_EQ(FDaysFromDate(1601, 1, 1), -134774);
  EXPECT_EQ(FDaysFromDate(1969, 12, 31), -1);
  EXPECT_EQ(FWeekdayOfDays(0), 4);                            // Thursday
  EXPECT_EQ(FWeekdayOfDays(FDaysFromDate(2000, 1, 1)), 6);    // Saturday
  EXPECT_EQ(FWeekdayOfDays(FDaysFromDate(1601, 1, 1)), 1);    // Monday
  EXPECT_EQ(FWeekdayOfDays(FDaysFromDate(1969, 12, 28)), 0);  // Sunday
  EXPECT_EQ(FDaysInMonth(1900, 2), 28);
  EXPECT_EQ(FDaysInMonth(2000, 2), 29);
}

TEST(Calendar, DaysAgreeWithCountingDayByDay) {
  // Walk the calendar one day at a time from 1601 to 2400 and compare.
  int64_t days = FDaysFromDate(1601, 1, 1);
  for (int32_t year = 1601; year < 2400; year++) {
    for (int32_t month = 1; month <= 12; month++) {
      for (int32_t day = 1; day <= FDaysInMonth(year, month); day++, days++) {
        ASSERT_EQ(FDaysFromDate(year, month, day), days) << year << "-" << month << "-" << day;
        LDateTime t;
        FSplitSeconds(days * 86400 + 3723, t);
        ASSERT_TRUE(t.year == year && t.month == month && t.day == day) << days;
        ASSERT_TRUE(t.hour == 1 && t.minute == 2 && t.second == 3);
      }
    }
  }
}

TEST(Calendar, SecondsRoundTripAndJoiningNormalises) {
  std::mt19937_64 random(20240105);
  std::uniform_int_distribution<int64_t> range(kFirstCalendarTime, kLastCalendarTime);
  for (int i = 0; i < 10000; i++) {
    int64_t seconds = range(random);
    LDateTime t;
    FSplitSeconds(seconds, t);
    ASSERT_TRUE(FIsValidDateTime(t)) << seconds;
    ASSERT_EQ(FJoinSeconds(t), seconds);
  }
  LDateTime overflow = {2023, 14, 32, 25, 0, 0, 0, 0};
  LDateTime expected = {2024, 3, 4, 1, 0, 0, 0, 0};
  EXPECT_EQ(FJoinSeconds(overflow), FJoinSeconds(expected));
  LDateTime before = {2024, 0, 1, 0, 0, 0, 0, 0};
  LDateTime december = {2023, 12, 1, 0, 0, 0, 0, 0};
  EXPECT_EQ(FJoinSeconds(before), FJoinSeconds(december));
}

TEST(Calendar, LocalTimeRoundTrips) {
  std::mt19937_64 random(7);
  std::uniform_int_distribution<int64_t> range(0, 4102444800);  // 1970 to 2100
  for (int i = 0; i < 2000; i++) {
    int64_t time = range(random);
    LDateTime local;
    ASSERT_TRUE(FLocalFields(time, local));
    int64_t offset = SysLocalOffset(ticksOf(time));
    EXPECT_EQ(FJoinSeconds(local) - time, offset);
    // Away from a change of the clock the way back is exact.
    if (SysLocalOffset(ticksOf(time - 86400)) == offset &&
        SysLocalOffset(ticksOf(time + 86400)) == offset) {
      EXPECT_EQ(FLocalToTime(local), time);
    }
  }
  LDateTime t;
  EXPECT_FALSE(FLocalFields(kLastCalendarTime + 1, t));
  EXPECT_FALSE(FLocalFields(kFirstCalendarTime - 1, t));
}

TEST(FileTime, CleanTimeDropsWhatIsBelowTheSecond) {
  SysTime time = 133000000001234567ULL;
  SysTime clean = FCleanTime(time);
  EXPECT_EQ(clean, 133000000000000000ULL);
  EXPECT_EQ(FCleanTime(clean), clean);
  EXPECT_EQ(FCleanTime(0), 0u);

  RecorderScope rec;
  EXPECT_EQ(FCleanTime(kLastFileTime + 1), kLastFileTime + 1);
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 17000);
  EXPECT_EQ(std::strncmp(rec->entries[0]->text.ptr, "FileTimeToSystemTime() failed", 29), 0);
}

TEST(FileTime, UnixTimeConversions) {
  EXPECT_EQ(FToUnixTime(kUnixEpochTicks), 0);
  EXPECT_EQ(FToUnixTime(kUnixEpochTicks + 15 * kTicksPerSecond + 9999999), 15);
  EXPECT_EQ(FToUnixTime(ticksOf(kFriday)), kFriday);

  // The file time holds the local clock reading.
  for (int64_t time : {int64_t{0}, kFriday, int64_t{4102444799}}) {
    SysTime fileTime = 0;
    ASSERT_TRUE(FFromUnixTime(time, fileTime));
    EXPECT_EQ(FToUnixTime(fileTime) - time, SysLocalOffset(ticksOf(time))) << time;
  }
  SysTime untouched = 42;
  EXPECT_FALSE(FFromUnixTime(kLastCalendarTime + 1, untouched));
  EXPECT_EQ(untouched, 42u);
}

TEST(FileTime, FormattingInLocalTime) {
  int64_t friday = localFriday();
  EXPECT_STREQ(FFormatTime(friday).ptr, "2024/01/05 11:10:45");
  EXPECT_STREQ(FFormatClock(friday).ptr, "11:10:45");
  SysTime fileTime = ticksOf(friday) + 1234567;
  EXPECT_STREQ(FFormatFileTime(fileTime).ptr, "2024/01/05 11:10:45 123");

  EXPECT_STREQ(FFormatTime(kLastCalendarTime + 1).ptr, "(time-error)");
  EXPECT_STREQ(FFormatClock(INT64_MIN).ptr, "(time-error)");

  RecorderScope rec;
  EXPECT_STREQ(FFormatFileTime(kLastFileTime + 1).ptr, "(time-error)");
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 17000);
}

TEST(FileTime, DateToDayWithinTheDosDates) {
  RecorderScope rec;
  EXPECT_EQ(FDateToDay(20240105), 5);  // Friday
  EXPECT_EQ(FDateToDay(19800101), 2);  // Tuesday
  EXPECT_EQ(FDateToDay(21071231), 6);  // Saturday
  EXPECT_EQ(FDateToDay(20240229), 4);  // Thursday
  EXPECT_EQ(rec->entries.count, 0);

  EXPECT_EQ(FDateToDay(19791231), -1);
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 15000);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "too small year in FDateToDay(): 1979");

  for (int32_t bad : {21080101, 20230229, 20241301, 20240100}) {
    EXPECT_EQ(FDateToDay(bad), -1) << bad;
    EXPECT_STREQ(rec->entries.last()->text.ptr, "DosDateTimeToFileTime() failed");
  }
}
