// LSrm: the buffered stream with the text readers that parsers use. The
// 8-bit readers step over double-byte Shift-JIS characters as units, so a
// stop byte is never matched inside one; the 16-bit forms work in units of
// two bytes, low byte first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lib/lstr.h"
#include "lib/srm_base.h"
#include "lib/ustr.h"

class LSrm : public LSrmBase {
 public:
  // The inner stream is not owned; null makes a stream that is not open.
  explicit LSrm(LStream* inner) : LSrmBase(inner) {}

  // Makes 2 * count bytes ready at the cursor when the stream holds them and
  // returns a pointer to the cursor (terminated by two NULs behind the valid
  // bytes), or null when nothing remains. Does not move.
  const char* peekBuffer(int32_t count);
  // True when the stream continues with text; does not move. The folding
  // form compares ASCII letters without regard to case.
  bool lookingAt(const char* text);
  bool lookingAtFolded(const char* text);
  bool lookingAt(const UChar* text);

  // Reads up to the first character that is in set (NUL never stops) and
  // leaves that character unread; appends what it passed to dest when dest
  // is not null. Returns the stop character, or -1 at the end.
  int readUntil(const char* set, LStr* dest);
  int readUntil(const UChar* set, UStr* dest);
  int readUntil(const char* set, std::nullptr_t) {
    return readUntil(set, static_cast<LStr*>(nullptr));
  }
  // Reads until the input continues with text, then reads text too; all of
  // it goes to dest when dest is not null. False at the end of the stream.
  bool readUntilText(const char* text, LStr* dest);
  // Appends the bytes up to the first NUL to dest and consumes the NUL.
  // False when the stream ended before a NUL.
  bool readCString(LStr& dest);

  // How readLine treats the line end (CR LF, a lone LF or a lone CR).
  enum LineEnd : int {
    kDropLineEnd = 0,   // consumed, not stored
    kKeepLineEnd = 1,   // consumed and appended to dest
    kLeaveLineEnd = 2,  // left unread
  };
  // Reads one line into dest (when not null); returns the character that
  // ended it (CR or LF) or -1 when the stream ended first.
  int readLine(LStr* dest, int mode);
  int readLine(UStr* dest, int mode);
  // Skips a line of 8-bit text.
  int readLine(std::nullptr_t, int mode) { return readLine(static_cast<LStr*>(nullptr), mode); }

 private:
  template <typename C>
  int getUnit();
  template <typename C>
  void unread() {
    // The unit just read is still in the buffer: a refill keeps keepBack
    // bytes behind the cursor.
    cur -= static_cast<int32_t>(sizeof(C));
  }
  template <typename C>
  int readUntilUnits(const C* set, LText<C>* dest);
  template <typename C>
  int readLineUnits(LText<C>* dest, int mode);
  template <typename C>
  bool lookingAtUnits(const C* text, bool fold);
};
