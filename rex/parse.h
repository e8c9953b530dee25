// Turns a pattern into a tree of URex nodes.
//
// The language: literal characters and escapes, "[...]" sets with ranges and
// "[^...]" exclusion, "(...)" groups, "*", "+" and "?" after any item, "^",
// "$" and "\w" (word boundary), look-around with the prefix operators "~",
// "!", "~~" and "!!", and "|" (first alternative that matches) or "&" (all
// must match; the longest length counts) between sequences. "|" and "&" have
// no precedence between them and may not be mixed without a group. "." is a
// literal: there is no any-character operator.
//
// Failures are message 15000 and never unwind: parsing carries on with what
// it has, so one pattern may give several messages. The caller decides by the
// result, which it owns (delete it).
#pragma once

#include "lib/ustr.h"
#include "rex/node.h"

// Parses an expression at *cursor and leaves the cursor behind it: at the
// end of the pattern, or at the ")" that closes the caller's group, or at
// what could not be parsed. Null when there is nothing to parse.
URex* FRexParse(const UChar** cursor);

// Parses a whole pattern in the plain syntax; null (with a message) when it
// yields no expression, and null without one for a null pattern.
URex* FRexCompile(const UChar* pattern);

// The same in the escaped syntax, where the bare characters are literals and
// their backslash forms ("\(", "\|", "\*", ...) are the operators. Holds the
// library-wide lock throughout, so a plain compile in another thread must not
// run at the same time.
URex* FRexCompileEscaped(const UChar* pattern);
