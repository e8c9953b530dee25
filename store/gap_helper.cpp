#include "store/gap_helper.h"

#include "store/codec_scratch.h"
#include "store/gap_parse.h"
#include "store/progress.h"
#include "store/progress_ticker.h"
#include "store/work_set.h"

namespace {
// Positions between two publications of the helper's copies, which are
// also its looks at the stop state and at the encoder's wish to be done
// with it.
const int32_t kStride = TProgressTicker::kStride;
// How long the encoder waits for the helper between two looks at the stop
// state.
const int32_t kWaitMs = 100;
}  // namespace

class TGapHelper::Recorder {
 public:
  explicit Recorder(TGapHelper& helper) : helper_(helper), next_(helper.start_) {}
  bool at(int32_t p) {
    if (p >= next_) {
      helper_.publish(p);
      helper_.thread_.poll();
      next_ = p + kStride;
    }
    return true;
  }
  void copy(int32_t pos, int32_t len, int32_t distance) { helper_.record(pos, len, distance); }

 private:
  TGapHelper& helper_;
  int32_t next_;
};

TGapHelper::TGapHelper(const uint8_t* target, int32_t seedFrom, int32_t start, int32_t to)
    : target_(target),
      seedFrom_(seedFrom),
      start_(start),
      to_(to),
      reached_(start),
      thread_(this) {}

void TGapHelper::run() {
  // However the parse ends, the encoder waiting for it must learn that it
  // did.
  struct EndNotice {
    TGapHelper& helper;
    ~EndNotice() {
      helper.ended_.store(true, std::memory_order_release);
      helper.progressed_.set();
    }
  } notice{*this};
  TQuietProgress quiet;
  blocks_.reserve((to_ - start_) / kGapHashed / kBlockCopies + 1);
  // The side thread's own table, kept from one helper to the next.
  TGapChains& table = FCodecScratch().gapChains(target_);
  table.fillEmpty(seedFrom_, start_, [this] { thread_.poll(); });
  Recorder recorder(*this);
  FParseGap(target_, start_, to_, table, recorder);
  publish(to_);
}

void TGapHelper::record(int32_t pos, int32_t len, int32_t distance) {
  if (recorded_ % kBlockCopies == 0)
    blocks_.add(new LLargeBlock(int64_t{kBlockCopies} * 3 * static_cast<int64_t>(sizeof(int32_t))));
  int32_t* copy = copyAt(recorded_);
  copy[0] = pos;
  copy[1] = len;
  copy[2] = distance;
  recorded_++;
}

void TGapHelper::publish(int32_t p) {
  published_.store(recorded_, std::memory_order_release);
  reached_.store(p, std::memory_order_release);
  progressed_.set();
}

bool TGapHelper::visits(int32_t p) {
  const int32_t published = published_.load(std::memory_order_acquire);
  while (next_ < published && copyAt(next_)[0] + copyAt(next_)[1] <= p) next_++;
  return next_ == published || copyAt(next_)[0] >= p;
}

void TGapHelper::takeEnd() {
  if (thread_.finish()) return;
  FPollStop();
  throw static_cast<int>(thrown);
}

void TGapHelper::waitForMore() {
  progressed_.wait(kWaitMs);
  FPollStop();
}
