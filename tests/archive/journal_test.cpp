#include "archive/journal.h"

#include <gtest/gtest.h>

#include <string>

#include "archive/update_file.h"
#include "lib/file_util.h"
#include "lib/fixed_coding.h"
#include "lib/io_file.h"
#include "support/archive_fixture.h"

namespace {

class JournalTest : public ArchiveTest {
 protected:
  JournalTest() : path(dir.file("j.kst")), journal(FJournalPath(path.ptr)) {
    archive->loadArchive(path.ptr, false, false);
    addFile(archive->root, "a", 3, 500);
    commit();
    // Free a hole so that the next update overwrites old bytes, not only
    // the tail.
    archive->beginUpdate();
    TFile* a = static_cast<TFile*>(archive->root->findChild("a"));
    FReleaseBlock(*archive, a->version(0)->dataPos, false);
    a->version(0)->unlinkAndDestroy();
    commit();
    before = TestReadFile(path.ptr);
  }

  // Stages a command's update (new blocks, free chain, header, footer) and
  // returns how many records it has.
  int stageUpdate() {
    addFile(archive->root, "b", 4, 300);
    FCommit(*archive, *archive->update, 3);
    archive->update->close();
    LIoFile update(archive->update->path(), 'r', true);
    int records = 0;
    for (int64_t pos = update.getDword(); pos >= 0 && static_cast<int32_t>(pos) != -1;
         pos = update.getDword()) {
      int64_t n = update.getDword();
      update.seek(update.tell() + static_cast<int32_t>(n));
      records++;
    }
    return records;
  }

  // What an apply had done when it was cut off: the journal written, then
  // the first `count` records copied into the archive.
  void crashAfter(int count) {
    archive->close();
    LIoFile out(path.ptr, 'a', true);
    LIoFile update(archive->update->path(), 'r', true);
    ASSERT_TRUE(FWriteJournal(journal.ptr, path.ptr, update));
    update.seek(0);
    for (int i = 0; i < count; i++) {
      int32_t pos = static_cast<int32_t>(update.getDword());
      int32_t n = static_cast<int32_t>(update.getDword());
      out.seek(pos);
      out.copyFrom(update, n);
    }
  }

  // A fresh process opening the archive.
  void reopen() {
    archive->discardUpdate();
    delete archive;
    archive = new TArchive(&host);
    FSetArchive(archive);
    archive->loadArchive(path.ptr, false, false);
  }

  LStr path;
  LStr journal;
  std::string before;
};

}  // namespace

TEST_F(JournalTest, CutAtEveryRecordRollsBackToTheArchiveBefore) {
  int records = stageUpdate();
  ASSERT_GE(records, 6);
  for (int cut = 0; cut <= records; cut++) {
    crashAfter(cut);
    reopen();
    EXPECT_EQ(FExists(journal.ptr), kExistsNone) << cut;
    EXPECT_TRUE(TestReadFile(path.ptr) == before) << "cut after record " << cut;
    EXPECT_EQ(archive->root->childCount(), 1);
    stageUpdate();
  }
}

TEST_F(JournalTest, UpdateThatShortensTheFileRollsBackItsTail) {
  // Freeing the block before the footer moves the footer down: the apply
  // ends the file earlier, and the bytes it cuts must come back too.
  TFile* a = static_cast<TFile*>(archive->root->findChild("a"));
  archive->beginUpdate();
  TVer* last = a->version(a->childCount() - 1);
  FReleaseBlock(*archive, last->dataPos, false);
  last->unlinkAndDestroy();
  FCommit(*archive, *archive->update, 0);
  archive->update->close();
  int32_t newEnd = archive->treeEnd;
  ASSERT_LT(newEnd, static_cast<int32_t>(before.size()));
  for (int cut = 0; cut <= 5; cut++) {
    crashAfter(cut);
    {
      LIoFile out(path.ptr, 'a', true);
      out.truncate(newEnd);  // as the apply ends the file
    }
    reopen();
    EXPECT_TRUE(TestReadFile(path.ptr) == before) << "cut after record " << cut;
    a = static_cast<TFile*>(archive->root->findChild("a"));
    archive->beginUpdate();
    last = a->version(a->childCount() - 1);
    FReleaseBlock(*archive, last->dataPos, false);
    last->unlinkAndDestroy();
    FCommit(*archive, *archive->update, 0);
    archive->update->close();
  }
}

TEST_F(JournalTest, IncompleteJournalMeansTheArchiveWasNeverTouched) {
  stageUpdate();
  crashAfter(0);
  std::string bytes = TestReadFile(journal.ptr);
  for (size_t keep : {size_t{0}, size_t{7}, bytes.size() / 2, bytes.size() - 1}) {
    TestWriteFile(journal.ptr, bytes.substr(0, keep));
    reopen();
    EXPECT_EQ(FExists(journal.ptr), kExistsNone);
    EXPECT_TRUE(TestReadFile(path.ptr) == before);
  }
  // A flipped byte fails the checksum the same way.
  std::string flipped = bytes;
  flipped[flipped.size() / 2] ^= 0x40;
  TestWriteFile(journal.ptr, flipped);
  reopen();
  EXPECT_TRUE(TestReadFile(path.ptr) == before);
}

TEST_F(JournalTest, SuccessfulApplyLeavesNoJournal) {
  stageUpdate();
  FApplyUpdate(*archive, *archive->update);
  EXPECT_EQ(FExists(journal.ptr), kExistsNone);
  reopen();
  EXPECT_EQ(archive->root->childCount(), 2);
  EXPECT_EQ(archive->lastStoreNo, 3);
}

TEST_F(JournalTest, LiveWriterElsewhereIsNeverRolledBack) {
  stageUpdate();
  crashAfter(2);
  std::string halfway = TestReadFile(path.ptr);
  {
    LIoFile writer(path.ptr, 'a', true);  // another process applying
    archive->discardUpdate();
    delete archive;
    archive = new TArchive(&host);
    FSetArchive(archive);
    EXPECT_THROW(FLoadArchive((archive->setPath(path.ptr), *archive)), int);
    EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("他のプロセスが更新中です"),
              std::string::npos);
    EXPECT_EQ(FExists(journal.ptr), kExistsFile);
    EXPECT_TRUE(TestReadFile(path.ptr) == halfway);
  }
  reopen();
  EXPECT_TRUE(TestReadFile(path.ptr) == before);
}

TEST_F(JournalTest, UpdateFileCutShortWritesNoJournal) {
  stageUpdate();
  archive->close();
  const std::string update = TestReadFile(archive->update->path());
  // Cut inside the end mark, before it, inside a record, inside the first
  // record's fields.
  for (size_t cut : {update.size() - 1, update.size() - 4, update.size() / 2, size_t{6}}) {
    LStr shortPath = dir.file("short.tmp");
    TestWriteFile(shortPath.ptr, update.substr(0, cut));
    LIoFile source(shortPath.ptr, 'r', true);
    EXPECT_TRUE(FWriteJournal(journal.ptr, path.ptr, source)) << cut;
    EXPECT_EQ(FExists(journal.ptr), kExistsNone) << "cut at " << cut;
  }
  LIoFile whole(archive->update->path(), 'r', true);
  EXPECT_TRUE(FWriteJournal(journal.ptr, path.ptr, whole));
  EXPECT_EQ(FExists(journal.ptr), kExistsFile);
}
