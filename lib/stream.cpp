#include "lib/stream.h"

#include "lib/fail.h"
#include "lib/msg.h"

namespace {
// Internal failure numbers of the operations a stream class did not provide.
enum : int {
  kNoRead = 51000,
  kNoWrite = 51010,
  kNoSeek = 51020,
  kNoTell = 51030,
  kNoFlush = 51040,
  kNoIsOpen = 51050,
  kNoClose = 51060,
  kNoTruncate = 51070,
};

const int32_t kCopyChunk = 4000;
// Units asked for per read of readAll: 10000 bytes, or 10000 16-bit units.
const int32_t kReadAllChunk = 10000;
}  // namespace

int32_t LStream::read(void*, int32_t) { FInternalNum(kNoRead); }
int32_t LStream::write(const void*, int32_t) { FInternalNum(kNoWrite); }
int32_t LStream::seek(int32_t) { FInternalNum(kNoSeek); }
int32_t LStream::tell() { FInternalNum(kNoTell); }
void LStream::flush() { FInternalNum(kNoFlush); }
bool LStream::isOpen() { FInternalNum(kNoIsOpen); }
void LStream::close() { FInternalNum(kNoClose); }
void LStream::truncate(int32_t) { FInternalNum(kNoTruncate); }
const char* LStream::name() { return "(unknown stream)"; }

template <typename Text>
int32_t LStream::readIntoText(Text& dest, int32_t n) {
  const int32_t unit = static_cast<int32_t>(sizeof(*dest.ptr));
  if (n <= 0) return 0;
  if (n > (INT32_MAX - dest.length) / unit) n = (INT32_MAX - dest.length) / unit;
  dest.reserve(dest.length + n);
  int32_t units = read(dest.ptr + dest.length, n * unit) / unit;
  dest.length += units;
  dest.ptr[dest.length] = 0;
  return units;
}

template <typename Text>
int32_t LStream::readAllText(Text& dest) {
  int32_t total = 0;
  for (;;) {
    int32_t n = readIntoText(dest, kReadAllChunk);
    if (n == 0) return total;
    total += n;
  }
}

int32_t LStream::readInto(LStr& dest, int32_t n) { return readIntoText(dest, n); }
int32_t LStream::readInto(UStr& dest, int32_t n) { return readIntoText(dest, n); }
int32_t LStream::readAll(LStr& dest) { return readAllText(dest); }
int32_t LStream::readAll(UStr& dest) { return readAllText(dest); }

int32_t LStream::writeText(const char* text, int32_t length) {
  if (text == nullptr) return 0;
  if (length < 0) length = LText<char>::measure(text);
  return write(text, length);
}

int32_t LStream::writeText(const UChar* text, int32_t length) {
  if (text == nullptr) return 0;
  if (length < 0) length = FULen(text);
  return write(text, length * 2);
}

int32_t LStream::printf(const char* fmt, ...) {
  LStr text;
  va_list args;
  va_start(args, fmt);
  text.formatV(fmt, args);
  va_end(args);
  return write(text.ptr, text.length);
}

void LStream::writeList(const char* const* items) {
  for (; *items; items++) writeText(*items);
}

void LStream::putChar(int c) {
  char high = static_cast<char>((c >> 8) & 0xFF);
  char low = static_cast<char>(c & 0xFF);
  if (high) write(&high, 1);
  write(&low, 1);
}

int32_t LStream::copyFrom(LStream& source, int32_t count) {
  if (count < 0) count = INT32_MAX;
  LStr chunk;
  chunk.reserve(kCopyChunk);
  int32_t total = 0;
  for (;;) {
    // A used-up count asks for 0 bytes, and that read of 0 ends the copy.
    int32_t want = count - total < kCopyChunk ? count - total : kCopyChunk;
    int32_t got = source.read(chunk.ptr, want);
    if (got == 0) break;
    total += got;
    int32_t written = write(chunk.ptr, got);
    if (written != got) FMsg(kMsgGeneral, "failed to copy stream (%d != %d)", got, written);
  }
  return total;
}

int32_t LStream::skip(int32_t n) {
  LStr scratch;
  readInto(scratch, n);
  return tell();
}
