// LArr and its typed forms: growable arrays with a zero sentinel slot behind
// the last element, so that an array of pointers can also be walked to its
// null. Elements are 32-bit integers or pointers (pointer-sized on 64-bit
// builds); growth is counted in elements. The typed forms differ only in what
// they free on clearing.
#pragma once

#include <cstdint>
#include <type_traits>

#include "lib/alloc.h"
#include "lib/lstr.h"
#include "lib/ustr.h"

// The storage and growth rule shared by every element type.
class LArrCore {
 public:
  KST_POOLED_NEW
  void* ptr;
  int32_t capacity;  // excludes the sentinel slot
  int32_t count;

 protected:
  explicit LArrCore(int32_t elementSize);
  ~LArrCore();
  LArrCore(const LArrCore&) = delete;
  LArrCore& operator=(const LArrCore&) = delete;

  void reserveElements(int32_t n);
  void releaseCapacity();
  // Opens a gap of one element at position (0..count) and returns its address.
  void* openGap(int32_t position);
  void closeGap(int32_t first, int32_t n);
  char* bytes() const { return static_cast<char*>(ptr); }
  void zeroSentinel();

 private:
  int32_t elementSize_;
};

template <typename T>
struct LKeep {
  static void dispose(T) {}
};
template <typename T>
struct LDelete {
  static void dispose(T p) { delete p; }
};

template <typename T, typename Disposer = LKeep<T>>
class LArrOf : public LArrCore {
  static_assert(std::is_pointer_v<T> || std::is_integral_v<T>, "pointers or integers");

 public:
  LArrOf() : LArrCore(sizeof(T)) {}
  ~LArrOf() { disposeAll(0, count); }

  T* data() const { return static_cast<T*>(ptr); }
  T& operator[](int32_t i) { return data()[i]; }
  T operator[](int32_t i) const { return data()[i]; }
  T* begin() const { return data(); }
  T* end() const { return data() + count; }

  void reserve(int32_t n) { reserveElements(n); }
  void add(T element) { *static_cast<T*>(openGap(count)) = element; }
  // A negative position appends.
  void insert(T element, int32_t position) {
    *static_cast<T*>(openGap(position < 0 || position > count ? count : position)) = element;
  }
  void addAll(const LArrOf& other) {
    reserve(count + other.count);
    for (int32_t i = 0; i < other.count; i++) add(other[i]);
  }
  // Frees owned elements and closes the gap.
  void removeRange(int32_t first, int32_t n) {
    disposeAll(first, n);
    closeGap(first, n);
  }
  // Takes an element out without freeing it.
  T detach(int32_t i) {
    T element = data()[i];
    closeGap(i, 1);
    return element;
  }
  void clear() {
    disposeAll(0, count);
    count = 0;
    zeroSentinel();
    releaseCapacity();
  }
  T last() const { return count > 0 ? data()[count - 1] : T(); }
  T pop() {
    if (count == 0) return T();
    T element = data()[--count];
    zeroSentinel();
    return element;
  }
  // The first index at which compare(element, key) is 0, or -1.
  template <typename K, typename C>
  int32_t find(const K& key, C compare) const {
    for (int32_t i = 0; i < count; i++)
      if (compare(data()[i], key) == 0) return i;
    return -1;
  }

 private:
  void disposeAll(int32_t first, int32_t n) {
    for (int32_t i = first; i < first + n; i++) Disposer::dispose(data()[i]);
  }
};

struct LStrPair {
  KST_POOLED_NEW
  LStr first;
  LStr second;
};
struct LIntPair {
  KST_POOLED_NEW
  intptr_t key;
  intptr_t value;
};

typedef LArrOf<intptr_t> LArr;
typedef LArrOf<int32_t> LInts;
typedef LArrOf<LStr*, LDelete<LStr*>> LStrs;
typedef LArrOf<UStr*, LDelete<UStr*>> UStrs;
typedef LArrOf<LStrPair*, LDelete<LStrPair*>> LStrPairs;
typedef LArrOf<LIntPair*, LDelete<LIntPair*>> LIntPairs;
