#include "store/gap_helper.h"

#include "store/gap_parse.h"
#include "store/progress.h"

namespace {
// Positions between two looks at the stop state and at the encoder's wish
// to be done with the helper.
const int32_t kStride = 65536;
}  // namespace

class TGapHelper::Recorder {
 public:
  explicit Recorder(TGapHelper& helper) : helper_(helper), next_(helper.start_) {}
  bool at(int32_t p) {
    if (p >= next_) {
      helper_.thread_.poll();
      helper_.parsed_.store(p - helper_.start_, std::memory_order_relaxed);
      next_ = p + kStride;
    }
    return true;
  }
  void copy(int32_t pos, int32_t len, int32_t distance) {
    helper_.copies_.add(pos);
    helper_.copies_.add(len);
    helper_.copies_.add(distance);
  }

 private:
  TGapHelper& helper_;
  int32_t next_;
};

TGapHelper::TGapHelper(const uint8_t* target, int32_t seedFrom, int32_t start, int32_t to)
    : target_(target), seedFrom_(seedFrom), start_(start), to_(to), thread_(this) {}

void TGapHelper::run() {
  TQuietProgress quiet;
  TGapChains table(target_);
  table.fillEmpty(seedFrom_, start_, [this] { thread_.poll(); });
  Recorder recorder(*this);
  FParseGap(target_, start_, to_, table, recorder);
  parsed_.store(to_ - start_, std::memory_order_relaxed);
}

bool TGapHelper::visits(int32_t p) {
  while (next_ < copies_.count && copies_[next_] + copies_[next_ + 1] <= p) next_ += 3;
  return next_ == copies_.count || copies_[next_] >= p;
}
