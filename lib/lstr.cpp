#include "lib/lstr.h"

#include <cstdio>

#include "lib/chartype.h"
#include "lib/strfunc.h"

namespace {
const int kFormatBuffer = 30000;
}

LStr& LStr::format(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  formatV(fmt, args);
  va_end(args);
  return *this;
}

LStr& LStr::formatV(const char* fmt, va_list args) {
  char buffer[kFormatBuffer];
  int n = std::vsnprintf(buffer, sizeof buffer, fmt, args);
  if (n > kFormatBuffer - 1) n = kFormatBuffer - 1;
  if (n > 0) append(buffer, n);
  return *this;
}

char* LStr::detachCopy() const {
  char* copy = static_cast<char*>(FAlloc(length + 1));
  std::memcpy(copy, ptr, length + 1);
  return copy;
}

namespace {
template <typename Change>
void changeLetters(LStr& s, Change change) {
  for (int32_t i = 0; i < s.length; i++) {
    unsigned char c = static_cast<unsigned char>(s.ptr[i]);
    if (FIsLeadByte(c) && i + 1 < s.length) {
      i++;
      continue;
    }
    s.ptr[i] = change(c);
  }
}
}  // namespace

void LStr::toLower() {
  changeLetters(*this, [](unsigned char c) {
    return static_cast<char>((FCharType[c] & kCharUpper) ? c | 0x20 : c);
  });
}

void LStr::toUpper() {
  changeLetters(*this, [](unsigned char c) {
    return static_cast<char>((FCharType[c] & kCharLower) ? c & ~0x20 : c);
  });
}

int LStr::popFirstChar(bool removeIt) {
  if (length == 0) return -1;
  unsigned char first = static_cast<unsigned char>(ptr[0]);
  if (FIsLeadByte(first) && length >= 2) {
    int c = (first << 8) | static_cast<unsigned char>(ptr[1]);
    if (removeIt) remove(0, 2);
    return c;
  }
  if (removeIt) remove(0, 1);
  return first;
}

int LStr::popLastChar(bool removeIt) {
  if (length == 0) return -1;
  int32_t last = length - 1;
  int c = static_cast<unsigned char>(ptr[last]);
  if (last > 0 && FIsTrailByte(ptr, last)) c |= static_cast<unsigned char>(ptr[last - 1]) << 8;
  // Only one byte goes, even after a double-byte character: callers rely on
  // stepping back byte by byte.
  if (removeIt) truncate(last);
  return c;
}

bool LStr::isBlank() const {
  for (int32_t i = 0; i < length; i++)
    if (!FIsSpace(static_cast<unsigned char>(ptr[i]))) return false;
  return true;
}

void LStr::lfToCrLf() {
  for (int32_t i = 0; i < length; i++) {
    if (ptr[i] == '\n' && (i == 0 || ptr[i - 1] != '\r')) {
      insert('\r', i);
      i++;
    }
  }
}

void LStr::crLfToLf() {
  int32_t out = 0;
  for (int32_t i = 0; i < length; i++) {
    if (ptr[i] == '\r' && i + 1 < length && ptr[i + 1] == '\n') continue;
    ptr[out++] = ptr[i];
  }
  truncate(out);
}

bool LStr::equals(const char* other, bool ignoreCase) const {
  if (other == nullptr) return false;
  return FStrCmp(ptr, other, ignoreCase) == 0;
}
