// The token streams of held and stored versions.
//
// A stream is a plain run of tokens with no header, count or terminator; its
// length is known from outside. Each token starts with one variable number t:
// the low two bits are the kind, t >> 2 the length n in bytes. Kind 1 is
// followed by the n bytes; kinds 2 and 3 by a signed distance d written as a
// difference from 0.
#pragma once

#include <cstdint>

enum : uint32_t {
  // Never written; a reader treats it as damage.
  kTokenNone = 0,
  // n raw bytes follow.
  kTokenLiteral = 1,
  // n bytes from the output itself, d bytes before the current position; may
  // overlap the bytes it writes, which repeats a pattern.
  kTokenSelfCopy = 2,
  // n bytes from the reference at (current position - d): d is the target
  // offset minus the reference offset, so a run that only moved keeps its d.
  kTokenRefCopy = 3,
  kTokenKindMask = 3,
  kTokenLengthShift = 2,
};

// The longest run one token holds: its length shifted by the kind bits must
// fit the 32-bit number.
const int32_t kTokenMaxLength = static_cast<int32_t>(UINT32_MAX >> kTokenLengthShift);

// Numbers of the archive format failure raised by the token reader.
enum : int {
  kBadLiteralRoom = 775,     // a literal run longer than the room left
  kBadLiteralCut = 777,      // a literal run cut short by the end of the tokens
  kBadSelfCopy = 784,        // a self copy from outside the bytes written
  kBadRefCopy = 792,         // a reference copy from outside the reference
  kBadTokenKind = 803,       // a token of kind 0
  kBadOutputLength = 806,    // more output than the capacity
  kBadHeldLength = 892,      // a held form longer than the raw size + 100
  kBadExpandedLength = 1859  // a held form that does not expand to the raw size
};

// Room that a held form may take beyond its raw size; a decoder's output
// capacity for a held form is the raw size plus this.
const int32_t kHeldSlack = 100;
