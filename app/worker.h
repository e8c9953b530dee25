// The one worker thread of the long commands (add, extract, delete, search),
// the stop protocol between it and the main thread, and the completion.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "lib/thread.h"

class TRec;
class TCond;

enum TCommandId : int32_t {
  kCmdAdd = 2010,
  kCmdExtract = 2030,
  kCmdDelete = 2040,
  kCmdSearch = 2100,
  kCmdWorkerDone = 5020,
};

class TThread : public LThread {
 public:
  int32_t cmdId;
  int32_t error = 0;          // the integer thrown out of the command, 0 when it ended normally
  int32_t stopRequested = 0;  // 1 once the user confirmed a stop
  TRec* target = nullptr;     // add: the folder (or file) to add into
  LStrs paths;                // add: the source paths
  LArrOf<TRec*> records;      // extract, delete, search: the chosen records
  LStr destDir;               // extract: the destination folder
  TRec* base = nullptr;       // extract: what destination paths are relative to
  TCond* cond = nullptr;      // the command's conditions, not owned
  int32_t threads = 0;        // add: the threads that encode; 0 for one per core

  // On the main thread: "Internal Error #1780" for an unknown id. Disables
  // the commands, shows the progress and the command's label, and clears the
  // stop state and the counters of the work set.
  explicit TThread(int32_t cmdId);
  // The closing work of a command, on the main thread (see FCompleteCommand).
  ~TThread() override;
  // Runs the command and posts the completion, whatever happens.
  void run() override;

 protected:
  // The command itself; "Internal Error #1786" for an unknown id.
  virtual void runCommand();
};

// The label of a command in the status bar ("追加中" ...), or null.
const char* FCommandLabel(int32_t cmdId);

// The running command, or null.
TThread* FThread();
// Makes thread the running command and starts it.
void FStartCommand(TThread* thread);
// The main loop's answer to the completion event: destroys the command
// ("Internal Error #941" when none runs), which shows its result or, after
// a failure, reloads the archive.
void FCompleteCommand();
// Asks the user whether to stop the running command; 1 when none runs or it
// has stopped, 0 when it goes on.
int FRequestStop();
// 0 when no command runs; else 1, after the message "処理を実行中です" with
// mode 1. Other modes are "Internal Error #1815".
int FBusy(int mode);

// The result text of an add command from its counters.
LStr FAddReport(int32_t done, int32_t seen, int32_t created, int32_t skipped);
