// The two percentages shown with each version and kept in one byte each in
// its header.
#pragma once

#include <cstdint>

// part * 100 / whole, in integer division. A result of 0, or a whole that is
// not positive, gives 0, raised to 1 when part is positive, so a version
// with anything unique or stored never shows 0. Only the low 8 bits of the
// percentage are kept (a stored form can be many times its raw size).
uint8_t FRatioByte(int64_t part, int64_t whole);

// The percent of a held form that was not found in the next newer version,
// from the held length and the encoder's matched count.
inline uint8_t FUniqueRatio(int32_t heldLen, int32_t matched) {
  return FRatioByte(int64_t{heldLen} - matched, heldLen);
}

// The stored length as a percent of the raw size (not of the held size).
inline uint8_t FCompRatio(int32_t storedLen, int64_t rawSize) {
  return FRatioByte(storedLen, rawSize);
}
