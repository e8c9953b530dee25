// Calendar arithmetic on the proleptic Gregorian calendar, and the local
// time of the zone the platform reports. Calendar times are 64-bit seconds
// since 1970-01-01 00:00:00 UTC; file times (SysTime) are 100-nanosecond
// ticks since 1601-01-01 UTC.
#pragma once

#include <cstdint>

#include "lib/sys.h"

// The file time of 1970-01-01 00:00:00 UTC.
const int64_t kUnixEpochTicks = 116444736000000000LL;
const int64_t kTicksPerSecond = 10000000;
const int64_t kTicksPerMillisecond = 10000;
// The largest file time the platform turns into calendar fields (the
// system-time form); beyond it, conversions fail.
const SysTime kLastFileTime = 0x7FFFFFFFFFFFFFFFULL;
// The calendar times that have a file time: 1601-01-01 to the last one.
const int64_t kFirstCalendarTime = -kUnixEpochTicks / kTicksPerSecond;
const int64_t kLastCalendarTime =
    (static_cast<int64_t>(kLastFileTime) - kUnixEpochTicks) / kTicksPerSecond;

struct LDateTime {
  int32_t year;
  int32_t month;  // 1 to 12
  int32_t day;    // 1 to 31
  int32_t hour;
  int32_t minute;
  int32_t second;
  int32_t millisecond;
  int32_t weekday;  // 0 for Sunday; filled by the splitting calls only
};

bool FIsLeapYear(int32_t year);
int32_t FDaysInMonth(int32_t year, int32_t month);
// True when month, day, hour, minute and second lie in their ranges.
bool FIsValidDateTime(const LDateTime& fields);

// Days since 1970-01-01 of a valid date.
int64_t FDaysFromDate(int32_t year, int32_t month, int32_t day);
// 0 for Sunday.
int32_t FWeekdayOfDays(int64_t days);

// Calendar time and fields, both in the same zone (no offset is applied).
void FSplitSeconds(int64_t seconds, LDateTime& out);
int64_t FJoinSeconds(const LDateTime& fields);
// A file time and its fields with milliseconds; the ticks below a
// millisecond are dropped. False beyond kLastFileTime.
bool FSplitFileTime(SysTime ticks, LDateTime& out);

// The local zone's offset east of UTC at a calendar time, in seconds.
int32_t FLocalOffset(int64_t time);
// The local fields of a calendar time; false when the time or its local
// form lies outside the calendar times that have a file time.
bool FLocalFields(int64_t time, LDateTime& out);
// The calendar time of local fields (normalised as they stand: a day 32 is
// the first of the next month). A local time that a change of the clock
// skips or repeats resolves to one of its neighbours.
int64_t FLocalToTime(const LDateTime& local);
