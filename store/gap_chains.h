// TGapChains: the hash table of the gap encoder. Target positions are hashed
// on their first six bytes into 10000 buckets; each bucket keeps only the
// last 50 positions inserted into it, in a ring, and is searched from the
// newest to the oldest.
//
// One table serves all gaps of one encoding and lives as long as it. It reads
// up to 8 bytes from each position it hashes, so the target must have the
// zero tail of a THeldBuf.
#pragma once

#include <cstdint>

#include "lib/larr.h"

struct TChainRing {
  static const int32_t kSlots = 50;
  // A 32-bit fingerprint of the six hashed bytes of each slot's position, kept
  // beside the positions so that a walk tests fifty of them with a few
  // vector compares instead of fifty reads of the target. Two spare slots
  // round the array up to whole vectors.
  uint32_t tags[kSlots + 2];
  int32_t positions[kSlots];
  int32_t head;   // the slot the next insertion writes
  int32_t count;  // slots in use, up to kSlots
};

class TGapChains {
 public:
  static const int32_t kBuckets = 10000;
  // Walks stop once a match is this long.
  static const int32_t kLongEnough = 1000;

  KST_POOLED_NEW
  explicit TGapChains(const uint8_t* target);
  ~TGapChains();
  TGapChains(const TGapChains&) = delete;
  TGapChains& operator=(const TGapChains&) = delete;

  // The bucket of a position: from the little-endian 16-bit words w0, w1, w2
  // at offsets 0, 2 and 4, (((w1 << 2) | w2) << 1 | w0) mod 10000. Every
  // stored version was matched with this hash, weak as it is.
  static uint32_t bucketOf(const uint8_t* at);
  static uint32_t tagOf(const uint8_t* at);

  void insert(int32_t position) {
    insert(bucketOf(target_ + position), tagOf(target_ + position), position);
  }
  void insert(uint32_t bucket, uint32_t tag, int32_t position);
  bool hasRing(uint32_t bucket) const { return buckets_[bucket] != nullptr; }

  // The longest common prefix of the bytes at `position` with those at any
  // position in the bucket's ring, bounded by limit - position; among equal
  // lengths the newest entry wins, and the walk stops at kLongEnough. The
  // ring must exist; every entry must lie before `position`. Returns the
  // length and sets *from to the entry (untouched when the ring holds none
  // with the same fingerprint).
  int32_t longest(uint32_t bucket, uint32_t tag, int32_t position, int32_t limit,
                  int32_t* from) const;

  int32_t ringCount() const { return rings_; }
  int64_t insertCount() const { return insertions_; }

 private:
  struct FreeBlock {
    static void dispose(TChainRing* block);
  };
  static const int32_t kRingsPerBlock = 64;

  TChainRing* newRing();

  const uint8_t* target_;
  TChainRing* buckets_[kBuckets];
  LArrOf<TChainRing*, FreeBlock> blocks_;  // rings are carved from these
  int32_t rings_ = 0;
  int64_t insertions_ = 0;
};
