#include "lib/larr.h"

#include <cstring>

LArrCore::LArrCore(int32_t elementSize) : capacity(0), count(0), elementSize_(elementSize) {
  // An empty array owns a 16-byte block whose first slot is the sentinel.
  ptr = FAlloc(16);
  std::memset(ptr, 0, 16);
}

LArrCore::~LArrCore() { FFree(ptr); }

void LArrCore::reserveElements(int32_t n) {
  if (n <= capacity) return;
  int32_t request;
  int32_t newCapacity = FGrowCapacity(n, elementSize_, &request);
  if (newCapacity < n) FOutOfMemory(static_cast<int64_t>(n) * elementSize_);
  void* block = FAlloc(request);
  std::memcpy(block, ptr, static_cast<size_t>(count + 1) * elementSize_);
  FFree(ptr);
  ptr = block;
  capacity = newCapacity;
}

void LArrCore::releaseCapacity() {
  int32_t request;
  int32_t newCapacity = FGrowCapacity(count, elementSize_, &request);
  if (newCapacity == capacity) return;
  void* block = FAlloc(request);
  std::memcpy(block, ptr, static_cast<size_t>(count + 1) * elementSize_);
  FFree(ptr);
  ptr = block;
  capacity = newCapacity;
}

void* LArrCore::openGap(int32_t position) {
  reserveElements(count + 1);
  char* at = bytes() + static_cast<size_t>(position) * elementSize_;
  std::memmove(at + elementSize_, at, static_cast<size_t>(count - position) * elementSize_);
  count++;
  zeroSentinel();
  return at;
}

void LArrCore::closeGap(int32_t first, int32_t n) {
  if (first < 0 || n <= 0 || first >= count) return;
  if (n > count - first) n = count - first;
  char* at = bytes() + static_cast<size_t>(first) * elementSize_;
  std::memmove(at, at + static_cast<size_t>(n) * elementSize_,
               static_cast<size_t>(count - first - n) * elementSize_);
  count -= n;
  zeroSentinel();
}

void LArrCore::zeroSentinel() {
  std::memset(bytes() + static_cast<size_t>(count) * elementSize_, 0, elementSize_);
}
