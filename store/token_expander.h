// The token reader: turns a stored form back into the held form, and a held
// form back into the raw bytes.
//
// Damage ends in the archive format failure (an error box, then the integer 2
// is thrown) with the number of what was found, never in a read or a write
// outside the buffers given.
#pragma once

#include <cstdint>

// Expands tokens[0, tokenLen) into out, which has room for outCap bytes, and
// returns the bytes written. Reference copies read reference[0, referenceLen);
// pass a null reference with length -1 (or 0) when there is none, and then
// any reference copy is damage.
int32_t FExpandTokens(const uint8_t* tokens, int32_t tokenLen, uint8_t* out, int32_t outCap,
                      const uint8_t* reference, int32_t referenceLen);
