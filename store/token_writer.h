// Writes tokens of the held and stored forms to a stream.
#pragma once

#include <cstdint>

#include "lib/stream.h"

class TTokenWriter {
 public:
  explicit TTokenWriter(LStream& out) : out_(out) {}
  TTokenWriter(const TTokenWriter&) = delete;
  TTokenWriter& operator=(const TTokenWriter&) = delete;

  // A literal run of n bytes; nothing when n is not positive.
  void literal(const uint8_t* bytes, int32_t n);
  // A copy of n bytes from the output itself, d bytes back.
  void selfCopy(int32_t n, int32_t d);
  // A copy of n bytes from the reference, d being the target offset minus
  // the reference offset.
  void refCopy(int32_t n, int32_t d);

 private:
  void copy(int32_t n, int32_t d, uint32_t kind);

  LStream& out_;
};
