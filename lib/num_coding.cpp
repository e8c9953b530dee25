#include "lib/num_coding.h"

#include "lib/fail.h"

namespace {
// Strings are read in pieces, so a damaged length cannot make one large
// allocation before the end of the stream is found.
const int32_t kStringPiece = 65536;

int nextByte(LSrm& srm) {
  int b = srm.getByte();
  if (b < 0) FFormatError(kFormatEndOfData);
  return b;
}

// The variable number whose bytes `next` gives one by one.
template <typename NextByte>
uint32_t decodeNum(NextByte next) {
  int first = next();
  if (first < 0x80) return static_cast<uint32_t>(first);
  int more;
  uint32_t w;
  if (first < 0xC0) {
    more = 1;
    w = first & 0x3F;
  } else if (first < 0xE0) {
    more = 2;
    w = first & 0x1F;
  } else if (first < 0xF0) {
    more = 3;
    w = first & 0x0F;
  } else if (first < 0xF8) {
    more = 4;
    w = 0;
  } else {
    FFormatError(kFormatEndOfData);
  }
  for (int i = 0; i < more; i++) w = w << 8 | static_cast<uint32_t>(next());
  if (more == 4 && ((first & 0x07) != 0 || w > UINT32_MAX - kNumRangeStart[4]))
    FFormatError(kFormatBadNumber);
  return w + kNumRangeStart[more];
}

uint32_t undoDiff(uint32_t n, uint32_t base) {
  if ((n & 1) == 0) return base + (n >> 1);
  // The one odd number with a zero half is what the writer makes of the
  // difference -2^31, whose doubled magnitude wraps to 0.
  uint32_t magnitude = n >> 1 ? n >> 1 : 0x80000000u;
  return base - magnitude;
}
}  // namespace

void FWriteNum(LStream& stream, uint32_t value) {
  uint8_t bytes[kNumWriteRoom];
  stream.write(bytes, FEncodeNum(value, bytes));
}

uint32_t FReadNum(LSrm& srm) {
  return decodeNum([&srm] { return nextByte(srm); });
}

void FWriteDiff(LStream& stream, uint32_t value, uint32_t base) {
  FWriteNum(stream, FDiffNum(value, base));
}

uint32_t FReadDiff(LSrm& srm, uint32_t base) { return undoDiff(FReadNum(srm), base); }

uint32_t LNumReader::readLongNum() {
  return decodeNum([this] {
    if (p_ == end_) FFormatError(kFormatEndOfData);
    return static_cast<int>(*p_++);
  });
}

uint32_t LNumReader::readDiff(uint32_t base) { return undoDiff(readNum(), base); }

const uint8_t* LNumReader::take(int64_t n) {
  if (n < 0 || n > end_ - p_) return nullptr;
  const uint8_t* taken = p_;
  p_ += n;
  return taken;
}

void FWriteStr(LStream& stream, const char* text, int32_t length) {
  if (text == nullptr)
    length = 0;
  else if (length < 0)
    length = LText<char>::measure(text);
  FWriteNum(stream, static_cast<uint32_t>(length));
  stream.write(text, length);
}

LStr* FReadStr(LSrm& srm) {
  uint32_t length = FReadNum(srm);
  if (length > INT32_MAX) FFormatError(kFormatBadNumber);
  LStr text;
  int32_t left = static_cast<int32_t>(length);
  while (left > 0) {
    int32_t piece = left < kStringPiece ? left : kStringPiece;
    if (srm.readInto(text, piece) != piece) FFormatError(kFormatEndOfData);
    left -= piece;
  }
  LStr* result = new LStr;
  result->swap(text);
  return result;
}
