#include "store/name_match.h"

#include <cstring>

namespace {
const unsigned char kCaseBit = 0x20;

unsigned char folded(const char* p) { return static_cast<unsigned char>(*p) | kCaseBit; }
}  // namespace

bool FWildMatch(const char* text, const char* pattern) {
  if (*pattern == '*') return true;
  for (;;) {
    if (folded(text) == folded(pattern)) {
      if (*pattern == 0) return true;
    } else if (*pattern != '?') {
      return false;
    }
    pattern++;
    // Where "?" or a blank has met the end of the text, the text stays at
    // its terminator: beyond its end it reads as zeros, and the scan never
    // leaves its buffer.
    if (*text != 0) text++;
    if (*pattern == '*') return true;
  }
}

void FSplitExt(const char* name, LStr& base, LStr& ext) {
  // The byte "." is never the second byte of a double-byte character.
  const char* dot = std::strrchr(name, '.');
  if (dot == nullptr) {
    base.assign(name);
    ext.assign("*");
    return;
  }
  base.assign(name, static_cast<int32_t>(dot - name));
  ext.assign(dot + 1);
}
