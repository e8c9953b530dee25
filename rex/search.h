// Searching 16-bit text with a compiled expression.
//
// The first match at the earliest position wins. Positions and lengths count
// text units: with folding flags that drop characters, the dropped ones are
// part of the match that steps over them, so start plus length always ends
// the match in the text. A null expression or text finds nothing; a negative
// length measures the text up to its terminator.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/ustr.h"
#include "rex/context.h"
#include "rex/node.h"

// One group of a match: its name ("1", "2", ... for groups without one; the
// number counts unnamed groups only) and the text it captured.
struct URexGroup {
  KST_POOLED_NEW
  UStr name;
  UStr text;
};
typedef LArrOf<URexGroup*, LDelete<URexGroup*>> URexGroups;

// Searches from the stream's position up to limit characters ahead
// (negative: to the end of the stream). Returns the start of the match in
// characters from where the search began, or -1; matchLength (if not null) gets its length or -1,
// and groups (if not null) one record per entry into a group during the search, in order of entry,
// each with the group's last text (empty without a match). A group tried at an earlier position, or
// again by a retry, stands once per try. The stream is left at the match start.
int32_t FRexSearchCtx(URex* rex, URexCtx& ctx, int32_t limit, int32_t* matchLength,
                      URexGroups* groups);

// Searches text from unit `start` on; the text before it still counts for
// "^", "\w" and look-behind. Returns the start of the match in the text, or
// -1 (also for a start outside the text).
int32_t FRexSearchFrom(URex* rex, const UChar* text, int32_t length, int32_t start,
                       int32_t* matchLength, URexGroups* groups, int32_t flags);
int32_t FRexSearch(URex* rex, const UChar* text, int32_t length, int32_t* matchLength,
                   URexGroups* groups, int32_t flags);

// Compiles the pattern (plain syntax when escaped is 0, else escaped),
// searches without folding and returns the start of the match, or -1. A
// pattern that gives no expression has been reported by the compiler.
int32_t FRexFindSyntax(const UChar* pattern, const UChar* text, int32_t length, int escaped);
int32_t FRexFind(const UChar* pattern, const UChar* text, int32_t length);

// Debugging text of a list of groups, with a separator line between them.
void FRexDumpGroups(const URexGroups& groups, LStr& out);
