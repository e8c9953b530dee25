// The date range picker: the range that it starts with, and the condition
// text of the two sides that the user set.
#pragma once

#include <cstdint>

#include "lib/calendar.h"
#include "lib/lstr.h"

struct TStats;

// One side: a local date, and a time of day that counts only when checked.
struct TDateSide {
  LDateTime at = {};
  int32_t withTime = 0;
};

// From the oldest to the newest version time of the statistics, or today
// when there are none (stats null or without versions); the times start
// unchecked. False when the low side lies after the high one.
bool FDateRangeStart(const TStats* stats, int64_t now, TDateSide& low, TDateSide& high);
// "yy/mm/dd", and ".hh:mm:ss" behind it when the time is checked.
LStr FDateSideText(const TDateSide& side);
// "low-high".
LStr FDateRangeText(const TDateSide& low, const TDateSide& high);
