#include "archive/apply_probe.h"
#include "archive/archive.h"
#include "archive/format.h"
#include "archive/journal.h"
#include "archive/record_copy.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "lib/fixed_coding.h"
#include "lib/io_file.h"
#include "lib/msg.h"
#include "lib/sys.h"

void FCommit(TArchive& archive, TUpdateFile& update, int32_t storeNo) {
  LIoFile& stream = update.stream();
  int32_t end = stream.tell();
  for (int32_t i = update.fixups.count - 1; i >= 0; i--) {
    const TUpdateFile::TFixup* fixup = update.fixups[i];
    if (fixup->ver->dataPos <= 0) FInternalBox(296);
    update.patchI32(fixup->at, fixup->ver->dataPos);
  }
  stream.seek(end);

  // The chain runs from the highest hole down, so it is written from the
  // lowest up, each pointing at the one written before it.
  TFreeList& list = archive.freeList;
  int32_t next = 0;
  for (int32_t i = list.count - 1; i >= 1; i--) {
    update.beginRecord(list[i]->pos);
    FWriteI32(stream, list[i]->size);
    FWriteI32(stream, next);
    update.endRecord();
    next = list[i]->pos;
  }
  int32_t freeHead = next;
  if (list.count == 0) FInternalBox(1153);
  archive.treePos = list[0]->pos;

  update.beginRecord(kOffsetTreePos);
  FWriteI32(stream, archive.treePos);
  FWriteI32(stream, freeHead);
  FWriteI32(stream, storeNo);
  update.endRecord();

  int32_t footerStart = update.beginRecord(archive.treePos);
  FWriteFooter(archive, stream);
  int64_t treeEnd = static_cast<int64_t>(archive.treePos) + (stream.tell() - footerStart);
  if (treeEnd > INT32_MAX)
    FError(kMsgErrorBox, "アーカイブ ファイルが 2 GB を超えるため、書き込めません");
  archive.treeEnd = static_cast<int32_t>(treeEnd);
  update.endRecord();
  update.writeEnd();
}

namespace {
TApplyProbe gApplyProbe = nullptr;

void probe(TApplyStage stage) {
  if (gApplyProbe != nullptr) gApplyProbe(stage);
}
}  // namespace

void TApplyProbeAccess::install(TApplyProbe probe) { gApplyProbe = probe; }

void FApplyUpdate(TArchive& archive, TUpdateFile& update) {
  int failure = 0;
  LStr path(archive.path);
  LStr journal = FJournalPath(path.ptr);
  bool journaled = false;
  LIoFile* source = nullptr;
  // A writer held since the load lets the break signal through, so that the
  // long work before can be stopped; this short step must not be cut.
  LIoFile* own = nullptr;
  LIoFile* target = archive.writer;
  const bool held = target != nullptr;
  if (held) SysHoldBreak();
  try {
    archive.close();
    if (target == nullptr) {
      own = new LIoFile(path.ptr, 'a', false);
      if (!own->isOpen())
        FError(kMsgErrorBox,
               "アーカイブファイル「%s」を書き込みモードで開けません。\n"
               "読み取り専用でないか確認してください。",
               path.ptr);
      target = own;
    }
    FCheckUnchanged(path.ptr, *target, archive.loaded);
    source = new LIoFile(update.path(), 'r', true);
    if (!FWriteJournal(journal.ptr, path.ptr, *source))
      FError(kMsgErrorBox, "ファイル「%s」に書き込めません", journal.ptr);
    journaled = true;
    probe(kApplyJournalWritten);
    // The end of the update file reads as -1 too, so a short file ends the
    // copy without a word.
    const int32_t pos = FCopyRecords(*source, *target, [] { probe(kApplyRecordCopied); });
    if (pos != kUpdateEnd)
      FError(kMsgErrorBox, "更新情報ファイルの形式が正しくありません (識別番号=%d)", 1248);
    target->truncate(-1);
    target->flush();
    probe(kApplyArchiveFlushed);
    // The commit point: once the journal is gone, the new archive stands.
    SysDeleteFile(journal.ptr);
    journaled = false;
    probe(kApplyCommitted);
    archive.treeDirty = 0;
    // Taken while the lock still keeps others out: the tree in memory is
    // now this state of the file.
    LIoFile written(path.ptr, 'r', false);
    archive.loaded = FStampArchive(written);
  } catch (int thrown) {
    failure = thrown;
    // A failure after the journal was written puts back what was there.
    if (journaled && FRollBack(journal.ptr, *target)) SysDeleteFile(journal.ptr);
  }
  delete source;
  delete own;
  if (held) SysReleaseBreak();
  update.close();
  if (!archive.reopen(path.ptr, 'r', true) && failure == 0) failure = kThrowError;
  if (failure != 0) throw failure;
}

void FCommitTree(TArchive& archive) {
  TUpdateFile& update = archive.beginUpdate();
  FCommit(archive, update, 0);
  update.close();
  FApplyUpdate(archive, update);
}
