#include "store/version_expand.h"

#include "lib/fail.h"
#include "store/token_expander.h"
#include "store/token_format.h"

void FExpandStored(const uint8_t* stored, int32_t storedLen, int32_t rawSize,
                   const THeldView* reference, THeldBuf& held) {
  // Room for the slack, the buffer's zero tail and the allocator's rounding
  // must still fit 32 bits; a size beyond that is damage, not a version.
  if (rawSize < 0 || rawSize > INT32_MAX - kHeldSlack - 8192) FFormatError(kBadOutputLength);
  const int32_t room = rawSize + kHeldSlack;
  uint8_t* out = held.prepare(room);
  held.setSize(FExpandTokens(stored, storedLen, out, room,
                             reference != nullptr ? reference->bytes : nullptr,
                             reference != nullptr ? reference->size : -1));
}

void FExpandRaw(const THeldView& held, int32_t rawSize, THeldBuf& raw) {
  if (rawSize < 0) FFormatError(kBadExpandedLength);
  uint8_t* out = raw.prepare(rawSize);
  const int32_t size = FExpandTokens(held.bytes, held.size, out, rawSize, nullptr, 0);
  if (size != rawSize) FFormatError(kBadExpandedLength);
  raw.setSize(size);
}
