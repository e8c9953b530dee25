#include "lib/task_pool.h"

#include "lib/fail.h"

// One thread of the pool: it runs queued tasks until the pool closes, and
// sleeps on its wake event while the queue is empty.
class LTaskPool::Worker : public LThread {
 public:
  explicit Worker(LTaskPool& pool) : pool_(pool) {}
  void run() override {
    while (pool_.closing_ == 0) {
      LTask* task = pool_.take();
      if (task == nullptr) {
        // The wake event comes with each task queued; the time-out only
        // bounds a wake that another worker took first.
        wakeEvent.wait(50);
        continue;
      }
      try {
        task->run();
      } catch (int thrown) {
        task->thrown = thrown;
      }
      pool_.finished(task);
    }
    if (pool_.threadEnd_ != nullptr) pool_.threadEnd_();
  }

 private:
  LTaskPool& pool_;
};

LTaskPool::LTaskPool(int32_t threads, void (*threadEnd)())
    : lock_(SysCreateLock()), threadEnd_(threadEnd) {
  if (threads < 1) threads = 1;
  for (int32_t i = 0; i < threads; i++) {
    Worker* worker = new Worker(*this);
    workers_.add(worker);
    worker->start(/*selfDelete=*/false);
  }
}

LTaskPool::~LTaskPool() {
  SysEnterLock(lock_);
  next_ = queue_.count;
  SysLeaveLock(lock_);
  closing_ = 1;
  for (Worker* worker : workers_) worker->wakeEvent.set();
  // The end event is the last thing a thread does with its object; stop()
  // may return before it, once it sees the thread marked as ended.
  for (Worker* worker : workers_) worker->endEvent.wait(/*milliseconds=*/-1);
  workers_.clear();
  SysDeleteLock(lock_);
}

void LTaskPool::submit(LTask* task) {
  task->done_ = 0;
  task->thrown = 0;
  SysEnterLock(lock_);
  queue_.add(task);
  SysLeaveLock(lock_);
  for (Worker* worker : workers_) worker->wakeEvent.set();
}

LTask* LTaskPool::take() {
  SysEnterLock(lock_);
  LTask* task = next_ < queue_.count ? queue_[next_++] : nullptr;
  // A pool kept for the life of a thread is given tasks without end: the
  // queue forgets those taken once it is empty.
  if (next_ > 0 && next_ == queue_.count) {
    queue_.removeRange(0, next_);
    next_ = 0;
  }
  SysLeaveLock(lock_);
  return task;
}

void LTaskPool::finished(LTask* task) {
  task->done_ = 1;
  doneEvent_.set();
}

bool LTaskPool::waitFor(LTask* task, int32_t milliseconds) {
  if (task->done_ != 0) return true;
  doneEvent_.wait(milliseconds);
  return task->done_ != 0;
}
