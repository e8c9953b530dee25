#include "store/extract_writer.h"

#include "archive/record.h"
#include "lib/lstr.h"
#include "lib/strfunc.h"
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
// Versions queued ahead per thread: enough to keep the threads busy, few
// enough that memory stays a small multiple of the largest versions.
const int32_t kAheadPerThread = 2;
}  // namespace

// One version expanded from its held form and written, with its times.
class TExtractJob : public LTask {
 public:
  KST_POOLED_NEW
  TExtractJob(TVer* ver, const char* path) : ver(ver), path_(path) {
    held_ = &ver->Hold();
    const TVerInfo* info = ver->Info();
    size_ = ver->size;
    created_ = info->createTime;
    accessed_ = info->accessTime;
    modified_ = ver->time;
  }

  void run() override {
    TQuietProgress quiet;
    THeldBuf raw;
    FExpandRaw(THeldView(*held_), size_, raw);
    FWriteExtracted(path_.ptr, raw, created_, accessed_, modified_);
  }

  const char* path() const { return path_.ptr; }

  TVer* const ver;

 private:
  const LStr path_;
  const THeldBuf* held_;  // the version's, while the writer holds it
  int32_t size_;
  int64_t created_;
  int64_t accessed_;
  int64_t modified_;
};

TExtractWriter::TExtractWriter()
    : ahead_(kAheadPerThread * SysCoreCount()),
      pool_(new LTaskPool(SysCoreCount(), FFreeCodecScratch)) {}

TExtractWriter::~TExtractWriter() {
  pool_.reset();
  for (int32_t i = settled_; i < queue_.count; i++) queue_[i]->ver->Release();
  // Null once settled.
  for (TExtractJob* job : queue_) delete job;
}

void TExtractWriter::add(TVer* ver, const char* path) {
  while (queue_.count - settled_ >= ahead_) settleOldest();
  // Versions of one file go to one path one over the other, in the walk's
  // order: the earlier writes to the path end first.
  for (int32_t i = queue_.count - 1; i >= settled_; i--) {
    if (FStrCmp(queue_[i]->path(), path, /*ignoreCase=*/true) != 0) continue;
    while (settled_ <= i) settleOldest();
    break;
  }
  TExtractJob* job = new TExtractJob(ver, path);
  queue_.add(job);
  pool_->submit(job);
}

void TExtractWriter::finish() {
  while (settled_ < queue_.count) settleOldest();
}

void TExtractWriter::settleOldest() {
  TExtractJob* job = queue_[settled_];
  while (!pool_->waitFor(job, kStopPoll)) FCheckStop();
  queue_[settled_++] = nullptr;
  job->ver->Release();
  const int32_t thrown = job->thrown;
  delete job;
  if (thrown != 0) {
    FCheckStop();
    throw static_cast<int>(thrown);
  }
}
