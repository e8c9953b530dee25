#include "rex/parse.h"

#include "lib/liblock.h"
#include "lib/msg.h"
#include "rex/token.h"

namespace {
typedef LArrOf<URex*> Gathered;  // nodes on their way into a parent

URex* parseSequence(const UChar** cursor, bool single);

URexToken take(const UChar** cursor) {
  URexToken token = FRexPeekToken(*cursor);
  *cursor += token.length;
  return token;
}

// After "[" and the optional "^".
URex* parseSet(const UChar** cursor, int32_t exclude, const UChar* opening) {
  URexCharSet* set = new URexCharSet(exclude);
  for (;;) {
    URexToken low = take(cursor);
    if (low.is(kRexSetClose)) break;
    if (low.empty()) {
      FMsg(kMsgGeneral, "missing ']' in '%s'", FRexNarrow(opening).ptr);
      break;
    }
    int32_t lowValue = low.value();
    int32_t highValue = 0;
    if (FRexPeekToken(*cursor).is(kRexRange)) {
      take(cursor);
      URexToken high = take(cursor);
      if (high.is(kRexSetClose) || high.empty()) {
        FMsg(kMsgGeneral, "[ ] 内の '-' の後に文字がありません");
        set->items.add(new LIntPair{lowValue, 0});
        if (high.empty()) continue;  // the missing "]" is reported next
        break;
      }
      highValue = high.value();
      if (highValue > 0 && lowValue > highValue)
        FMsg(kMsgGeneral, "正規表現の [A-B] は A <= B でなければなりません");
    }
    set->items.add(new LIntPair{lowValue, highValue});
  }
  return set;
}

// After "(".
URex* parseGroup(const UChar** cursor) {
  URex* inner = FRexParse(cursor);
  if (inner == nullptr) {
    FMsg(kMsgGeneral, "正規表現に空の ( ) があります");
    inner = new URexEmpty;
  }
  URexToken close = take(cursor);
  if (close.empty())
    FMsg(kMsgGeneral, "正規表現: ')' が必要です");
  else if (!close.is(kRexClose))
    FMsg(kMsgGeneral, "'%s' の代わりに ')' が必要です", FRexNarrow(close.at, close.length).ptr);
  return new URexBrace(inner);
}

// At "~" or "!"; a doubled operator looks behind.
URex* parseLookAround(const UChar** cursor, URexTokenId op) {
  const UChar* start = *cursor;
  take(cursor);
  URexToken again = FRexPeekToken(*cursor);
  int32_t behind = again.is(op) ? 1 : 0;
  if (behind) take(cursor);
  URex* child = parseSequence(cursor, /*single=*/true);
  if (child == nullptr) {
    FMsg(kMsgGeneral, "'%s' の後に正規表現がありません",
         FRexNarrow(start, static_cast<int32_t>(*cursor - start)).ptr);
    child = new URexEmpty;
  }
  return new URexStt(child, behind, op == kRexNot ? 1 : 0);
}

// One atom, or null at the end of a sequence.
URex* parseAtom(const UChar** cursor) {
  URexToken token = FRexPeekToken(*cursor);
  if (token.empty()) return nullptr;
  if (token.is(kRexSetOpen)) {
    const UChar* opening = *cursor;
    take(cursor);
    int32_t exclude = FRexPeekToken(*cursor).is(kRexSetNot) ? 1 : 0;
    if (exclude) take(cursor);
    return parseSet(cursor, exclude, opening);
  }
  if (token.is(kRexOpen)) {
    take(cursor);
    return parseGroup(cursor);
  }
  int32_t kind = token.is(kRexLineTop)   ? kRexKindLineTop
                 : token.is(kRexLineEnd) ? kRexKindLineEnd
                 : token.isWordEdge()    ? kRexKindWordEdge
                                         : 0;
  if (kind) {
    take(cursor);
    return new URexSpChar(kind);
  }
  if (token.is(kRexOr) || token.is(kRexAnd) || token.is(kRexClose)) return nullptr;
  if (token.is(kRexEqu)) return parseLookAround(cursor, kRexEqu);
  if (token.is(kRexNot)) return parseLookAround(cursor, kRexNot);
  take(cursor);
  return new URexFlat(static_cast<UChar>(token.value()));
}

// An atom with the repeats that follow it; they stack.
URex* parseItem(const UChar** cursor) {
  URex* node = parseAtom(cursor);
  if (node == nullptr) return nullptr;
  for (;;) {
    URexToken token = FRexPeekToken(*cursor);
    if (token.is(kRexStar))
      node = new URexRepeat(node, 0, URexRepeat::kNoLimit);
    else if (token.is(kRexPlus))
      node = new URexRepeat(node, 1, URexRepeat::kNoLimit);
    else if (token.is(kRexOpt))
      node = new URexRepeat(node, 0, 1);
    else
      return node;
    take(cursor);
  }
}

URex* parseSequence(const UChar** cursor, bool single) {
  Gathered items;
  while (URex* item = parseItem(cursor)) {
    // Neighbouring literals become one flat node; a repeated literal is
    // wrapped already and stays apart. This is the only simplification.
    if (item->isFlat() && items.count > 0 && items.last()->isFlat()) {
      static_cast<URexFlat*>(items.last())->text.append(static_cast<URexFlat*>(item)->text);
      delete item;
    } else {
      items.add(item);
    }
    if (single) break;
  }
  if (items.count == 0) return nullptr;
  URex* chain = items.pop();
  while (items.count > 0) chain = new URexBin(items.pop(), chain);
  return chain;
}
}  // namespace

URex* FRexParse(const UChar** cursor) {
  Gathered items;
  int32_t lastOp = -1;
  for (;;) {
    URex* sequence = parseSequence(cursor, /*single=*/false);
    if (sequence == nullptr) {
      if (items.count > 0)
        FMsg(kMsgGeneral, "'|' または '&' の引数が空です : %s", FRexNarrow(*cursor).ptr);
      break;
    }
    items.add(sequence);
    URexToken token = FRexPeekToken(*cursor);
    int32_t op = token.is(kRexOr) ? kRexOr : token.is(kRexAnd) ? kRexAnd : -1;
    if (op < 0) break;  // the end, or a ")" for the caller
    // No precedence between the two: the last one seen decides.
    if (lastOp >= 0 && lastOp != op) FMsg(kMsgGeneral, "| and & are mixed. Use ( ).");
    lastOp = op;
    take(cursor);
  }
  if (items.count == 0) return nullptr;
  if (items.count == 1) return items[0];
  URexAnd* node = lastOp == kRexOr ? new URexOr : new URexAnd;
  for (URex* item : items) node->items.add(item);
  return node;
}

URex* FRexCompile(const UChar* pattern) {
  if (pattern == nullptr) return nullptr;
  const UChar* cursor = pattern;
  URex* root = FRexParse(&cursor);
  // What the expression could not take: a ")" without its "(", or an
  // operator where an operand should stand.
  if (*cursor != 0) FMsg(kMsgGeneral, "構文エラー : %s", FRexNarrow(cursor).ptr);
  if (root == nullptr) FMsg(kMsgGeneral, "正規表現が空です");
  return root;
}

URex* FRexCompileEscaped(const UChar* pattern) {
  FLibGuard guard;
  FRexUseEscapedTokens(true);
  URex* root = FRexCompile(pattern);
  FRexUseEscapedTokens(false);
  return root;
}
