#include "store/pack_helper.h"

#include <initializer_list>

#include "store/pack_scan.h"
#include "store/progress.h"
#include "store/progress_ticker.h"

namespace {
// Positions between two looks at the stop state and at the packer's wish to
// be done with the helper.
const int32_t kStride = TProgressTicker::kStride;
const int32_t kFields = 4;
}  // namespace

class TPackHelper::Recorder : public TPackSink {
 public:
  explicit Recorder(TPackHelper& helper) : helper_(helper), next_(helper.start_) {}
  void at(int32_t p) override {
    if (p < next_) return;
    helper_.thread_.poll();
    next_ = p + kStride;
  }
  bool copy(int32_t literalStart, int32_t start, int32_t length, int32_t distance) override {
    for (int32_t field : {literalStart, start, length, distance}) helper_.copies_.add(field);
    return true;
  }

 private:
  TPackHelper& helper_;
  int32_t next_;
};

TPackHelper::TPackHelper(const uint8_t* bytes, int32_t length, int32_t start)
    : bytes_(bytes), length_(length), start_(start), thread_(this) {}

void TPackHelper::run() {
  TQuietProgress quiet;
  Recorder recorder(*this);
  FScanPack(bytes_, length_, TPackState{start_, start_}, length_, recorder);
}

bool TPackHelper::meetsAt(int32_t end) {
  while (next_ < copies_.count && copies_[next_ + 1] + copies_[next_ + 2] < end) next_ += kFields;
  met_ = next_ < copies_.count && copies_[next_ + 1] + copies_[next_ + 2] == end;
  return met_;
}

int32_t TPackHelper::writeCopiesAfterMeeting(TTokenWriter& tokens) const {
  int32_t end = copies_[next_ + 1] + copies_[next_ + 2];
  for (int32_t i = next_ + kFields; i < copies_.count; i += kFields) {
    tokens.literal(bytes_ + copies_[i], copies_[i + 1] - copies_[i]);
    tokens.selfCopy(copies_[i + 2], copies_[i + 3]);
    end = copies_[i + 1] + copies_[i + 2];
  }
  return end;
}
