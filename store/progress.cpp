#include "store/progress.h"

#include "lib/alloc.h"

namespace {

struct Frame {
  KST_POOLED_NEW
  Frame* parent;
  int32_t low;
  int32_t high;
  int32_t total;
  int32_t pos;
};

// Each thread has its own stack: encoders on a pool open their levels
// beside the command's thread. Only the threads that are not quiet reach
// the sink.
thread_local Frame* tTop = nullptr;
thread_local int32_t tQuiet = 0;
TProgressSink* gSink = nullptr;

// Maps a percentage of a frame onto its parent. The result is deliberately
// not fitted into the frame: multiplying by 100 over the frame's width
// stretches the bar, and the control clips what runs over.
int32_t stretch(int32_t p, const Frame* frame) {
  if (frame->low < frame->high) return p * 100 / (frame->high - frame->low) + frame->low;
  return frame->low;
}

}  // namespace

void FSetProgressSink(TProgressSink* sink) { gSink = sink; }

void FShowProgressItem(const char* text) {
  if (gSink != nullptr && tQuiet == 0) gSink->showItem(text);
}

TQuietProgress::TQuietProgress() { tQuiet++; }
TQuietProgress::~TQuietProgress() { tQuiet--; }

void FPushProgress() { tTop = new Frame{tTop, 0, 100, -1, 0}; }

void FPopProgress() {
  if (tTop == nullptr) return;
  Frame* parent = tTop->parent;
  delete tTop;
  tTop = parent;
}

void FSetProgressRange(int32_t high, int32_t total) {
  if (tTop == nullptr) return;
  if (high < 0) high = 100;
  tTop->high = high < tTop->low ? tTop->low : high;
  tTop->total = total;
}

int32_t FProgressPercent(int32_t pos) {
  if (tTop == nullptr || tTop->total <= 0) return 0;
  // Above this the product pos * 100 would overflow 32 bits.
  const int32_t kLargest = 10737418;
  int32_t p = pos > kLargest ? pos / (tTop->total / 100 > 0 ? tTop->total / 100 : 1)
                             : pos * 100 / tTop->total;
  for (const Frame* frame = tTop; frame != nullptr; frame = frame->parent) p = stretch(p, frame);
  return p;
}

void FSetProgress(int32_t pos) {
  if (tTop == nullptr) return;
  tTop->pos = pos;
  if (gSink != nullptr && tQuiet == 0 && tTop->total > 0) gSink->showPercent(FProgressPercent(pos));
}

void FAddProgress(int32_t delta) {
  if (tTop != nullptr) FSetProgress(tTop->pos + delta);
}
