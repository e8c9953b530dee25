// The parse of a gap, shared by the encoder that writes its tokens and by
// the helper that parses the second half of a long gap on another thread.
//
// Every position of the gap goes into the table, whether it is probed or
// inside a copy, so the table at any position holds the same entries
// however the parse before it went: two parses of one gap that meet at a
// position go on alike from there.
#pragma once

#include <cstdint>

#include "store/gap_chains.h"

// Bytes hashed per position; shorter copies are not written.
const int32_t kGapHashed = 6;

// Parses target[p, to) from position p: before each step it calls
// sink.at(p), which may end the parse by returning false, and for each copy
// sink.copy(pos, len, distance). Returns where the parse ended: a position
// for which at() returned false, or `to`.
template <class Sink>
int32_t FParseGap(const uint8_t* target, int32_t p, int32_t to, TGapChains& table, Sink& sink) {
  while (p < to - kGapHashed) {
    if (!sink.at(p)) return p;
    const uint32_t bucket = TGapChains::bucketOf(target + p);
    const uint32_t tag = TGapChains::tagOf(target + p);
    if (const TChainRing* ring = table.ring(bucket)) {
      int32_t source = 0;
      const int32_t len = table.longest(*ring, tag, p, to, &source);
      if (len >= kGapHashed) {
        // The ring of the next probe is known now: it comes into the cache
        // while the copy's positions are inserted.
        if (p + len < to - kGapHashed) table.prefetch(TGapChains::bucketOf(target + p + len));
        sink.copy(p, len, p - source);
        table.insertRun(p, p + len);
        p += len;
        continue;
      }
    }
    table.insert(bucket, tag, p);
    p++;
  }
  return to;
}
