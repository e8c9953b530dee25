#include "store/gap_chains.h"

#include <emmintrin.h>

#include <cstring>
#include <initializer_list>

TGapChains::TGapChains(const uint8_t* target)
    : target_(target), ringBlock_(int64_t{kBuckets} * static_cast<int64_t>(sizeof(TChainRing))) {
  std::memset(buckets_, 0, sizeof buckets_);
}

TGapChains::~TGapChains() = default;

void TGapChains::reset(const uint8_t* target) {
  target_ = target;
  for (int32_t i = 0; i < rings_; i++) {
    const TChainRing& ring = ringAt(i);
    buckets_[ring.bucket] = nullptr;
  }
  rings_ = 0;
}

TChainRing* TGapChains::newRing(uint32_t bucket) {
  // The block comes zeroed; a ring taken again needs only its head and
  // count, since a walk masks the slots beyond the count.
  TChainRing* ring = &ringAt(rings_);
  rings_++;
  ring->head = 0;
  ring->count = 0;
  ring->bucket = static_cast<int16_t>(bucket);
  return ring;
}

void TGapChains::fillEmpty(int32_t from, int32_t to, const std::function<void()>& poll) {
  // Newest first, each ring is filled from its last slot down; a ring that
  // ends up full then holds its positions oldest to newest from slot 0 with
  // the next insertion at slot 0, as forward insertion leaves it. A ring
  // with fewer is moved down to slot 0 afterwards.
  uint8_t taken[kBuckets] = {};
  const uint8_t* const target = target_;
  for (int32_t at = to - 1; at >= from; at--) {
    if (((to - 1 - at) & 0xFFFF) == 0) poll();
    const uint32_t bucket = bucketOf(target + at);
    if (taken[bucket] == TChainRing::kSlots) continue;
    TChainRing* ring = buckets_[bucket];
    if (ring == nullptr) ring = buckets_[bucket] = newRing(bucket);
    const int32_t slot = TChainRing::kSlots - 1 - taken[bucket]++;
    ring->tags[slot] = static_cast<uint16_t>(tagOf(target + at));
    ring->positions[slot] = at;
  }
  for (int32_t i = 0; i < rings_; i++) {
    TChainRing& ring = ringAt(i);
    const int32_t count = taken[ring.bucket];
    const int32_t first = TChainRing::kSlots - count;
    std::memmove(ring.tags, ring.tags + first, count * sizeof ring.tags[0]);
    std::memmove(ring.positions, ring.positions + first, count * sizeof ring.positions[0]);
    ring.count = static_cast<int16_t>(count);
    ring.head = static_cast<int16_t>(count % TChainRing::kSlots);
  }
}

int32_t TGapChains::longest(const TChainRing& ring, uint32_t tag, int32_t position, int32_t limit,
                            int32_t* from) const {
  // Only entries with the same six bytes can reach the six that a copy
  // needs; the others are never the answer, so the fingerprints pick out the
  // few worth comparing.
  const __m128i want = _mm_set1_epi16(static_cast<int16_t>(tag));
  const __m128i* tags = reinterpret_cast<const __m128i*>(ring.tags);
  uint64_t same = 0;
  for (int32_t i = 0; i < 3; i++) {
    const __m128i low = _mm_cmpeq_epi16(_mm_loadu_si128(tags + 2 * i), want);
    const __m128i high = _mm_cmpeq_epi16(_mm_loadu_si128(tags + 2 * i + 1), want);
    same |= static_cast<uint64_t>(_mm_movemask_epi8(_mm_packs_epi16(low, high))) << (16 * i);
  }
  const __m128i last = _mm_cmpeq_epi16(_mm_loadu_si128(tags + 6), want);
  same |= static_cast<uint64_t>(_mm_movemask_epi8(_mm_packs_epi16(last, last)) & 0xFF) << 48;
  same &= (1ull << ring.count) - 1;
  if (same == 0) return 0;

  // Newest first: the slots below head downward, then those from the end of
  // the ring down to head.
  const uint64_t belowHead = (1ull << ring.head) - 1;
  const uint8_t* at = target_ + position;
  const uint8_t* end = target_ + limit;
  const int32_t room = limit - position;
  int32_t best = 0;
  for (uint64_t part : {same & belowHead, same & ~belowHead}) {
    while (part != 0) {
      const int32_t slot = 63 - __builtin_clzll(part);
      part &= ~(1ull << slot);
      // A candidate must be strictly longer than the best to replace it, so
      // one whose byte at the best length differs, or any once the best
      // fills the room, is passed over without measuring it (a third faster
      // on text, where many candidates share their first bytes).
      if (best >= room) return best;
      const int32_t candidate = ring.positions[slot];
      if (best > 0 && target_[candidate + best] != at[best]) continue;
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
