// The progress of the running command: a stack of frames, each a slice of
// its parent's range, turned into one percentage for the user interface.
// Each thread has a stack of its own; only the command's thread reports,
// while the threads that encode for it are quiet.
#pragma once

#include <cstdint>

// Where the percentage goes; installed by the user interface of the worker.
class TProgressSink {
 public:
  virtual ~TProgressSink() = default;
  virtual void showPercent(int32_t percent) = 0;
  // The item the command works on now (a path or a name).
  virtual void showItem(const char* text) = 0;
};
// Null sends nothing.
void FSetProgressSink(TProgressSink* sink);

// Shows the item the command works on.
void FShowProgressItem(const char* text);

// Opens a frame over the whole range of the frame below (0 to 100 at the
// bottom), with no total.
void FPushProgress();
void FPopProgress();
// The frame ends at `high` percent of its parent (below 0: 100; never below
// its start) and counts `total` units.
void FSetProgressRange(int32_t high, int32_t total);
// Reports `pos` units done and sends the percentage.
void FSetProgress(int32_t pos);
void FAddProgress(int32_t delta);
// The percentage that FSetProgress(pos) sends from the present frames.
int32_t FProgressPercent(int32_t pos);

// While one lives, the calling thread's progress reaches no sink: an
// encoder on a pool, whose work the command reports as a whole.
class TQuietProgress {
 public:
  TQuietProgress();
  ~TQuietProgress();
  TQuietProgress(const TQuietProgress&) = delete;
  TQuietProgress& operator=(const TQuietProgress&) = delete;
};
