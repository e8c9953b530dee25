// LEvent and LThread: the library's event and thread objects, and the record
// of every thread of the process under the main-thread object.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/sys.h"

// One auto-reset event, not signalled at creation.
struct LEvent {
  SysEvent handle;
  int32_t owned;
  // A null handle creates an event; otherwise the handle is wrapped.
  explicit LEvent(SysEvent existing = nullptr);
  ~LEvent();
  LEvent(const LEvent&) = delete;
  LEvent& operator=(const LEvent&) = delete;
  // Waits for this event alone; returns 1 on time-out (negative: no limit).
  int wait(int32_t milliseconds);
  // Waits for this event or the calling thread's wake event; 1 on time-out.
  int waitOrWake(int32_t milliseconds);
  void set();
};

class LThread : public LObj {
 public:
  intptr_t threadHandle = -1;  // -1 when no thread runs
  SysThread selfHandle = nullptr;
  volatile uint32_t threadId = 0;
  volatile uint8_t stopRequested = 0;
  uint8_t selfDelete = 0;
  uint8_t isMain = 0;
  LEvent wakeEvent;
  LEvent endEvent;

  LThread();
  ~LThread() override;
  // The body of the thread.
  virtual void run() {}
  // Starts the thread unless it runs already; with selfDelete the object
  // destroys itself when the thread ends.
  void start(bool selfDelete);
  // Asks the thread to stop and waits for its end up to the given time
  // (negative: without limit). A time-out is not reported.
  void stop(int32_t milliseconds);
  // Terminates the thread; 0 on success or when none runs, 1 on failure.
  int killThread();

 private:
  friend struct LThreadEntry;
  SysLock lock_;
};

// The record of the process's threads; its first child is itself.
class LMainThread : public LThread {
 public:
  LArrOf<LThread*> children;
  LMainThread();
  // Stops every other thread, last first, each for up to a second.
  ~LMainThread() override;
};

// The main-thread object, or null before start-up made it.
LMainThread* FMainThread();
void FSetMainThread(LMainThread* main);
// The LThread running the calling thread, or null for threads the library
// did not start.
LThread* FCurrentThread();
