// The pooled allocator behind every object of the library.
//
// Small blocks come from per-class free lists carved out of 30000-byte slabs
// that are never returned; blocks above 4092 bytes go straight to the system
// heap. Every block carries the size the caller asked for in the 32-bit word
// before it. All calls are thread-safe (the free lists have a lock of their
// own).
#pragma once

#include <cstddef>
#include <cstdint>

// Returns at least `size` bytes, aligned for any scalar or pointer.
void* FAlloc(int32_t size);
// Gives a block back; null is accepted and ignored.
void FFree(void* block);
// The class index of a request (-1 for the system heap), and its usable size.
int FRoundSize(int32_t size, int32_t* usable);
// The size the block was asked for.
int32_t FBlockSize(const void* block);

// The growth rule of strings and arrays: to hold n elements, ask for
// (n * 5) / 4 + 1 elements' worth of bytes (written to *requestBytes); the
// capacity is what the block's usable size holds, minus one for the
// terminator or sentinel.
int32_t FGrowCapacity(int32_t n, int32_t elementSize, int32_t* requestBytes);
// Reports that a block of `bytes` could not be had (the system refused it,
// or a string or array was to hold more than the largest block), as an
// error box, and throws: the running command fails and its cleanup runs.
[[noreturn]] void FOutOfMemory(int64_t bytes);

// Running totals of what the large-block path took from and gave back to the
// system heap, and of the slabs taken; for diagnostics.
struct FAllocStats {
  int64_t heapTaken;
  int64_t heapReturned;
};
FAllocStats FAllocTotals();

// Gives a class operator new and delete on the pooled allocator.
#define KST_POOLED_NEW                                                                  \
  static void* operator new(size_t size) { return FAlloc(static_cast<int32_t>(size)); } \
  static void operator delete(void* block) { FFree(block); }
