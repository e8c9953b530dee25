// UStr: the 16-bit string of the library (UTF-16 units), the twin of LStr.
// Capacity and length count 16-bit units.
#pragma once

#include <cstdint>

#include "lib/ltext.h"

typedef uint16_t UChar;

class UStr : public LText<UChar> {
 public:
  UStr() = default;
  explicit UStr(const UChar* text, int32_t n = -1) : LText(text, n) {}
  UStr(const UStr& other) = default;
  UStr& operator=(const UStr& other) {
    assign(other.ptr, other.length);
    return *this;
  }

  UStr& append(const UStr& other) { return append(other.ptr, other.length); }
  UStr& append(const UChar* text, int32_t n = -1) {
    LText::append(text, n);
    return *this;
  }
  UStr& append(UChar c) { return append(&c, 1); }
  // Appends plain ASCII text unit by unit.
  UStr& appendAscii(const char* text);
  void insert(UChar c, int32_t position) { LText::insert(&c, 1, position); }
  using LText::insert;
  void assign(const UChar* text, int32_t n = -1) { LText::assign(text, n); }
  // Formats 8-bit text and appends its conversion (system code page).
  UStr& format(const char* fmt, ...) __attribute__((format(printf, 2, 3)));

  void toLower();
  void toUpper();
  int popFirstChar(bool remove);
  int popLastChar(bool remove);
  bool isBlank() const;
  int32_t replaceAll(const UChar* from, const UChar* to) { return LText::replaceAll(from, to); }
  bool equals(const UChar* other, bool ignoreCase) const;

  bool empty() const { return length == 0; }
  UChar& operator[](int32_t i) { return ptr[i]; }
  UChar operator[](int32_t i) const { return ptr[i]; }
  void swap(UStr& other) { swapWith(other); }
};

inline int32_t FULen(const UChar* text) { return LText<UChar>::measure(text); }
