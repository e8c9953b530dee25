// How each node matches. Matching is a recursive walk with a deliberately
// short backtrack: only a sequence tries again, and its left side gets one
// second try.
#include "lib/chartype.h"
#include "lib/fail.h"
#include "lib/msg.h"
#include "rex/context.h"
#include "rex/node.h"

namespace {
bool isWordChar(int32_t c) {
  return c >= 0 && c < 256 &&
         (FCharType[c] & (kCharUpper | kCharLower | kCharDigit | kCharUnderscore)) != 0;
}
}  // namespace

int32_t URexBin::match(URexCtx& ctx, int retry) {
  int32_t start = ctx.tell();
  int32_t first = ctx.call(left, 0);
  if (first < 0) return -1;
  ctx.seek(start + first * 2);
  int32_t second = ctx.call(right, retry);
  if (second >= 0) return first + second;
  ctx.seek(start);
  first = ctx.call(left, 1);
  if (first < 0) return -1;
  ctx.seek(start + first * 2);
  second = ctx.call(right, 0);
  return second >= 0 ? first + second : -1;
}

int32_t URexFlat::match(URexCtx& ctx, int retry) {
  if (retry || text.length == 0) return -1;
  int32_t start = ctx.tell();
  for (int32_t i = 0; i < text.length; i++) {
    int32_t wanted = ctx.foldChar(text[i]);
    if (wanted < 0) continue;  // dropped from the pattern: consumes nothing
    if (ctx.getChar() != wanted) return -1;
  }
  return ctx.since(start);
}

int32_t URexCharSet::match(URexCtx& ctx, int retry) {
  if (retry) return -1;
  int32_t start = ctx.tell();
  int32_t c = ctx.getChar();
  if (c < 0) return -1;
  bool found = false;
  for (const LIntPair* item : items) {
    int32_t low = ctx.foldChar(static_cast<int32_t>(item->key));
    int32_t high = ctx.foldChar(static_cast<int32_t>(item->value));
    if (low < 0) continue;  // the item disappeared with folding
    if (high < 0) {
      FMsg(kMsgGeneral, "[A-B] expression: only B disappears");
      continue;
    }
    if (high == 0 ? c == low : low <= c && c <= high) {
      found = true;
      break;
    }
  }
  if (found == (exclude != 0)) return -1;
  return ctx.since(start);
}

int32_t URexSpChar::match(URexCtx& ctx, int) {
  int32_t at = ctx.tell();
  int32_t previous = -1;
  if (at >= 2) {
    ctx.seek(at - 2);
    previous = ctx.srm->getWord();
  }
  int32_t next = ctx.getChar();
  switch (kind) {
    case kRexKindLineTop:
      return previous < 0 || previous == '\n' ? 0 : -1;
    case kRexKindLineEnd:
      return next < 0 || next == '\r' || next == '\n' ? 0 : -1;
    case kRexKindWordEdge:
      return isWordChar(previous) != isWordChar(next) ? 0 : -1;
    default:
      FInternalNum(626);
  }
}

int32_t URexRepeat::match(URexCtx& ctx, int retry) {
  if (child == nullptr) FInternalNum(733);
  if (min < 0 || max < 0) FInternalNum(734);
  // A retry gives back exactly one repeat of the last match.
  int32_t goal = retry ? lastCount - 1 : -1;
  int32_t count = 0;
  int32_t total = 0;
  int32_t at = ctx.tell();
  while (count < max && count != goal) {
    int32_t step = ctx.call(child, 0);
    if (step < 0) break;
    at += step * 2;
    ctx.seek(at);
    total += step;
    count++;
    if (step == 0) break;
  }
  lastCount = count;
  return count < min ? -1 : total;
}

int32_t URexStt::match(URexCtx& ctx, int) {
  int32_t result = -1;
  if (!behind) {
    result = ctx.call(child, 0);
  } else {
    int32_t back = child->fixedLength();
    if (back < 0) {
      LStr shown;
      child->dump(shown, 0);
      shown.trimRight("\n");
      FMsg(kMsgCountedWarning, "unknown length for %s", shown.ptr);
      back = 0;
    }
    int32_t at = ctx.tell();
    if (back * 2 <= at) {
      ctx.seek(at - back * 2);
      result = ctx.call(child, 0);
    }
  }
  return (result >= 0) != (negate != 0) ? 0 : -1;
}

int32_t URexBrace::match(URexCtx& ctx, int retry) {
  text.clear();
  ctx.braces.add(this);
  int32_t result = ctx.call(child, retry);
  // The call left the stream where the match began: the text as written.
  text.reserve(result);
  for (int32_t i = 0; i < result; i++) text.append(static_cast<UChar>(ctx.srm->getWord()));
  return result;
}

int32_t URexAnd::match(URexCtx& ctx, int) {
  int32_t longest = 0;
  for (URex* item : items) {
    int32_t result = ctx.call(item, 0);
    if (result < 0) return -1;
    if (result > longest) longest = result;
  }
  return longest;
}

int32_t URexOr::match(URexCtx& ctx, int retry) {
  if (!retry) nextItem = 0;
  while (nextItem < items.count) {
    int32_t result = ctx.call(items[nextItem++], 0);
    if (result >= 0) return result;
  }
  return -1;
}
