// The places one extract has written to: each a name below the destination
// or below another place, by the system's key of the name, and the record
// that took it. Two records that would reach the same file or folder (on
// Windows, names that differ in case) are a conflict for the second, which
// must not overwrite the first. A place is found by its parent and its own
// name, so that a path costs the length of its last name, however deep.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

class TRec;

class TExtractPlaces {
 public:
  // The parent of the places right below the destination.
  static const int32_t kDestination = -1;

  TExtractPlaces() = default;
  TExtractPlaces(const TExtractPlaces&) = delete;
  TExtractPlaces& operator=(const TExtractPlaces&) = delete;

  // Takes the place of the checked `name` inside `parent` for owner and
  // stores its id in `place`. A place taken already by another record gives
  // that record and takes nothing; else null.
  const TRec* claim(int32_t parent, const char* name, const TRec* owner, int32_t* place);

 private:
  struct Place {
    int32_t id;
    const TRec* owner;
  };
  // Key: the parent's id in four bytes, then the system's key of the name.
  std::unordered_map<std::string, Place> places_;
};
