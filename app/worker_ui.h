// What the worker needs from the user interface around it: the two status
// texts, a percentage, a yes/no question, and one completion event that the
// main loop turns into FCompleteCommand. The desktop program implements it
// with its window, the command line with the terminal, tests with a script.
#pragma once

#include "store/progress.h"

class TThread;
class TVer;

class TWorkerUi : public TProgressSink {
 public:
  // The main status text (from either thread; calls are serialised).
  virtual void setStatus(const char* text) = 0;
  void showItem(const char* text) override;
  // Status part 2: the label of the running command.
  virtual void setStatus2(const char* text) = 0;
  // A command starts (commands are disabled, a progress control appears) or
  // has ended.
  virtual void beginProgress() = 0;
  virtual void endProgress() = 0;
  // Asked on the main thread; true for yes.
  virtual bool askYesNo(const char* question) = 0;
  // From the worker, as its last act: the main loop must call
  // FCompleteCommand once it receives this.
  virtual void postCompletion() = 0;
  // A version found by the running search (on the worker thread).
  virtual void searchHit(TVer* ver) = 0;
  // The command ended without error: the panes follow, and the report is
  // shown with setStatus.
  virtual void commandFinished(TThread& thread) = 0;
};

TWorkerUi* FWorkerUi();
void FSetWorkerUi(TWorkerUi* ui);
// Sets the main status text under the library-wide lock.
void FSetStatus(const char* text);
