// Writes tokens of the held and stored forms to a stream, through a buffer
// of its own: a stream's write per number and per literal was a tenth of an
// encoding's time. finish() writes what the buffer still holds; the bytes
// of a writer that is not finished are lost, which is what a failed
// encoding wants.
#pragma once

#include <cstdint>

#include "lib/stream.h"

class TTokenWriter {
 public:
  explicit TTokenWriter(LStream& out) : out_(out) {}
  TTokenWriter(const TTokenWriter&) = delete;
  TTokenWriter& operator=(const TTokenWriter&) = delete;

  // A literal run of n bytes; nothing when n is not positive, which is most
  // often so between two copies and costs no call.
  void literal(const uint8_t* bytes, int32_t n) {
    if (n > 0) literalRun(bytes, n);
  }
  // A copy of n bytes from the output itself, d bytes back.
  void selfCopy(int32_t n, int32_t d);
  // A copy of n bytes from the reference, d being the target offset minus
  // the reference offset.
  void refCopy(int32_t n, int32_t d);
  // Writes the buffered tokens to the stream.
  void finish();

 private:
  static const int32_t kBufferSize = 8192;

  void literalRun(const uint8_t* bytes, int32_t n);
  void copy(int32_t n, int32_t d, uint32_t kind);
  void number(uint32_t value);

  LStream& out_;
  int32_t used_ = 0;
  uint8_t buffer_[kBufferSize];
};
