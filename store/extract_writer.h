// The writing side of the extract command: each version's held form is
// read on the command's thread, which alone reads the archive, and then
// expanded and written to its file on a pool of threads, one per core, in
// batches of small files. The versions are taken up in the order of the
// walk, and a failure is reported when the walk's order reaches it.
#pragma once

#include <cstdint>
#include <memory>

#include "lib/larr.h"
#include "lib/task_pool.h"

class TVer;
class TExtractJob;

class TExtractWriter {
 public:
  TExtractWriter();
  // Waits for the writes still running; what they wrote stays.
  ~TExtractWriter();
  TExtractWriter(const TExtractWriter&) = delete;
  TExtractWriter& operator=(const TExtractWriter&) = delete;

  // Holds `ver` and queues it for writing to `path`, whose folders exist.
  // Throws the failure of an earlier write, or a stop.
  void add(TVer* ver, const char* path);
  // Queues the last batch and waits for every write; throws the first
  // failure.
  void finish();

 private:
  // Queues the open batch, after waiting while too many are ahead.
  void submitOpen();
  // Waits for the oldest batch and releases its versions.
  void settleOldest();

  TExtractJob* open_ = nullptr;  // the batch that takes the next versions
  LArrOf<TExtractJob*> queue_;   // in the walk's order
  int32_t settled_ = 0;          // writes of queue_ already waited for
  int32_t ahead_;
  // Last, so that its threads end before the jobs go.
  std::unique_ptr<LTaskPool> pool_;
};
