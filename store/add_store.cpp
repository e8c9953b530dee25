#include "store/add_store.h"

#include <memory>

#include "archive/record.h"
#include "lib/fail.h"
#include "lib/larr.h"
#include "lib/lstr.h"
#include "lib/sys_cores.h"
#include "lib/task_pool.h"
#include "store/add_command.h"
#include "store/codec_scratch.h"
#include "store/codec_threads.h"
#include "store/job_batch.h"
#include "store/progress.h"
#include "store/progress_level.h"
#include "store/ver_info.h"
#include "store/version_io.h"
#include "store/work_set.h"

namespace {

// How often the command's thread looks at the stop state while it waits
// for an encoding: well within the second in which a stop must answer.
const int32_t kStopPoll = 100;

// While the walk of the sources runs, nothing is written, so the batches
// ahead of the writing would soon fill the threads' share and leave them
// idle until the walk ends: 40 of the 850 ms of a first add of 8 000
// headers on two cores. Until then the threads take files of up to this
// many bytes more.
const int64_t kBytesAheadOfTheWalk = 8 << 20;

// The encoding of one new version on a thread of the pool: its file read
// into the held form, the older version's delta against it, and its own
// stored form unless it is dropped. Touches no record.
class TStoreJob {
 public:
  KST_POOLED_NEW
  struct Scratch {};
  typedef TJobBatch<TStoreJob> Batch;

  TStoreJob(const char* path, int32_t size, const THeldBuf* olderHeld, bool dropIfSame,
            Batch* batch)
      : batch(batch), path_(path), size_(size), olderHeld_(olderHeld), dropIfSame_(dropIfSame) {}
  ~TStoreJob() { delete held; }
  TStoreJob(const TStoreJob&) = delete;
  TStoreJob& operator=(const TStoreJob&) = delete;

  void run(Scratch&) {
    held = new THeldBuf;
    readOk = FReadHeld(path_.ptr, size_, /*report=*/false, *held, &checksum);
    if (!readOk) return;
    if (olderHeld_ != nullptr) {
      FEncodeDelta(*olderHeld_, *held, delta);
      if (delta.same && dropIfSame_) return;
    }
    FEncodeWhole(*held, whole);
  }

  Batch* const batch;
  int32_t thrown = 0;
  THeldBuf* held = nullptr;  // handed to the version when it is written
  bool readOk = false;
  uint16_t checksum = 0;
  TDeltaForm delta;
  LStr whole;

 private:
  const LStr path_;
  const int32_t size_;
  const THeldBuf* const olderHeld_;
  const bool dropIfSame_;
};

TVer* olderOf(TVer* ver) {
  const int32_t index = ver->IndexInFile(false);
  return index > 0 ? ver->ownerFile()->version(index - 1) : nullptr;
}

bool dropIfSame(const TVer* older, const TVer* ver, const TAddOptions& options) {
  return options.skipEquF != 0 || older->time == ver->time;
}

// The store of one version on the command's thread, as it was before there
// was a pool: for a version whose predecessor is itself new in this
// command, and for a file that the pool could not read (this reports why).
void storeHere(TVer* ver, const TAddOptions& options) {
  FPushProgress();
  FSetProgressRange(100, -1);
  ver->Hold();
  FSetProgressRange(75, -1);
  if (TVer* older = olderOf(ver)) FStoreDelta(older, ver, dropIfSame(older, ver, options));
  FSetProgressRange(100, -1);
  if (!(ver->flags & kVerDrop)) FStoreWhole(ver);
  ver->Release();
  FPopProgress();
}

// Writes what a job encoded, as storeHere would have.
void storeEncoded(TVer* ver, TStoreJob& job, const TAddOptions& options) {
  FTakeHeld(ver, job.held);
  job.held = nullptr;
  ver->checksum = job.checksum;
  ver->Hold();
  if (TVer* older = olderOf(ver)) {
    FApplyDelta(older, ver, dropIfSame(older, ver, options), job.delta);
    older->Release();
  }
  if (!(ver->flags & kVerDrop)) FApplyWhole(ver, job.whole);
  ver->Release();
}

}  // namespace

class TAddStore::Pipeline {
 public:
  Pipeline(TWorkSet& work, const TAddOptions& options)
      : work_(work),
        options_(options),
        budget_(options.threads),
        pool_(new LTaskPool(options.threads > 0 ? options.threads : SysCoreCount(),
                            FFreeCodecScratch)),
        ahead_(kBatchesAheadPerThread * pool_->threadCount()) {}

  void take(TVer* ver) {
    order_.add(ver);
    jobs_.add(nullptr);
    totalBytes_ += ver->size;
    prepareAhead();
  }

