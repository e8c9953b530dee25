// The content checksum kept with each version when its file is read in.
#pragma once

#include <cstdint>

// A 16-bit sum of the little-endian words of the bytes, never 0. Lengths
// below 2 give 1, and the last byte of an odd length is not summed.
uint16_t FSum16(const uint8_t* bytes, int32_t length);
