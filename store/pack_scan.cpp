#include "store/pack_scan.h"

#include <emmintrin.h>

#include <algorithm>

#include "store/byte_match.h"
#include "store/probe_scan.h"
#include "store/progress_ticker.h"

namespace {

// How far back a repeat may start.
const int32_t kFarthest = 8;
// Shorter repeats are left in the literal runs.
const int32_t kShortestCopy = 16;
// Only every third position is probed.
const int32_t kProbeStep = 3;

// Bit k set where the 4 bytes at p - 8 + k equal the 4 bytes at p, for the
// candidates from lo to p - 1. One vector test covers all eight where the
// bytes around p allow it (the self compression then runs twice as fast on
// text and 2.6 times as fast on executables as with eight word compares); at
// the edges they are compared one by one.
uint32_t candidatesOf(const uint8_t* bytes, int32_t p, int32_t lo, int32_t length) {
  const uint32_t word = FLoad32(bytes + p);
  if (p - kFarthest == lo && p <= length - 11) {
    __m128i want[4];
    for (int i = 0; i < 4; i++) want[i] = _mm_set1_epi8(static_cast<char>(word >> (8 * i)));
    return probe_scan::wordHits16(bytes + lo, want) & 0xFF;
  }
  uint32_t found = 0;
  for (int32_t c = lo; c < p; c++)
    if (FLoad32(bytes + c) == word) found |= 1u << (c - (p - kFarthest));
  return found;
}

// Bytes between two progress points where no probe has a candidate.
const int32_t kPointStride = TProgressTicker::kStride;

// Positions a window of the prefilter covers, and the bytes it reads from
// its start on.
const int32_t kWindow = 28;
const int32_t kWindowReads = 32;
// Bits 0, 3, 6, ... 27: the probes of a window that starts at a probe.
const uint32_t kEveryThird = 0x09249249;
static_assert(kProbeStep == 3 && kWindow == 28, "kEveryThird marks every third of 28 bits");

// Bit i set where the 4 bytes at at + i equal the 4 bytes at at + i - d for
// some d from 1 to kFarthest, for i below kWindow; reads at[-kFarthest] to
// at[kWindowReads - 1]. A position whose bit is clear has no candidate, and
// in text most probes have none: one pass over 28 positions, eight byte
// compares of 32 bytes, replaces the nine or ten probes' own tests, and the
// scan steps from one passing probe to the next (an 11.4 MB text is packed
// in 109 million instructions instead of 290, the C library's 2 MB in 21
// instead of 50, into the same bytes).
uint32_t maybeRepeats(const uint8_t* at) {
  const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16));
  uint32_t any = 0;
  for (int32_t d = 1; d <= kFarthest; d++) {
    const __m128i back = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at - d));
    const __m128i backHigh = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 - d));
    const uint32_t same = static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(low, back))) |
                          static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(high, backHigh)))
                              << 16;
    any |= same & same >> 1 & same >> 2 & same >> 3;
  }
  return any & ((1u << kWindow) - 1);
}

}  // namespace

TPackState FScanPack(const uint8_t* bytes, int32_t length, TPackState state, int32_t stopAt,
                     TPackSink& sink) {
  int32_t p = state.p;
  int32_t literalStart = state.literalStart;
  // p only grows, so a window is made again once p has passed its end.
  int32_t windowStart = -kWindow;
  uint32_t window = 0;
  // Bytes without a repeat pass no probe with a candidate: a progress point
  // every so often all the same, so that a stop is seen in a large file
  // that does not pack.
  int32_t nextPoint = p + kPointStride;
  while (p < length - 4 && p < stopAt) {
    if (p >= kFarthest && p <= length - kWindowReads) {
      if (p - windowStart >= kWindow) {
        windowStart = p;
        window = maybeRepeats(bytes + p);
      }
      // The probes left in the window, p and every third position after it:
      // on to the first that may have a candidate, or past the window.
      const int32_t into = p - windowStart;
      const uint32_t probes = window >> into & kEveryThird;
      if (probes == 0) {
        p += kProbeStep * ((kWindow - into + kProbeStep - 1) / kProbeStep);
        if (p >= nextPoint) {
          sink.at(p);
          nextPoint = p + kPointStride;
        }
        continue;
      }
      p += __builtin_ctz(probes);
    }
    const int32_t lo = std::max(0, p - kFarthest);
    bool taken = false;
    // Nearest candidate first; a candidate may overlap the probe.
    for (uint32_t found = candidatesOf(bytes, p, lo, length); found != 0 && !taken;) {
      const int32_t k = 31 - __builtin_clz(found);
      found &= ~(1u << k);
      const int32_t c = p - kFarthest + k;
      sink.at(p);
      const int32_t back = FMatchBack(bytes + p, bytes + c, std::min(c, p - literalStart));
      const int32_t forward =
          FMatchForward(bytes + p + 4, bytes + length, bytes + c + 4, bytes + length);
      const int32_t len = 4 + forward + back;
      if (len < kShortestCopy) continue;
      const bool goOn = sink.copy(literalStart, p - back, len, p - c);
      literalStart = p + 4 + forward;
      // The two bytes right after a copy are never probed. A copy that
      // reaches the last bytes ends the scan, without a sum that could pass
      // 32 bits.
      p = literalStart < length - 4 ? literalStart + 2 : length;
      if (!goOn) return TPackState{p, literalStart};
      taken = true;
    }
    if (!taken) p += kProbeStep;
  }
  return TPackState{p, literalStart};
}