  void run() {
    walked_ = true;
    TByteProgress progress(totalBytes_);
    for (int32_t at = 0; at < order_.count; at++) {
      prepareAhead();
      FCheckStop();
      TVer* ver = order_[at];
      FShowProgressItem(ver->name());
      TStoreJob* job = jobs_[at];
      if (job != nullptr) {
        TStoreJob::Batch* batch = job->batch;
        if (batch == open_) submitOpen();
        while (!pool_->waitFor(batch, kStopPoll)) FCheckStop();
        // A stop taken inside the job is taken here too. The jobs before
        // it in its batch are written first, as on one thread.
        if (job->thrown != 0) FCheckStop();
        if (job->thrown != 0) throw static_cast<int>(job->thrown);
        if (job == batch->jobs.last()) writtenBatches_++;
      }
      if (job != nullptr && job->readOk)
        storeEncoded(ver, *job, options_);
      else
        storeHere(ver, options_);
      delete job;
      jobs_[at] = nullptr;
      int64_t size = ver->size;
      if (at < submitted_) bytesAhead_ -= size;
      count(ver);  // a dropped version is gone after this
      progress.advance(size);
    }
  }

 private:
  void prepareNext() {
    const int32_t at = submitted_++;
    TVer* ver = order_[at];
    bytesAhead_ += ver->size;
    TVer* older = olderOf(ver);
    // A predecessor that is itself new in this command is not settled until
    // it is written (it may still be dropped): this version waits for it
    // and is stored on this thread.
    if (older != nullptr && (older->flags & kVerNew)) return;
    const THeldBuf* olderHeld = older != nullptr ? &older->Hold() : nullptr;
    TVerInfo* info = ver->FindInfo(true);
    if (open_ == nullptr) {
      open_ = new TStoreJob::Batch;
      batches_.add(open_);
    }
    TStoreJob* job = new TStoreJob(info->srcPath->ptr, ver->size, olderHeld,
                                   older != nullptr && dropIfSame(older, ver, options_), open_);
    jobs_[at] = job;
    open_->add(job, ver->size);
    if (open_->full()) submitOpen();
  }

  // Prepares versions while fewer batches than the threads can keep busy
  // wait to be written, or while the walk runs and the files not yet
  // written are few.
  void prepareAhead() {
    while (submitted_ < order_.count &&
           (submittedBatches_ - writtenBatches_ < ahead_ ||
            (!walked_ && bytesAhead_ < kBytesAheadOfTheWalk)))
      prepareNext();
    // Once the walk is over, the last versions go to the threads at once,
    // not when the writing reaches them, so that they are encoded while the
    // ones before are written.
    if (walked_ && submitted_ == order_.count && open_ != nullptr) submitOpen();
  }

  void submitOpen() {
    pool_->submit(open_);
    open_ = nullptr;
    submittedBatches_++;
  }

  // The counts of the add, and a dropped version out of the tree. Versions
  // are written in the array's order, so this one is at index_.
  void count(TVer* ver) {
    if (!(ver->flags & kVerDrop)) {
      work_.done++;
      index_++;
      return;
    }
    work_.skipped++;
    work_.versions.detach(index_);
    static_cast<TRecF*>(ver->parent)->removeChild(ver);
    delete ver;
  }

  TWorkSet& work_;
  const TAddOptions& options_;
  // The encoders of the pool and any helper of theirs share these threads.
  TCodecThreadBudget budget_;
  LArrOf<TVer*> order_;
  LArrOf<TStoreJob*, LDelete<TStoreJob*>> jobs_;
  LArrOf<TStoreJob::Batch*, LDelete<TStoreJob::Batch*>> batches_;
  TStoreJob::Batch* open_ = nullptr;  // filling, not yet handed to the pool
  // After the jobs, so that its threads have ended before the jobs go.
  std::unique_ptr<LTaskPool> pool_;
  const int32_t ahead_;
  bool walked_ = false;  // every version has been taken
  int32_t submitted_ = 0;
  int32_t submittedBatches_ = 0;
  int32_t writtenBatches_ = 0;
  int32_t index_ = 0;
  int64_t totalBytes_ = 0;
  int64_t bytesAhead_ = 0;  // of the versions prepared and not yet written
};

TAddStore::TAddStore(TWorkSet& work, const TAddOptions& options)
    : pipeline_(new Pipeline(work, options)) {}

TAddStore::~TAddStore() = default;

void TAddStore::take(TVer* ver) { pipeline_->take(ver); }

void TAddStore::run() { pipeline_->run(); }
