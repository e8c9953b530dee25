#include "archive/record_copy.h"

#include <cstring>

#include "lib/lstr.h"
#include "lib/msg.h"

namespace {

const int32_t kBlock = 1 << 20;

// The update file, a block at a time.
class TRecordSource {
 public:
  explicit TRecordSource(LSrm& update) : update_(update) { block_.reserve(kBlock); }

  // The next 32-bit field, -1 when fewer than four bytes are left.
  int32_t field() {
    unsigned char bytes[4];
    if (take(bytes, 4) != 4) return -1;
    return static_cast<int32_t>(bytes[0] | bytes[1] << 8 | bytes[2] << 16 |
                                static_cast<uint32_t>(bytes[3]) << 24);
  }
  // Up to n of the next bytes, in place; fewer only at the end of the file.
  int32_t next(int32_t n, const char** at) {
    if (used_ == held_ && !refill()) return 0;
    *at = block_.ptr + used_;
    const int32_t got = n < held_ - used_ ? n : held_ - used_;
    used_ += got;
    return got;
  }

 private:
  int32_t take(unsigned char* out, int32_t n) {
    int32_t done = 0;
    while (done < n) {
      const char* at = nullptr;
      const int32_t got = next(n - done, &at);
      if (got == 0) break;
      std::memcpy(out + done, at, got);
      done += got;
    }
    return done;
  }
  bool refill() {
    held_ = update_.read(block_.ptr, kBlock);
    used_ = 0;
    return held_ > 0;
  }

  LSrm& update_;
  LStr block_;
  int32_t held_ = 0;
  int32_t used_ = 0;
};

// Bytes for the archive, gathered while they follow one another.
class TRunWriter {
 public:
  TRunWriter(LSrm& archive, const std::function<void()>& written)
      : archive_(archive), written_(written) {
    run_.reserve(kBlock);
  }

  // n is at most a block.
  void put(int32_t pos, const char* bytes, int32_t n) {
    if (length_ > 0 && (pos != start_ + length_ || length_ + n > kBlock)) flush();
    if (length_ == 0) start_ = pos;
    std::memcpy(run_.ptr + length_, bytes, n);
    length_ += n;
  }
  void flush() {
    if (length_ == 0) return;
    archive_.seek(start_);
    // As a stream's copy does: the shortfall is told and the copy goes on.
    const int32_t written = archive_.write(run_.ptr, length_);
    if (written != length_) FMsg(kMsgGeneral, "failed to copy stream (%d != %d)", length_, written);
    length_ = 0;
    written_();
  }

 private:
  LSrm& archive_;
  const std::function<void()>& written_;
  LStr run_;
  int32_t start_ = 0;
  int32_t length_ = 0;
};

}  // namespace

int32_t FCopyRecords(LSrm& update, LSrm& archive, const std::function<void()>& written) {
  TRecordSource source(update);
  TRunWriter out(archive, written);
  update.seek(0);
  bool any = false;
  int32_t end = 0;  // where the last record's bytes end
  int32_t pos = source.field();
  while (pos >= 0) {
    const int32_t length = source.field();
    end = pos;
    any = true;
    for (int32_t left = length < 0 ? 0 : length; left > 0;) {
      const char* bytes = nullptr;
      const int32_t got = source.next(left, &bytes);
      if (got == 0) break;
      out.put(end, bytes, got);
      end += got;
      left -= got;
    }
    pos = source.field();
  }
  out.flush();
  if (any) archive.seek(end);
  return pos;
}
