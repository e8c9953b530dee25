// Items looked up by name, with the case of ASCII letters ignored as the
// tree compares names. Built once from the nodes below one node, so that
// matching a folder's records to them costs n log n instead of a walk of
// the nodes for each record, which stalled on folders of thousands of files.
#pragma once

#include <cstdint>
#include <vector>

#include "lib/lstr.h"

class TNameIndex {
 public:
  // Names added after the first look-up are not found.
  void add(const char* name, intptr_t item);
  // The item of the first name added that equals `name`, or 0.
  intptr_t find(const char* name);

 private:
  struct Entry {
    LStr name;
    intptr_t item;
    int32_t order;  // of the adds, so that the first of equal names wins
  };
  std::vector<Entry> entries_;
  bool sorted_ = false;
};
