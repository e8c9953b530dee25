// The tuning of the version codec. The application object holds one of these,
// set to the defaults below when it is constructed; nothing else writes it and
// it is not saved with the settings.
#pragma once

#include <cstdint>

struct TCodecSettings {
  // The coarse sampling step is a range's length over twice this value, so
  // about this many samples fall in one range.
  int32_t coarseDiv = 20;
  // Bytes before a gap whose positions are hashed before the gap is encoded.
  int32_t gapWindow = 2000;
  // Coarse passes stop once the number of matches grows by no more than about
  // this percentage.
  int32_t stopPercent = 5;
  // Non-zero makes the self compression emit its whole input as one literal.
  int32_t noPack = 0;
  // Gaps at least this long are parsed, and inputs at least this long are
  // self compressed, on two threads when one is idle (0: never). A helper
  // costs a thread, and for a gap its own table of rings, which shorter
  // work does not repay.
  int32_t splitLength = 2 << 20;
};
