// Shared helpers of the regular expression tests: 16-bit literals, the
// debugging text of a compiled pattern, and a one-call search.
#pragma once

#include <memory>

#include "lib/lstr.h"
#include "lib/ustr.h"
#include "rex/parse.h"
#include "rex/search.h"

inline const UChar* U(const char16_t* text) { return reinterpret_cast<const UChar*>(text); }

// The tree of a pattern as debugging text; "(null)" when none was built.
inline LStr treeOf(const char16_t* pattern, bool escaped = false) {
  std::unique_ptr<URex> rex(escaped ? FRexCompileEscaped(U(pattern)) : FRexCompile(U(pattern)));
  LStr out;
  if (rex)
    rex->dump(out, 0);
  else
    out = "(null)";
  return out;
}

struct Hit {
  int32_t start;
  int32_t length;
};

inline Hit searchFor(const char16_t* pattern, const char16_t* text, int32_t flags = 0,
                     URexGroups* groups = nullptr) {
  std::unique_ptr<URex> rex(FRexCompile(U(pattern)));
  Hit hit;
  hit.start = FRexSearch(rex.get(), U(text), -1, &hit.length, groups, flags);
  return hit;
}

inline bool sameText(const UStr& text, const char16_t* expected) {
  return text.equals(U(expected), false);
}
