#include "store/held_buf.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "lib/fail.h"
#include "lib/sys.h"

const uint8_t THeldBuf::kEmpty[kZeroTail] = {};

THeldBuf::~THeldBuf() { std::free(bytes_); }

uint8_t* THeldBuf::prepare(int32_t room) {
  if (room < 0) FInternal("held buffer of %d bytes", room);
  if (room > room_ || bytes_ == nullptr) {
    std::free(bytes_);
    // A version of 2 GiB less a byte with its zero tail passes the 32-bit
    // sizes of the pooled allocator, so the bytes come from the heap.
    const size_t bytes = static_cast<size_t>(room) + kZeroTail;
    bytes_ = static_cast<uint8_t*>(std::malloc(bytes));
    room_ = bytes_ != nullptr ? room : 0;
    if (bytes_ == nullptr) FOutOfMemory(static_cast<int64_t>(bytes));
    if (room >= kSysLargeBlock) SysAdviseLargeBlock(bytes_, static_cast<int64_t>(bytes));
  }
  size_ = 0;
  std::memset(bytes_, 0, kZeroTail);
  return bytes_;
}

void THeldBuf::setSize(int32_t size) {
  if (size < 0 || size > room_ || bytes_ == nullptr) FInternal("held buffer size %d", size);
  size_ = size;
  std::memset(bytes_ + size, 0, kZeroTail);
}

void THeldBuf::assign(const void* bytes, int32_t size) {
  uint8_t* to = prepare(size);
  if (size > 0) std::memcpy(to, bytes, size);
  setSize(size);
}

void THeldBuf::append(const void* bytes, int32_t n) {
  if (n <= 0) return;
  if (n > room_ - size_ || bytes_ == nullptr) {
    if (n > INT32_MAX - kZeroTail - size_) FOutOfMemory(int64_t{size_} + n + kZeroTail);
    const int64_t grown = int64_t{room_} + room_ / 2 + 64;
    const int32_t room = static_cast<int32_t>(
        std::min<int64_t>(std::max<int64_t>(grown, int64_t{size_} + n), INT32_MAX - kZeroTail));
    // From the heap, as in prepare: the two must share one allocator.
    const size_t bytes = static_cast<size_t>(room) + kZeroTail;
    uint8_t* larger = static_cast<uint8_t*>(std::realloc(bytes_, bytes));
    if (larger == nullptr) FOutOfMemory(static_cast<int64_t>(bytes));
    bytes_ = larger;
    if (room >= kSysLargeBlock) SysAdviseLargeBlock(bytes_, static_cast<int64_t>(bytes));
    room_ = room;
  }
  std::memcpy(bytes_ + size_, bytes, n);
  size_ += n;
  std::memset(bytes_ + size_, 0, kZeroTail);
}

void THeldBuf::swap(THeldBuf& other) {
  uint8_t* bytes = bytes_;
  int32_t room = room_;
  int32_t size = size_;
  bytes_ = other.bytes_;
  room_ = other.room_;
  size_ = other.size_;
  other.bytes_ = bytes;
  other.room_ = room;
  other.size_ = size;
}
