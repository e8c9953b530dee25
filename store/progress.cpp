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

Frame* gTop = nullptr;
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
  if (gSink != nullptr) gSink->showItem(text);
}

void FPushProgress() { gTop = new Frame{gTop, 0, 100, -1, 0}; }

void FPopProgress() {
  if (gTop == nullptr) return;
  Frame* parent = gTop->parent;
  delete gTop;
  gTop = parent;
}

void FSetProgressRange(int32_t high, int32_t total) {
  if (gTop == nullptr) return;
  if (high < 0) high = 100;
  gTop->high = high < gTop->low ? gTop->low : high;
  gTop->total = total;
}

int32_t FProgressPercent(int32_t pos) {
  if (gTop == nullptr || gTop->total <= 0) return 0;
  // Above this the product pos * 100 would overflow 32 bits.
  const int32_t kLargest = 10737418;
  int32_t p = pos > kLargest ? pos / (gTop->total / 100 > 0 ? gTop->total / 100 : 1)
                             : pos * 100 / gTop->total;
  for (const Frame* frame = gTop; frame != nullptr; frame = frame->parent) p = stretch(p, frame);
  return p;
}

void FSetProgress(int32_t pos) {
  if (gTop == nullptr) return;
  gTop->pos = pos;
  if (gSink != nullptr && gTop->total > 0) gSink->showPercent(FProgressPercent(pos));
}

void FAddProgress(int32_t delta) {
  if (gTop != nullptr) FSetProgress(gTop->pos + delta);
}
