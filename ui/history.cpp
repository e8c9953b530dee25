#include "ui/history.h"

#include "lib/path_parts.h"
#include "rex/replace.h"

namespace {
// Moves text to the end of history (an equal entry is taken out first) and
// cuts the list to limit from the front.
void appendOnce(LStrs& history, const LStr& text, int32_t limit) {
  for (int32_t i = history.count - 1; i >= 0; i--)
    if (history[i]->equals(text.ptr, false)) history.removeRange(i, 1);
  history.add(new LStr(text));
  if (limit < 1) limit = 1;
  if (history.count > limit) history.removeRange(0, history.count - limit);
}
}  // namespace

LStr FNormalisedField(const char* text) {
  LStr out(text);
  FRexReplaceAll(out, " *; *", ";");
  FRexReplaceAll(out, " *, *", ",");
  return out;
}

LStr FRememberField(LStrs& history, const char* text, int32_t limit) {
  LStr normal = FNormalisedField(text);
  if (history.count == 0) history.add(new LStr());
  appendOnce(history, normal, limit);
  return normal;
}

void FRememberFolder(LStrs& history, const char* folder, int32_t limit) {
  LStr path(folder);
  FDropSep(path);
  if (path.empty()) return;
  appendOnce(history, path, limit);
}
