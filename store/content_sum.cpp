#include "store/content_sum.h"

namespace {
uint16_t wordAt(const uint8_t* at) { return static_cast<uint16_t>(at[0] | at[1] << 8); }
}  // namespace

uint16_t FSum16(const uint8_t* bytes, int32_t length) {
  if (length < 2) return 1;
  uint16_t even = 0;
  uint16_t odd = 0;
  int32_t i = 0;
  // Two sums over alternate words, as the stored checksums were made.
  if (length / 2 >= 2) {
    for (; i < length - 3; i += 4) {
      even = static_cast<uint16_t>(even + wordAt(bytes + i));
      odd = static_cast<uint16_t>(odd + wordAt(bytes + i + 2));
    }
  }
  uint16_t rest = i < length - 1 ? wordAt(bytes + i) : 0;
  uint16_t sum = static_cast<uint16_t>(even + odd + rest);
  return sum != 0 ? sum : 1;
}
