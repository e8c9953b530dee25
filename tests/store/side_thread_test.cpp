// The side tasks of one thread run one after another on a thread kept for
// them, apart from those of other threads; a task whose owner gives it up
// ends there and leaves the kept thread to the next.
#include "store/side_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "lib/sys.h"
#include "store/codec_scratch.h"

namespace {

// Notes the thread it ran on; a task told to wait runs until its owner gives
// it up.
class NotingTask : public LTask {
 public:
  explicit NotingTask(bool waitForTheEnd) : waitForTheEnd_(waitForTheEnd), thread_(this) {}
  void run() override {
    ranOn = SysCurrentThreadId();
    while (waitForTheEnd_) {
      thread_.poll();
      SysSleep(1);
    }
  }
  bool finish() { return thread_.finish(); }

  std::atomic<uint32_t> ranOn{0};

 private:
  const bool waitForTheEnd_;
  TSideThread thread_;
};

uint32_t RunOne() {
  NotingTask task(/*waitForTheEnd=*/false);
  EXPECT_TRUE(task.finish());
  return task.ranOn;
}

// Given up before it was done: the owner's end waits for the task to see it.
void GiveOneUp() {
  NotingTask task(/*waitForTheEnd=*/true);
  while (task.ranOn == 0) SysSleep(1);
}

TEST(SideThread, TasksOfOneThreadShareAThreadKeptForThem) {
  uint32_t first = 0;
  uint32_t second = 0;
  std::atomic<uint32_t> afterGivingUp{0};
  uint32_t owner = 0;
  std::atomic<bool> otherDone{false};
  std::thread one([&] {
    owner = SysCurrentThreadId();
    first = RunOne();
    second = RunOne();
    GiveOneUp();
    afterGivingUp = RunOne();
    // Kept until the other thread has run its task, so that the two side
    // threads are alive at once and their ids cannot be the same.
    while (!otherDone) SysSleep(1);
    FFreeCodecScratch();
  });
  uint32_t other = 0;
  std::thread two([&] {
    while (afterGivingUp == 0) SysSleep(1);
    other = RunOne();
    otherDone = true;
    FFreeCodecScratch();
  });
  one.join();
  two.join();

  EXPECT_NE(0u, first);
  EXPECT_NE(owner, first);
  EXPECT_EQ(first, second);
  EXPECT_EQ(first, afterGivingUp.load());
  EXPECT_NE(0u, other);
  EXPECT_NE(first, other);
}

}  // namespace
