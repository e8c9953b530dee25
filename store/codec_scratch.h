// The tables and buffers that the codec of one thread keeps from one file to
// the next. Sized by the largest file the thread has seen, never given back
// until the thread ends: a first add of many small files spent a quarter of
// its time in page faults and in clearing tables that each file allocated
// afresh.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "store/gap_chains.h"

class TCodecScratch {
 public:
  KST_POOLED_NEW
  TCodecScratch() : gapChains_(nullptr) {}
  TCodecScratch(const TCodecScratch&) = delete;
  TCodecScratch& operator=(const TCodecScratch&) = delete;

  // The gap table, emptied for `target`.
  TGapChains& gapChains(const uint8_t* target) {
    gapChains_.reset(target);
    return gapChains_;
  }
  // An empty text with room for `bytes` bytes: raw bytes read in, or a
  // stored form being written. One of each kind is in use at a time.
  LStr& rawBytes(int32_t bytes) { return emptied(raw_, bytes); }
  LStr& storedBytes(int32_t bytes) { return emptied(stored_, bytes); }

 private:
  static LStr& emptied(LStr& text, int32_t bytes) {
    text.truncate(0);
    text.reserve(bytes);
    return text;
  }

  TGapChains gapChains_;
  LStr raw_;
  LStr stored_;
};

// The scratch of the calling thread, made at its first use and freed when
// the thread ends.
TCodecScratch& FCodecScratch();
