#include "store/extract_writer.h"

#include "archive/record.h"
#include "lib/lstr.h"
#include "lib/sys_cores.h"
#include "store/codec_scratch.h"
#include "store/extract_command.h"
#include "store/held_buf.h"
#include "store/progress.h"
#include "store/ver_info.h"
#include "store/version_expand.h"
#include "store/work_set.h"

namespace {
// How often the command's thread looks at the stop state while it waits.
const int32_t kStopPoll = 100;
// Batches queued ahead per thread: enough to keep the threads busy, few
// enough that memory stays a small multiple of the largest versions.
const int32_t kAheadPerThread = 2;
// A batch closes at this many bytes or files. Handing each small file to a
// thread on its own cost more in waking threads than writing it did; a
// batch of this size still ends well within the time a stop may take.
const int64_t kBatchBytes = 1 << 20;
const int32_t kBatchFiles = 64;

// One version to write: its held form and what its file gets.
struct ExtractEntry {
  KST_POOLED_NEW
  ExtractEntry(TVer* ver, const char* path) : ver(ver), file(ver->ownerFile()), path(path) {
    held = &ver->Hold();
    const TVerInfo* info = ver->Info();
    size = ver->size;
    created = info->createTime;
    accessed = info->accessTime;
    modified = ver->time;
  }

  TVer* const ver;
  const TFile* const file;
  const LStr path;
  const THeldBuf* held;  // the version's, while the writer holds it
  int32_t size;
  int64_t created;
  int64_t accessed;
  int64_t modified;
};
}  // namespace

// Versions expanded from their held forms and written with their times, one
// after another in the walk's order.
class TExtractJob : public LTask {
 public:
  KST_POOLED_NEW
  ~TExtractJob() override {
    for (ExtractEntry* entry : entries) delete entry;
  }

  void run() override {
    TQuietProgress quiet;
    THeldBuf raw;
    for (const ExtractEntry* entry : entries) {
      FPollStop();
      FExpandRaw(THeldView(*entry->held), entry->size, raw);
      FWriteExtracted(entry->path.ptr, raw, entry->created, entry->accessed, entry->modified);
    }
  }

  bool writes(const TFile* file) const {
    for (const ExtractEntry* entry : entries)
      if (entry->file == file) return true;
    return false;
  }

  void release() {
    for (ExtractEntry* entry : entries) entry->ver->Release();
  }

  LArrOf<ExtractEntry*> entries;
  int64_t bytes = 0;
};

TExtractWriter::TExtractWriter()
    : ahead_(kAheadPerThread * SysCoreCount()),
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
  open_->entries.add(new ExtractEntry(ver, path));
  open_->bytes += ver->size;
  if (open_->bytes >= kBatchBytes || open_->entries.count >= kBatchFiles) submitOpen();
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
