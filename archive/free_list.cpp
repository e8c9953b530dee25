#include "archive/free_list.h"

#include "archive/format.h"
#include "lib/fail.h"

bool TExtent::isTail() const { return size == kTailSize; }

namespace {
// The index where an extent at pos stands or would be inserted, on the
// descending order of positions.
int32_t placeOf(const TFreeList& list, int32_t pos, bool* found) {
  int32_t lo = 0;
  int32_t hi = list.count;
  while (lo < hi) {
    int32_t mid = (lo + hi) / 2;
    if (list[mid]->pos == pos) {
      *found = true;
      return mid;
    }
    if (list[mid]->pos > pos)
      lo = mid + 1;
    else
      hi = mid;
  }
  *found = false;
  return lo;
}
}  // namespace

void FPutExtent(TFreeList& list, TExtent* extent, bool keepLower) {
  bool found;
  int32_t at = placeOf(list, extent->pos, &found);
  list.insert(extent, at);
  int32_t lower = at + 1;
  if (!keepLower && lower < list.count) {
    TExtent* below = list[lower];
    if (extent->pos <= below->pos + below->size) {
      extent->pos = below->pos;
      if (!extent->isTail()) extent->size += below->size;
      list.removeRange(lower, 1);
    }
  }
  int32_t higher = at - 1;
  if (higher >= 0) {
    TExtent* above = list[higher];
    if (extent->pos + static_cast<int64_t>(extent->size) >= above->pos) {
      extent->size = above->isTail() ? kTailSize : above->pos + above->size - extent->pos;
      list.removeRange(higher, 1);
    }
  }
}

TExtent* FTakeExtent(TFreeList& list, int32_t pos) {
  if (list.count == 0) return nullptr;
  if (pos > 0) {
    bool found;
    int32_t at = placeOf(list, pos, &found);
    if (!found) FInternalBox(933);
    return list.detach(at);
  }
  return list.detach(list.count - 1);
}
