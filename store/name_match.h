// Matching file names against the wildcard patterns of a name condition.
// The rules are simple and old, and saved conditions depend on them, so
// their oddities stay: a star ends the match, "?" matches the end of the
// text, a pattern that ends where the text has a blank fits, and bytes are
// compared with the bit 0x20 set on both sides, which folds ASCII case and
// also a few non-letters (and bytes of double-byte characters) onto each
// other.
#pragma once

#include "lib/lstr.h"

// True when text fits pattern. Anything after a "*" in the pattern is
// ignored ("a*b" means "a*"); "?" fits any byte or the end of the text; a
// blank in the pattern fits the end of the text, and the end of the pattern
// fits a blank in the text ("ab" fits "ab cd").
bool FWildMatch(const char* text, const char* pattern);

// Splits a name at its last "." into base and extension (both replaced).
// Without a dot the whole name is the base and the extension is "*", so a
// pattern without a dot fits every extension.
void FSplitExt(const char* name, LStr& base, LStr& ext);
