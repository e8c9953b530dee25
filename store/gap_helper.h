// TGapHelper: parses the second half of a long gap on the encoder's side
// thread while the encoder's thread parses the first. It records its copies
// instead of writing tokens and publishes them as it goes; the encoder, once
// its own parse has passed the half, goes on until the two parses meet at a
// position and then writes the helper's copies from there while the helper
// is still making them.
#pragma once

#include <atomic>
#include <cstdint>

#include "lib/large_block.h"
#include "lib/larr.h"
#include "lib/task_pool.h"
#include "lib/thread.h"
#include "store/side_thread.h"

class TGapHelper : public LTask {
 public:
  // Parses target[start, to) of a table that, before `start`, was given
  // every position from `seedFrom` on, as the encoder's table is. The
  // target must outlive the helper. It starts at once, on the calling
  // thread's side thread.
  TGapHelper(const uint8_t* target, int32_t seedFrom, int32_t start, int32_t to);
  TGapHelper(const TGapHelper&) = delete;
  TGapHelper& operator=(const TGapHelper&) = delete;

  void run() override;

  // Bytes parsed past the start, for the progress of the whole gap.
  int32_t parsed() const { return reached_.load(std::memory_order_relaxed) - start_; }

  // Whether visits(p) can be answered yet: the helper's parse has gone as
  // far as p, or the helper has ended.
  bool knows(int32_t p) const {
    return ended_.load(std::memory_order_acquire) || reached_.load(std::memory_order_acquire) >= p;
  }
  // Whether the helper's parse stepped to position p (not inside a copy);
  // true as well when the helper failed before it got there. Asked for
  // increasing positions from the start on, once knows(p).
  bool visits(int32_t p);
  // Waits a while for the helper to publish more or to end, then looks at
  // the stop state.
  void waitForMore();

  // Sends the helper's copies from the position of the last visits(), which
  // returned true, on, in order, to sink.copy(pos, len, distance), as the
  // helper makes them, calling sink.report() while it waits for more. A
  // helper that failed fails the encoding with it, as a failure of one
  // thread would.
  template <class Sink>
  void sendCopies(Sink& sink) {
    for (;;) {
      // Read before the count, so that an ended helper's count is its last.
      const bool ended = ended_.load(std::memory_order_acquire);
      const int32_t published = published_.load(std::memory_order_acquire);
      for (; next_ < published; next_++) {
        const int32_t* copy = copyAt(next_);
        sink.copy(copy[0], copy[1], copy[2]);
      }
      if (ended) return takeEnd();
      sink.report();
      waitForMore();
    }
  }

 private:
  class Recorder;
  // Copies per block of the record: blocks never move once written, so the
  // encoder reads them while the helper adds more. A block of 3 MB is taken
  // in large pages; one for every copy the gap could hold would be too much
  // room to ask of a 32-bit system for a long file.
  static const int32_t kBlockCopies = 1 << 18;

  int32_t* copyAt(int32_t i) const {
    return static_cast<int32_t*>(blocks_[i / kBlockCopies]->data()) + (i % kBlockCopies) * 3;
  }
  void record(int32_t pos, int32_t len, int32_t distance);
  // Waits for the end of the helper's thread; throws what the helper threw.
  void takeEnd();
  // Makes the copies recorded so far, and every position before p, known
  // to the encoder.
  void publish(int32_t p);

  const uint8_t* const target_;
  const int32_t seedFrom_;
  const int32_t start_;
  const int32_t to_;
  // pos, len, distance of each copy, in order; the block list is reserved
  // whole at the start, so that adding a block never moves it.
  LArrOf<LLargeBlock*, LDelete<LLargeBlock*>> blocks_;
  // The helper writes its count at every copy, and the encoder reads where
  // the helper stands at every probe of its own parse: on one cache line the
  // two threads took the line from each other at each copy, which made the
  // encoding of a 12 MB text 4% slower. Each has a line of its own.
  alignas(64) int32_t recorded_ = 0;
  alignas(64) std::atomic<int32_t> published_{0};
  std::atomic<int32_t> reached_;
  std::atomic<bool> ended_{false};
  LEvent progressed_;
  int32_t next_ = 0;  // the first copy that does not end before the last visits()
  TSideThread thread_;
};
