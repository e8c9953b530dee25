// The coarse matcher: long stretches of the target found in the reference
// wherever they moved to, by sampling the target at regular steps and looking
// for each sample near the same proportional place in the reference.
#pragma once

#include <cstdint>
#include <memory>

#include "lib/larr.h"
#include "store/probe_scan.h"
#include "store/ref_index.h"

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

// The whole target and reference of one encoding, and the sampling setting.
// It also chooses how probes are found: while the samples have scanned little
// of the reference, by scanning outward; once they have scanned it many times
// over, through an index of its words built then, after which a sample costs
// only the probes that pass. The probes and their order are the same either
// way.
class TCoarseInput {
 public:
  TCoarseInput(const uint8_t* target, int32_t targetLen, const uint8_t* reference,
               int32_t referenceLen, int32_t coarseDiv)
      : target(target),
        targetLen(targetLen),
        reference(reference),
        referenceLen(referenceLen),
        coarseDiv(coarseDiv) {}
  TCoarseInput(const TCoarseInput&) = delete;
  TCoarseInput& operator=(const TCoarseInput&) = delete;

  template <typename Visit>
  void visitProbes(const TProbeRange& range, uint32_t word, Visit&& visit);

  const uint8_t* const target;
  const int32_t targetLen;
  const uint8_t* const reference;
  const int32_t referenceLen;
  const int32_t coarseDiv;

 private:
  // The index is built once the scans have covered this many references
  // (each direction counted). Building it costs about as much as 20 scans;
  // on chains of versions that change little an earlier index cost more than
  // it saved (12 MB versions encoded at 61 MB/s with 4, at 127 MB/s with 64),
  // while pairs of unrelated files still get it early enough (16 MB/s with
  // it, 10 MB/s without).
  static const int32_t kScansBeforeIndex = 64;
  // The index takes four bytes per reference byte; larger references are
  // only ever scanned, so that the encoder's memory stays a small multiple of
  // the two versions it holds.
  static const int32_t kLargestIndexed = 32 << 20;

  int64_t scanned_ = 0;
  std::unique_ptr<TRefIndex> index_;
};

// Searches the target range [tFrom, tTo) against the reference range
// [rFrom, rTo) and appends what it finds to `list`, in target order.
void FFindMatches(TCoarseInput& in, int32_t tFrom, int32_t tTo, int32_t rFrom, int32_t rTo,
                  TMatchList& list);

// One pass: searches every gap of `list` (the whole of both inputs when it is
// empty) and merges the new matches in. Known matches are kept as they are.
void FRefineMatches(TCoarseInput& in, TMatchList& list);

template <typename Visit>
void TCoarseInput::visitProbes(const TProbeRange& range, uint32_t word, Visit&& visit) {
  if (index_ == nullptr && referenceLen <= kLargestIndexed &&
      scanned_ > int64_t{kScansBeforeIndex} * referenceLen)
    index_.reset(new TRefIndex(reference, referenceLen));
  if (index_ != nullptr)
    index_->visitProbes(range, word, visit);
  else
    scanned_ += 2 * int64_t{FScanProbes(range, word, visit)};
}
