#include "store/pack_bytes.h"

#include <algorithm>

#include "store/byte_match.h"
#include "store/progress_level.h"
#include "store/progress_ticker.h"
#include "store/token_writer.h"

namespace {
// How far back a repeat may start.
const int32_t kFarthest = 8;
// Shorter repeats are left in the literal runs.
const int32_t kShortestCopy = 16;
// Only every third position is probed.
const int32_t kProbeStep = 3;
}  // namespace

void FPackBytes(const uint8_t* bytes, int32_t length, LStream& out,
                const TCodecSettings& settings) {
  TProgressLevel level(/*high=*/-1, /*total=*/length);
  TProgressTicker progress;
  TTokenWriter tokens(out);
  int32_t literalStart = 0;
  int32_t lo = 0;
  int32_t p = 0;
  while (settings.noPack == 0 && p < length - 4) {
    lo = std::max(lo, p - kFarthest);
    const uint32_t word = FLoad32(bytes + p);
    bool taken = false;
    // Nearest candidate first; a candidate may overlap the probe.
    for (int32_t c = p - 1; c >= lo && !taken; c--) {
      if (FLoad32(bytes + c) != word) continue;
      progress.reach(p);
      const int32_t back = FMatchBack(bytes + p, bytes + c, std::min(c, p - literalStart));
      const int32_t forward =
          FMatchForward(bytes + p + 4, bytes + length, bytes + c + 4, bytes + length);
      const int32_t len = 4 + forward + back;
      if (len < kShortestCopy) continue;
      tokens.literal(bytes + literalStart, p - back - literalStart);
      tokens.selfCopy(len, p - c);
      literalStart = p + 4 + forward;
      // The two bytes right after a copy are never probed.
      p = literalStart + 2;
      taken = true;
    }
    if (!taken) p += kProbeStep;
  }
  tokens.literal(bytes + literalStart, length - literalStart);
}
