// The worker's user interface on a terminal: the progress as a status line
// on standard error (only when that is a terminal), the stop question on the
// terminal, the completion as an event that the main thread waits for, the
// rows of a search, and the result report of each command on standard
// output.
#pragma once

#include <cstdint>

#include "app/worker_ui.h"
#include "lib/lstr.h"
#include "lib/sys.h"
#include "lib/thread.h"

class TCliConsole;
class TCliTable;

class TCliUi : public TWorkerUi {
 public:
  explicit TCliUi(TCliConsole& console);

  // From the main thread a status text is a message of its own (the stop
  // protocol's); from the worker it names the item at work.
  void setStatus(const char* text) override;
  void setStatus2(const char* text) override;
  void showPercent(int32_t percent) override;
  void beginProgress() override;
  void endProgress() override;
  bool askYesNo(const char* question) override;
  void postCompletion() override { completion.set(); }
  void searchHit(TVer* ver) override;
  void commandFinished(TThread& thread) override;

  TCliConsole& console() { return console_; }

  LEvent completion;
  // Where a search puts its rows; set before the search starts.
  TCliTable* hits = nullptr;

 private:
  void draw();

  TCliConsole& console_;
  uint32_t mainThread_;
  LStr label_;
  LStr item_;
  int32_t percent_ = 0;
  SysTime lastDraw_ = 0;
  SysTime started_ = 0;  // of the running command
};

// Runs a command on the worker: starts it, waits for its completion while
// turning each break into the stop question, and completes it. Returns the
// exit status: 0 when it ended normally, 1 when it failed or was stopped.
int FRunOnWorker(TThread* thread, TCliUi& ui);
