// LTaskPool: threads of the library that run tasks handed to them in order,
// for work that may be shared out while one thread keeps the order of its
// results. A task is run by whichever thread is free; the owner waits for
// the tasks one by one in the order it needs them.
//
// A task may throw a plain integer out of run() (a stop, or an error it
// has shown), which the pool keeps in the task; nothing else may leave it.
#pragma once

#include <atomic>
#include <cstdint>

#include "lib/larr.h"
#include "lib/sys.h"
#include "lib/thread.h"

class LTask {
 public:
  virtual ~LTask() = default;
  virtual void run() = 0;

  // The integer that run() threw, 0 when it returned.
  int32_t thrown = 0;

 private:
  friend class LTaskPool;
  std::atomic<int32_t> done_{0};
};

class LTaskPool {
 public:
  // Starts `threads` threads (at least 1); each calls threadEnd, when
  // given, as the last thing it does for the pool.
  explicit LTaskPool(int32_t threads, void (*threadEnd)() = nullptr);
  // Tasks not yet started are not run; the destructor waits for those that
  // run to end (they should look at the stop state at their progress
  // points).
  ~LTaskPool();
  LTaskPool(const LTaskPool&) = delete;
  LTaskPool& operator=(const LTaskPool&) = delete;

  // Queues a task, which stays the caller's; it must live until it is done
  // or the pool is gone.
  void submit(LTask* task);
  // Waits up to the given time for a task to be done; true when it is.
  bool waitFor(LTask* task, int32_t milliseconds);
  int32_t threadCount() const { return workers_.count; }

 private:
  class Worker;
  friend class Worker;

  // The next queued task, or null; with the pool's lock.
  LTask* take();
  void finished(LTask* task);

  SysLock lock_;
  LArrOf<LTask*> queue_;
  int32_t next_ = 0;  // the first task of the queue not taken
  std::atomic<int32_t> closing_{0};
  void (*threadEnd_)();
  LEvent doneEvent_;
  LArrOf<Worker*, LDelete<Worker*>> workers_;
};
