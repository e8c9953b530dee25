#include "lib/large_block.h"

#include "lib/alloc.h"
#include "lib/sys.h"

LLargeBlock::LLargeBlock(int64_t size) : data_(SysTakeLargeBlock(size)), size_(size) {
  if (data_ == nullptr) FOutOfMemory(size);
}

LLargeBlock::~LLargeBlock() { SysFreeLargeBlock(data_, size_); }
