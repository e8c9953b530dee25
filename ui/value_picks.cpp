#include "ui/value_picks.h"

#include <algorithm>
#include <cstring>

#include "archive/stats.h"
#include "archive/string_table.h"
#include "lib/lhash.h"
#include "ui/cond_fields.h"

const char* const kNoCandidates = "有効な候補がありません";

namespace {
const char kRestEntry[] = "...";
}

const LHash* FCandidateIds(const TStats& stats, int32_t field) {
  switch (field) {
    case kFieldName:
      return &stats.names;
    case kFieldComment:
      return &stats.comments;
    case kFieldUser:
      return &stats.users;
    case kFieldCheckout:
      return &stats.checkouts;
    default:
      return nullptr;
  }
}

bool FValueCandidates(const LHash& ids, const TStringTable& strings, LStrs& out) {
  out.clear();
  LArr collected;
  ids.collect(collected);
  LArrOf<const char*> texts;
  for (int32_t i = 0; i < collected.count; i++) {
    const char* text = strings.text(static_cast<uint32_t>(collected[i]));
    if (*text != 0) texts.add(text);
  }
  std::sort(texts.begin(), texts.end(),
            [](const char* a, const char* b) { return std::strcmp(a, b) < 0; });
  for (int32_t i = 0; i < texts.count; i++) {
    if (i > 0 && std::strcmp(texts[i - 1], texts[i]) == 0) continue;
    if (out.count == kMaxCandidates) {
      out.add(new LStr(kRestEntry));
      break;
    }
    out.add(new LStr(texts[i]));
  }
  return out.count > 0;
}

bool FIsRestEntry(const LStrs& candidates, const char* text) {
  return candidates.count > kMaxCandidates && std::strcmp(text, kRestEntry) == 0;
}
