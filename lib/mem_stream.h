// Streams over memory. LMemStream reads a block it does not own; LMemSrm is
// the buffered reader over such a block; LMemOutStream and LMemOutStreamU
// append to a string that the caller owns.
#pragma once

#include <cstdint>
#include <type_traits>

#include "lib/lstr.h"
#include "lib/srm.h"
#include "lib/stream.h"
#include "lib/ustr.h"

// Reads from a block of memory, never owning it. Writing and isOpen stay the
// failing operations of LStream: a memory stream must not be asked.
class LMemStream : public LStream {
 public:
  LMemStream(const void* data, int32_t size);

  int32_t read(void* buffer, int32_t size) override;
  // Accepts 0 to size inclusive and ignores anything else (the end too);
  // returns the position.
  int32_t seek(int32_t position) override;
  int32_t tell() override { return position_; }
  void flush() override {}
  void close() override {}

 private:
  const char* data_;
  int32_t size_;
  int32_t position_ = 0;
};

// The buffered reader over a block of memory.
class LMemSrm : public LSrm {
 public:
  LMemSrm(const void* data, int32_t size);
  ~LMemSrm() override;

 private:
  LMemStream memory_;
};

// Appends to a text owned by the caller: LStr, or UStr for the 16-bit form,
// whose sizes are in bytes halved towards zero and whose positions are in
// 16-bit units.
template <typename Text>
class LMemOutStreamBase : public LStream {
 public:
  explicit LMemOutStreamBase(Text& target) : target_(&target) {}

  // A negative size measures the text.
  int32_t write(const void* buffer, int32_t size) override {
    const Unit* text = static_cast<const Unit*>(buffer);
    int32_t units = size < 0 ? Text::measure(text) : size / kUnit;
    target_->append(text, units);
    return units * kUnit;
  }
  // Shortens the text to a position before its end; any other position
  // leaves it alone. Returns the length.
  int32_t seek(int32_t position) override {
    if (position >= 0 && position < target_->length) target_->truncate(position);
    return target_->length;
  }
  int32_t tell() override { return target_->length; }
  void flush() override {}
  bool isOpen() override { return true; }
  void close() override {}

 private:
  using Unit = std::remove_pointer_t<decltype(Text::ptr)>;
  static constexpr int32_t kUnit = static_cast<int32_t>(sizeof(Unit));
  Text* target_;
};

class LMemOutStream : public LMemOutStreamBase<LStr> {
 public:
  using LMemOutStreamBase::LMemOutStreamBase;
};

class LMemOutStreamU : public LMemOutStreamBase<UStr> {
 public:
  using LMemOutStreamBase::LMemOutStreamBase;
};
