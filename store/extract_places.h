// The places one extract has written to: a path below the destination, by
// the system's key of it, and the record that took it. Two records that
// would reach the same file or folder (on Windows, names that differ in
// case) are a conflict for the second, which must not overwrite the first.
#pragma once

#include "lib/larr.h"
#include "lib/lhash.h"
#include "lib/lstr.h"

class TRec;

class TExtractPlaces {
 public:
  TExtractPlaces() = default;
  TExtractPlaces(const TExtractPlaces&) = delete;
  TExtractPlaces& operator=(const TExtractPlaces&) = delete;

  // Takes the place of a relative path made of checked names for owner; a
  // place taken already by another record gives that record and takes
  // nothing, else null.
  const TRec* claim(const char* relative, const TRec* owner);

 private:
  struct Place {
    LStr key;
    const TRec* owner;
  };
  LArrOf<Place*, LDelete<Place*>> places_;
  LHash index_{LHash::kPairs};  // hash of the key -> Place*
};
