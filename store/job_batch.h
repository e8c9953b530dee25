// Jobs on files handed to the threads of a pool in batches. Waking a
// thread for each small file, and waiting for it, cost more than the
// file's work: a first add of 8 000 headers woke threads 25 000 times. A
// batch closes at a megabyte of the files' bytes or at 64 files, so that
// it still ends well within the time a stop may take.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/task_pool.h"
#include "store/progress.h"
#include "store/work_set.h"

// Batches queued ahead per thread: enough to keep every thread busy while
// the command's thread writes, few enough that memory stays a small
// multiple of a batch and the largest file, times the threads.
const int32_t kBatchesAheadPerThread = 2;

// Job is a class with `void run(typename Job::Scratch&)`, which a thread of
// the pool calls, and `int32_t thrown`. Scratch is what the jobs of one
// batch reuse one after another. The batch looks at the stop state before
// each job; a job that throws keeps what it threw and ends the batch, whose
// later jobs are not run.
template <class Job>
class TJobBatch : public LTask {
 public:
  KST_POOLED_NEW

  // The batch takes no ownership of the job.
  void add(Job* job, int64_t bytes) {
    jobs.add(job);
    bytes_ += bytes;
  }
  bool full() const { return bytes_ >= kBytes || jobs.count >= kFiles; }

  void run() override {
    TQuietProgress quiet;
    typename Job::Scratch scratch;
    for (Job* job : jobs) {
      try {
        FPollStop();
        job->run(scratch);
      } catch (int code) {
        job->thrown = code;
        throw;
      }
    }
  }

  LArrOf<Job*> jobs;

 private:
  static const int64_t kBytes = 1 << 20;
  static const int32_t kFiles = 64;
  int64_t bytes_ = 0;
};
