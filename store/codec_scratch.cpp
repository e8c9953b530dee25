#include "store/codec_scratch.h"

#include <memory>

namespace {
// One per thread: the encoders of a pool each reuse their own.
thread_local std::unique_ptr<TCodecScratch> tScratch;
}  // namespace

TCodecScratch& FCodecScratch() {
  if (tScratch == nullptr) tScratch.reset(new TCodecScratch);
  return *tScratch;
}
