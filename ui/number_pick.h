// The number range picker: the range that it starts with, and the condition
// text that its two boxes give.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

struct TStats;

struct TNumberRange {
  int32_t low = 0;
  int32_t high = 0;
  const char* unit = "";  // "K" for sizes, which the picker counts in KB
};

// The range of a number field (store number, size, version) from the
// statistics, which may be null; false when its high end is below the low
// one, that is when there is nothing to choose.
bool FNumberRange(int32_t field, const TStats* stats, TNumberRange& out);

enum TPickResult : int32_t {
  kPickTaken,      // text holds the new condition
  kPickUntouched,  // both boxes empty: the field keeps its text
  kPickRefused,    // a box holds no number: error says which
};
// "low-high" with the unit behind each number; an empty box leaves its side
// out, and the "-" stays.
TPickResult FNumberRangeText(const char* lowText, const char* highText, const char* unit,
                             LStr& text, LStr& error);
