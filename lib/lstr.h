// LStr: the 8-bit string of the library (Shift-JIS text in the system code
// page). Always NUL-terminated, never a null pointer; grows by 5/4 through
// the allocator's size classes so that its capacity fills its block exactly.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "lib/ltext.h"

class LStr : public LText<char> {
 public:
  LStr() = default;
  LStr(const char* text) : LText(text, -1) {}  // NOLINT: implicit, strings pass as text
  LStr(const char* text, int32_t n) : LText(text, n) {}
  LStr(const LStr& other) = default;
  LStr& operator=(const LStr& other) {
    assign(other.ptr, other.length);
    return *this;
  }
  LStr& operator=(const char* text) {
    assign(text, -1);
    return *this;
  }

  LStr& append(const LStr& other) { return append(other.ptr, other.length); }
  LStr& append(const char* text, int32_t n = -1) {
    LText::append(text, n);
    return *this;
  }
  LStr& append(char c) { return append(&c, 1); }
  void insert(char c, int32_t position) { LText::insert(&c, 1, position); }
  using LText::insert;
  void assign(const char* text, int32_t n = -1) { LText::assign(text, n); }
  // Appends one formatted piece through a 30000-byte buffer.
  LStr& format(const char* fmt, ...) __attribute__((format(printf, 2, 3)));
  LStr& formatV(const char* fmt, va_list args);
  // A fresh FAlloc block holding a NUL-terminated copy; the caller frees it.
  char* detachCopy() const;

  // ASCII letters only, stepping over double-byte characters.
  void toLower();
  void toUpper();
  // The first (last) character, a double-byte one joined high byte first, or
  // -1 when empty. popLastChar removes a single byte only.
  int popFirstChar(bool remove);
  int popLastChar(bool remove);
  bool isBlank() const;
  void lfToCrLf();
  void crLfToLf();
  int32_t replaceAll(const char* from, const char* to) { return LText::replaceAll(from, to); }
  bool equals(const char* other, bool ignoreCase) const;

  const char* c_str() const { return ptr; }
  bool empty() const { return length == 0; }
  char& operator[](int32_t i) { return ptr[i]; }
  char operator[](int32_t i) const { return ptr[i]; }
  void swap(LStr& other) { swapWith(other); }
};
