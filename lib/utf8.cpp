#include "lib/utf8.h"

#include <cstring>

namespace {

const UChar kReplacement = 0xFFFD;
const UChar kEscapeBase = 0xDC00;

// The code point of the well-formed sequence at p, or -1 when the first byte
// does not start one. Overlong forms, encoded surrogates and values above
// U+10FFFF are ill-formed: accepting any of them would let two byte strings
// decode to the same units, and the lossless trip back would pick one.
int32_t decodeOne(const unsigned char* p, int32_t left, int32_t* used) {
  unsigned char c = p[0];
  *used = 1;
  if (c < 0x80) return c;
  int32_t count;
  int32_t value;
  int32_t minimum;
  if (c >= 0xC2 && c <= 0xDF) {
    count = 2, value = c & 0x1F, minimum = 0x80;
  } else if (c >= 0xE0 && c <= 0xEF) {
    count = 3, value = c & 0x0F, minimum = 0x800;
  } else if (c >= 0xF0 && c <= 0xF4) {
    count = 4, value = c & 0x07, minimum = 0x10000;
  } else {
    return -1;
  }
  if (left < count) return -1;
  for (int32_t i = 1; i < count; i++) {
    if ((p[i] & 0xC0) != 0x80) return -1;
    value = (value << 6) | (p[i] & 0x3F);
  }
  if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return -1;
  *used = count;
  return value;
}

void encodeOne(uint32_t value, LStr& out) {
  char bytes[4];
  int32_t n;
  if (value < 0x80) {
    bytes[0] = static_cast<char>(value);
    n = 1;
  } else if (value < 0x800) {
    bytes[0] = static_cast<char>(0xC0 | (value >> 6));
    bytes[1] = static_cast<char>(0x80 | (value & 0x3F));
    n = 2;
  } else if (value < 0x10000) {
    bytes[0] = static_cast<char>(0xE0 | (value >> 12));
    bytes[1] = static_cast<char>(0x80 | ((value >> 6) & 0x3F));
    bytes[2] = static_cast<char>(0x80 | (value & 0x3F));
    n = 3;
  } else {
    bytes[0] = static_cast<char>(0xF0 | (value >> 18));
    bytes[1] = static_cast<char>(0x80 | ((value >> 12) & 0x3F));
    bytes[2] = static_cast<char>(0x80 | ((value >> 6) & 0x3F));
    bytes[3] = static_cast<char>(0x80 | (value & 0x3F));
    n = 4;
  }
  out.append(bytes, n);
}

}  // namespace

void FUtf8ToUtf16(const char* text, int32_t n, UStr& out, bool lossless) {
  if (text == nullptr) return;
  if (n < 0) n = static_cast<int32_t>(std::strlen(text));
  const unsigned char* p = reinterpret_cast<const unsigned char*>(text);
  out.reserve(out.length + n);
  for (int32_t i = 0; i < n;) {
    int32_t used;
    int32_t value = decodeOne(p + i, n - i, &used);
    if (value < 0) {
      out.append(lossless ? static_cast<UChar>(kEscapeBase + p[i]) : kReplacement);
    } else if (value >= 0x10000) {
      value -= 0x10000;
      out.append(static_cast<UChar>(0xD800 + (value >> 10)));
      out.append(static_cast<UChar>(0xDC00 + (value & 0x3FF)));
    } else {
      out.append(static_cast<UChar>(value));
    }
    i += used;
  }
}

void FUtf16ToUtf8(const UChar* text, int32_t n, LStr& out, bool lossless) {
  if (text == nullptr) return;
  if (n < 0) n = FULen(text);
  out.reserve(out.length + n);
  for (int32_t i = 0; i < n; i++) {
    UChar unit = text[i];
    if (unit < 0xD800 || unit > 0xDFFF) {
      encodeOne(unit, out);
    } else if (unit < 0xDC00 && i + 1 < n && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      encodeOne(0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00), out);
      i++;
    } else if (!lossless) {
      encodeOne(kReplacement, out);
    } else if (unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF) {
      out.append(static_cast<char>(unit - kEscapeBase));
    } else {
      encodeOne(unit, out);
    }
  }
}
