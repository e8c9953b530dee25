#include "store/version_expand.h"

#include <algorithm>

#include "lib/fail.h"
#include "store/token_expander.h"
#include "store/token_format.h"

void FExpandStored(const uint8_t* stored, int32_t storedLen, int32_t rawSize,
                   const THeldView* reference, THeldBuf& held) {
  if (rawSize < 0) FFormatError(kBadOutputLength);
  // No held form is longer than 32 bits allow, whatever the slack.
  const int32_t room = static_cast<int32_t>(
      std::min<int64_t>(static_cast<int64_t>(rawSize) + kHeldSlack, INT32_MAX));
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
