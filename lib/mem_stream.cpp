#include "lib/mem_stream.h"

#include <cstring>

LMemStream::LMemStream(const void* data, int32_t size)
    : data_(static_cast<const char*>(data)), size_(size) {}

int32_t LMemStream::read(void* buffer, int32_t size) {
  if (size > size_ - position_) size = size_ - position_;
  if (size <= 0) return 0;
  std::memcpy(buffer, data_ + position_, size);
  position_ += size;
  return size;
}

int32_t LMemStream::seek(int32_t position) {
  if (position >= 0 && position <= size_) position_ = position;
  return position_;
}

LMemSrm::LMemSrm(const void* data, int32_t size) : LSrm(nullptr), memory_(data, size) {
  stream = &memory_;
}

LMemSrm::~LMemSrm() {
  // Buffer first, then the inner stream; the base destructor then finds no
  // stream and only frees the buffer memory.
  flushBuffer(/*keep=*/false);
  memory_.flush();
  memory_.close();
  stream = nullptr;
}
