#include "lib/calendar.h"

namespace {
const int64_t kSecondsPerDay = 86400;

// Division rounding towards minus infinity.
int64_t floorDiv(int64_t a, int64_t b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

// The era arithmetic counts years from March, so that the leap day is the
// last day of its year and every month but February has a fixed place.
void dateFromDays(int64_t days, LDateTime& out) {
  int64_t z = days + 719468;  // days from 0000-03-01
  int64_t era = floorDiv(z, 146097);
  int64_t dayOfEra = z - era * 146097;
  int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  out.day = static_cast<int32_t>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
  out.month = static_cast<int32_t>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
  out.year = static_cast<int32_t>(yearOfEra + era * 400 + (out.month <= 2 ? 1 : 0));
}
}  // namespace

bool FIsLeapYear(int32_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int32_t FDaysInMonth(int32_t year, int32_t month) {
  static const int32_t kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month == 2 && FIsLeapYear(year)) return 29;
  return kDays[month - 1];
}

bool FIsValidDateTime(const LDateTime& f) {
  return f.month >= 1 && f.month <= 12 && f.day >= 1 && f.day <= FDaysInMonth(f.year, f.month) &&
         f.hour >= 0 && f.hour <= 23 && f.minute >= 0 && f.minute <= 59 && f.second >= 0 &&
         f.second <= 59;
}

int64_t FDaysFromDate(int32_t year, int32_t month, int32_t day) {
  int64_t y = static_cast<int64_t>(year) - (month <= 2 ? 1 : 0);
  int64_t era = floorDiv(y, 400);
  int64_t yearOfEra = y - era * 400;
  int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

int32_t FWeekdayOfDays(int64_t days) {
  // 1970-01-01 was a Thursday.
  int64_t weekday = (days + 4) % 7;
  return static_cast<int32_t>(weekday < 0 ? weekday + 7 : weekday);
}

void FSplitSeconds(int64_t seconds, LDateTime& out) {
  int64_t days = floorDiv(seconds, kSecondsPerDay);
  int64_t rest = seconds - days * kSecondsPerDay;
  dateFromDays(days, out);
  out.hour = static_cast<int32_t>(rest / 3600);
  out.minute = static_cast<int32_t>(rest / 60 % 60);
  out.second = static_cast<int32_t>(rest % 60);
  out.millisecond = 0;
  out.weekday = FWeekdayOfDays(days);
}

int64_t FJoinSeconds(const LDateTime& f) {
  int64_t months = static_cast<int64_t>(f.month) - 1;
  int64_t year = f.year + floorDiv(months, 12);
  int32_t month = static_cast<int32_t>(months - floorDiv(months, 12) * 12 + 1);
  int64_t days = FDaysFromDate(static_cast<int32_t>(year), month, 1) + f.day - 1;
  return days * kSecondsPerDay + static_cast<int64_t>(f.hour) * 3600 +
         static_cast<int64_t>(f.minute) * 60 + f.second;
}

bool FSplitFileTime(SysTime ticks, LDateTime& out) {
  if (ticks > kLastFileTime) return false;
  int64_t signedTicks = static_cast<int64_t>(ticks);
  FSplitSeconds(floorDiv(signedTicks - kUnixEpochTicks, kTicksPerSecond), out);
  out.millisecond = static_cast<int32_t>(signedTicks / kTicksPerMillisecond % 1000);
  return true;
}

int32_t FLocalOffset(int64_t time) {
  if (time < kFirstCalendarTime) time = kFirstCalendarTime;
  if (time > kLastCalendarTime) time = kLastCalendarTime;
  return SysLocalOffset(static_cast<SysTime>(time * kTicksPerSecond + kUnixEpochTicks));
}

bool FLocalFields(int64_t time, LDateTime& out) {
  if (time < kFirstCalendarTime || time > kLastCalendarTime) return false;
  int64_t local = time + FLocalOffset(time);
  if (local < kFirstCalendarTime || local > kLastCalendarTime) return false;
  FSplitSeconds(local, out);
  return true;
}

int64_t FLocalToTime(const LDateTime& local) {
  int64_t seconds = FJoinSeconds(local);
  // The offset belongs to the UTC time being sought: guess with the offset
  // at the local reading, then correct once with the offset at the guess.
  int64_t guess = seconds - FLocalOffset(seconds);
  return seconds - FLocalOffset(guess);
}
