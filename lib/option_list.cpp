// The descriptors whose value is a comma list.
#include <cstring>

#include "lib/convert.h"
#include "lib/msg.h"
#include "lib/option.h"
#include "lib/text_split.h"
#include "lib/time_parse.h"

namespace {
// Ranges wider than this are reported, though still added.
const int64_t kMaxRangeSpan = 99;

template <typename List>
List& listOf(List** target) {
  if (*target == nullptr) *target = new List;
  return **target;
}

// Splits a comma list of "low-high" pieces and hands each pair of texts to
// add(list, low, high); a piece without "-" is a pair of equal members.
template <typename List, typename Add>
void parsePairs(const char* value, List** target, Add add) {
  List& list = listOf(target);
  LStrs pieces;
  FSplit(value, ',', kSplitSkipEmpty, pieces);
  for (LStr* piece : pieces) {
    LStrs parts;
    FSplit(piece->ptr, '-', kSplitKeep, parts);
    if (parts.count > 2) {
      FMsg(kMsgGeneral, "%s",
           LStr()
               .format(FLangText("セパレータ '-' が多すぎます：'%s'", "too many separator：'%s'"),
                       piece->ptr)
               .ptr);
      continue;
    }
    // Blanks around a member are no part of it ("1 - 5").
    for (LStr* part : parts) {
      part->trimLeft(" \t");
      part->trimRight(" \t");
    }
    add(list, *parts[0], *parts[parts.count - 1]);
  }
  if (list.count == 0) {
    delete *target;
    *target = nullptr;
  }
}
}  // namespace

int LStrsOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  LStrs& list = listOf(target);
  if (split)
    FSplit(value, ',', mode, list);
  else
    list.add(new LStr(value));
  return 1;
}

int LIntsOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  LInts& list = listOf(target);
  LStrs pieces;
  FSplit(value, ',', kSplitSkipEmpty, pieces);
  for (LStr* piece : pieces) {
    // The first character is passed over, so that "-5" is a number.
    const char* dash = std::strchr(piece->ptr + 1, '-');
    if (dash == nullptr) {
      list.add(FParseInt(piece->ptr));
      continue;
    }
    int64_t low = FParseInt(LStr(piece->ptr, static_cast<int32_t>(dash - piece->ptr)).ptr);
    int64_t high = FParseInt(dash + 1);
    if (low > high) {
      FMsg(kMsgGeneral, "%s",
           LStr()
               .format(FLangText("整数の範囲指定が正しくありません (%d～%d)",
                                 "invalid numeric range (%d - %d)"),
                       static_cast<int>(low), static_cast<int>(high))
               .ptr);
    } else if (high - low > kMaxRangeSpan) {
      FMsg(kMsgGeneral, "%s",
           LStr()
               .format(FLangText("整数の範囲が大きすぎます (%d～%d)",
                                 "too large numeric range (%d - %d)"),
                       static_cast<int>(low), static_cast<int>(high))
               .ptr);
    }
    for (int64_t n = low; n <= high; n++) list.add(static_cast<int32_t>(n));
  }
  return 1;
}

int LStrPairsOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  parsePairs(value, target, [](LStrPairs& list, const LStr& low, const LStr& high) {
    LStrPair* pair = new LStrPair;
    pair->first = low;
    pair->second = high;
    list.add(pair);
  });
  return 1;
}

int LIntPairsOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  // Units as the range picker writes them ("1K-2K"); a unit on the high
  // member reaches to the end of that unit, as a date does to its day's end.
  parsePairs(value, target, [](LIntPairs& list, const LStr& low, const LStr& high) {
    // An empty member leaves that end of the range open ("10-", "-5").
    LIntPair* pair = new LIntPair;
    pair->key =
        low.empty() ? INT32_MIN : static_cast<intptr_t>(FParseSize(low.ptr, /*upper=*/false));
    pair->value =
        high.empty() ? INT32_MAX : static_cast<intptr_t>(FParseSize(high.ptr, /*upper=*/true));
    list.add(pair);
  });
  return 1;
}

int LDtPairsOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  parsePairs(value, target, [](LDtPairs& list, const LStr& low, const LStr& high) {
    LDtPair* pair = new LDtPair;
    pair->low = low.empty() ? INT64_MIN : FParseTime(low.ptr, /*upper=*/false);
    pair->high = high.empty() ? INT64_MAX : FParseTime(high.ptr, /*upper=*/true);
    list.add(pair);
  });
  return 1;
}
