// Replacing every match of a pattern in a string.
#pragma once

#include "lib/lstr.h"
#include "lib/ustr.h"

// Replaces each match of pattern (plain syntax, no folding) in string by
// replacement (nothing when it is null), left to right, never searching a
// replacement again. A pattern that gives no expression is reported by the
// compiler and leaves the string as it was. The pattern must consume: one
// that can match the empty text where the search stands never ends.
void FRexReplaceAll(UStr& string, const UChar* pattern, const UChar* replacement);
// The same on 8-bit text, through 16-bit text and back.
void FRexReplaceAll(LStr& string, const char* pattern, const char* replacement);
