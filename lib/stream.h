// LStream: the root of every byte stream of the library (files, memory,
// buffered streams). Each primitive is one virtual operation; a subclass
// overrides what its end point can do and keeps the rest, which end the
// process as internal failures, so that asking a stream for something it
// cannot do is a loud programming error rather than a silent no-op.
//
// Positions and sizes are signed 32-bit; streams are limited to what that
// holds. Streams have no locks: a stream belongs to one thread at a time.
// Low-level failures report numbered messages (17000) and return whatever
// count they have; callers rely on the counts.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "lib/lobj.h"
#include "lib/lstr.h"
#include "lib/ustr.h"

class LStream : public LObj {
 public:
  // Reads up to size bytes; returns the count (0 at the end).
  virtual int32_t read(void* buffer, int32_t size);
  // Writes size bytes; returns the count written.
  virtual int32_t write(const void* buffer, int32_t size);
  // Moves and returns the new position; a negative position means the end.
  virtual int32_t seek(int32_t position);
  virtual int32_t tell();
  // Pushes data on to the end point.
  virtual void flush();
  virtual bool isOpen();
  virtual void close();
  // Ends the stream at a position; a negative position means here.
  virtual void truncate(int32_t position);
  // Text naming the stream in messages.
  virtual const char* name();

  // Appends up to n bytes (n 16-bit units) to dest, keeping it terminated;
  // returns the units read. An odd byte at the end of 16-bit text is lost.
  int32_t readInto(LStr& dest, int32_t n);
  int32_t readInto(UStr& dest, int32_t n);
  // Appends everything up to the end; returns the units read.
  int32_t readAll(LStr& dest);
  int32_t readAll(UStr& dest);
  // A null text writes nothing and returns 0; a negative length measures.
  // The 16-bit form writes two bytes per unit. Returns the bytes written.
  int32_t writeText(const char* text, int32_t length = -1);
  int32_t writeText(const UChar* text, int32_t length = -1);
  // Formats (at most 30000 bytes) and writes the result without its NUL.
  int32_t printf(const char* fmt, ...) __attribute__((format(printf, 2, 3)));
  // Writes each text of a null-terminated array of texts.
  void writeList(const char* const* items);
  // Writes a character: its high byte first when that is non-zero, then its
  // low byte (a double-byte Shift-JIS character as its two bytes).
  void putChar(int c);
  // Copies up to count bytes (negative: all) from source in chunks of 4000
  // bytes; a chunk that does not write whole reports 15000 and the copy goes
  // on. Returns the bytes read.
  int32_t copyFrom(LStream& source, int32_t count);
  // Reads and drops n bytes; returns the position after them.
  int32_t skip(int32_t n);

 private:
  template <typename Text>
  int32_t readIntoText(Text& dest, int32_t n);
  template <typename Text>
  int32_t readAllText(Text& dest);
};
