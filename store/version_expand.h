// The two layers of reading a version back, on whole buffers: the stored
// form into the held form, and the held form into the raw bytes.
#pragma once

#include <cstdint>

#include "store/held_buf.h"

// Expands a stored form against the held form of its reference version (null
// when it was stored without one) into `held`, with room for the raw size +
// kHeldSlack bytes.
void FExpandStored(const uint8_t* stored, int32_t storedLen, int32_t rawSize,
                   const THeldView* reference, THeldBuf& held);

// Expands a held form into exactly rawSize bytes; any other length is the
// format failure kBadExpandedLength.
void FExpandRaw(const THeldView& held, int32_t rawSize, THeldBuf& raw);
