#include "rex/search.h"

#include <memory>

#include "lib/mem_stream.h"
#include "rex/parse.h"
#include "rex/token.h"

namespace {
void collectGroups(const URexCtx& ctx, URexGroups& groups) {
  int32_t number = 0;
  for (const URexBrace* brace : ctx.braces) {
    URexGroup* group = new URexGroup;
    if (brace->name.empty())
      group->name.format("%d", ++number);
    else
      group->name = brace->name;
    group->text = brace->text;
    groups.add(group);
  }
}
}  // namespace

int32_t FRexSearchCtx(URex* rex, URexCtx& ctx, int32_t limit, int32_t* matchLength,
                      URexGroups* groups) {
  if (groups) groups->clear();
  int32_t origin = ctx.tell();
  int32_t matched = rex ? ctx.search(rex, limit) : -1;
  if (matchLength) *matchLength = matched;
  if (matched < 0) return -1;
  if (groups) collectGroups(ctx, *groups);
  return ctx.since(origin);
}

int32_t FRexSearchFrom(URex* rex, const UChar* text, int32_t length, int32_t start,
                       int32_t* matchLength, URexGroups* groups, int32_t flags) {
  if (text && length < 0) length = FULen(text);
  if (text == nullptr || start < 0 || start > length) {
    if (matchLength) *matchLength = -1;
    if (groups) groups->clear();
    return -1;
  }
  LMemSrm srm(text, length * 2);
  srm.seek(start * 2);
  URexCtx ctx(&srm, flags);
  int32_t found = FRexSearchCtx(rex, ctx, -1, matchLength, groups);
  return found < 0 ? -1 : start + found;
}

int32_t FRexSearch(URex* rex, const UChar* text, int32_t length, int32_t* matchLength,
                   URexGroups* groups, int32_t flags) {
  return FRexSearchFrom(rex, text, length, 0, matchLength, groups, flags);
}

int32_t FRexFindSyntax(const UChar* pattern, const UChar* text, int32_t length, int escaped) {
  std::unique_ptr<URex> rex(escaped ? FRexCompileEscaped(pattern) : FRexCompile(pattern));
  return FRexSearch(rex.get(), text, length, nullptr, nullptr, 0);
}

int32_t FRexFind(const UChar* pattern, const UChar* text, int32_t length) {
  return FRexFindSyntax(pattern, text, length, 0);
}

void FRexDumpGroups(const URexGroups& groups, LStr& out) {
  for (int32_t i = 0; i < groups.count; i++) {
    if (i > 0) out.format("---- %d ----\n", i + 1);
    out.append(FRexNarrow(groups[i]->name.ptr, groups[i]->name.length));
    out.append(": ");
    out.append(FRexNarrow(groups[i]->text.ptr, groups[i]->text.length));
    out.append('\n');
  }
}
