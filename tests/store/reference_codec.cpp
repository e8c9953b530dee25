#include "store/reference_codec.h"

#include "lib/fail.h"
#include "lib/mem_stream.h"
#include "lib/num_coding.h"

namespace {

bool sameWord(const uint8_t* a, const uint8_t* b) {
  return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}

int32_t forwardCount(const uint8_t* a, const uint8_t* aEnd, const uint8_t* b, const uint8_t* bEnd) {
  int32_t bound = static_cast<int32_t>(aEnd - a < bEnd - b ? aEnd - a : bEnd - b);
  int32_t n = 0;
  while (n < bound && a[n] == b[n]) n++;
  return n;
}

int32_t backCount(const uint8_t* a, const uint8_t* b, int32_t bound) {
  int32_t n = 0;
  while (n < bound && a[-1 - n] == b[-1 - n]) n++;
  return n;
}

int32_t smaller(int32_t a, int32_t b) { return a < b ? a : b; }
int32_t larger(int32_t a, int32_t b) { return a > b ? a : b; }

void literal(LMemOutStream& out, const uint8_t* bytes, int32_t n) {
  if (n <= 0) return;
  FWriteNum(out, static_cast<uint32_t>(n) * 4 + 1);
  out.write(bytes, n);
}

void copy(LMemOutStream& out, uint32_t kind, int32_t n, int32_t d) {
  FWriteNum(out, static_cast<uint32_t>(n) * 4 + kind);
  FWriteDiff(out, static_cast<uint32_t>(d), 0);
}

// One bucket: 50 slots, tail the oldest, head the next to write, -1 while
// empty.
struct Ring {
  int32_t slots[50];
  int32_t tail = -1;
  int32_t head = -1;
};

struct Table {
  Ring* buckets[10000] = {};
  ~Table() {
    for (Ring* r : buckets) delete r;
  }
  static uint32_t hash(const uint8_t* at) {
    uint32_t w0 = at[0] | at[1] << 8, w1 = at[2] | at[3] << 8, w2 = at[4] | at[5] << 8;
    return (((w1 << 2) | w2) << 1 | w0) % 10000;
  }
  void insert(const uint8_t* target, int32_t position) {
    Ring*& ring = buckets[hash(target + position)];
    if (ring == nullptr) ring = new Ring;
    if (ring->head < 0) {
      ring->slots[0] = position;
      ring->tail = 0;
      ring->head = 1;
      return;
    }
    ring->slots[ring->head] = position;
    bool full = ring->head == ring->tail;
    ring->head = (ring->head + 1) % 50;
    if (full) ring->tail = ring->head;
  }
};

void encodeGap(const uint8_t* target, int32_t from, int32_t to, LMemOutStream& out, int32_t reseed,
               Table& table) {
  for (int32_t at = larger(from - reseed, 0); at < smaller(from, to - 6); at++)
    table.insert(target, at);
  int32_t p = from;
  int32_t literalStart = from;
  while (p < to - 6) {
    Ring* ring = table.buckets[Table::hash(target + p)];
    if (ring != nullptr) {
      int32_t best = 0;
      int32_t bestFrom = 0;
      for (int32_t iter = ring->head; iter >= 0;) {
        iter = iter == 0 ? 49 : iter - 1;
        int32_t c = ring->slots[iter];
        if (iter == ring->tail) iter = -1;
        int32_t len = forwardCount(target + c, target + to, target + p, target + to);
        if (len > best) {
          best = len;
          bestFrom = c;
        }
        if (best >= 1000) break;
      }
      if (best >= 6) {
        literal(out, target + literalStart, p - literalStart);
        copy(out, 2, best, p - bestFrom);
        for (int32_t at = p; at < p + best; at++) table.insert(target, at);
        p += best;
        literalStart = p;
        continue;
      }
    }
    table.insert(target, p);
    p++;
  }
  literal(out, target + literalStart, to - literalStart);
}

void refine(const TCoarseInput& in, TMatchList& list, bool guard) {
  if (list.count == 0) {
    RefFindMatches(in, 0, in.targetLen, 0, in.referenceLen, list, guard);
    return;
  }
  TMatchList fresh;
  RefFindMatches(in, 0, list[0]->pos, 0, list[0]->refPos, fresh, guard);
  for (int32_t i = 0; i < list.count; i++) {
    TMatch* m = list[i];
    fresh.add(new TMatch(*m));
    int32_t nextPos = i + 1 < list.count ? list[i + 1]->pos : in.targetLen;
    int32_t nextRef = i + 1 < list.count ? list[i + 1]->refPos : in.referenceLen;
    RefFindMatches(in, m->pos + m->len, nextPos, m->refPos + m->len, nextRef, fresh, guard);
  }
  list.clear();
  for (TMatch* m : fresh) list.add(new TMatch(*m));
}

}  // namespace

