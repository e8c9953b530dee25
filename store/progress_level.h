// Opens a level of the progress stack for one scope, and closes it however
// the scope is left.
#pragma once

#include <cstdint>

#include "store/progress.h"

class TProgressLevel {
 public:
  // A high of -1 takes the whole range of the level below.
  TProgressLevel(int32_t high, int32_t total) {
    FPushProgress();
    FSetProgressRange(high, total);
  }
  TProgressLevel() { FPushProgress(); }
  ~TProgressLevel() { FPopProgress(); }
  TProgressLevel(const TProgressLevel&) = delete;
  TProgressLevel& operator=(const TProgressLevel&) = delete;
};
