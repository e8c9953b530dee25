// TGapHelper: parses the second half of a long gap on a thread of its own
// while the encoder's thread parses the first. It records its copies
// instead of writing tokens; the encoder, once its own parse has passed the
// half, goes on until the two parses meet at a position and then writes
// the helper's copies from there.
#pragma once

#include <atomic>
#include <cstdint>

#include "lib/larr.h"
#include "lib/task_pool.h"
#include "store/side_thread.h"

class TGapHelper : public LTask {
 public:
  // Parses target[start, to) of a table that, before `start`, was given
  // every position from `seedFrom` on, as the encoder's table is. The
  // target must outlive the helper. The thread starts at once.
  TGapHelper(const uint8_t* target, int32_t seedFrom, int32_t start, int32_t to);
  TGapHelper(const TGapHelper&) = delete;
  TGapHelper& operator=(const TGapHelper&) = delete;

  void run() override;

  // Bytes parsed past the start, for the progress of the whole gap.
  int32_t parsed() const { return parsed_.load(std::memory_order_relaxed); }
  // Waits for the end of the parse, looking at the stop state meanwhile;
  // true when the parse went to the end. A helper that ends before stops
  // its parse at the next progress point and waits for it.
  bool finish() { return thread_.finish(); }
  // Whether the helper's parse stepped to position p (not inside a copy).
  // Asked for increasing positions from the start on, after finish().
  bool visits(int32_t p);
  // Sends the helper's copies from the position of the last visits(), which
  // returned true, on, in order, to sink.copy(pos, len, distance).
  template <class Sink>
  void sendRemainingCopies(Sink& sink) const {
    for (int32_t i = next_; i < copies_.count; i += 3)
      sink.copy(copies_[i], copies_[i + 1], copies_[i + 2]);
  }

 private:
  class Recorder;

  const uint8_t* const target_;
  const int32_t seedFrom_;
  const int32_t start_;
  const int32_t to_;
  std::atomic<int32_t> parsed_{0};
  // pos, len, distance of each copy, in order.
  LArrOf<int32_t> copies_;
  int32_t next_ = 0;  // the first copy that does not end before the last visits()
  TSideThread thread_;
};
