#include "archive/update_file.h"

#include "archive/format.h"
#include "lib/fail.h"
#include "lib/fixed_coding.h"
#include "lib/io_file.h"
#include "lib/msg.h"
#include "lib/sys.h"

TUpdateFile::TUpdateFile(const char* path) : path_(path), file_(new LIoFile(path, 'w', false)) {
  if (!file_->isOpen()) {
    delete file_;
    file_ = nullptr;
    FError(kMsgErrorBox, "cannot open system file '%s'", path);
  }
}

TUpdateFile::~TUpdateFile() { delete file_; }

int32_t TUpdateFile::beginRecord(int32_t pos, int32_t length) {
  FWriteI32(*file_, pos);
  FWriteI32(*file_, length == kLengthLater ? 0 : length);
  recordStart_ = file_->tell();
  recordLength_ = length;
  return recordStart_;
}

void TUpdateFile::endRecord() {
  const int32_t length = file_->tell() - recordStart_;
  if (recordLength_ == kLengthLater)
    patchI32(recordStart_ - 4, length);
  else if (length != recordLength_)
    FInternal("update record of %d bytes announced as %d", length, recordLength_);
  recordStart_ = -1;
}

void TUpdateFile::write(const void* bytes, int32_t n) { file_->write(bytes, n); }

void TUpdateFile::patchI32(int32_t at, int32_t value) {
  int32_t end = file_->tell();
  file_->seek(at);
  FWriteI32(*file_, value);
  file_->seek(end);
}

void TUpdateFile::addFixup(int32_t at, TVer* ver) { fixups.add(new TFixup{at, ver}); }

void TUpdateFile::noteSegment(int32_t blockPos, int32_t segmentPos, int32_t size) {
  TWritten* block = written_.last();
  if (block == nullptr || block->blockPos != blockPos) {
    block = new TWritten{blockPos, {}};
    written_.add(block);
  }
  block->segments.add(segmentPos);
  block->segments.add(size);
}

bool TUpdateFile::takeSegments(int32_t blockPos, LInts& segments) {
  for (int32_t i = 0; i < written_.count; i++) {
    if (written_[i]->blockPos != blockPos) continue;
    segments.addAll(written_[i]->segments);
    written_.removeRange(i, 1);
    return true;
  }
  return false;
}

void TUpdateFile::writeEnd() { FWriteI32(*file_, kUpdateEnd); }

void TUpdateFile::close() {
  if (file_ == nullptr) return;
  file_->close();
}

void TUpdateFile::discard() {
  delete file_;
  file_ = nullptr;
  fixups.clear();
  written_.clear();
  SysDeleteFile(path_.ptr);
}
