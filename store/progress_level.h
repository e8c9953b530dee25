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

// One bar for a whole command that works through many files: it counts the
// bytes done of all the bytes, so that it never starts again per file.
class TByteProgress {
 public:
  explicit TByteProgress(int64_t totalBytes)
      : level_(/*high=*/100, /*total=*/kSteps), total_(totalBytes > 0 ? totalBytes : 1) {}
  void advance(int64_t bytes) {
    done_ += bytes;
    FSetProgress(static_cast<int32_t>(done_ * kSteps / total_));
  }

 private:
  static const int32_t kSteps = 10000;
  TProgressLevel level_;
  const int64_t total_;
  int64_t done_ = 0;
};
