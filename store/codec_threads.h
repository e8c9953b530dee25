// How many threads the codec keeps busy at once. Each encoding counts as one
// while it runs; one that finds a thread of the budget idle may take it for
// the second half of a long gap or of a long self compression, so that a
// single large file uses two cores while many small ones use one each.
#pragma once

#include <cstdint>

// While one lives, the codec may use `threads` threads (0: one per core);
// the budget it found comes back when it ends.
class TCodecThreadBudget {
 public:
  explicit TCodecThreadBudget(int32_t threads);
  ~TCodecThreadBudget();
  TCodecThreadBudget(const TCodecThreadBudget&) = delete;
  TCodecThreadBudget& operator=(const TCodecThreadBudget&) = delete;

 private:
  int32_t previous_;
};

// A thread of the budget, held from take() until the object ends. Every
// encoding takes one for itself, and runs whether it got one or not; a
// helper is started only when one was taken for it.
class TCodecThread {
 public:
  TCodecThread() = default;
  ~TCodecThread();
  TCodecThread(const TCodecThread&) = delete;
  TCodecThread& operator=(const TCodecThread&) = delete;

  // Takes a thread if the budget has one idle, never waiting; true when it
  // did.
  bool take();

 private:
  bool held_ = false;
};
