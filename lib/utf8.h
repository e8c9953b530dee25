// UTF-8 and UTF-16, in two flavours.
//
// Lossless (file names on POSIX): a byte that does not start a well-formed
// sequence becomes the lone unit U+DC00 + byte, and such a unit becomes the
// byte again, so any byte string survives the trip to 16-bit text and back.
// As the system does it (code page 65001): ill-formed input becomes U+FFFD.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/ustr.h"

// Appends the units of UTF-8 text (a negative n measures up to the NUL).
void FUtf8ToUtf16(const char* text, int32_t n, UStr& out, bool lossless);
// Appends the UTF-8 of 16-bit text. Surrogate pairs are joined. A lone
// surrogate is, when lossless, its low byte for U+DC80..U+DCFF and the
// three-byte form for the rest; otherwise U+FFFD.
void FUtf16ToUtf8(const UChar* text, int32_t n, LStr& out, bool lossless);
