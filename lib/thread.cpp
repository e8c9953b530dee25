#include "lib/thread.h"

#include "lib/fail.h"
#include "lib/liblock.h"
#include "lib/msg.h"

namespace {
LMainThread* gMainThread = nullptr;

int32_t indexOfChild(LThread* thread) {
  return gMainThread->children.find(thread, [](LThread* a, LThread* b) { return a == b ? 0 : 1; });
}
}  // namespace

LMainThread* FMainThread() { return gMainThread; }
void FSetMainThread(LMainThread* main) { gMainThread = main; }

LThread* FCurrentThread() {
  FLibGuard guard;
  if (gMainThread == nullptr) return nullptr;
  uint32_t id = SysCurrentThreadId();
  for (LThread* thread : gMainThread->children)
    if (thread->threadId == id) return thread;
  return nullptr;
}

LEvent::LEvent(SysEvent existing) : handle(existing), owned(existing == nullptr) {
  if (owned) {
    handle = SysCreateEvent();
    if (handle == nullptr) FMsg(kMsgSystem, "cannot create event object");
  }
}

LEvent::~LEvent() {
  if (owned && handle != nullptr && !SysCloseEvent(handle)) FMsg(kMsgSystem, "cannot close event");
}

int LEvent::wait(int32_t milliseconds) {
  int result = SysWaitEvent(handle, milliseconds);
  if (result < 0) FMsg(kMsgSystem, "WaitForSingleObject() failed");
  return result == 2 ? 1 : 0;
}

int LEvent::waitOrWake(int32_t milliseconds) {
  LThread* self = FCurrentThread();
  if (self == nullptr) return wait(milliseconds);
  int result = SysWaitEvents(handle, self->wakeEvent.handle, milliseconds);
  if (result < 0) FMsg(kMsgSystem, "WaitForMultipleObjects() failed");
  return result == 2 ? 1 : 0;
}

void LEvent::set() { SysSetEvent(handle); }

// The body of every thread the library starts.
struct LThreadEntry {
  static void run(void* argument) {
    LThread* thread = static_cast<LThread*>(argument);
    thread->selfHandle = SysCurrentThread();
    thread->threadId = SysCurrentThreadId();
    {
      FLibGuard guard;
      if (gMainThread) gMainThread->children.add(thread);
    }
    thread->run();
    {
      FLibGuard guard;
      if (gMainThread) {
        int32_t index = indexOfChild(thread);
        if (index < 0) FInternalNum(250);
        gMainThread->children.detach(index);
      }
    }
    SysThread self = thread->selfHandle;
    thread->threadId = 0;
    thread->threadHandle = -1;
    if (thread->selfDelete)
      delete thread;
    else
      thread->endEvent.set();
    SysReleaseThread(self);
  }
};

LThread::LThread() : lock_(SysCreateLock()) {}

LThread::~LThread() {
  if (threadHandle != -1 && !isMain) stop(1000);
  SysDeleteLock(lock_);
}

void LThread::start(bool deleteAtEnd) {
  selfDelete = deleteAtEnd;
  if (threadHandle != -1) return;
  // Marked running before the thread exists: once started, a self-deleting
  // object may be gone before SysStartThread returns.
  threadHandle = 1;
  SysThread handle = SysStartThread(&LThreadEntry::run, this);
  if (handle == nullptr) {
    threadHandle = -1;
    FMsg(kMsgGeneral, "Failed to start thread");
    return;
  }
  SysReleaseThread(handle);
}

void LThread::stop(int32_t milliseconds) {
  stopRequested = 1;
  if (threadHandle == -1) return;
  for (int i = 0; i < 100 && threadId == 0 && threadHandle != -1; i++) SysSleep(10);
  if (threadHandle == -1) return;
  // Held across the wait so that two callers of stop or killThread take turns.
  SysEnterLock(lock_);
  wakeEvent.set();
  if (threadHandle != -1) endEvent.wait(milliseconds);
  SysLeaveLock(lock_);
}

int LThread::killThread() {
  SysEnterLock(lock_);
  int failed = 0;
  if (threadHandle != -1) {
    if (selfHandle != nullptr && SysKillThread(selfHandle)) {
      {
        FLibGuard guard;
        if (gMainThread) {
          int32_t index = indexOfChild(this);
          if (index >= 0) gMainThread->children.detach(index);
        }
      }
      threadId = 0;
      threadHandle = -1;
    } else {
      FMsg(kMsgSystem, "killThread() failed");
      failed = 1;
    }
  }
  SysLeaveLock(lock_);
  return failed;
}

LMainThread::LMainThread() {
  isMain = 1;
  threadId = SysCurrentThreadId();
  selfHandle = SysCurrentThread();
  children.add(this);
}

LMainThread::~LMainThread() {
  LArrOf<LThread*> others;
  {
    FLibGuard guard;
    for (int32_t i = children.count - 1; i >= 1; i--) others.add(children[i]);
  }
  for (LThread* thread : others) thread->stop(1000);
  SysReleaseThread(selfHandle);
}