void RefPackBytes(const uint8_t* bytes, int32_t length, LStr& text, const TRefCodecOptions& opt) {
  LMemOutStream out(text);
  int32_t p = 0, literalStart = 0, lo = 0;
  while (opt.settings.noPack == 0 && p < length - 4) {
    lo = larger(lo, p - 8);
    bool taken = false;
    for (int32_t c = p - 1; c >= lo; c--) {
      if (!sameWord(bytes + p, bytes + c)) continue;
      int32_t back = backCount(bytes + p, bytes + c, smaller(c, p - literalStart));
      int32_t forward = forwardCount(bytes + p + 4, bytes + length, bytes + c + 4, bytes + length);
      if (4 + forward + back < 16) continue;
      literal(out, bytes + literalStart, p - back - literalStart);
      copy(out, 2, 4 + forward + back, p - c);
      literalStart = p + 4 + forward;
      p = literalStart + 2;
      taken = true;
      break;
    }
    if (!taken) p += 3;
  }
  literal(out, bytes + literalStart, length - literalStart);
}

void RefFindMatches(const TCoarseInput& in, int32_t tFrom, int32_t tTo, int32_t rFrom, int32_t rTo,
                    TMatchList& list, bool guard) {
  const uint8_t* t = in.target;
  const uint8_t* ref = in.reference;
  int32_t tLen = tTo - tFrom, rLen = rTo - rFrom;
  if (tLen < 4 || rLen < 4) return;
  int32_t step = larger(tLen / (2 * in.coarseDiv), 4);
  int32_t lo = tFrom;
  for (int32_t s = tFrom + step; s < tTo - 4; s += 2 * step) {
    if (s < lo) continue;
    int32_t r = static_cast<int32_t>(static_cast<double>(s - tFrom) / tLen * rLen);
    int32_t radius = larger(r, rLen - r);
    int32_t bestLen = 0, bestProbe = 0, bestBack = 0, longHits = 0;
    bool done = false;
    for (int32_t d = 0; d < radius && !done; d++) {
      for (int side = 0; side < 2 && !done; side++) {
        int32_t probe = side == 0 ? r + d : r - d;
        if (side == 0 && probe >= rLen - 4) continue;
        if (side == 1 && probe < 0) continue;
        if (side == 1 && guard && rFrom + probe + 4 > in.referenceLen) continue;
        const uint8_t* at = ref + rFrom + probe;
        if (!sameWord(t + s, at)) continue;
        int32_t back = backCount(t + s, at, smaller(s - lo, probe));
        int32_t hit = 4 + back + forwardCount(t + s + 4, t + tTo, at + 4, ref + rTo);
        if (hit < bestLen) continue;
        bestLen = hit;
        bestProbe = rFrom + probe;
        bestBack = back;
        if (hit >= 2 * step + 6) done = true;
        if (hit >= 256 && ++longHits == 2) done = true;
      }
    }
    if (bestLen >= 6) {
      list.add(new TMatch{s - bestBack, bestLen, bestProbe - bestBack});
      lo = s - bestBack + bestLen;
    }
  }
}

int32_t RefEncodeVersion(const uint8_t* target, int32_t targetLen, const uint8_t* reference,
                         int32_t referenceLen, LStr& text, const TRefCodecOptions& opt) {
  TMatchList list;
  if (reference != nullptr) {
    TCoarseInput in{target, targetLen, reference, referenceLen, opt.settings.coarseDiv};
    for (;;) {
      int32_t previous = list.count;
      refine(in, list, opt.guardReferenceEnd);
      if (previous * 100 >= (100 - opt.settings.stopPercent) * list.count) break;
    }
  }
  LMemOutStream out(text);
  Table* table = new Table;
  int32_t done = 0, matched = 0;
  for (TMatch* m : list) {
    if (done < m->pos) encodeGap(target, done, m->pos, out, opt.settings.gapWindow, *table);
    copy(out, 3, m->len, m->pos - m->refPos);
    matched += m->len - 3;
    done = m->pos + m->len;
  }
  if (done < targetLen) encodeGap(target, done, targetLen, out, opt.settings.gapWindow, *table);
  delete table;
  return matched >= targetLen - 3 ? targetLen : matched;
}

int32_t RefExpandTokens(const uint8_t* tokens, int32_t tokenLen, uint8_t* out, int32_t outCap,
                        const uint8_t* reference, int32_t referenceLen) {
  LMemSrm in(tokens, tokenLen);
  int64_t pos = 0;
  while (in.tell() < tokenLen) {
    uint32_t t = FReadNum(in);
    int64_t n = t >> 2;
    if ((t & 3) == 1) {
      if (n > outCap - pos) FFormatError(775);
      for (int64_t i = 0; i < n; i++) {
        int b = in.getByte();
        if (b < 0) FFormatError(777);
        out[pos + i] = static_cast<uint8_t>(b);
      }
    } else if ((t & 3) == 2) {
      int64_t s = pos - static_cast<int32_t>(FReadDiff(in, 0));
      if (!(s < pos && s + n <= outCap && s >= 0)) FFormatError(784);
      for (int64_t i = 0; i < n; i++)
        if (pos + i < outCap) out[pos + i] = out[s + i];
    } else if ((t & 3) == 3) {
      int64_t s = pos - static_cast<int32_t>(FReadDiff(in, 0));
      if (!(s + n <= referenceLen && s >= 0)) FFormatError(792);
      for (int64_t i = 0; i < n; i++)
        if (pos + i < outCap) out[pos + i] = reference[s + i];
    } else {
      FFormatError(803);
    }
    pos += n;
  }
  if (pos > outCap) FFormatError(806);
  return static_cast<int32_t>(pos);
}
