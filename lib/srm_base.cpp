#include "lib/srm_base.h"

#include <cstring>

#include "lib/alloc.h"
#include "lib/fail.h"

namespace {

// The LF bytes among n bytes (none when n is not positive).
int32_t lfCount(const char* bytes, int32_t n) {
  if (n <= 0) return 0;
  int32_t count = 0;
  const char* const end = bytes + n;
  for (const char* at = bytes;
       (at = static_cast<const char*>(std::memchr(at, '\n', end - at))) != nullptr; at++)
    count++;
  return count;
}

}  // namespace

LSrmBase::LSrmBase(LStream* inner)
    : stream(inner),
      buf(static_cast<char*>(FAlloc(bufSize + 2))),
      bufStart(0),
      filePos(0),
      cur(0),
      valid(0),
      line(1),
      flags(0) {
  buf[0] = buf[1] = 0;
}

LSrmBase::~LSrmBase() {
  if (stream) {
    flushBuffer(/*keep=*/false);
    stream->flush();
  }
  FFree(buf);
}

int32_t LSrmBase::read(void* buffer, int32_t size) {
  if (size <= 0) return 0;
  char* out = static_cast<char*>(buffer);
  int32_t done = 0;
  int emptyPasses = 0;
  for (;;) {
    int32_t take = valid - cur < size - done ? valid - cur : size - done;
    std::memcpy(out + done, buf + cur, take);
    cur += take;
    done += take;
    if (done == size) return done;
    if (take == 0 && ++emptyPasses == 2) {
      flags |= kAtEnd;
      return done;
    }
    if (size - done >= bufSize && readDirect(out + done, size - done, &done)) return done;
    fill();
  }
}

bool LSrmBase::readDirect(char* out, int32_t size, int32_t* done) {
  // Through the buffer, a block of the archive came in reads of a thousand
  // bytes each. Lines are not counted here, so only a stream that counts
  // none (any seek stops the count) takes this way.
  if (line != 0 || (flags & kDirty) || stream == nullptr) return false;
  bufStart += cur;
  valid = cur = 0;
  buf[0] = buf[1] = 0;
  if (filePos != bufStart) filePos = stream->seek(bufStart);
  int32_t got = 0;
  while (got < size) {
    int32_t n = stream->read(out + got, size - got);
    if (n <= 0) break;
    got += n;
  }
  filePos += got;
  bufStart += got;
  *done += got;
  if (got < size) flags |= kAtEnd;
  return true;
}

int32_t LSrmBase::write(const void* buffer, int32_t size) {
  if (size <= 0) return 0;
  if (flags & kCrLfOut) {
    LStr converted(static_cast<const char*>(buffer), size);
    converted.lfToCrLf();
    return writeBuffered(converted.ptr, converted.length);
  }
  return writeBuffered(static_cast<const char*>(buffer), size);
}

int32_t LSrmBase::writeBuffered(const char* src, int32_t n) {
  int32_t done = 0;
  int stalls = 0;
  for (;;) {
    int32_t take = bufSize - cur < n - done ? bufSize - cur : n - done;
    std::memcpy(buf + cur, src + done, take);
    cur += take;
    done += take;
    if (cur > valid) {
      valid = cur;
      buf[valid] = buf[valid + 1] = 0;
    }
    flags |= kDirty;
    if (done == n) return n;
    if (take == 0 && ++stalls == 2) return done;
    if (n - done >= bufSize && stream != nullptr && (line == 0 || !(flags & kWideText)))
      return done + writeDirect(src + done, n - done);
    flushBuffer(/*keep=*/true);
  }
}

int32_t LSrmBase::writeDirect(const char* src, int32_t n) {
  // Through the buffer, a block went to the update file in writes of a
  // thousand bytes each: 39 000 system calls for a first add of 8 000 files.
  // The buffer goes out first, all of it: bytes past the cursor are then
  // behind the write and overwritten in place. The lines of what goes out
  // here are counted as it goes, so that a stream that counts lines, as a
  // file written from its start does until its first seek, takes this way
  // too.
  flushBuffer(/*keep=*/false);
  if (valid != 0) return 0;  // the buffer did not go out
  int32_t written = writeAt(bufStart, src, n);
  if (line != 0) line += lfCount(src, written);
  bufStart += written;
  return written;
}

int32_t LSrmBase::writeAt(int32_t position, const char* src, int32_t n) {
  if (filePos != position) filePos = stream->seek(position);
  int32_t written = 0;
  int stalls = 0;
  while (written < n) {
    int32_t count = stream->write(src + written, n - written);
    written += count;
    filePos += count;
    if (count == 0 && ++stalls == 2) {
      if (flags & kFailOnWrite) FInternal("write error to %s", name());
      break;
    }
  }
  return written;
}

