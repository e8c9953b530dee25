// Dividing a text at a separator character. The separator is looked for
// only at character boundaries, so a trail byte of a double-byte character
// never splits a text.
#pragma once

#include "lib/larr.h"

enum : int {
  kSplitKeep = 0,       // items as they stand, empty ones included
  kSplitTrim = 1,       // white space around each item removed
  kSplitSkipEmpty = 2,  // empty items (after any trimming) left out
};

// Appends the items of text to out: n separators give n + 1 items, so an
// empty text is one empty item unless kSplitSkipEmpty is set. A null text
// appends nothing.
void FSplit(const char* text, char separator, int mode, LStrs& out);
