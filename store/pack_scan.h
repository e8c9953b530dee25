// The scan of the self compression, shared by the packer that writes the
// tokens and by the helper that scans the second half of a long input on
// another thread.
//
// The scan's whole state is its position and where its literal run began;
// after a copy that is the copy's end and two bytes past it. So two scans of
// one input that make a copy with the same end go on alike from there.
#pragma once

#include <cstdint>

// Where a scan stands.
struct TPackState {
  int32_t p = 0;             // the next probe
  int32_t literalStart = 0;  // the first byte not yet written
};

// What a scan finds.
class TPackSink {
 public:
  // At a probe that has a candidate, and every 64 KiB without one: a
  // progress point.
  virtual void at(int32_t p) = 0;
  // A copy of `length` bytes from `start`, `distance` back, after the
  // literal run from literalStart; false ends the scan after it.
  virtual bool copy(int32_t literalStart, int32_t start, int32_t length, int32_t distance) = 0;

 protected:
  ~TPackSink() = default;
};

// Scans bytes[0, length) from `state` on until the next probe is at or past
// stopAt, or a copy ends it, or the input does; returns the state then.
TPackState FScanPack(const uint8_t* bytes, int32_t length, TPackState state, int32_t stopAt,
                     TPackSink& sink);
