#include "store/cond_match.h"

#include <cstring>

#include "archive/record.h"
#include "archive/string_table.h"
#include "lib/chartype.h"
#include "lib/convert.h"
#include "lib/strfunc.h"
#include "lib/ustr.h"
#include "rex/search.h"
#include "store/cond.h"
#include "store/name_match.h"
#include "store/ver_info.h"

namespace {
// The bits in the order of TCond::attrWant.
const int32_t kAttrBits[4] = {kAttrReadOnly, kAttrArchive, kAttrHidden, kAttrSystem};

bool afterExclude(bool fits, int32_t exclude) { return fits != (exclude != 0); }

bool inRange(const LIntPair* pair, int32_t value) {
  return static_cast<int32_t>(pair->key) <= value && value <= static_cast<int32_t>(pair->value);
}
bool inRange(const LDtPair* pair, int64_t value) {
  return pair->low <= value && value <= pair->high;
}

template <typename List, typename Value>
bool anyRangeFits(const List& list, Value value) {
  for (const auto* pair : list)
    if (inRange(pair, value)) return true;
  return false;
}

// A part that starts at a character of text, never inside a double-byte one.
bool containsPart(const LStr& text, const LStr& part) {
  int32_t i = 0;
  while (i + part.length <= text.length) {
    if (std::memcmp(text.ptr + i, part.ptr, part.length) == 0) return true;
    i += FIsLeadByte(static_cast<unsigned char>(text[i])) && i + 1 < text.length ? 2 : 1;
  }
  return false;
}

bool textFits(const char* text, const LStrs& entries, int32_t mode, bool keepCase) {
  LStr subject(text);
  if (!keepCase) subject.toLower();
  for (const LStr* entry : entries) {
    LStr wanted(*entry);
    if (!keepCase) wanted.toLower();
    if (mode == kCondExact && FStrCmp(subject.ptr, wanted.ptr, false) == 0) return true;
    if (mode == kCondPartial && containsPart(subject, wanted)) return true;
  }
  return false;
}

// Expressions see the text as 16-bit characters and search it whole, without
// folding: case counts as the expression says.
bool rexFits(const char* text, const URexList& expressions) {
  UStr wide;
  FToUStr(text, -1, wide);
  for (URex* rex : expressions)
    if (FRexSearch(rex, wide.ptr, wide.length, nullptr, nullptr, 0) >= 0) return true;
  return false;
}
}  // namespace

bool FNameTest(const char* name, const TCond& cond) {
  if (cond.names == nullptr) return true;
  LStr base, ext, patternBase, patternExt;
  FSplitExt(name, base, ext);
  bool fits = false;
  for (const LStr* pattern : *cond.names) {
    FSplitExt(pattern->ptr, patternBase, patternExt);
    if (FWildMatch(base.ptr, patternBase.ptr) && FWildMatch(ext.ptr, patternExt.ptr)) {
      fits = true;
      break;
    }
  }
  return afterExclude(fits, cond.nameExcl);
}

bool FDateTest(int64_t time, const TCond& cond) {
  if (cond.dates == nullptr) return true;
  return afterExclude(anyRangeFits(*cond.dates, time), cond.dateExcl);
}

bool FStoreNoTest(TVer* ver, const TCond& cond) {
  if (cond.storeNos == nullptr) return true;
  return afterExclude(anyRangeFits(*cond.storeNos, ver->Info()->storeNo), cond.storeNoExcl);
}

bool FCommentTest(TVer* ver, const TCond& cond) {
  if (cond.comments == nullptr) return true;
  const char* comment = FStrings().text(ver->Info()->commentId);
  return afterExclude(textFits(comment, *cond.comments, cond.commentMode, cond.commentCase != 0),
                      cond.commentExcl);
}

bool FCommentRexTest(TVer* ver, const TCond& cond) {
  if (cond.commentRex == nullptr) return true;
  const char* comment = FStrings().text(ver->Info()->commentId);
  return afterExclude(rexFits(comment, *cond.commentRex), cond.commentExcl);
}

bool FSizeTest(int32_t size, const TCond& cond) {
  if (cond.sizes == nullptr) return true;
  return afterExclude(anyRangeFits(*cond.sizes, size), cond.sizeExcl);
}

bool FPathTest(const char* path, const TCond& cond) {
  if (cond.paths == nullptr) return true;
  return afterExclude(textFits(path, *cond.paths, cond.pathMode, cond.pathCase != 0),
                      cond.pathExcl);
}

bool FPathRexTest(const char* path, const TCond& cond) {
  if (cond.pathRex == nullptr) return true;
  return afterExclude(rexFits(path, *cond.pathRex), cond.pathExcl);
}

bool FPathCondTest(const char* path, const TCond& cond) {
  return cond.pathRex != nullptr ? FPathRexTest(path, cond) : FPathTest(path, cond);
}

bool FVerNoTest(const TVer* ver, const TCond& cond) {
  if (cond.vers == nullptr) return true;
  int32_t number = ver->IndexInFile(cond.verFromNewest != 0) + 1;
  return afterExclude(anyRangeFits(*cond.vers, number), cond.verExcl);
}

bool FUserTest(TVer* ver, const TCond& cond) {
  if (cond.users == nullptr) return true;
  const char* user = FStrings().text(ver->Info()->userId);
  return afterExclude(textFits(user, *cond.users, kCondExact, /*keepCase=*/true), cond.userExcl);
}

bool FCheckoutTest(TVer* ver, const TCond& cond) {
  if (cond.checkouts == nullptr) return true;
  const char* user = FStrings().text(ver->Info()->checkoutId);
  return afterExclude(textFits(user, *cond.checkouts, kCondExact, /*keepCase=*/true),
                      cond.checkoutExcl);
}

bool FAttrTest(int32_t attrs, const TCond& cond) {
  for (int32_t i = 0; i < 4; i++) {
    int32_t want = cond.attrWant[i];
    if (want != kAttrAny && want != ((attrs & kAttrBits[i]) != 0 ? kAttrOn : kAttrOff))
      return false;
  }
  return true;
}
