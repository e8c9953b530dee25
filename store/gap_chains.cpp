#include "store/gap_chains.h"

#include <emmintrin.h>

#include <cstring>
#include <initializer_list>

#include "store/byte_match.h"

void TGapChains::FreeBlock::dispose(TChainRing* block) { FFree(block); }

TGapChains::TGapChains(const uint8_t* target) : target_(target) {
  std::memset(buckets_, 0, sizeof buckets_);
}

TGapChains::~TGapChains() = default;

uint32_t TGapChains::bucketOf(const uint8_t* at) {
  const uint32_t w0 = at[0] | at[1] << 8;
  const uint32_t w1 = at[2] | at[3] << 8;
  const uint32_t w2 = at[4] | at[5] << 8;
  return ((((w1 << 2) | w2) << 1) | w0) % kBuckets;
}

uint32_t TGapChains::tagOf(const uint8_t* at) {
  const uint64_t six = FLoad64(at) & 0xFFFFFFFFFFFFull;
  return static_cast<uint32_t>((six * 0x9E3779B97F4A7C15ull) >> 32);
}

TChainRing* TGapChains::newRing() {
  // Rings come from blocks of 64: one allocation where a file has many rings,
  // and the rings of one table close together in memory.
  if (rings_ % kRingsPerBlock == 0)
    blocks_.add(static_cast<TChainRing*>(FAlloc(sizeof(TChainRing) * kRingsPerBlock)));
  TChainRing* ring = blocks_.last() + rings_ % kRingsPerBlock;
  rings_++;
  std::memset(ring, 0, sizeof *ring);
  return ring;
}

void TGapChains::insert(uint32_t bucket, uint32_t tag, int32_t position) {
  TChainRing* ring = buckets_[bucket];
  if (ring == nullptr) ring = buckets_[bucket] = newRing();
  // Once full, the slot written is that of the oldest entry.
  ring->tags[ring->head] = tag;
  ring->positions[ring->head] = position;
  ring->head = ring->head + 1 == TChainRing::kSlots ? 0 : ring->head + 1;
  if (ring->count < TChainRing::kSlots) ring->count++;
  insertions_++;
}

int32_t TGapChains::longest(uint32_t bucket, uint32_t tag, int32_t position, int32_t limit,
                            int32_t* from) const {
  const TChainRing* ring = buckets_[bucket];
  // Only entries with the same six bytes can reach the six that a match
  // needs; the others are never the answer, so the fingerprints pick out the
  // few worth comparing.
  const __m128i want = _mm_set1_epi32(static_cast<int32_t>(tag));
  uint64_t same = 0;
  for (int32_t i = 0; i < TChainRing::kSlots; i += 4) {
    const __m128i tags = _mm_loadu_si128(reinterpret_cast<const __m128i*>(ring->tags + i));
    const int bits = _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(tags, want)));
    same |= static_cast<uint64_t>(bits) << i;
  }
  same &= (1ull << ring->count) - 1;
  if (same == 0) return 0;

  // Newest first: the slots below head downward, then those from the end of
  // the ring down to head.
  const uint64_t belowHead = (1ull << ring->head) - 1;
  const uint8_t* at = target_ + position;
  const uint8_t* end = target_ + limit;
  int32_t best = 0;
  for (uint64_t part : {same & belowHead, same & ~belowHead}) {
    for (; part != 0; part &= ~(1ull << (63 - __builtin_clzll(part)))) {
      const int32_t slot = 63 - __builtin_clzll(part);
      const int32_t candidate = ring->positions[slot];
      const int32_t len = FMatchForward(target_ + candidate, end, at, end);
      if (len > best) {
        best = len;
        *from = candidate;
        if (best >= kLongEnough) return best;
      }
    }
  }
  return best;
}
