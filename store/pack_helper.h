// TPackHelper: scans the second half of a long input for the self
// compression on the packer's side thread while the packer's thread scans
// the first. It records its copies; the packer, once its own scan has
// passed the half, goes on until it makes a copy that ends where one of the
// helper's does, and from there writes the helper's copies.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/task_pool.h"
#include "store/side_thread.h"
#include "store/token_writer.h"

class TPackHelper : public LTask {
 public:
  // Scans bytes[start, length) as if the literal run began at `start`. The
  // bytes must outlive the helper. It starts at once, on the calling
  // thread's side thread.
  TPackHelper(const uint8_t* bytes, int32_t length, int32_t start);
  TPackHelper(const TPackHelper&) = delete;
  TPackHelper& operator=(const TPackHelper&) = delete;

  void run() override;

  // Waits for the end of the scan, looking at the stop state meanwhile;
  // true when it went to the end. A helper that ends before stops its scan
  // at the next progress point and waits for it.
  bool finish() { return thread_.finish(); }
  // Whether one of the helper's copies ends at `end`, which then is where
  // the scans meet. Asked for growing ends, after finish().
  bool meetsAt(int32_t end);
  bool met() const { return met_; }
  // Writes the copies after the one the scans met at, each after its
  // literal run; returns where the last of them ends.
  int32_t writeCopiesAfterMeeting(TTokenWriter& tokens) const;

 private:
  class Recorder;

  const uint8_t* const bytes_;
  const int32_t length_;
  const int32_t start_;
  // literal start, start, length, distance of each copy, in order.
  LArrOf<int32_t> copies_;
  int32_t next_ = 0;  // the first copy that does not end before the last meetsAt()
  bool met_ = false;
  TSideThread thread_;
};
