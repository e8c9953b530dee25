// LLargeBlock: a zeroed block of megabytes that one owner fills as it goes,
// taken from the system in large pages where it has them (SysTakeLargeBlock)
// and given back when the owner ends. Its first touches then cost a few page
// faults where small blocks from the heap cost one for each 4 KiB: the gap
// encoder's rings, zeroed in blocks of 64, and its helper's record of
// copies, in blocks of 48 KB, took 2 400 of the 3 900 faults of encoding a
// 12 MB file.
#pragma once

#include <cstdint>

class LLargeBlock {
 public:
  // Takes at least `size` bytes, all zero; fails as the allocator does when
  // the system has none.
  explicit LLargeBlock(int64_t size);
  ~LLargeBlock();
  LLargeBlock(const LLargeBlock&) = delete;
  LLargeBlock& operator=(const LLargeBlock&) = delete;

  void* data() const { return data_; }

 private:
  void* data_;
  int64_t size_;
};
