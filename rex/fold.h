// The two character tables behind folding: the width table, which maps
// half-width katakana, full-width ASCII and a few punctuation marks onto one
// form, and the set of characters that a search may ignore (blanks and the
// long-vowel and middle-dot marks). Both are hashed, built at first use and
// consulted under the library-wide lock; every thread may call these.
#pragma once

#include <cstdint>

// The character the width table maps c to, or c itself.
int32_t FRexWidthFold(int32_t c);
// Is c one of the characters that flag 4 drops?
bool FRexIgnorable(int32_t c);

// The hash lookups alone, without the guards that spare the common
// characters the lock; for checking those guards.
int32_t FRexWidthLookup(int32_t c);
bool FRexIgnoreLookup(int32_t c);
