#include "store/extract_writer.h"

#include "archive/record.h"
#include "lib/lstr.h"
#include "lib/sys_cores.h"
#include "store/codec_scratch.h"
#include "store/extract_command.h"
#include "store/held_buf.h"
#include "store/job_batch.h"
#include "store/ver_info.h"
#include "store/version_expand.h"
#include "store/version_io.h"
#include "store/work_set.h"

namespace {
// How often the command's thread looks at the stop state while it waits.
const int32_t kStopPoll = 100;

// One version to write, expanded and written with the times its file gets.
// The newest version of a file stands alone in the archive: only its stored
// form is read here, and the thread that writes it expands it too, which
// took half of the command's thread's time while the others waited. Any
// other comes with its held form, which its chain of references gives.
struct ExtractEntry {
  KST_POOLED_NEW
  // The held and raw forms, reused from entry to entry.
  struct Scratch {
    THeldBuf held;
    THeldBuf raw;
  };

  ExtractEntry(TVer* ver, const char* path) : ver(ver), file(ver->ownerFile()), path(path) {
    if (!FReadStandalone(ver, stored, &storedRawSize)) held = &ver->Hold();
    const TVerInfo* info = ver->Info();
    size = ver->size;
    created = info->createTime;
    accessed = info->accessTime;
    modified = ver->time;
  }

  void run(Scratch& scratch) {
    if (held == nullptr) FExpandHeld(stored, storedRawSize, size, scratch.held);
    FExpandRaw(THeldView(held != nullptr ? *held : scratch.held), size, scratch.raw);
    FWriteExtracted(path.ptr, scratch.raw, created, accessed, modified);
  }

  void release() {
    if (held != nullptr) ver->Release();
  }

  TVer* const ver;
  const TFile* const file;
  const LStr path;
  const THeldBuf* held = nullptr;  // the version's, while the writer holds it
  LStr stored;                     // or its stored form, standing alone
  int32_t storedRawSize = 0;
  int32_t size;
  int64_t created;
  int64_t accessed;
  int64_t modified;
  int32_t thrown = 0;
};
}  // namespace

// Versions expanded from their held forms and written with their times, one
// after another in the walk's order. Owns its entries.
class TExtractJob : public TJobBatch<ExtractEntry> {
 public:
  KST_POOLED_NEW
  ~TExtractJob() override {
    for (ExtractEntry* entry : jobs) delete entry;
  }

  bool writes(const TFile* file) const {
    for (const ExtractEntry* entry : jobs)
      if (entry->file == file) return true;
    return false;
  }

  void release() {
    for (ExtractEntry* entry : jobs) entry->release();
  }
};

TExtractWriter::TExtractWriter()
    : ahead_(kBatchesAheadPerThread * SysCoreCount()),
      pool_(new LTaskPool(SysCoreCount(), FFreeCodecScratch)) {}

TExtractWriter::~TExtractWriter() {
  pool_.reset();
  for (int32_t i = settled_; i < queue_.count; i++) queue_[i]->release();
  // Null once settled.
  for (TExtractJob* job : queue_) delete job;
  if (open_ != nullptr) open_->release();
  delete open_;
}

void TExtractWriter::add(TVer* ver, const char* path) {
  // Versions of one file go to one path one over the other, in the walk's
  // order: the earlier writes to the path end first. In the open batch they
  // are written in order anyway. No other file reaches that path: the
  // places of one extract are each taken by one record.
  const TFile* file = ver->ownerFile();
  for (int32_t i = queue_.count - 1; i >= settled_; i--) {
    if (!queue_[i]->writes(file)) continue;
    while (settled_ <= i) settleOldest();
    break;
  }
  if (open_ == nullptr) open_ = new TExtractJob;
  open_->add(new ExtractEntry(ver, path), ver->size);
  if (open_->full()) submitOpen();
}

void TExtractWriter::finish() {
  if (open_ != nullptr) submitOpen();
  while (settled_ < queue_.count) settleOldest();
}

void TExtractWriter::submitOpen() {
  while (queue_.count - settled_ >= ahead_) settleOldest();
  TExtractJob* job = open_;
  open_ = nullptr;
  queue_.add(job);
  pool_->submit(job);
}

void TExtractWriter::settleOldest() {
  TExtractJob* job = queue_[settled_];
  while (!pool_->waitFor(job, kStopPoll)) FCheckStop();
  queue_[settled_++] = nullptr;
  job->release();
  const int32_t thrown = job->thrown;
  delete job;
  if (thrown != 0) {
    FCheckStop();
    throw static_cast<int>(thrown);
  }
}
