// The tokens of the pattern language. The parser never compares against an
// operator character directly: it compares whole tokens with the entries of
// one global table, which can be swapped so that the bare characters become
// literals and their backslash forms the operators.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/ustr.h"

// The entries of the token table.
enum URexTokenId {
  kRexOr,
  kRexAnd,
  kRexStar,
  kRexPlus,
  kRexOpt,
  kRexRange,
  kRexSetOpen,
  kRexSetClose,
  kRexOpen,
  kRexClose,
  kRexLineTop,
  kRexLineEnd,
  kRexSetNot,  // the same in both syntaxes
  kRexNot,
  kRexEqu,
  kRexTokenCount,
};

// One token at a cursor: a backslash escape, one character, or nothing at the
// end of the pattern.
struct URexToken {
  const UChar* at;
  int32_t length;

  bool empty() const { return length == 0; }
  // Equality of whole tokens with the entry in the table now in use.
  bool is(URexTokenId id) const;
  // The word boundary "\w", which the table does not hold.
  bool isWordEdge() const;
  // The character a token (not empty) stands for as a literal; a bad escape
  // reports message 15000 and gives -1.
  int32_t value() const;
};

// Measures the token at the cursor (a terminated pattern).
URexToken FRexPeekToken(const UChar* cursor);

// Switches the global table between the plain and the escaped syntax. The
// table is read without a lock, so only a caller holding the library-wide
// lock may switch it, and nobody may parse in another thread meanwhile.
void FRexUseEscapedTokens(bool escaped);

// The pattern text for a message, in 8-bit text.
LStr FRexNarrow(const UChar* text, int32_t n = -1);
