// Exact lengths of common runs of bytes, compared a word at a time.
//
// The codec runs on little-endian x86 only; the first differing byte of two
// words is then found from the lowest set bit of their exclusive or.
#pragma once

#include <cstdint>
#include <cstring>

inline uint32_t FLoad32(const uint8_t* at) {
  uint32_t word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

inline uint64_t FLoad64(const uint8_t* at) {
  uint64_t word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// The number of equal bytes from a and b onward, bounded by the smaller of
// the two remaining lengths; 0 when that is not positive. Reads nothing
// outside [a, aEnd) and [b, bEnd).
inline int32_t FMatchForward(const uint8_t* a, const uint8_t* aEnd, const uint8_t* b,
                             const uint8_t* bEnd) {
  intptr_t bound = aEnd - a < bEnd - b ? aEnd - a : bEnd - b;
  if (bound <= 0) return 0;
  intptr_t n = 0;
  while (n + 8 <= bound) {
    uint64_t diff = FLoad64(a + n) ^ FLoad64(b + n);
    if (diff != 0) return static_cast<int32_t>(n + (__builtin_ctzll(diff) >> 3));
    n += 8;
  }
  while (n < bound && a[n] == b[n]) n++;
  return static_cast<int32_t>(n);
}

// The number of equal bytes just before a and before b, walking downward, at
// most `bound` (nothing when it is not positive). Reads only the `bound`
// bytes before each.
inline int32_t FMatchBack(const uint8_t* a, const uint8_t* b, int32_t bound) {
  int32_t n = 0;
  while (n + 8 <= bound) {
    uint64_t diff = FLoad64(a - n - 8) ^ FLoad64(b - n - 8);
    if (diff != 0) return n + (__builtin_clzll(diff) >> 3);
    n += 8;
  }
  while (n < bound && a[-1 - n] == b[-1 - n]) n++;
  return n;
}
