// Character classes of 8-bit text and the double-byte tests that keep a byte
// scan from landing inside a Shift-JIS (or EUC) character.
#pragma once

#include <cstdint>

enum : uint16_t {
  kCharUpper = 1,
  kCharLower = 2,
  kCharDigit = 4,
  kCharPunct = 8,
  kCharUnderscore = 16,  // on top of kCharPunct
  kCharSpace = 32,
  kCharLead = 4096,  // a Shift-JIS lead byte
  kCharKana = 8192,  // half-width katakana
};

extern const uint16_t FCharType[256];

// 's' (Shift-JIS, the start value) or 'e' (EUC); any other mode has no lead
// bytes.
extern int32_t FCharMode;
// 'J' for Japanese texts, anything else for English; starts as 'E'.
int32_t FGetLang();
// Sets the language and the run-time locale; a failure reports 35000 and
// leaves the language as it was.
void FSetLang(int32_t lang);

inline bool FIsLetter(unsigned char c) { return (FCharType[c] & (kCharUpper | kCharLower)) != 0; }
inline bool FIsDigit(unsigned char c) { return (FCharType[c] & kCharDigit) != 0; }
inline bool FIsSpace(unsigned char c) { return (FCharType[c] & kCharSpace) != 0; }
bool FIsLeadByte(unsigned char c);
// Can this byte value be the second byte of a double-byte character?
bool FIsTrailValue(unsigned char c);
// Is the byte at index the second byte of a double-byte character? Walks back
// over lead bytes, because trail bytes can have lead-byte values.
bool FIsTrailByte(const char* text, int32_t index);
// Is the byte at index the first byte of a double-byte character?
bool FIsLeadAt(const char* text, int32_t index);
// May a name start with this byte?
bool FIsNameStart(unsigned char c);
