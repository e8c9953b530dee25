// File times and calendar times: trimming, converting and showing them.
// File times (SysTime) are 100-nanosecond ticks since 1601-01-01 UTC, as the
// platform gives them; calendar times are 64-bit seconds since 1970-01-01
// UTC. Times are shown in the local zone.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/sys.h"

// The file time with everything below the second dropped, so that two times
// compare equal at the second. A time beyond the calendar reports 17000 and
// comes back unchanged.
SysTime FCleanTime(SysTime fileTime);
// The calendar time of a file time (whole seconds, truncated towards 1970).
int64_t FToUnixTime(SysTime fileTime);
// The file time of a calendar time: the exact inverse of FToUnixTime, for
// giving files back the times they had. Times before 1601 give 0.
SysTime FUnixToFileTime(int64_t time);
// The file time that holds the local clock reading of a calendar time (the
// zone's offset added), as a file time of local fields. False, with
// fileTime unchanged, when the time has no local form.
bool FFromUnixTime(int64_t time, SysTime& fileTime);

// "yyyy/mm/dd hh:mm:ss" in local time, or "(time-error)" when the time has
// no local form.
LStr FFormatTime(int64_t time);
// "hh:mm:ss" in local time, with the same fallback.
LStr FFormatClock(int64_t time);
// "yyyy/mm/dd hh:mm:ss mmm" of a file time in local time, with milliseconds.
// A time beyond the calendar reports 17000 and gives "(time-error)".
LStr FFormatFileTime(SysTime fileTime);

// The day of the week (0 for Sunday) of a date written yyyymmdd, within the
// range of the platform's DOS dates (1980 to 2107). Outside it, or for a
// date that does not exist, reports 15000 and gives -1.
int32_t FDateToDay(int32_t date);
