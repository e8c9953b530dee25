// TSideThread: runs one task of an encoding on another thread while the
// encoding's thread goes on, for a helper that takes the second half of a
// long file. The owner keeps it as its last member, so that its end, which
// asks the task to stop and waits for it, comes before the owner's other
// members go.
//
// The other thread is the side thread of the calling thread's codec
// scratch, kept asleep between tasks: a thread started afresh for each
// helper began up to 5 ms later on an idle processor, more than 1 ms late
// in half of the encodings of a 12 MB text, where the sleeping one was
// woken within 0.05 ms in most. A thread runs one side task at a time.
#pragma once

#include <atomic>
#include <cstdint>

#include "lib/task_pool.h"

class TSideThread {
 public:
  // Starts task->run() at once.
  explicit TSideThread(LTask* task);
  ~TSideThread();
  TSideThread(const TSideThread&) = delete;
  TSideThread& operator=(const TSideThread&) = delete;

  // For the task, at its progress points: ends it by throwing when a stop
  // was asked for or the owner no longer wants it.
  void poll() const;
  // Waits for the end of the task, looking at the stop state meanwhile;
  // true when the task ran to its end.
  bool finish();

 private:
  LTask* const task_;
  std::atomic<int32_t> abandon_{0};
  LTaskPool& pool_;
};

// Starts the calling thread's side thread, unless it runs already, so that
// its start overlaps other work, such as reading the file to encode.
void FStartSideThread();