int32_t LSrmBase::seek(int32_t position) {
  flags &= ~kAtEnd;
  // The end of the valid bytes counts as inside: appending there needs no seek.
  if (position >= bufStart && position <= bufStart + valid) {
    cur = position - bufStart;
    return tell();
  }
  flushBuffer(/*keep=*/false);
  bufStart = filePos = stream ? stream->seek(position) : 0;
  line = 0;
  return tell();
}

void LSrmBase::flush() {
  flushBuffer(/*keep=*/false);
  if (stream) stream->flush();
}

bool LSrmBase::isOpen() { return stream != nullptr && stream->isOpen(); }

void LSrmBase::close() {
  flushBuffer(/*keep=*/false);
  if (stream) stream->close();
}

void LSrmBase::flushBuffer(bool keep) {
  int32_t n = keep ? (cur - keepBack > 0 ? cur - keepBack : 0) : valid;
  if ((flags & kDirty) && stream) n = writeAt(bufStart, buf, n);
  if (n == valid) {
    // All gone. The position stays at the cursor, also when the cursor was
    // moved back before the end of the valid bytes.
    if (line != 0) line += linesIn(0, cur);
    bufStart += cur;
    flags &= ~kDirty;
    valid = cur = 0;
  } else {
    // Bytes behind the cursor stay, and with them the dirty flag: they go out
    // at a later flush, by a new seek to their position. A stalled write
    // never drops bytes past the cursor.
    int32_t drop = n < cur ? n : cur;
    if (line != 0) line += linesIn(0, drop);
    std::memmove(buf, buf + drop, valid - drop);
    valid -= drop;
    cur -= drop;
    bufStart += drop;
  }
  buf[valid] = buf[valid + 1] = 0;
}

int32_t LSrmBase::fill() {
  flushBuffer(/*keep=*/true);
  if (stream == nullptr) return 0;
  if (filePos != bufStart + valid) filePos = stream->seek(bufStart + valid);
  int32_t got = stream->read(buf + valid, bufSize - valid);
  valid += got;
  filePos += got;
  buf[valid] = buf[valid + 1] = 0;
  return got;
}

int32_t LSrmBase::ensure(int32_t count) {
  while (valid - cur < count && fill() > 0) {
  }
  return valid - cur;
}

int LSrmBase::getByteSlow() {
  unsigned char b;
  return LSrmBase::read(&b, 1) == 1 ? b : -1;
}

int32_t LSrmBase::getWordSlow() {
  unsigned char b[2];
  if (LSrmBase::read(b, 2) != 2) return -1;
  return b[0] | b[1] << 8;
}

int64_t LSrmBase::getDwordSlow() {
  unsigned char b[4];
  if (LSrmBase::read(b, 4) != 4) return -1;
  return static_cast<int64_t>(b[0] | b[1] << 8 | b[2] << 16 | static_cast<uint32_t>(b[3]) << 24);
}

int32_t LSrmBase::peekSlow(int32_t size) {
  unsigned char b[2];
  int32_t got = LSrmBase::read(b, size);
  // The bytes just read are still in the buffer: a refill keeps keepBack
  // bytes behind the cursor.
  if (got > 0) seek(tell() - got);
  if (got < size) return -1;
  return size == 1 ? b[0] : b[0] | b[1] << 8;
}

int32_t LSrmBase::linesIn(int32_t first, int32_t end) const {
  if (!(flags & kWideText)) return lfCount(buf + first, end - first);
  // buf[end] is readable: the buffer ends in two NULs behind the valid bytes.
  int32_t count = 0;
  for (int32_t i = first; i < end; i++)
    if (buf[i] == '\n' && buf[i + 1] == 0) count++;
  return count;
}

int32_t LSrmBase::lineNumber() const { return line == 0 ? 0 : line + linesIn(0, cur); }

void LSrmBase::setLineNumber(int32_t n) { line = n - linesIn(0, cur); }

int32_t LSrmBase::columnOffset() const {
  for (int32_t i = cur - 1; i >= 0; i--)
    if (buf[i] == '\n') return cur - i;
  return -1;
}

void LSrmBase::reset() {
  bufStart = filePos = cur = valid = 0;
  line = 1;
  flags &= ~(kDirty | kAtEnd);
  buf[0] = buf[1] = 0;
}

bool LSrmBase::setFlag(uint32_t flag, bool on) {
  bool old = (flags & flag) != 0;
  if (on)
    flags |= flag;
  else
    flags &= ~flag;
  return old;
}
