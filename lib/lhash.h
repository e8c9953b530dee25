// LHash: a chained hash table with a fixed number of buckets (256 in every
// table of the program), made lazily, never rehashed, duplicates allowed.
// Elements are integers or pointers; what clear() frees is fixed by the kind
// of table (integers, owned pairs, owned strings).
#pragma once

#include <cstdint>

#include "lib/larr.h"

class LHash {
 public:
  enum Kind { kInts, kPairs, kStrs, kUStrs };
  LArr** buckets = nullptr;
  int32_t bucketCount = 256;
  int32_t elementCount = 0;

  KST_POOLED_NEW
  explicit LHash(Kind kind) : kind_(kind) {}
  ~LHash() { clear(); }
  LHash(const LHash&) = delete;
  LHash& operator=(const LHash&) = delete;

  void addInt(intptr_t key);
  void addPair(intptr_t key, intptr_t value);
  // Takes ownership of the string.
  void addStr(LStr* text);
  void addUStr(UStr* text);
  bool containsInt(intptr_t key) const;
  // The first element of the key's bucket for which compare gives 0, or 0.
  typedef int (*Compare)(intptr_t element, const void* key);
  intptr_t findInt(intptr_t key, Compare compare) const;
  intptr_t findStr(const char* key, Compare compare) const;
  intptr_t findUStr(const UChar* key, Compare compare) const;
  // Appends every element, bucket by bucket.
  void collect(LArr& out) const;
  void clear();

 private:
  void add(uint32_t hash, intptr_t element);
  intptr_t find(uint32_t hash, const void* key, Compare compare) const;
  Kind kind_;
};
