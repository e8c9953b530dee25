// The choices of the values picker: the names, comments or user names that
// occur in the archive, as the statistics scan collected them.
#pragma once

#include <cstdint>

#include "lib/larr.h"

class LHash;
class TStringTable;
struct TStats;

// Beyond this many candidates the list is cut, and a last "..." stands for
// the rest.
const int32_t kMaxCandidates = 1000;
// What the picker says when there is nothing to offer.
extern const char* const kNoCandidates;

// The set of string ids that a values field offers (name, comment, user,
// check-out user); null for any other field.
const LHash* FCandidateIds(const TStats& stats, int32_t field);
// The texts of the ids in their order of text, each once; false when there
// are none.
bool FValueCandidates(const LHash& ids, const TStringTable& strings, LStrs& out);
// True when text is the last "..." of a cut list of candidates: it stands
// for the rest and is no value a field can take. A list that was not cut
// may hold "..." as a real value.
bool FIsRestEntry(const LStrs& candidates, const char* text);
