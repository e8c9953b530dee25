#include "store/codec_scratch.h"

namespace {
// One per thread: the encoders of a pool each reuse their own. A plain
// pointer, freed by the thread itself before it reports its end, so that
// nothing of it runs after the process was told the thread is gone.
thread_local TCodecScratch* tScratch = nullptr;
}  // namespace

TCodecScratch& FCodecScratch() {
  if (tScratch == nullptr) tScratch = new TCodecScratch;
  return *tScratch;
}

void FFreeCodecScratch() {
  delete tScratch;
  tScratch = nullptr;
}
