#include "store/side_thread.h"

#include "lib/fail.h"
#include "store/codec_scratch.h"
#include "store/work_set.h"

namespace {
// How long the owner waits for the task between two looks at the stop state.
const int32_t kWaitMs = 100;
}  // namespace

TSideThread::TSideThread(LTask* task) : task_(task), pool_(FCodecScratch().sideThread()) {
  pool_.submit(task);
}

TSideThread::~TSideThread() {
  abandon_.store(1);
  while (!pool_.waitFor(task_, kWaitMs)) {
  }
}

void TSideThread::poll() const {
  if (abandon_.load(std::memory_order_relaxed) != 0) throw static_cast<int>(kThrowStopped);
  FPollStop();
}

bool TSideThread::finish() {
  while (!pool_.waitFor(task_, kWaitMs)) FPollStop();
  return task_->thrown == 0;
}

void FStartSideThread() { FCodecScratch().sideThread(); }
