#include "store/codec_threads.h"

#include <atomic>

#include "lib/sys_cores.h"

namespace {

std::atomic<int32_t> gBudget{0};
std::atomic<int32_t> gBusy{0};

int32_t budget() {
  const int32_t set = gBudget.load(std::memory_order_relaxed);
  return set > 0 ? set : SysCoreCount();
}

}  // namespace

TCodecThreadBudget::TCodecThreadBudget(int32_t threads) : previous_(gBudget.exchange(threads)) {}

TCodecThreadBudget::~TCodecThreadBudget() { gBudget.store(previous_); }

TCodecThread::~TCodecThread() {
  if (held_) gBusy.fetch_sub(1, std::memory_order_relaxed);
}

bool TCodecThread::take() {
  int32_t busy = gBusy.load(std::memory_order_relaxed);
  const int32_t limit = budget();
  while (!held_ && busy < limit)
    held_ = gBusy.compare_exchange_weak(busy, busy + 1, std::memory_order_relaxed);
  return held_;
}
