// The state of one search: the text being read, the folding flags and the
// groups entered. The text is a window of 16-bit units in memory; positions
// count units from the start of the window, so a look-behind or "^" sees the
// text before the point where a search began.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/ustr.h"
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
  const UChar* text;
  int32_t length;
  int32_t position;
  UStr* out = nullptr;  // receives the characters a search steps over, if set

  URexCtx(const UChar* text, int32_t length, int32_t flags)
      : flags(flags), text(text), length(length), position(0) {}
  URexCtx(const URexCtx&) = delete;
  URexCtx& operator=(const URexCtx&) = delete;

  // The next folded character of the text, stepping over the ones that drop
  // out; -1 at the end.
  int32_t getChar() {
    while (position < length) {
      int32_t c = text[position++];
      // Without flags nothing folds: the common case costs one compare.
      if (flags == 0) return c;
      c = foldChar(c);
      if (c >= 0) return c;
    }
    return -1;
  }
  // A folded character, or -1 when it drops out.
  int32_t foldChar(int32_t c) const;

  // Runs node at the present position and puts the position back, so that
  // no match moves its caller; the caller steps forward by the result.
  int32_t call(URex* node, int retry) {
    int32_t at = position;
    int32_t result = node->match(*this, retry);
    position = at;
    return result;
  }

  // Tries root at each position from here on, up to limit units ahead (a
  // negative limit has none). Returns the match length and leaves the
  // position at the start of the match, or returns -1 at the end of the text.
  int32_t search(URex* root, int32_t limit);
};
