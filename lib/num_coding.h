// The encodings of numbers and strings on which the archive format rests.
// This is the one module where number bytes are coded.
//
// A variable number takes 1 to 5 bytes. Each range starts where the previous
// one ends, and what follows the tag bits is big-endian:
//   0 .. 127                  0xxxxxxx
//   128 .. 16511              10xxxxxx + 1 byte      (value - 128)
//   16512 .. 2113663          110xxxxx + 2 bytes     (value - 16512)
//   2113664 .. 270549119      1110xxxx + 3 bytes     (value - 2113664)
//   270549120 .. 4294967295   11110000 + 4 bytes     (value - 270549120)
// A signed difference d = value - base (32-bit wrap-around) is written as the
// number 2d when d >= 0 and 2(-d) + 1 otherwise, so that small steps either
// way take one byte. A string is its byte length as a number, then its bytes.
//
// Readers raise the archive format failure (an error box, then the integer
// 2 is thrown): 312 when the stream ends inside a number or a string, or the
// first byte is 0xF8 or above; 309 when a five-byte number has tag bits set
// or leaves the 32-bit range.
#pragma once

#include <cstdint>
#include <cstring>

#include "lib/lstr.h"
#include "lib/srm.h"
#include "lib/stream.h"

enum : int {
  kFormatBadNumber = 309,
  kFormatEndOfData = 312,
};

// First value of each range of the variable number, by its count of bytes
// after the tag byte.
inline constexpr uint32_t kNumRangeStart[5] = {0, 128, 16512, 2113664, 270549120};
// The tag bits of the first byte, by the same count.
inline constexpr uint32_t kNumTag[5] = {0x00, 0x80, 0xC0, 0xE0, 0xF0};
// The room FEncodeNum writes into: more than the 5 bytes a number takes.
const int32_t kNumWriteRoom = 8;

// Writes the bytes of a variable number to `to` and returns their count.
// It stores kNumWriteRoom bytes, those past the number's own being of no
// use: one store and no branches, since the length of the distances of a
// token stream is data that no predictor guesses.
inline int32_t FEncodeNum(uint32_t value, uint8_t* to) {
  const int more = (value >= kNumRangeStart[1]) + (value >= kNumRangeStart[2]) +
                   (value >= kNumRangeStart[3]) + (value >= kNumRangeStart[4]);
  // The tag bits sit above the value's bytes; the first byte is the tag's.
  const uint64_t bits = uint64_t{kNumTag[more]} << (8 * more) | (value - kNumRangeStart[more]);
  const uint64_t bigEndian = __builtin_bswap64(bits << (8 * (7 - more)));
  std::memcpy(to, &bigEndian, sizeof bigEndian);
  return more + 1;
}
// The number FWriteDiff writes for a difference.
inline uint32_t FDiffNum(uint32_t value, uint32_t base) {
  const int32_t d = static_cast<int32_t>(value - base);
  if (d >= 0) return static_cast<uint32_t>(d) * 2;
  return (0 - static_cast<uint32_t>(d)) * 2 | 1;
}
void FWriteNum(LStream& stream, uint32_t value);
uint32_t FReadNum(LSrm& srm);
void FWriteDiff(LStream& stream, uint32_t value, uint32_t base);
uint32_t FReadDiff(LSrm& srm, uint32_t base);
// A negative length measures the text; a null text is written as empty.
void FWriteStr(LStream& stream, const char* text, int32_t length = -1);
// A new string that the caller owns.
LStr* FReadStr(LSrm& srm);

// Reads the same numbers from bytes in memory, with the same failures: for
// a decoder that holds all of its input, which a stream would copy through
// its buffer once more.
class LNumReader {
 public:
  LNumReader(const uint8_t* bytes, int32_t length) : p_(bytes), end_(bytes + length) {}
  bool atEnd() const { return p_ == end_; }
  uint32_t readNum() {
    // Most numbers of a token stream take one byte.
    if (p_ != end_ && *p_ < 0x80) return *p_++;
    return readLongNum();
  }
  uint32_t readDiff(uint32_t base);
  // The next n bytes, passed over; null when fewer are left.
  const uint8_t* take(int64_t n);

 private:
  uint32_t readLongNum();

  const uint8_t* p_;
  const uint8_t* end_;
};
