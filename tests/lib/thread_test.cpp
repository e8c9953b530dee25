#include "lib/thread.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

// The main-thread record for the tests of this file.
class MainThreadScope {
 public:
  MainThreadScope() { FSetMainThread(new LMainThread); }
  ~MainThreadScope() {
    delete FMainThread();
    FSetMainThread(nullptr);
  }
};

class WaitingThread : public LThread {
 public:
  std::atomic<int> ran{0};
  void run() override {
    ran = 1;
    while (!stopRequested) wakeEvent.wait(-1);
    ran = 2;
  }
};

class Stubborn : public LThread {
 public:
  std::atomic<bool> release{false};
  void run() override {
    while (!release) SysSleep(5);
  }
};

std::atomic<int> gDeleted{0};
class SelfDeleting : public LThread {
 public:
  ~SelfDeleting() override { gDeleted++; }
  void run() override {}
};

}  // namespace

TEST(Event, TimeOutAndSignal) {
  LEvent event;
  EXPECT_EQ(event.wait(10), 1);
  event.set();
  EXPECT_EQ(event.wait(1000), 0);
  EXPECT_EQ(event.wait(0), 1);  // auto-reset
}

TEST(Thread, StopBeforeStartReturnsAtOnce) {
  WaitingThread thread;
  thread.stop(1000);
  EXPECT_EQ(thread.stopRequested, 1);
  EXPECT_EQ(thread.ran, 0);
}

TEST(Thread, StopWakesAndWaitsForTheEnd) {
  MainThreadScope main;
  WaitingThread thread;
  thread.start(false);
  thread.stop(5000);
  EXPECT_EQ(thread.ran, 2);
  EXPECT_EQ(thread.threadHandle, -1);
  EXPECT_EQ(thread.threadId, 0u);
  EXPECT_EQ(FMainThread()->children.count, 1);
}

TEST(Thread, ChildrenAreRecordedWhileRunning) {
  MainThreadScope main;
  WaitingThread thread;
  thread.start(false);
  for (int i = 0; i < 500 && thread.ran == 0; i++) SysSleep(2);
  EXPECT_EQ(FMainThread()->children.count, 2);
  EXPECT_EQ(FMainThread()->children[0], FMainThread());
  thread.start(false);  // a second start does nothing
  EXPECT_EQ(FMainThread()->children.count, 2);
  thread.stop(-1);
}

TEST(Thread, SelfDeletingThreadIsGoneAtItsEnd) {
  MainThreadScope main;
  gDeleted = 0;
  SelfDeleting* thread = new SelfDeleting;
  thread->start(true);
  for (int i = 0; i < 1000 && gDeleted == 0; i++) SysSleep(2);
  EXPECT_EQ(gDeleted, 1);
  EXPECT_EQ(FMainThread()->children.count, 1);
}

TEST(Thread, StopGivesUpOnAThreadThatIgnoresIt) {
  MainThreadScope main;
  Stubborn thread;
  thread.start(false);
  SysTime before = SysNow();
  thread.stop(300);
  double waited = static_cast<double>(SysNow() - before) / 1e4;
  EXPECT_GE(waited, 250);
  EXPECT_NE(thread.threadHandle, -1);
  thread.release = true;
  thread.stop(-1);
  EXPECT_EQ(thread.threadHandle, -1);
}
