#include "store/ref_index.h"

#include <cstring>

namespace {
// About this many positions share a bucket: a sample steps over the other
// words of its bucket once, which costs little, and a small bucket table
// keeps the building within the caches.
const int32_t kPositionsPerBucket = 32;
const int32_t kFewestBucketBits = 10;
}  // namespace

TRefIndex::TRefIndex(const uint8_t* reference, int32_t referenceLen) : reference_(reference) {
  const int32_t count = referenceLen >= 4 ? referenceLen - 3 : 0;
  int32_t bits = kFewestBucketBits;
  while (bits < 30 && (int64_t{1} << bits) * kPositionsPerBucket < count) bits++;
  shift_ = 32 - bits;
  const int32_t buckets = 1 << bits;
  starts_ = static_cast<int32_t*>(FAlloc((buckets + 1) * static_cast<int32_t>(sizeof(int32_t))));
  positions_ = static_cast<int32_t*>(
      FAlloc((count > 0 ? count : 1) * static_cast<int32_t>(sizeof(int32_t))));
  std::memset(starts_, 0, (buckets + 1) * sizeof(int32_t));
  // Counting sort by bucket; positions go in rising order, so each bucket
  // ends up sorted.
  for (int32_t at = 0; at < count; at++) starts_[bucketOf(FLoad32(reference + at)) + 1]++;
  for (int32_t b = 0; b < buckets; b++) starts_[b + 1] += starts_[b];
  int32_t* next = static_cast<int32_t*>(FAlloc(buckets * static_cast<int32_t>(sizeof(int32_t))));
  std::memcpy(next, starts_, buckets * sizeof(int32_t));
  for (int32_t at = 0; at < count; at++) positions_[next[bucketOf(FLoad32(reference + at))]++] = at;
  FFree(next);
}

TRefIndex::~TRefIndex() {
  FFree(starts_);
  FFree(positions_);
}

const int32_t* TRefIndex::lowerBound(const int32_t* first, const int32_t* last, int32_t at) {
  while (first < last) {
    const int32_t* middle = first + (last - first) / 2;
    if (*middle < at)
      first = middle + 1;
    else
      last = middle;
  }
  return first;
}
