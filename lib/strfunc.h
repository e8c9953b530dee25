// Comparison, hashing and search over strings and arrays.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/ustr.h"

// Bytes compared unsigned; with ignoreCase, ASCII letters fold (never the
// trail byte of a double-byte character) and the result is the difference of
// the last two values compared.
int FStrCmp(const char* a, const char* b, bool ignoreCase);
int FUStrCmp(const UChar* a, const UChar* b, bool ignoreCase);
// Null-tolerant: two nulls give 1, one null 0, otherwise -1, 0 or 1.
int FStrCmpNull(const LStr* a, const LStr* b);
int FUStrCmpNull(const UStr* a, const UStr* b);
// Length of a minus length of b.
int32_t FStrLenDiff(const LStr& a, const LStr& b);
int32_t FUStrLenDiff(const UStr& a, const UStr& b);

uint32_t FHashStr(const char* text, int32_t n = -1);
uint32_t FHashUStr(const UChar* text, int32_t n = -1);

typedef int (*FCompare)(const void* item, const void* key, void* context);
// Binary search of a sorted array of pointers: the first index of a run of
// equal items, or the one's complement of the insertion point.
int32_t FBinSearch(void* const* items, const void* key, int32_t count, FCompare compare,
                   void* context);

// True when text ends with suffix, exact bytes.
bool FEndsWith(const char* text, const char* suffix);
// Length of the common prefix of a and b, stepped back to a character boundary.
int32_t FCommonPrefix(const char* a, const char* b);
// Length of the common tail of a and b, stepped back to a character boundary.
int32_t FCommonTail(const char* a, const char* b);
