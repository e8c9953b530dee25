#include "lib/file_time.h"

#include "lib/calendar.h"
#include "lib/msg.h"

namespace {
const char* const kTimeError = "(time-error)";
// The years a DOS date can hold: seven bits counted from 1980.
const int32_t kFirstDosYear = 1980;
const int32_t kLastDosYear = 1980 + 127;
}  // namespace

SysTime FCleanTime(SysTime fileTime) {
  if (fileTime > kLastFileTime) {
    FMsg(kMsgSystem, "FileTimeToSystemTime() failed");
    return fileTime;
  }
  return fileTime - fileTime % kTicksPerSecond;
}

int64_t FToUnixTime(SysTime fileTime) {
  return (static_cast<int64_t>(fileTime) - kUnixEpochTicks) / kTicksPerSecond;
}

SysTime FUnixToFileTime(int64_t time) {
  int64_t ticks = time * kTicksPerSecond + kUnixEpochTicks;
  return ticks > 0 ? static_cast<SysTime>(ticks) : 0;
}

bool FFromUnixTime(int64_t time, SysTime& fileTime) {
  LDateTime local;
  if (!FLocalFields(time, local)) return false;
  fileTime = static_cast<SysTime>(FJoinSeconds(local) * kTicksPerSecond + kUnixEpochTicks);
  return true;
}

LStr FFormatTime(int64_t time) {
  LDateTime t;
  if (!FLocalFields(time, t)) return LStr(kTimeError);
  LStr text;
  text.format("%04d/%02d/%02d %02d:%02d:%02d", t.year, t.month, t.day, t.hour, t.minute, t.second);
  return text;
}

LStr FFormatClock(int64_t time) {
  LDateTime t;
  if (!FLocalFields(time, t)) return LStr(kTimeError);
  LStr text;
  text.format("%02d:%02d:%02d", t.hour, t.minute, t.second);
  return text;
}

LStr FFormatFileTime(SysTime fileTime) {
  if (fileTime > kLastFileTime) {
    FMsg(kMsgSystem, "FileTimeToSystemTime() failed");
    return LStr(kTimeError);
  }
  int64_t ticks = static_cast<int64_t>(fileTime);
  int64_t offset = static_cast<int64_t>(FLocalOffset(FToUnixTime(fileTime))) * kTicksPerSecond;
  bool fits = offset < 0 ? ticks >= -offset : ticks <= static_cast<int64_t>(kLastFileTime) - offset;
  LDateTime t;
  if (!fits || !FSplitFileTime(static_cast<SysTime>(ticks + offset), t)) {
    FMsg(kMsgSystem, "FileTimeToLocalFileTime() failed");
    return LStr(kTimeError);
  }
  LStr text;
  text.format("%04d/%02d/%02d %02d:%02d:%02d %03d", t.year, t.month, t.day, t.hour, t.minute,
              t.second, t.millisecond);
  return text;
}

int32_t FDateToDay(int32_t date) {
  int32_t year = date / 10000;
  int32_t month = date / 100 % 100;
  int32_t day = date % 100;
  if (year < kFirstDosYear) {
    FMsg(kMsgGeneral, "too small year in FDateToDay(): %d", year);
    return -1;
  }
  if (year > kLastDosYear || month < 1 || month > 12 || day < 1 ||
      day > FDaysInMonth(year, month)) {
    FMsg(kMsgGeneral, "DosDateTimeToFileTime() failed");
    return -1;
  }
  return FWeekdayOfDays(FDaysFromDate(year, month, day));
}
