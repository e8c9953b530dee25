// The tables and buffers that the codec of one thread keeps from one file to
// the next, and the thread that runs its side tasks. Sized by the largest
// file the thread has seen, never given back until the thread ends: a first
// add of many small files spent a quarter of its time in page faults and in
// clearing tables that each file allocated afresh.
#pragma once

#include <cstdint>
#include <memory>

#include "lib/lstr.h"
#include "lib/task_pool.h"
#include "store/gap_chains.h"
#include "store/version_io.h"

class TCodecScratch;
// The scratch of the calling thread, made at its first use.
TCodecScratch& FCodecScratch();
// Frees the calling thread's scratch, ending its side thread: every thread
// but the main one calls it before it ends.
void FFreeCodecScratch();

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
  // The buffer for the raw bytes of a file read in.
  THeldBuf& rawBytes() { return raw_; }
  // Where a store writes its stored form before the block is written.
  TDeltaForm& delta() { return delta_; }
  // An empty text for the stored form of a block being read.
  LStr& blockBytes() {
    block_.truncate(0);
    return block_;
  }
  // The one thread that runs this thread's side tasks, started at the first
  // and kept for the next; it frees its own scratch when it ends.
  LTaskPool& sideThread() {
    if (side_ == nullptr) side_.reset(new LTaskPool(1, FFreeCodecScratch));
    return *side_;
  }

 private:
  TGapChains gapChains_;
  THeldBuf raw_;
  TDeltaForm delta_;
  LStr block_;
  // Last, so that the side thread has ended before the rest goes.
  std::unique_ptr<LTaskPool> side_;
};

