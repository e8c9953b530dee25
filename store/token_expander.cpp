#include "store/token_expander.h"

#include <cstring>

#include "lib/fail.h"
#include "lib/num_coding.h"
#include "store/token_format.h"

namespace {

// Copies n bytes from d bytes back in the output to out; where the two
// overlap, the bytes repeat with period d, as a byte-by-byte copy upward
// would make them.
void copyWithin(uint8_t* to, int64_t d, int64_t n) {
  const uint8_t* from = to - d;
  if (d >= n) {
    std::memcpy(to, from, n);
  } else if (d == 1) {
    std::memset(to, *from, n);
  } else if (d >= 8) {
    // Each 8-byte piece reads only bytes written before it.
    int64_t i = 0;
    for (; i + 8 <= n; i += 8) std::memcpy(to + i, from + i, 8);
    for (; i < n; i++) to[i] = from[i];
  } else {
    for (int64_t i = 0; i < n; i++) to[i] = from[i];
  }
}

}  // namespace

int32_t FExpandTokens(const uint8_t* tokens, int32_t tokenLen, uint8_t* out, int32_t outCap,
                      const uint8_t* reference, int32_t referenceLen) {
  LNumReader in(tokens, tokenLen);
  // 64 bits: lengths of damaged tokens may add up past 32 bits before the
  // final test catches them.
  int64_t pos = 0;
  while (!in.atEnd()) {
    const uint32_t head = in.readNum();
    const int64_t n = head >> kTokenLengthShift;
    switch (head & kTokenKindMask) {
      case kTokenLiteral: {
        if (n > outCap - pos) FFormatError(kBadLiteralRoom);
        const uint8_t* literal = in.take(n);
        if (literal == nullptr) FFormatError(kBadLiteralCut);
        std::memcpy(out + pos, literal, n);
        break;
      }
      case kTokenSelfCopy: {
        const int64_t from = pos - static_cast<int32_t>(in.readDiff(0));
        if (!(from < pos && from + n <= outCap && from >= 0)) FFormatError(kBadSelfCopy);
        // A copy that runs past the room is not made: the output is then
        // too long, which the final test reports.
        if (n <= outCap - pos) copyWithin(out + pos, pos - from, n);
        break;
      }
      case kTokenRefCopy: {
        const int64_t from = pos - static_cast<int32_t>(in.readDiff(0));
        if (!(from + n <= referenceLen && from >= 0)) FFormatError(kBadRefCopy);
        if (n > 0 && n <= outCap - pos) std::memcpy(out + pos, reference + from, n);
        break;
      }
      default:
        FFormatError(kBadTokenKind);
    }
    pos += n;
  }
  if (pos > outCap) FFormatError(kBadOutputLength);
  return static_cast<int32_t>(pos);
}
