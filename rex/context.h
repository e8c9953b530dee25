// The state of one search: the stream of 16-bit text being read, the folding
// flags and the groups entered. Text is read through a buffered stream, two
// bytes to a character, low byte first; positions are stream positions in
// bytes, and a look-behind or "^" sees the text before the point where a
// search began.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/srm.h"
#include "lib/stream.h"
#include "rex/node.h"

// Folding flags; they apply in this order to the text and to the pattern.
enum : int32_t {
  kRexFoldCase = 1,    // ASCII upper-case letters become lower-case
  kRexFoldWidth = 2,   // through the width table
  kRexSkipBlanks = 4,  // blanks and the long-vowel and middle-dot marks drop out
  kRexSkipOnes = 8,    // the character 1 drops out
};

class URexCtx {
 public:
  int32_t flags;
  LArrOf<URexBrace*> braces;  // groups entered, in order of entry
  LSrm* srm;                  // not owned
  // Receives each character a search steps over, as 16-bit text, if set.
  LStream* out = nullptr;

  URexCtx(LSrm* srm, int32_t flags) : flags(flags), srm(srm) {}
  URexCtx(const URexCtx&) = delete;
  URexCtx& operator=(const URexCtx&) = delete;

  // The next folded character, stepping over the ones that drop out; -1 at
  // the end.
  int32_t getChar() {
    for (;;) {
      int32_t c = srm->getWord();
      // Without flags nothing folds: the common case costs one compare.
      if (c < 0 || flags == 0) return c;
      c = foldChar(c);
      if (c >= 0) return c;
    }
  }
  // A folded character, or -1 when it drops out.
  int32_t foldChar(int32_t c) const;

  int32_t tell() { return srm->tell(); }
  // Positions are rounded down to a whole character.
  void seek(int32_t position) { srm->seek(position & ~1); }
  // Characters read since a noted position.
  int32_t since(int32_t start) { return (srm->tell() - start) / 2; }

  // Runs node at the present position and puts the position back, so that
  // no match moves its caller; the caller steps forward by the result.
  int32_t call(URex* node, int retry) {
    int32_t at = tell();
    int32_t result = node->match(*this, retry);
    seek(at);
    return result;
  }

  // Tries root at each position from here on, up to limit characters ahead
  // (a negative limit has none). Returns the match length and leaves the
  // stream at the start of the match, or returns -1 at the end of the text.
  int32_t search(URex* root, int32_t limit);
};
