#include "store/gap_encoder.h"

#include <algorithm>

#include "store/progress_ticker.h"

namespace {
// Bytes hashed per position; shorter copies are not written.
const int32_t kHashed = 6;
}  // namespace

void FEncodeGap(const uint8_t* target, int32_t from, int32_t to, TTokenWriter& out, int32_t reseed,
                TGapChains& table) {
  const int32_t seedStart = static_cast<int32_t>(std::max<int64_t>(int64_t{from} - reseed, 0));
  const int32_t seedEnd = std::min(from, to - kHashed);
  table.insertRun(seedStart, seedEnd);

  TProgressTicker progress;
  int32_t p = from;
  int32_t literalStart = from;
  while (p < to - kHashed) {
    progress.reach(p);
    const uint32_t bucket = TGapChains::bucketOf(target + p);
    const uint32_t tag = TGapChains::tagOf(target + p);
    if (const TChainRing* ring = table.ring(bucket)) {
      int32_t source = 0;
      const int32_t len = table.longest(*ring, tag, p, to, &source);
      if (len >= kHashed) {
        out.literal(target + literalStart, p - literalStart);
        out.selfCopy(len, p - source);
        table.insertRun(p, p + len);
        p += len;
        literalStart = p;
        continue;
      }
    }
    table.insert(bucket, tag, p);
    p++;
  }
  out.literal(target + literalStart, to - literalStart);
}
