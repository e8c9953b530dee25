#include "cli/text_width.h"

#include <cstdlib>
#include <cstring>

#include "lib/chartype.h"
#include "lib/convert.h"

namespace {

// The first character of text: its byte length and its width. An escape
// stands for one 16-bit unit; from the CJK radicals on, units are wide.
int32_t stepAt(const char* text, TEscapeForm escapes, int32_t* width) {
  size_t openLength = std::strlen(kEscOpen);
  if (std::strncmp(text, kEscOpen, openLength) == 0) {
    char* end;
    unsigned long unit = std::strtoul(text + openLength, &end, 16);
    if (end != text + openLength && std::strncmp(end, kEscClose, std::strlen(kEscClose)) == 0) {
      int32_t length = static_cast<int32_t>(end - text + std::strlen(kEscClose));
      *width = escapes == kEscapeAsText ? length : unit >= 0x2E80 ? 2 : 1;
      return length;
    }
  }
  if (FIsLeadByte(static_cast<unsigned char>(text[0])) && text[1] != 0) {
    *width = 2;
    return 2;
  }
  *width = 1;
  return 1;
}

}  // namespace

int32_t FTextWidth(const char* text, TEscapeForm escapes) {
  int32_t total = 0;
  for (const char* p = text; *p;) {
    int32_t width;
    p += stepAt(p, escapes, &width);
    total += width;
  }
  return total;
}

LStr FFitTail(const char* text, int32_t columns, TEscapeForm escapes) {
  int32_t width = FTextWidth(text, escapes);
  if (width <= columns) return LStr(text);
  const int32_t dots = 3;
  const char* p = text;
  while (*p && width > columns - dots) {
    int32_t step;
    p += stepAt(p, escapes, &step);
    width -= step;
  }
  LStr out("...");
  out.append(p);
  return out;
}

void FAppendPadded(LStr& out, const char* text, int32_t columns, char align, TEscapeForm escapes) {
  int32_t fill = columns - FTextWidth(text, escapes);
  if (align == 'r')
    for (int32_t i = 0; i < fill; i++) out.append(' ');
  out.append(text);
  if (align != 'r')
    for (int32_t i = 0; i < fill; i++) out.append(' ');
}
