// Conversions between 8-bit text and 16-bit text that lose nothing: a 16-bit
// unit the code page cannot show travels in 8-bit text as an escape, by
// default "{%u" + four upper-case hex digits + "}". And the number parsers.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/ustr.h"

extern const char* const kEscOpen;   // "{%u"
extern const char* const kEscClose;  // "}"

// Appends the conversion of 8-bit text (code page 0: the system's) to out.
void FToUStr(const char* text, int32_t n, UStr& out, int codePage = 0, const char* open = kEscOpen,
             const char* close = kEscClose);
// Appends the conversion of 16-bit text to out.
void FToLStr(const UChar* text, int32_t n, LStr& out, int codePage = 0, const char* open = kEscOpen,
             const char* close = kEscClose);

// The exact forms, for names: FToLStr, and besides, the "{" of every "{%u"
// that stands in the text itself, and every unit listed in `alwaysEscaped`
// (null: none), become escapes. So FToUStr gives back exactly these units,
// and two different texts never share a form.
void FToLStrExact(const UChar* text, int32_t n, LStr& out, const UChar* alwaysEscaped = nullptr);
// Decodes like FToUStr, but reports nothing and succeeds only for a text
// that is the exact form of what it gives (same `alwaysEscaped`): a short,
// lower-case or needless escape, an escape of an escaped unit left bare, or
// bytes that are no whole characters of the code page make it fail.
bool FToUStrExact(const char* text, int32_t n, UStr& out, const UChar* alwaysEscaped = nullptr);

// Text to a 32-bit integer: "-", then "0x"/"0j"/"0n" for base 16/10/2,
// commas ignored; `terminator` may end the number besides the NUL. A text
// that is not a number reports 15000 and gives what was read.
int32_t FParseInt(const char* text, char terminator = 0, int base = 0);
// A number with an optional unit k, m or g; with `upper`, unit - 1 is added.
int64_t FParseSize(const char* text, bool upper);
