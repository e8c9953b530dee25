// The coarse matcher: long stretches of the target found in the reference
// wherever they moved to, by sampling the target at regular steps and looking
// for each sample near the same proportional place in the reference.
#pragma once

#include <cstdint>

#include "lib/larr.h"

// One coarse match; offsets are from the start of the whole target and the
// whole reference.
struct TMatch {
  KST_POOLED_NEW
  int32_t pos;
  int32_t len;
  int32_t refPos;
};

// Matches in increasing pos, not overlapping in the target; their refPos need
// not increase. The list owns them.
typedef LArrOf<TMatch*, LDelete<TMatch*>> TMatchList;

// The whole target and reference of one encoding, with the sampling setting.
struct TCoarseInput {
  const uint8_t* target;
  int32_t targetLen;
  const uint8_t* reference;
  int32_t referenceLen;
  int32_t coarseDiv;
};

// Searches the target range [tFrom, tTo) against the reference range
// [rFrom, rTo) and appends what it finds to `list`, in target order.
void FFindMatches(const TCoarseInput& in, int32_t tFrom, int32_t tTo, int32_t rFrom, int32_t rTo,
                  TMatchList& list);

// One pass: searches every gap of `list` (the whole of both inputs when it is
// empty) and merges the new matches in. Known matches are kept as they are.
void FRefineMatches(const TCoarseInput& in, TMatchList& list);
