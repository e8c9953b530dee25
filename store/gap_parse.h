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
  uint32_t bucket = TGapChains::bucketOf(target + p);
  while (p < to - kGapHashed) {
    if (!sink.at(p)) return p;
    const uint32_t tag = TGapChains::tagOf(target + p);
    // Unless this probe makes a copy, the next one is at the next position:
    // its ring comes into the cache while this one is walked (5% off the
    // parse of small files, 2.5% off that of a 12 MB text).
    const uint32_t following = TGapChains::bucketOf(target + p + 1);
    table.prefetch(following);
    if (const TChainRing* ring = table.ring(bucket)) {
      int32_t source = 0;
      const int32_t len = table.longest(*ring, tag, p, to, &source);
      if (len >= kGapHashed) {
        // The ring of the probe after the copy is known now: it comes into
        // the cache while the copy's positions are inserted. The bucket of
        // a position at the end reads the target's zero tail and is unused.
        bucket = TGapChains::bucketOf(target + p + len);
        if (p + len < to - kGapHashed) table.prefetch(bucket);
        sink.copy(p, len, p - source);
        table.insertRun(p, p + len);
        p += len;
        continue;
      }
    }
    table.insert(bucket, tag, p);
    p++;
    bucket = following;
  }
  return to;
}
