#include "store/pack_bytes.h"

#include <memory>

#include "store/codec_threads.h"
#include "store/pack_helper.h"
#include "store/pack_scan.h"
#include "store/progress_level.h"
#include "store/progress_ticker.h"
#include "store/token_writer.h"

namespace {

// Writes the tokens of the packer's own scan. Once the helper's scan is
// known, it ends the scan at the first copy that ends where one of the
// helper's does.
class TPackWriter : public TPackSink {
 public:
  TPackWriter(const uint8_t* bytes, TTokenWriter& tokens) : bytes_(bytes), tokens_(tokens) {}

  void meet(TPackHelper* helper) { helper_ = helper; }
  void at(int32_t p) override { progress_.reach(p); }
  bool copy(int32_t literalStart, int32_t start, int32_t length, int32_t distance) override {
    tokens_.literal(bytes_ + literalStart, start - literalStart);
    tokens_.selfCopy(length, distance);
    return helper_ == nullptr || !helper_->meetsAt(start + length);
  }

 private:
  const uint8_t* const bytes_;
  TTokenWriter& tokens_;
  TProgressTicker progress_;
  TPackHelper* helper_ = nullptr;
};

}  // namespace

void FPackBytes(const uint8_t* bytes, int32_t length, LStream& out,
                const TCodecSettings& settings) {
  TProgressLevel level(/*high=*/-1, /*total=*/length);
  TTokenWriter tokens(out);
  TPackState state;
  if (settings.noPack == 0) {
    TCodecThread self;
    self.take();
    TCodecThread spare;
    TPackWriter writer(bytes, tokens);
    std::unique_ptr<TPackHelper> helper;
    int32_t half = length;
    if (settings.splitLength > 0 && length >= settings.splitLength && spare.take()) {
      half = length / 2;
      helper.reset(new TPackHelper(bytes, length, half));
    }
    state = FScanPack(bytes, length, state, half, writer);
    // On past the half to where the scans meet, or to the end alone if the
    // helper failed.
    if (helper != nullptr && helper->finish()) writer.meet(helper.get());
    state = FScanPack(bytes, length, state, length, writer);
    if (helper != nullptr && helper->met())
      state.literalStart = helper->writeCopiesAfterMeeting(tokens);
  }
  tokens.literal(bytes + state.literalStart, length - state.literalStart);
  tokens.finish();
}
