#include "lib/text_split.h"

#include "lib/chartype.h"

namespace {
void addItem(const char* start, int32_t n, int mode, LStrs& out) {
  LStr* item = new LStr(start, n);
  if (mode & kSplitTrim) {
    item->trimLeft(" \t\r\n\v\f");
    item->trimRight(" \t\r\n\v\f");
  }
  if ((mode & kSplitSkipEmpty) && item->empty()) {
    delete item;
    return;
  }
  out.add(item);
}
}  // namespace

void FSplit(const char* text, char separator, int mode, LStrs& out) {
  if (text == nullptr) return;
  const char* start = text;
  const char* p = text;
  for (; *p; p++) {
    if (*p == separator) {
      addItem(start, static_cast<int32_t>(p - start), mode, out);
      start = p + 1;
    } else if (FIsLeadByte(static_cast<unsigned char>(*p)) && p[1] != 0) {
      p++;
    }
  }
  addItem(start, static_cast<int32_t>(p - start), mode, out);
}
