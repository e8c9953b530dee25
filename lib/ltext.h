// The storage shared by LStr and UStr: a terminated run of characters of
// type C with pointer, capacity and length, growing by the allocator's rule.
// A negative length argument measures the text up to its terminator; a null
// text pointer makes the operation do nothing.
#pragma once

#include <cstdint>
#include <cstring>

#include "lib/alloc.h"

template <typename C>
class LText {
 public:
  C* ptr;
  int32_t capacity;  // characters that fit, not counting the terminator
  int32_t length;

  KST_POOLED_NEW
  LText() : capacity(0), length(0) {
    // An empty text owns a block of four characters but says capacity 0, so
    // that its first append takes the growth path.
    ptr = static_cast<C*>(FAlloc(4 * sizeof(C)));
    ptr[0] = 0;
  }
  LText(const C* text, int32_t n) : LText() { append(text, n); }
  LText(const LText& other) : LText() { append(other.ptr, other.length); }
  ~LText() { FFree(ptr); }

  static int32_t measure(const C* text) {
    int32_t n = 0;
    while (text[n]) n++;
    return n;
  }

  void reserve(int32_t n) {
    if (n > capacity) regrow(n);
  }
  void append(const C* text, int32_t n) {
    if (text == nullptr) return;
    if (n < 0) n = measure(text);
    insert(text, n, length);
  }
  // A negative (or too large) position appends.
  void insert(const C* text, int32_t n, int32_t position) {
    if (text == nullptr) return;
    if (n < 0) n = measure(text);
    if (position < 0 || position > length) position = length;
    if (text >= ptr && text < ptr + length + 1) {
      LText copy(text, n);  // the text lives in this block, which may move
      insert(copy.ptr, n, position);
      return;
    }
    reserve(length + n);
    std::memmove(ptr + position + n, ptr + position, (length - position) * sizeof(C));
    std::memcpy(ptr + position, text, n * sizeof(C));
    length += n;
    ptr[length] = 0;
  }
  void assign(const C* text, int32_t n) {
    if (text >= ptr && text <= ptr + length) {
      LText copy(text, n);
      assign(copy.ptr, copy.length);
      return;
    }
    clear();
    insert(text, n, 0);
  }
  // Empties the text and gives a long block back.
  void clear() {
    length = 0;
    ptr[0] = 0;
    int32_t request;
    if (FGrowCapacity(0, sizeof(C), &request) != capacity) regrow(0);
  }
  void truncate(int32_t n) {
    if (n >= 0 && n < length) {
      length = n;
      ptr[n] = 0;
    }
  }
  void remove(int32_t position, int32_t n) {
    if (position < 0 || position >= length || n <= 0) return;
    if (n > length - position) n = length - position;
    std::memmove(ptr + position, ptr + position + n, (length - position - n + 1) * sizeof(C));
    length -= n;
  }
  int32_t trimLeft(const C* set) {
    int32_t n = 0;
    while (n < length && inSet(ptr[n], set)) n++;
    remove(0, n);
    return n;
  }
  int32_t trimRight(const C* set) {
    int32_t n = 0;
    while (n < length && inSet(ptr[length - 1 - n], set)) n++;
    truncate(length - n);
    return n;
  }
  // Replaces every `from` (plain units, no regard to character boundaries)
  // by `to`, never searching the replacement again; returns the count.
  int32_t replaceAll(const C* from, const C* to) {
    int32_t fromLength = measure(from);
    int32_t toLength = measure(to);
    if (fromLength == 0) return 0;
    int32_t count = 0;
    for (int32_t at = find(from, fromLength, 0); at >= 0;
         at = find(from, fromLength, at + toLength)) {
      remove(at, fromLength);
      insert(to, toLength, at);
      count++;
    }
    return count;
  }
  // The first position of `what` at or after start, or -1.
  int32_t find(const C* what, int32_t n, int32_t start) const {
    for (int32_t i = start; i + n <= length; i++)
      if (std::memcmp(ptr + i, what, n * sizeof(C)) == 0) return i;
    return -1;
  }
  void swapWith(LText& other) {
    C* p = ptr;
    ptr = other.ptr;
    other.ptr = p;
    int32_t c = capacity;
    capacity = other.capacity;
    other.capacity = c;
    int32_t l = length;
    length = other.length;
    other.length = l;
  }

 private:
  static bool inSet(C c, const C* set) {
    for (; *set; set++)
      if (*set == c) return true;
    return false;
  }
  void regrow(int32_t n) {
    int32_t request;
    int32_t newCapacity = FGrowCapacity(n, sizeof(C), &request);
    if (newCapacity < n) FOutOfMemory(static_cast<int64_t>(n) * sizeof(C));
    if (newCapacity == capacity) return;
    C* block = static_cast<C*>(FAlloc(request));
    std::memcpy(block, ptr, (length + 1) * sizeof(C));
    FFree(ptr);
    ptr = block;
    capacity = newCapacity;
  }
};
