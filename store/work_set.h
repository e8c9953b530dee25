// TWorkSet: the shared state of the running command, replaced by a fresh one
// after each command. The main thread writes only stopState; the worker
// polls it at its check points.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lhash.h"

class TVer;
struct TVerInfo;

enum TStopState : int32_t { kStopRun = 0, kStopHold = 1, kStopNow = 2 };

class TWorkSet {
 public:
  KST_POOLED_NEW
  TWorkSet() = default;
  ~TWorkSet();
  TWorkSet(const TWorkSet&) = delete;
  TWorkSet& operator=(const TWorkSet&) = delete;

  LArrOf<TVer*> versions;  // touched by the command, in processing order
  LArr evacuated;
  LHash marks{LHash::kInts};
  LStrs evacFiles;
  LHash infos{LHash::kPairs};   // TVer address -> owned TVerInfo
  LHash opened{LHash::kPairs};  // TVer address -> owned path of its opened copy
  volatile int32_t stopState = kStopRun;
  int32_t failed = 0;
  int64_t storeTime = 0;  // of an add: Unix seconds; 0 takes the clock when it starts
  int32_t storeNo = 0;
  int32_t seen = 0;
  int32_t done = 0;
  int32_t created = 0;
  int32_t skipped = 0;
  int32_t refused = 0;  // entries left out after a warning: not stored, not extracted
  int32_t counters[4] = {};

  // The side record of a version, or null.
  TVerInfo* findInfo(const TVer* ver) const;
  // Creates the side record of a version (it must have none).
  TVerInfo* NewInfo(const TVer* ver);
  // Where a copy of the version was written to be opened, or null.
  const char* openedPath(const TVer* ver) const;
  // Remembers that path (taken over) as the version's opened copy.
  void noteOpened(const TVer* ver, LStr* path);
};

// The work set of the process.
TWorkSet* FWorkSet();
// Replaces the work set by a fresh one.
void FNewWorkSet();
void FDeleteWorkSet();

// A safe point of a running command: waits while the user decides whether
// to stop (hold) and throws the integer 1 once the answer was yes.
void FCheckStop();
// FCheckStop for the progress points of long loops, on any thread: only a
// load while no stop is asked for, and nothing while no command runs.
void FPollStop();
