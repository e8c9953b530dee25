// Writes tokens of the held and stored forms to a stream, through a buffer
// of its own: a stream's write per number and per literal was a tenth of an
// encoding's time. finish() writes what the buffer still holds; the bytes
// of a writer that is not finished are lost, which is what a failed
// encoding wants.
#pragma once

#include <cstdint>

#include "lib/num_coding.h"
#include "lib/stream.h"
#include "store/token_format.h"

class TTokenWriter {
 public:
  explicit TTokenWriter(LStream& out) : out_(out) {}
  TTokenWriter(const TTokenWriter&) = delete;
  TTokenWriter& operator=(const TTokenWriter&) = delete;

  // A literal run of n bytes; nothing when n is not positive, which is most
  // often so between two copies and costs no call. A short one, the most
  // common other case, costs none either.
  void literal(const uint8_t* bytes, int32_t n) {
    if (n <= 0) return;
    if (n > kShortLiteral || used_ > kBufferSize - kNumWriteRoom - kShortLiteral)
      return literalRun(bytes, n);
    used_ += FEncodeNum(head(n, kTokenLiteral), buffer_ + used_);
    for (int32_t i = 0; i < n; i++) buffer_[used_ + i] = bytes[i];
    used_ += n;
  }
  // A copy of n bytes from the output itself, d bytes back.
  void selfCopy(int32_t n, int32_t d) { copy(n, d, kTokenSelfCopy); }
  // A copy of n bytes from the reference, d being the target offset minus
  // the reference offset.
  void refCopy(int32_t n, int32_t d) { copy(n, d, kTokenRefCopy); }
  // Writes the buffered tokens to the stream.
  void finish();

 private:
  static const int32_t kBufferSize = 8192;
  static const int32_t kShortLiteral = 16;

  static uint32_t head(int32_t n, uint32_t kind) {
    return static_cast<uint32_t>(n) << kTokenLengthShift | kind;
  }
  // Nearly every copy is one token, whose two numbers the buffer has room
  // for: written in place, without a call (the tokens of a 12 MB text took
  // 6 of the 105 ms of its encoding on one thread with calls for each).
  void copy(int32_t n, int32_t d, uint32_t kind) {
    if (n <= 0 || n > kTokenMaxLength || used_ > kBufferSize - 2 * kNumWriteRoom)
      return copyPieces(n, d, kind);
    used_ += FEncodeNum(head(n, kind), buffer_ + used_);
    used_ += FEncodeNum(FDiffNum(static_cast<uint32_t>(d), 0), buffer_ + used_);
  }
  void literalRun(const uint8_t* bytes, int32_t n);
  void copyPieces(int32_t n, int32_t d, uint32_t kind);
  void number(uint32_t value);

  LStream& out_;
  int32_t used_ = 0;
  uint8_t buffer_[kBufferSize];
};
