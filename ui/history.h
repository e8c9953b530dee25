// The histories of the dialogs' text fields and of the extract destination:
// lists of what the user entered, oldest first, each text at most once, and
// at most `limit` long (the setting `memItemNum`). A dialog remembers its
// fields' texts when it ends with OK.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

// The text as a condition field keeps it: blanks around each ";" and ","
// go, so that "a ; b" and "a;b" are one entry.
LStr FNormalisedField(const char* text);
// Appends the normalised text to a condition field's history and returns
// it. An empty history first gets an empty entry, so that "no condition"
// stays one choice of the list; an equal entry moves to the end; beyond
// limit the oldest entries go.
LStr FRememberField(LStrs& history, const char* text, int32_t limit);
// Appends a folder to the extract destinations the same way, without a
// final separator; an empty text is not stored.
void FRememberFolder(LStrs& history, const char* folder, int32_t limit);
