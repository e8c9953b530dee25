#include "store/coarse_match.h"

#include <algorithm>

#include "store/byte_match.h"
#include "store/work_set.h"

namespace {

// Hits at least this long count towards the early end of a sample's search.
const int32_t kLongHit = 256;
// Shorter best hits are not kept as matches.
const int32_t kShortestMatch = 6;

}  // namespace

void FFindMatches(TCoarseInput& in, int32_t tFrom, int32_t tTo, int32_t rFrom, int32_t rTo,
                  TMatchList& list) {
  const int32_t tLen = tTo - tFrom;
  const int32_t rLen = rTo - rFrom;
  if (tLen < 4 || rLen < 4) return;
  // The setting is never below 1; the guard only keeps a bad one from
  // dividing by zero.
  const int32_t step = std::max(tLen / (2 * std::max(in.coarseDiv, 1)), 4);
  const uint8_t* target = in.target;
  const uint8_t* reference = in.reference;
  int32_t lo = tFrom;
  for (int64_t at = static_cast<int64_t>(tFrom) + step; at < tTo - 4; at += 2 * step) {
    const int32_t sample = static_cast<int32_t>(at);
    if (sample < lo) continue;
    // A sample may scan the whole reference: a stop is taken between them.
    FPollStop();
    // The proportion is taken first and then scaled, in doubles, as every
    // stored version was matched; another rounding would move probes.
    const double share = static_cast<double>(sample - tFrom) / tLen;
    const int32_t r = static_cast<int32_t>(share * rLen);
    const TProbeRange range{reference, in.referenceLen, rFrom, rTo, r, std::max(r, rLen - r)};

    int32_t bestLen = 0;
    int32_t bestProbe = 0;
    int32_t bestBack = 0;
    int32_t longHits = 0;
    in.visitProbes(range, FLoad32(target + sample), [&](int32_t probe) {
      const int32_t back =
          FMatchBack(target + sample, reference + probe, std::min(sample - lo, probe - rFrom));
      const int32_t forward =
          FMatchForward(target + sample + 4, target + tTo, reference + probe + 4, reference + rTo);
      const int32_t hit = 4 + back + forward;
      if (hit < bestLen) return false;
      // Among equal hits the latest probe wins.
      bestLen = hit;
      bestProbe = probe;
      bestBack = back;
      if (hit >= 2 * step + 6) return true;
      return hit >= kLongHit && ++longHits == 2;
    });
    if (bestLen >= kShortestMatch) {
      list.add(new TMatch{sample - bestBack, bestLen, bestProbe - bestBack});
      lo = sample - bestBack + bestLen;
    }
  }
}

void FRefineMatches(TCoarseInput& in, TMatchList& list) {
  if (list.count == 0) {
    FFindMatches(in, 0, in.targetLen, 0, in.referenceLen, list);
    return;
  }
  TMatchList refined;
  refined.reserve(list.count * 2);
  FFindMatches(in, 0, list[0]->pos, 0, list[0]->refPos, refined);
  for (int32_t i = 0; i < list.count; i++) {
    const TMatch* m = list[i];
    refined.add(list[i]);
    const bool last = i + 1 == list.count;
    // A gap whose reference range is negative (two matches that cross in the
    // reference) or shorter than a word is left for the gap encoder.
    FFindMatches(in, m->pos + m->len, last ? in.targetLen : list[i + 1]->pos, m->refPos + m->len,
                 last ? in.referenceLen : list[i + 1]->refPos, refined);
  }
  // The matches themselves move; popping gives them up without freeing.
  while (list.count > 0) list.pop();
  list.reserve(refined.count);
  for (TMatch* m : refined) list.add(m);
  while (refined.count > 0) refined.pop();
}
