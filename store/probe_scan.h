// The probe order of the coarse matcher, fast: for one sample word, visits the
// reference positions that hold the same four bytes in the order in which the
// matcher probes them, and skips the rest sixteen positions at a time.
//
// Probes go outward from the proportional position r of a range: at each
// distance d = 0, 1, ... below the radius, first the forward probe r + d
// (tested only while r + d is below the range's length - 4), then the
// backward probe r - d (tested while it is not negative, and while its four
// bytes lie inside the whole reference). At d = 0 both probes are the same
// position, which is then visited twice.
#pragma once

#include <emmintrin.h>

#include <cstdint>

#include "store/byte_match.h"

struct TProbeRange {
  const uint8_t* reference;  // the whole reference
  int32_t referenceLen;
  int32_t rFrom;  // the range searched, [rFrom, rTo) of the reference
  int32_t rTo;
  int32_t r;       // the proportional position, from rFrom
  int32_t radius;  // distances below this are probed
};

namespace probe_scan {

// Bit k set where the four bytes at at + k equal the word, for k = 0 to 15;
// reads at[0] to at[18].
inline uint32_t wordHits16(const uint8_t* at, const __m128i want[4]) {
  const __m128i* p = reinterpret_cast<const __m128i*>(at);
  __m128i e0 = _mm_cmpeq_epi8(_mm_loadu_si128(p), want[0]);
  __m128i e1 = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 1)), want[1]);
  __m128i e2 = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 2)), want[2]);
  __m128i e3 = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 3)), want[3]);
  return static_cast<uint32_t>(
      _mm_movemask_epi8(_mm_and_si128(_mm_and_si128(e0, e1), _mm_and_si128(e2, e3))));
}

inline uint32_t reverse16(uint32_t m) {
  m = (m & 0x5555) << 1 | (m >> 1 & 0x5555);
  m = (m & 0x3333) << 2 | (m >> 2 & 0x3333);
  m = (m & 0x0F0F) << 4 | (m >> 4 & 0x0F0F);
  return (m & 0x00FF) << 8 | (m >> 8 & 0x00FF);
}

}  // namespace probe_scan

// Calls visit(position) for every passing probe, in probe order, with the
// position counted from the start of the whole reference, until visit
// returns true. Returns the distance that the scan reached.
template <typename Visit>
int32_t FScanProbes(const TProbeRange& g, uint32_t word, Visit&& visit) {
  const uint8_t* base = g.reference + g.rFrom;
  const int32_t forwardEnd = g.rTo - g.rFrom - 4;
  const int32_t backwardTop = g.referenceLen - 4 - g.rFrom;
  __m128i want[4];
  for (int i = 0; i < 4; i++) want[i] = _mm_set1_epi8(static_cast<char>(word >> (8 * i)));

  for (int32_t d0 = 0; d0 < g.radius; d0 += 16) {
    const int32_t fwd0 = g.r + d0;  // forward probe at distance d0
    const int32_t bwd0 = g.r - d0;  // backward probe at distance d0
    if (fwd0 >= forwardEnd && bwd0 < 0) return d0;
    // Bit j of each mask stands for distance d0 + j. Whole blocks inside all
    // bounds take the vector test; blocks at an edge test probe by probe.
    uint32_t fwdHits = 0;
    uint32_t bwdHits = 0;
    const bool wholeBlock = d0 + 15 < g.radius;
    if (fwd0 < forwardEnd) {
      if (wholeBlock && fwd0 + 15 < forwardEnd) {
        fwdHits = probe_scan::wordHits16(base + fwd0, want);
      } else {
        for (int32_t j = 0; j < 16 && d0 + j < g.radius && fwd0 + j < forwardEnd; j++)
          if (FLoad32(base + fwd0 + j) == word) fwdHits |= 1u << j;
      }
    }
    if (bwd0 >= 0 && bwd0 - 15 <= backwardTop) {
      if (wholeBlock && bwd0 - 15 >= 0 && bwd0 <= backwardTop) {
        bwdHits = probe_scan::wordHits16(base + bwd0 - 15, want);
        if (bwdHits != 0) bwdHits = probe_scan::reverse16(bwdHits);
      } else {
        for (int32_t j = 0; j < 16 && d0 + j < g.radius && bwd0 - j >= 0; j++)
          if (bwd0 - j <= backwardTop && FLoad32(base + bwd0 - j) == word) bwdHits |= 1u << j;
      }
    }
    for (uint32_t hits = fwdHits | bwdHits; hits != 0; hits &= hits - 1) {
      int32_t j = __builtin_ctz(hits);
      if ((fwdHits >> j & 1) != 0 && visit(g.rFrom + fwd0 + j)) return d0 + j;
      if ((bwdHits >> j & 1) != 0 && visit(g.rFrom + bwd0 - j)) return d0 + j;
    }
  }
  return g.radius;
}
