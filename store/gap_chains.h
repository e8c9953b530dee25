// TGapChains: the hash table of the gap encoder. Target positions are hashed
// on their first six bytes into 10000 buckets; each bucket keeps only the
// last 50 positions inserted into it, in a ring, and is searched from the
// newest to the oldest.
//
// One table serves all gaps of one encoding; reset gives it to the next
// target, so that a thread keeps one table from file to file. It reads up to
// 8 bytes from each position it hashes, so the target must have the zero
// tail of a THeldBuf.
#pragma once

#include <cstdint>
#include <functional>

#include "lib/alloc.h"
#include "lib/large_block.h"
#include "store/byte_match.h"

struct TChainRing {
  static const int32_t kSlots = 50;
  // The slots rounded up to whole vectors of tags.
  static const int32_t kTagSlots = 56;
  int16_t head;    // the slot the next insertion writes
  int16_t count;   // slots in use, up to kSlots
  int16_t bucket;  // the bucket that holds the ring, emptied on reset
  // A 16-bit fingerprint of the six hashed bytes of each slot's position,
  // kept beside the ring's head so that a walk tests all fifty with a few
  // vector compares on two cache lines instead of fifty reads of the target
  // (the gap encoder runs 3 times as fast on text, 3.7 times on executables).
  uint16_t tags[kTagSlots];
  int32_t positions[kSlots];
};

class TGapChains {
 public:
  static const int32_t kBuckets = 10000;
  // Walks stop once a match is this long.
  static const int32_t kLongEnough = 1000;
  // Insertions whose rings are asked for together.
  static const int32_t kRunAhead = 8;

  KST_POOLED_NEW
  explicit TGapChains(const uint8_t* target);
  ~TGapChains();
  TGapChains(const TGapChains&) = delete;
  TGapChains& operator=(const TGapChains&) = delete;

  // Empties the table for another target. Only the buckets that rings were
  // given are cleared, and the rings stay for the next target: a fresh table
  // per file spent a sixth of a first add clearing 10000 buckets and
  // carving rings (on 763 small headers, 118 of 730 million instructions).
  void reset(const uint8_t* target);

  // The bucket of a position: from the little-endian 16-bit words w0, w1, w2
  // at offsets 0, 2 and 4, (((w1 << 2) | w2) << 1 | w0) mod 10000. Every
  // stored version was matched with this hash, weak as it is.
  static uint32_t bucketOf(const uint8_t* at) {
    const uint32_t w0 = at[0] | at[1] << 8;
    const uint32_t w1 = at[2] | at[3] << 8;
    const uint32_t w2 = at[4] | at[5] << 8;
    return ((((w1 << 2) | w2) << 1) | w0) % kBuckets;
  }
  static uint32_t tagOf(const uint8_t* at) {
    return static_cast<uint32_t>(((FLoad64(at) & 0xFFFFFFFFFFFFull) * 0x9E3779B97F4A7C15ull) >> 48);
  }

  // The ring of a bucket, null while nothing was inserted into it since the
  // last reset.
  const TChainRing* ring(uint32_t bucket) const { return buckets_[bucket]; }

  // Asks for the head and the first fingerprints of a bucket's ring to be
  // brought into the cache, for an insertion or a walk soon to come.
  void prefetch(uint32_t bucket) const {
    // A bucket without a ring asks for nothing that faults: the address is
    // reckoned as a number, not as a pointer off null.
    const uintptr_t ring = reinterpret_cast<uintptr_t>(buckets_[bucket]);
    __builtin_prefetch(reinterpret_cast<const void*>(ring));
    __builtin_prefetch(reinterpret_cast<const void*>(ring + kLine));
  }

  void insert(int32_t position) { insertRun(position, position + 1); }
  // Inserts every position from `from` up to `to`, in order. The target is
  // read through a local: the stores into the rings would otherwise make the
  // compiler fetch it again for each position. Eight at a time, the rings
  // are asked for before the first is written, so that their misses overlap.
  void insertRun(int32_t from, int32_t to) {
    const uint8_t* const target = target_;
    int32_t at = from;
    for (; at + kRunAhead <= to; at += kRunAhead) {
      uint32_t buckets[kRunAhead];
      for (int32_t i = 0; i < kRunAhead; i++) {
        buckets[i] = bucketOf(target + at + i);
        prefetch(buckets[i]);
      }
      for (int32_t i = 0; i < kRunAhead; i++) insert(buckets[i], tagOf(target + at + i), at + i);
    }
    for (; at < to; at++) insert(bucketOf(target + at), tagOf(target + at), at);
  }
  void insert(uint32_t bucket, uint32_t tag, int32_t position) {
    TChainRing* ring = buckets_[bucket];
    if (ring == nullptr) ring = buckets_[bucket] = newRing(bucket);
    // Once full, the slot written is that of the oldest entry.
    ring->tags[ring->head] = static_cast<uint16_t>(tag);
    ring->positions[ring->head] = position;
    // Without a branch: whether a ring is full yet is data that no
    // predictor guesses, and the mispredictions made the insertions of a
    // first add of small files take 1.5 times as long.
    const int32_t head = ring->head + 1 == TChainRing::kSlots ? 0 : ring->head + 1;
    const int32_t count = ring->count + (ring->count < TChainRing::kSlots);
    ring->head = static_cast<int16_t>(head);
    ring->count = static_cast<int16_t>(count);
  }

  // Gives an empty table the positions from `from` up to `to`, leaving it as
  // insertRun would. It walks them backward and fills each ring only with
  // the last 50 of its bucket, so that the positions a ring would drop cost
  // a hash and no store: a second thread that needs the table of a position
  // far into the target builds it at a fraction of the cost of inserting.
  // It calls `poll` first and then every 65536 positions; poll may end the
  // fill by throwing.
  void fillEmpty(int32_t from, int32_t to, const std::function<void()>& poll);

  // The longest common prefix of the bytes at `position` with those at any
  // position in `ring`, bounded by limit - position; among equal lengths the
  // newest entry wins, and the walk stops at kLongEnough. Every entry must
  // lie before `position`. Returns the length and sets *from to the entry
  // (untouched when the ring holds none with the same fingerprint).
  int32_t longest(const TChainRing& ring, uint32_t tag, int32_t position, int32_t limit,
                  int32_t* from) const;

  int32_t ringCount() const { return rings_; }

 private:
  static const int32_t kLine = 64;
  TChainRing* newRing(uint32_t bucket);
  TChainRing& ringAt(int32_t i) const { return static_cast<TChainRing*>(ringBlock_.data())[i]; }

  const uint8_t* target_;
  TChainRing* buckets_[kBuckets];
  // Room for a ring per bucket, given out in order. The block starts on a
  // page and rings are whole cache lines, so each ring starts on one: its
  // head and fingerprints then take its first two lines, and an insertion
  // or a walk touches no line more than it must (unaligned, they spread
  // over three: 2% of the parse of small files).
  static_assert(sizeof(TChainRing) % kLine == 0, "rings are whole cache lines");
  LLargeBlock ringBlock_;
  int32_t rings_ = 0;  // rings given to buckets since the reset
};
