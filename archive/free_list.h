// The free space of an archive: extents sorted by descending position, so
// that index 0 is always the tail (from treePos on, unbounded) and the last
// index is the hole nearest the start of the file.
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "lib/larr.h"

struct TExtent {
  KST_POOLED_NEW
  int32_t pos;   // a multiple of 64
  int32_t size;  // a multiple of 64, or kTailSize for the tail
  bool isTail() const;
};

typedef LArrOf<TExtent*, LDelete<TExtent*>> TFreeList;

// Takes ownership of the extent, inserts it in order and merges it with its
// neighbours; with keepLower it is not merged into the extent below, so that
// it still starts where it did.
void FPutExtent(TFreeList& list, TExtent* extent, bool keepLower);
// Removes and returns the extent at exactly pos (pos > 0; "Internal Error
// #933" when there is none), or else the lowest extent; null when the list is
// empty.
TExtent* FTakeExtent(TFreeList& list, int32_t pos);
