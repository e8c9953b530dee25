// How wide 8-bit text (system code page) stands on a terminal: a
// double-byte character takes two columns, a single byte one. An escape of a
// character outside the code page shows as that character (one or two
// columns by the character) on a terminal that has it, and as its own text
// on one whose code page lacks it as well.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

enum TEscapeForm { kEscapeAsCharacter, kEscapeAsText };

int32_t FTextWidth(const char* text, TEscapeForm escapes);
// The text, or its end behind "..." when it is wider than `columns`.
LStr FFitTail(const char* text, int32_t columns, TEscapeForm escapes);
// Appends text to out, filled with blanks to `columns` on the right (align
// 'l') or on the left ('r').
void FAppendPadded(LStr& out, const char* text, int32_t columns, char align, TEscapeForm escapes);
