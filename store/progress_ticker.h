// Passes the position of a long byte loop to the progress stack, but only
// each time it has moved on by 64 KiB: a report per position would cost more
// than the work it measures, and the bar moves by whole percents anyway.
// There too a stop asked for is taken, so that one large file does not keep
// the user waiting: the matchers pass 64 KiB in well under a second.
#pragma once

#include <cstdint>

#include "store/progress.h"
#include "store/work_set.h"

class TProgressTicker {
 public:
  // Bytes between two progress points, for the loops that keep their own.
  static const int32_t kStride = 65536;

  void reach(int32_t pos) {
    if (pos < next_) return;
    FPollStop();
    FSetProgress(pos);
    next_ = pos + kStride;
  }

 private:
  int32_t next_ = 0;
};
