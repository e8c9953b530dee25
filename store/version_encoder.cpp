#include "store/version_encoder.h"

#include "store/coarse_match.h"
#include "store/codec_scratch.h"
#include "store/codec_threads.h"
#include "store/gap_encoder.h"
#include "store/progress_level.h"
#include "store/token_writer.h"

namespace {

// The coarse passes take the first 40 percent of the progress, in 5 steps.
const int32_t kCoarseShare = 40;
const int32_t kCoarseSteps = 5;

// Runs coarse passes until one raises the number of matches by no more than
// about stopPercent. There is no other bound: every pass that goes on must
// add a share of matches, and matches cannot outnumber the target's bytes.
void findCoarseMatches(TCoarseInput& in, int32_t stopPercent, TMatchList& matches) {
  FSetProgressRange(kCoarseShare, kCoarseSteps);
  for (;;) {
    FAddProgress(1);
    const int64_t previous = matches.count;
    FRefineMatches(in, matches);
    if (previous * 100 >= int64_t{100 - stopPercent} * matches.count) return;
  }
}

}  // namespace

int32_t FEncodeVersion(const THeldView& target, const THeldView* reference, LStream& out,
                       const TCodecSettings& settings) {
  TProgressLevel level;
  TCodecThread self;
  self.take();
  TMatchList matches;
  if (reference != nullptr) {
    TCoarseInput in(target.bytes, target.size, reference->bytes, reference->size,
                    settings.coarseDiv);
    findCoarseMatches(in, settings.stopPercent, matches);
  }

  TGapChains& table = FCodecScratch().gapChains(target.bytes);
  FSetProgressRange(/*high=*/-1, /*total=*/target.size);
  TTokenWriter tokens(out);
  int32_t done = 0;
  int32_t matched = 0;
  for (const TMatch* m : matches) {
    if (done < m->pos)
      FEncodeGap(target.bytes, done, m->pos, tokens, settings.gapWindow, table,
                 settings.splitLength);
    tokens.refCopy(m->len, m->pos - m->refPos);
    matched += m->len - 3;
    done = m->pos + m->len;
  }
  if (done < target.size)
    FEncodeGap(target.bytes, done, target.size, tokens, settings.gapWindow, table,
               settings.splitLength);
  tokens.finish();
  return matched >= target.size - 3 ? target.size : matched;
}
