// A writer commits only over the state of the archive that it loaded: a
// commit by another writer in between, a copy of another archive of the
// same length with the old time, or another file put in the archive's
// place makes the apply fail with nothing written.
#include "archive/archive_stamp.h"

#include <gtest/gtest.h>

#include <string>

#include "archive/archive.h"
#include "lib/file_util.h"
#include "lib/io_file.h"
#include "support/archive_fixture.h"

namespace {

class StampTest : public ArchiveTest {
 protected:
  StampTest() : path(dir.file("s.kst")), otherHost(otherDir) {
    archive->loadArchive(path.ptr, false, false);
  }

  // Another process: its own archive object and work folder, loading the
  // file at `at` and adding a folder there.
  void commitElsewhere(const char* at, const char* folder) {
    TArchive* other = new TArchive(&otherHost);
    FSetArchive(other);
    other->loadArchive(at, false, false);
    other->root->addFolder(folder);
    FCommitTree(*other);
    delete other;
    FSetArchive(archive);
  }

  // This archive's own change, which must be refused; the file stays as it
  // was and the message names the cause.
  void expectRefused() {
    std::string was = TestReadFile(path.ptr);
    archive->root->addFolder("mine");
    EXPECT_THROW(FCommitTree(*archive), int);
    archive->discardUpdate();
    ASSERT_GT(recorder->boxes.count, 0);
    EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("他のプログラムによって変更されました"),
              std::string::npos)
        << recorder->boxes.last()->ptr;
    EXPECT_TRUE(TestReadFile(path.ptr) == was);
  }

  LStr path;
  TestTempDir otherDir;
  TestArchiveHost otherHost;
};

TEST_F(StampTest, CommitsFollowEachOtherOverTheirOwnState) {
  TArchiveStamp first = archive->loaded;
  EXPECT_TRUE(first.valid);
  for (const char* name : {"a", "b", "c"}) {
    archive->root->addFolder(name);
    FCommitTree(*archive);
    EXPECT_TRUE(archive->loaded != first);
    first = archive->loaded;
  }
  // The stamp taken after the commit is the stamp of a fresh load.
  LIoFile reader(path.ptr, 'r', true);
  EXPECT_TRUE(FStampArchive(reader) == archive->loaded);
}

TEST_F(StampTest, ACommitElsewhereSinceTheLoadIsNotOverwritten) {
  commitElsewhere(path.ptr, "theirs");
  expectRefused();
  // Loaded again, the tree holds the other writer's folder and can commit.
  archive->reloadArchive();
  EXPECT_NE(archive->root->findChild("theirs"), nullptr);
  archive->root->addFolder("mine");
  FCommitTree(*archive);
  EXPECT_NE(archive->root->findChild("mine"), nullptr);
}

TEST_F(StampTest, AnotherArchiveOfTheSameLengthAndTimeIsSeen) {
  archive->root->addFolder("aaa");
  FCommitTree(*archive);
  // Another archive with one name of the same length, copied into this
  // file (which keeps its identity) and given back the old time. The root
  // takes the file's name into the string table, so that is one length too.
  LStr copy = otherDir.file("s.kst");
  commitElsewhere(copy.ptr, "bbb");
  std::string bytes = TestReadFile(copy.ptr);
  ASSERT_EQ(bytes.size(), TestReadFile(path.ptr).size());
  TestWriteFile(path.ptr, bytes);
  ASSERT_TRUE(SysSetFileTimes(path.ptr, 0, 0, archive->loaded.file.modified));
  expectRefused();
}

TEST_F(StampTest, AnIdenticalFileInTheArchivesPlaceIsSeen) {
  // Same bytes and time, but not the file that was loaded.
  LStr copy = dir.file("copy.kst");
  TestWriteFile(copy.ptr, TestReadFile(path.ptr));
  ASSERT_TRUE(SysSetFileTimes(copy.ptr, 0, 0, archive->loaded.file.modified));
  archive->close();
  ASSERT_TRUE(SysDeleteFile(path.ptr));
  ASSERT_TRUE(SysRenameFile(copy.ptr, path.ptr));
  expectRefused();
}

}  // namespace
