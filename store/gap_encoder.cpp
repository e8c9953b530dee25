#include "store/gap_encoder.h"

#include <algorithm>
#include <memory>

#include "store/codec_threads.h"
#include "store/gap_helper.h"
#include "store/gap_parse.h"
#include "store/progress_ticker.h"

namespace {

// Where the helper of a long gap starts, as a share of the gap. The helper
// first fills its table with the positions before its start, which costs
// about a sixth of parsing them, so the two take about as long when the
// helper's share is a little under half.
const int32_t kHelperStartPercent = 52;

// Writes the tokens of a parse: a literal run up to each copy, then the
// copy. A parse that a helper shares stops at the helper's start, and
// later at the first position the helper's parse stepped to as well.
class TTokenSink {
 public:
  TTokenSink(const uint8_t* target, int32_t from, TTokenWriter& out)
      : target_(target), out_(out), literalStart_(from) {}

  void shareWith(TGapHelper* helper, int32_t start) {
    helper_ = helper;
    helperStart_ = start;
  }
  // From now on the parse stops where the helper's parse went too.
  void meet() { meeting_ = true; }

  bool at(int32_t p) {
    if (helper_ == nullptr) {
      progress_.reach(p);
      return true;
    }
    report(p);
    if (!meeting_) return p < helperStart_;
    while (!helper_->knows(p)) {
      helper_->waitForMore();
      report(p);
    }
    return !helper_->visits(p);
  }
  // The progress of both parses while the encoder waits for the helper,
  // once its own parse is past the helper's start.
  void report() { report(helperStart_); }
  void copy(int32_t pos, int32_t len, int32_t distance) {
    out_.literal(target_ + literalStart_, pos - literalStart_);
    out_.selfCopy(len, distance);
    literalStart_ = pos + len;
  }
  void finish(int32_t to) { out_.literal(target_ + literalStart_, to - literalStart_); }

 private:
  void report(int32_t p) { progress_.reach(std::min(p, helperStart_) + helper_->parsed()); }

  const uint8_t* const target_;
  TTokenWriter& out_;
  int32_t literalStart_;
  TProgressTicker progress_;
  TGapHelper* helper_ = nullptr;
  int32_t helperStart_ = 0;
  bool meeting_ = false;
};

}  // namespace

void FEncodeGap(const uint8_t* target, int32_t from, int32_t to, TTokenWriter& out, int32_t reseed,
                TGapChains& table, int32_t splitLength) {
  // A helper's table is given the positions from the seed on, which are all
  // that a table holds only while nothing before this gap went into it.
  const bool fresh = table.ringCount() == 0;
  const int32_t seedStart = static_cast<int32_t>(std::max<int64_t>(int64_t{from} - reseed, 0));
  const int32_t seedEnd = std::min(from, to - kGapHashed);
  table.insertRun(seedStart, seedEnd);

  TTokenSink sink(target, from, out);
  TCodecThread spare;
  std::unique_ptr<TGapHelper> helper;
  if (fresh && splitLength > 0 && to - from >= splitLength && spare.take()) {
    const int32_t start =
        from + static_cast<int32_t>(int64_t{to - from} * kHelperStartPercent / 100);
    helper.reset(new TGapHelper(target, seedStart, start, to));
    sink.shareWith(helper.get(), start);
  }
  const int32_t p = FParseGap(target, from, to, table, sink);
  if (p < to) {
    // Stopped at the helper's start: on to where the parses meet, then the
    // helper's copies from there, while it is still making them.
    sink.meet();
    if (FParseGap(target, p, to, table, sink) < to) helper->sendCopies(sink);
  }
  sink.finish(to);
}
