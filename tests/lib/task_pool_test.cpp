#include "lib/task_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <vector>

namespace {

class SumTask : public LTask {
 public:
  explicit SumTask(int32_t n) : n_(n) {}
  void run() override {
    if (n_ < 0) throw static_cast<int>(-n_);
    int64_t sum = 0;
    for (int32_t i = 1; i <= n_; i++) sum += i;
    result = sum;
  }
  int64_t result = 0;

 private:
  int32_t n_;
};

// Tasks run on whichever thread is free; each is waited for in the order
// its owner needs, and an integer thrown by one stays with it.
TEST(TaskPool, RunsEveryTaskAndKeepsWhatItThrew) {
  for (int32_t threads : {1, 3}) {
    LTaskPool pool(threads);
    EXPECT_EQ(threads, pool.threadCount());
    std::vector<std::unique_ptr<SumTask>> tasks;
    for (int32_t i = 0; i < 40; i++) {
      tasks.emplace_back(new SumTask(i == 17 ? -2 : i * 1000));
      pool.submit(tasks.back().get());
    }
    for (int32_t i = 0; i < 40; i++) {
      while (!pool.waitFor(tasks[i].get(), 100)) {
      }
      if (i == 17) {
        EXPECT_EQ(2, tasks[i]->thrown);
        continue;
      }
      EXPECT_EQ(0, tasks[i]->thrown);
      const int64_t n = i * 1000;
      EXPECT_EQ(n * (n + 1) / 2, tasks[i]->result) << i;
    }
  }
}

class CountingTask : public LTask {
 public:
  explicit CountingTask(std::atomic<int32_t>& runs) : runs_(runs) {}
  void run() override { runs_++; }

 private:
  std::atomic<int32_t>& runs_;
};

int32_t gThreadEnds = 0;
void countThreadEnd() { __atomic_add_fetch(&gThreadEnds, 1, __ATOMIC_SEQ_CST); }

// A pool that goes away runs nothing more of its queue, and each of its
// threads says goodbye before the destructor returns.
TEST(TaskPool, EndsWithoutRunningWhatIsLeftAndCallsThreadEnd) {
  std::atomic<int32_t> runs{0};
  std::vector<std::unique_ptr<CountingTask>> tasks;
  for (int32_t i = 0; i < 1000; i++) tasks.emplace_back(new CountingTask(runs));
  gThreadEnds = 0;
  {
    LTaskPool pool(2, countThreadEnd);
    for (auto& task : tasks) pool.submit(task.get());
    EXPECT_TRUE(pool.waitFor(tasks[0].get(), 10000));
  }
  EXPECT_EQ(2, gThreadEnds);
  EXPECT_GE(runs.load(), 1);
  // Nothing runs once the pool is gone.
  const int32_t after = runs.load();
  SysSleep(50);
  EXPECT_EQ(after, runs.load());
}

}  // namespace
