#include "rex/replace.h"

#include <memory>

#include "lib/convert.h"
#include "lib/mem_stream.h"
#include "rex/parse.h"
#include "rex/search.h"

void FRexReplaceAll(UStr& string, const UChar* pattern, const UChar* replacement) {
  std::unique_ptr<URex> rex(FRexCompile(pattern));
  if (rex == nullptr) return;
  UStr result;
  LMemOutStreamU skipped(result);
  LMemSrm srm(string.ptr, string.length * 2);
  URexCtx ctx(&srm, 0);
  // Without folding the search hands over exactly the text it steps over:
  // the text before each match, and all the rest after the last one.
  ctx.out = &skipped;
  for (;;) {
    int32_t matchLength;
    if (FRexSearchCtx(rex.get(), ctx, -1, &matchLength, nullptr) < 0) break;
    result.append(replacement);
    ctx.seek(ctx.tell() + matchLength * 2);
  }
  string.swap(result);
}

void FRexReplaceAll(LStr& string, const char* pattern, const char* replacement) {
  if (pattern == nullptr) return;
  UStr wideString;
  UStr widePattern;
  UStr wideReplacement;
  FToUStr(string.ptr, string.length, wideString);
  FToUStr(pattern, -1, widePattern);
  FToUStr(replacement, -1, wideReplacement);
  FRexReplaceAll(wideString, widePattern.ptr, replacement ? wideReplacement.ptr : nullptr);
  LStr result;
  FToLStr(wideString.ptr, wideString.length, result);
  string.swap(result);
}
