#include "store/version_ratio.h"

uint8_t FRatioByte(int64_t part, int64_t whole) {
  int64_t percent = whole > 0 ? part * 100 / whole : 0;
  if (percent == 0 && part > 0) percent = 1;
  return static_cast<uint8_t>(percent);
}
