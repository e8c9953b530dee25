// THeldBuf: an owned byte buffer that always has zero bytes behind its end.
//
// The matchers of the version encoder read a few bytes past the end of their
// ranges (a backward probe reads up to 3, the gap hash up to 5), and what they
// read there decides nothing only because it is always the same zeros. So
// every buffer that reaches the encoder is one of these, and the guarantee
// lives here instead of in each caller.
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "lib/stream.h"

class THeldBuf {
 public:
  // Zero bytes kept behind the last byte; more than any matcher reads.
  static const int32_t kZeroTail = 16;

  KST_POOLED_NEW
  THeldBuf() = default;
  THeldBuf(const void* bytes, int32_t size) { assign(bytes, size); }
  ~THeldBuf();
  THeldBuf(const THeldBuf&) = delete;
  THeldBuf& operator=(const THeldBuf&) = delete;

  // Discards the contents and gives `room` writable bytes (a decoder's output
  // capacity); the buffer is empty until setSize.
  uint8_t* prepare(int32_t room);
  // Ends the contents at `size`, which must not exceed the room prepared, and
  // zeroes the tail behind it.
  void setSize(int32_t size);
  void assign(const void* bytes, int32_t size);
  // Appends behind the contents, keeping them; the room grows by half again
  // when it runs out, so a writer that prepared enough room never copies.
  void append(const void* bytes, int32_t n);
  void swap(THeldBuf& other);

  const uint8_t* data() const { return bytes_ != nullptr ? bytes_ : kEmpty; }
  int32_t size() const { return size_; }

 private:
  static const uint8_t kEmpty[kZeroTail];
  uint8_t* bytes_ = nullptr;
  int32_t room_ = 0;
  int32_t size_ = 0;
};

// A borrowed look at a held buffer, the form in which the encoder takes its
// inputs. Made only from a THeldBuf, so the zero tail comes with it; valid
// while that buffer lives and is not changed.
struct THeldView {
  explicit THeldView(const THeldBuf& buf) : bytes(buf.data()), size(buf.size()) {}
  const uint8_t* bytes;
  int32_t size;
};

// Writes a token stream straight into a held buffer, so that a form is made
// where it stays instead of in a text that is then copied.
class THeldOutStream : public LStream {
 public:
  explicit THeldOutStream(THeldBuf& target) : target_(target) {}
  int32_t write(const void* buffer, int32_t size) override {
    target_.append(buffer, size);
    return size;
  }
  int32_t tell() override { return target_.size(); }
  void flush() override {}
  bool isOpen() override { return true; }
  void close() override {}

 private:
  THeldBuf& target_;
};
