#include "store/held_buf.h"

#include <cstdlib>
#include <cstring>

#include "lib/fail.h"

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
