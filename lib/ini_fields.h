// The field functions of the settings text, one per kind of variable. Each
// takes the variable and an LIniIo, and writes or reads according to its
// mode. A value that does not read cleanly is reported (15001) and the
// variable keeps what it held.
#pragma once

#include "lib/ini_io.h"

// int32_t, written "%d" and read in base 10.
void FIniInt(void* target, LIniIo& io);
// char, written as the byte itself; reading wants a token of one byte.
void FIniChar(void* target, LIniIo& io);
// uint32_t, written "%Xh" and read in base 16 with an optional "h".
void FIniHex(void* target, LIniIo& io);
// LStr, escaped: "!" "(" ")" "," CR LF TAB become "!Q" "![" "!]" "!C" "!r"
// "!n" "!t", so that no structural byte occurs in a text.
void FIniText(void* target, LIniIo& io);
// LStrs, a list of escaped texts.
void FIniTexts(void* target, LIniIo& io);
// LInts, a list of numbers.
void FIniInts(void* target, LIniIo& io);
// Four consecutive int32_t (a rectangle), as a list of four numbers.
void FIniRect(void* target, LIniIo& io);
