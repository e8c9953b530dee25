// TRefIndex: where each 4-byte word of the reference occurs, so that the
// coarse matcher can visit the probes that pass without testing the ones
// that do not.
//
// Positions are bucketed by a hash of their word and kept in increasing
// order within a bucket; a bucket may mix words, so every position visited is
// tested again. Only positions whose four bytes lie inside the reference are
// indexed, which is the set the matcher may probe.
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "store/byte_match.h"
#include "store/probe_scan.h"

class TRefIndex {
 public:
  KST_POOLED_NEW
  TRefIndex(const uint8_t* reference, int32_t referenceLen);
  ~TRefIndex();
  TRefIndex(const TRefIndex&) = delete;
  TRefIndex& operator=(const TRefIndex&) = delete;

  // The probes of one sample, in the matcher's order (see FScanProbes):
  // calls visit(position) for each reference position at a distance below
  // the radius whose word equals `word`, until visit returns true.
  template <typename Visit>
  void visitProbes(const TProbeRange& g, uint32_t word, Visit&& visit) const;

 private:
  uint32_t bucketOf(uint32_t word) const { return (word * 0x9E3779B1u) >> shift_; }
  // The first position in [first, last) that is not below `at`.
  static const int32_t* lowerBound(const int32_t* first, const int32_t* last, int32_t at);

  const uint8_t* reference_;
  int32_t shift_;
  int32_t* starts_;  // bucket b holds positions_[starts_[b], starts_[b + 1])
  int32_t* positions_;
};

template <typename Visit>
void TRefIndex::visitProbes(const TProbeRange& g, uint32_t word, Visit&& visit) const {
  const uint32_t bucket = bucketOf(word);
  const int32_t* first = positions_ + starts_[bucket];
  const int32_t* last = positions_ + starts_[bucket + 1];
  const int32_t center = g.rFrom + g.r;
  const int32_t forwardEnd = g.rTo - 4;  // forward probes stay below this
  // Forward candidates go up from the centre, backward ones down from it; the
  // centre itself is both (probed forward, then backward, at distance 0).
  const int32_t* up = lowerBound(first, last, center);
  const int32_t* down = up < last && *up == center ? up : up - 1;
  bool upOpen = true;
  bool downOpen = true;
  for (;;) {
    // The next candidate each way that holds the word, or closes that way.
    while (upOpen) {
      if (up == last || *up >= forwardEnd || *up - center >= g.radius)
        upOpen = false;
      else if (FLoad32(reference_ + *up) == word)
        break;
      else
        up++;
    }
    while (downOpen) {
      if (down < first || *down < g.rFrom || center - *down >= g.radius)
        downOpen = false;
      else if (FLoad32(reference_ + *down) == word)
        break;
      else
        down--;
    }
    if (!upOpen && !downOpen) return;
    if (upOpen && (!downOpen || *up - center <= center - *down)) {
      if (visit(*up)) return;
      up++;
    } else {
      if (visit(*down)) return;
      down--;
    }
  }
}
