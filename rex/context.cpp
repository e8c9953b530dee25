#include "rex/context.h"

#include "lib/chartype.h"
#include "rex/fold.h"

int32_t URexCtx::foldChar(int32_t c) const {
  if ((flags & kRexFoldCase) && c >= 0 && c < 256 && (FCharType[c] & kCharUpper)) c += 'a' - 'A';
  if (flags & kRexFoldWidth) c = FRexWidthFold(c);
  if ((flags & kRexSkipBlanks) && FRexIgnorable(c)) return -1;
  if ((flags & kRexSkipOnes) && c == 1) return -1;
  return c;
}

int32_t URexCtx::search(URex* root, int32_t limit) {
  if (limit < 0) limit = 2147483647;
  braces.clear();
  int32_t origin = tell();
  for (int32_t i = 0; i < limit; i = since(origin)) {
    int32_t matched = call(root, 0);
    if (matched >= 0) return matched > limit - i ? -1 : matched;
    int32_t c = getChar();
    if (c < 0) return -1;
    if (out) {
      UChar unit = static_cast<UChar>(c);
      out->writeText(&unit, 1);
    }
  }
  return -1;
}
