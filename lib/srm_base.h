// LSrmBase: the buffering layer that sits on any stream. All data passes
// through one buffer of 1000 bytes; when it is refilled, the 20 bytes behind
// the cursor stay in it, so a parser that has just read a token can step back
// into them without touching the inner stream. It counts lines (LF bytes, or
// LF NUL pairs in 16-bit text) as the buffer moves on.
//
// The inner stream is not owned here; subclasses that own theirs close it in
// their destructors. The destructor writes what is buffered and asks the inner
// stream to flush.
#pragma once

#include <cstdint>

#include "lib/stream.h"

class LSrmBase : public LStream {
 public:
  enum : uint32_t {
    kDirty = 1,        // the buffer holds bytes not yet written to the inner stream
    kAtEnd = 2,        // a read ran out of data; cleared by any seek
    kFailOnWrite = 4,  // a stalled write ends the process
    kWideText = 8,     // 16-bit text: lines end with the pair LF NUL
    kCrLfOut = 16,     // every LF written becomes CR LF
  };

  explicit LSrmBase(LStream* inner);
  ~LSrmBase() override;
  LSrmBase(const LSrmBase&) = delete;

  int32_t read(void* buffer, int32_t size) override;
  // Returns the bytes taken, counted after the CR LF conversion.
  int32_t write(const void* buffer, int32_t size) override;
  // A target inside the buffer, its end included, only moves the cursor;
  // any other target writes the buffer out, seeks the inner stream and turns
  // line counting off until setLineNumber or reset.
  int32_t seek(int32_t position) override;
  int32_t tell() override { return bufStart + cur; }
  // Writes the whole buffer out, then flushes the inner stream.
  void flush() override;
  // False when there is no inner stream; otherwise the inner stream's answer.
  bool isOpen() override;
  void close() override;

  // The next byte (0 to 255), the next two or four bytes taken low byte
  // first, or -1 at the end. The common case is an index compare and a load.
  int getByte() {
    if (cur < valid) return static_cast<unsigned char>(buf[cur++]);
    return getByteSlow();
  }
  int32_t getWord() {
    if (valid - cur >= 2) {
      const unsigned char* p = reinterpret_cast<const unsigned char*>(buf + cur);
      cur += 2;
      return p[0] | p[1] << 8;
    }
    return getWordSlow();
  }
  int64_t getDword() {
    if (valid - cur >= 4) {
      const unsigned char* p = reinterpret_cast<const unsigned char*>(buf + cur);
      cur += 4;
      return static_cast<int64_t>(p[0] | p[1] << 8 | p[2] << 16 |
                                  static_cast<uint32_t>(p[3]) << 24);
    }
    return getDwordSlow();
  }
  // The same without moving.
  int peekByte() {
    if (cur < valid) return static_cast<unsigned char>(buf[cur]);
    return peekSlow(1);
  }
  int32_t peekWord() {
    if (valid - cur >= 2) {
      const unsigned char* p = reinterpret_cast<const unsigned char*>(buf + cur);
      return p[0] | p[1] << 8;
    }
    return peekSlow(2);
  }

  bool atEnd() const { return (flags & kAtEnd) != 0; }
  // The line of the cursor (from 1), or 0 when counting is off.
  int32_t lineNumber() const;
  // Makes lineNumber() return n at the present cursor.
  void setLineNumber(int32_t n);
  // Distance from the cursor back to the last LF in the buffer (1 right after
  // it), or -1 when the buffer holds none before the cursor.
  int32_t columnOffset() const;
  // Turns the LF to CR LF conversion of writes on or off; returns the old state.
  bool setCrLf(bool on) { return setFlag(kCrLfOut, on); }
  bool setWideText(bool on) { return setFlag(kWideText, on); }
  bool setFailOnWrite(bool on) { return setFlag(kFailOnWrite, on); }
  // Forgets the buffer and starts at position 0, line 1; for a freshly
  // attached inner stream.
  void reset();

 protected:
  static constexpr int32_t keepBack = 20;
  static constexpr int32_t bufSize = 1000;

  LStream* stream;
  char* buf;         // bufSize bytes and two NULs after the valid ones
  int32_t bufStart;  // stream position of buf[0]
  int32_t filePos;   // where the inner stream is known to be
  int32_t cur;       // cursor offset in buf
  int32_t valid;     // meaningful bytes in buf
  int32_t line;      // line of buf[0]; 0 when counting is off
  uint32_t flags;

  // Writes the buffer out (when dirty) and drops it from the front: all of
  // it, or with keep all but the keepBack bytes behind the cursor.
  void flushBuffer(bool keep);
  // Makes room and reads once into the buffer behind the valid bytes;
  // returns the bytes read.
  int32_t fill();
  // Reads the rest of a large request straight from the inner stream, past
  // the buffer, and adds what it read to *done; false when this stream
  // cannot (it counts lines or holds bytes to write).
  bool readDirect(char* out, int32_t size, int32_t* done);
  // Writes a large request straight to the inner stream after the buffer,
  // on any stream but one that counts the lines of 16-bit text (an LF and
  // its NUL are seen together only in the buffer); returns the bytes
  // written.
  int32_t writeDirect(const char* src, int32_t n);
  // Writes n bytes at position, trying again once after a write that took
  // nothing; returns what went out (a stall fails the stream when it is
  // told to).
  int32_t writeAt(int32_t position, const char* src, int32_t n);
  // Refills until count bytes are ready at the cursor or nothing more
  // comes; returns the bytes ready.
  int32_t ensure(int32_t count);

 private:
  friend struct LSrmProbe;

  // Copies into the buffer, writing it out as it fills; returns the bytes taken.
  int32_t writeBuffered(const char* src, int32_t n);
  int getByteSlow();
  int32_t getWordSlow();
  int64_t getDwordSlow();
  int32_t peekSlow(int32_t size);
  int32_t linesIn(int32_t first, int32_t end) const;
  bool setFlag(uint32_t flag, bool on);
};
