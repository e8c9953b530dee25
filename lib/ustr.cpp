#include "lib/ustr.h"

#include "lib/chartype.h"
#include "lib/convert.h"
#include "lib/lstr.h"
#include "lib/strfunc.h"

UStr& UStr::appendAscii(const char* text) {
  if (text == nullptr) return *this;
  for (; *text; text++) append(static_cast<UChar>(static_cast<unsigned char>(*text)));
  return *this;
}

UStr& UStr::format(const char* fmt, ...) {
  LStr piece;
  va_list args;
  va_start(args, fmt);
  piece.formatV(fmt, args);
  va_end(args);
  FToUStr(piece.ptr, piece.length, *this);
  return *this;
}

void UStr::toLower() {
  for (int32_t i = 0; i < length; i++)
    if (ptr[i] >= 'A' && ptr[i] <= 'Z') ptr[i] |= 0x20;
}

void UStr::toUpper() {
  for (int32_t i = 0; i < length; i++)
    if (ptr[i] >= 'a' && ptr[i] <= 'z') ptr[i] &= ~0x20;
}

int UStr::popFirstChar(bool removeIt) {
  if (length == 0) return -1;
  int c = ptr[0];
  if (removeIt) remove(0, 1);
  return c;
}

int UStr::popLastChar(bool removeIt) {
  if (length == 0) return -1;
  int c = ptr[length - 1];
  if (removeIt) truncate(length - 1);
  return c;
}

bool UStr::isBlank() const {
  for (int32_t i = 0; i < length; i++)
    if (ptr[i] > 0xFF || !FIsSpace(static_cast<unsigned char>(ptr[i]))) return false;
  return true;
}

bool UStr::equals(const UChar* other, bool ignoreCase) const {
  if (other == nullptr) return false;
  return FUStrCmp(ptr, other, ignoreCase) == 0;
}
