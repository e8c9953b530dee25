// A worker interface for tests: the stop question is answered from a flag,
// and what the worker says is kept.
#pragma once

#include <atomic>

#include "app/worker_ui.h"
#include "lib/lstr.h"
#include "lib/thread.h"

class ScriptedWorkerUi : public TWorkerUi {
 public:
  std::atomic<bool> answer{false};
  std::atomic<int> asked{0};
  LEvent completed;
  LStr status;
  LStr status2;
  int32_t percent = -1;
  int finished = 0;

  void setStatus(const char* text) override { status = text; }
  void setStatus2(const char* text) override { status2 = text; }
  void beginProgress() override {}
  void endProgress() override {}
  void showPercent(int32_t p) override { percent = p; }
  bool askYesNo(const char*) override {
    asked++;
    return answer;
  }
  void postCompletion() override { completed.set(); }
  void commandFinished(TThread&) override { finished++; }
  void searchHit(TVer*) override {}
};
