#include "store/held_buf.h"

#include <algorithm>
#include <cstring>

#include "lib/fail.h"

const uint8_t THeldBuf::kEmpty[kZeroTail] = {};

THeldBuf::~THeldBuf() { FFree(bytes_); }

uint8_t* THeldBuf::prepare(int32_t room) {
  if (room < 0 || room > INT32_MAX - kZeroTail) FInternal("held buffer of %d bytes", room);
  if (room > room_ || bytes_ == nullptr) {
    FFree(bytes_);
    bytes_ = static_cast<uint8_t*>(FAlloc(room + kZeroTail));
    room_ = room;
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
    if (n > INT32_MAX - kZeroTail - size_) FInternal("held buffer of %d + %d bytes", size_, n);
    const int64_t grown = int64_t{room_} + room_ / 2 + 64;
    const int32_t room = static_cast<int32_t>(
        std::min<int64_t>(std::max<int64_t>(grown, int64_t{size_} + n), INT32_MAX - kZeroTail));
    uint8_t* larger = static_cast<uint8_t*>(FAlloc(room + kZeroTail));
    if (size_ > 0) std::memcpy(larger, bytes_, size_);
    FFree(bytes_);
    bytes_ = larger;
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
