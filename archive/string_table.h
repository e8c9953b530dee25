// The string table of an archive: every name, comment, user and checkout
// text, interned once. Index n + 1 holds entry n; index 0 is the empty text.
// Lookups are case-sensitive, so "Readme" and "README" are two entries.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lhash.h"
#include "lib/lstr.h"

class TStringTable {
 public:
  LStrs strings;
  LHash stringIndex{LHash::kPairs};  // hash of the text -> index

  // Adds a copy of the text and returns its new index (duplicates allowed).
  uint32_t intern(const char* text, int32_t n = -1);
  // The index of the first entry with exactly this text, or 0.
  uint32_t find(const char* text, int32_t n = -1) const;
  // find, else intern; the empty text is index 0.
  uint32_t lookupOrAdd(const char* text);
  // The text of an index: "" for 0; "Internal Error #1578" beyond the count.
  const char* text(uint32_t index) const;
  int32_t count() const { return strings.count; }
  void clear();
};

// The string table of the open archive.
TStringTable& FStrings();
inline uint32_t FInternString(const char* text) { return FStrings().intern(text); }
inline uint32_t FFindString(const char* text) { return FStrings().find(text); }
