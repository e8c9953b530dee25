#include "lib/alloc.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>

#include "lib/fail.h"
#include "lib/msg.h"
#include "lib/sys.h"

namespace {

const int kClassCount = 65;
const int32_t kSlabSize = 30000;
const int32_t kHeaderSize = 4;
// Blocks are carved so that the user area is 8-byte aligned: the 4-byte
// header sits at an address that is 4 modulo 8, and each carve is rounded up
// to a multiple of 8. The size classes themselves are unchanged.
const int32_t kAlign = 8;

#if defined(__SANITIZE_ADDRESS__)
// Under AddressSanitizer every block comes from the heap, so that overruns,
// use after free and leaks are seen block by block.
const bool kPooled = false;
#else
const bool kPooled = true;
#endif

struct Pool {
  void* freeLists[kClassCount];
  char* slabFill;
  int32_t slabLeft;
};
Pool gPool;
// The pool's own lock, a plain one that nothing is called under that could
// take it again: every object of every thread comes through here, and the
// recursive library-wide lock cost an add a sixth of its instructions. What
// it guards takes a few instructions, so a waiter spins; one whose holder
// the system has put aside gives its turn away instead. A system mutex cost
// a re-add of 8 000 unchanged files a seventh of its time uncontended, and
// its sleeps and wakes made the threads of an extract queue up on it.
// Constant-initialised, so that it works before any static constructor.
class PoolLock {
 public:
  void lock() {
    int spins = 0;
    while (taken_.exchange(true, std::memory_order_acquire)) {
      while (taken_.load(std::memory_order_relaxed)) {
        if (++spins < kSpins) {
          __builtin_ia32_pause();
        } else {
          std::this_thread::yield();
        }
      }
    }
  }
  void unlock() { taken_.store(false, std::memory_order_release); }

 private:
  static const int kSpins = 100;
  std::atomic<bool> taken_{false};
};
PoolLock gPoolLock;
std::atomic<int64_t> gHeapTaken{0};
std::atomic<int64_t> gHeapReturned{0};

int32_t* headerOf(const void* block) {
  return reinterpret_cast<int32_t*>(const_cast<char*>(static_cast<const char*>(block)) -
                                    kHeaderSize);
}

int32_t roundUp(int32_t value, int32_t step) { return (value + step - 1) / step * step; }

void* heapBlock(int32_t size, int32_t usable) {
  // kAlign bytes in front: the header is the second word, so the user area
  // keeps the heap's alignment.
  char* base = static_cast<char*>(std::malloc(static_cast<size_t>(usable) + kAlign));
  if (base == nullptr) FOutOfMemory(size);
  if (usable >= kSysLargeBlock) SysAdviseLargeBlock(base, static_cast<int64_t>(usable) + kAlign);
  gHeapTaken += static_cast<int64_t>(usable) + kHeaderSize;
  char* user = base + kAlign;
  *headerOf(user) = size;
  return user;
}

// With the pool's lock; null when the system has no slab to give.
void* carve(int32_t total) {
  // A free block holds its link in the user area, so even the smallest class
  // gets room for a pointer.
  const int32_t minimum = kHeaderSize + static_cast<int32_t>(sizeof(void*));
  int32_t step = roundUp(total < minimum ? minimum : total, kAlign);
  if (step > gPool.slabLeft) {
    char* slab = static_cast<char*>(std::malloc(kSlabSize + kAlign));
    if (slab == nullptr) return nullptr;
    gHeapTaken += kSlabSize;
    gPool.slabFill = slab + kAlign - kHeaderSize;
    gPool.slabLeft = kSlabSize;
  }
  char* block = gPool.slabFill;
  gPool.slabFill += step;
  gPool.slabLeft -= step;
  return block + kHeaderSize;
}

}  // namespace

int FRoundSize(int32_t size, int32_t* usable) {
  int64_t t = static_cast<int64_t>(size < 0 ? 0 : size) + kHeaderSize;
  int64_t total;
  int index;
  if (t <= 64) {
    total = (t + 3) / 4 * 4;
    index = static_cast<int>(total / 4);
  } else if (t <= 256) {
    total = (t + 15) / 16 * 16;
    index = static_cast<int>(total / 16 + 16);
  } else if (t <= 1024) {
    total = (t + 63) / 64 * 64;
    index = static_cast<int>(total / 64 + 32);
  } else if (t <= 4096) {
    total = (t + 255) / 256 * 256;
    index = static_cast<int>(total / 256 + 48);
  } else {
    total = (t + 4095) / 4096 * 4096;
    index = -1;
  }
  // The very largest requests keep what they asked for: a rounded size would
  // not fit 32 bits.
  if (total - kHeaderSize > INT32_MAX) total = static_cast<int64_t>(INT32_MAX) + kHeaderSize;
  if (usable) *usable = static_cast<int32_t>(total - kHeaderSize);
  return index;
}

void* FAlloc(int32_t size) {
  int32_t usable;
  int index = FRoundSize(size, &usable);
  if (index < 0 || !kPooled) return heapBlock(size, usable);
  void* block;
  {
    std::lock_guard<PoolLock> guard(gPoolLock);
    block = gPool.freeLists[index];
    if (block != nullptr)
      std::memcpy(&gPool.freeLists[index], block, sizeof(void*));
    else
      block = carve(usable + kHeaderSize);
  }
  if (block == nullptr) FOutOfMemory(kSlabSize);
  *headerOf(block) = size;
  return block;
}

void FFree(void* block) {
  if (block == nullptr) return;
  int32_t size = *headerOf(block);
  int32_t usable;
  int index = FRoundSize(size, &usable);
  if (index < 0 || !kPooled) {
    gHeapReturned += static_cast<int64_t>(usable) + kHeaderSize;
    std::free(static_cast<char*>(block) - kAlign);
    return;
  }
  std::lock_guard<PoolLock> guard(gPoolLock);
  // The first word of a free block links to the next free block of its class.
  std::memcpy(block, &gPool.freeLists[index], sizeof(void*));
  gPool.freeLists[index] = block;
}

int32_t FGrowCapacity(int32_t n, int32_t elementSize, int32_t* requestBytes) {
  int64_t units = static_cast<int64_t>(n) * 5 / 4 + 1;
  int64_t bytes = units * elementSize;
  // Near the top the growth stops at the largest block there is, whose
  // usable size is all of 32 bits; a caller that needs more than that
  // capacity cannot be served.
  if (bytes > INT32_MAX) bytes = INT32_MAX;
  *requestBytes = static_cast<int32_t>(bytes);
  int32_t usable;
  FRoundSize(*requestBytes, &usable);
  return usable / elementSize - 1;
}

void FOutOfMemory(int64_t bytes) {
  FError(kMsgErrorBox, "メモリが足りません (%lld バイトを確保できません)",
         static_cast<long long>(bytes));
}

int32_t FBlockSize(const void* block) { return *headerOf(block); }

FAllocStats FAllocTotals() { return FAllocStats{gHeapTaken, gHeapReturned}; }
