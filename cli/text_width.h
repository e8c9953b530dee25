// How wide 8-bit text (system code page) stands on a terminal: a
// double-byte character takes two columns, a single byte one, and an escape
// of a character outside the code page one or two by the character.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

int32_t FTextWidth(const char* text);
// The text, or its end behind "..." when it is wider than `columns`.
LStr FFitTail(const char* text, int32_t columns);
// Appends text to out, filled with blanks to `columns` on the right (align
// 'l') or on the left ('r').
void FAppendPadded(LStr& out, const char* text, int32_t columns, char align);
