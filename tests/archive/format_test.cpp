#include <gtest/gtest.h>

#include <string>

#include "archive/format.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "lib/file_util.h"
#include "lib/fixed_coding.h"
#include "lib/sys.h"
#include "support/archive_fixture.h"

namespace {

// A hand-made archive: the header fields and the footer bytes after it.
std::string makeArchive(int32_t treePos, const std::string& footer, const char* version = "004") {
  std::string bytes(64, '\0');
  bytes.replace(0, 4, std::string("Kst\0", 4));
  bytes.replace(4, 4, std::string(version, 3) + '\0');
  char field[4];
  FPutI32(field, treePos);
  bytes.replace(8, 4, field, 4);
  bytes.resize(treePos, '\0');
  return bytes + footer;
}

}  // namespace

class LoadTest : public ArchiveTest {
 protected:
  // Loads bytes written as "bad.kst"; returns the text of the box shown, or
  // "" when the load succeeded.
  std::string loadBytes(const std::string& bytes) {
    LStr path = dir.file("bad.kst");
    TestWriteFile(path.ptr, bytes);
    archive->setPath(path.ptr);
    try {
      FLoadArchive(*archive);
    } catch (int code) {
      EXPECT_EQ(code, 2);
      TestRecorder* rec = recorder.recorder;
      return rec->boxes.count ? rec->boxes.last()->ptr : "(no box)";
    }
    return "";
  }
};

TEST_F(ArchiveTest, NewArchiveIsHeaderAndEndTag) {
  LStr path = dir.file("new.kst");
  archive->loadArchive(path.ptr, false, false);
  std::string bytes = TestReadFile(path.ptr);
  ASSERT_EQ(bytes.size(), 65u);
  EXPECT_EQ(bytes.substr(0, 8), std::string("Kst\0"
                                            "004\0",
                                            8));
  EXPECT_EQ(FGetI32(bytes.data() + 8), 64);
  EXPECT_EQ(bytes.substr(12, 52), std::string(52, '\0'));
  EXPECT_EQ(static_cast<unsigned char>(bytes[64]), 0xAF);
  EXPECT_EQ(archive->treePos, 64);
  ASSERT_EQ(archive->freeList.count, 1);
  EXPECT_TRUE(archive->freeList[0]->isTail());
  EXPECT_EQ(archive->root->childCount(), 0);
  EXPECT_STREQ(archive->root->name(), "new.kst");
  EXPECT_EQ(host.loads, 1);
}

TEST_F(LoadTest, EveryBrokenFileGivesItsNumber) {
  const std::string bad = "アーカイブ ファイルの形式が正しくありません (識別番号=";
  EXPECT_NE(loadBytes("").find("Kestrom エラー #2000|"), std::string::npos);
  EXPECT_NE(loadBytes(makeArchive(64, "\xaf").substr(0, 63)).find("#2000"), std::string::npos);
  std::string wrongMagic = makeArchive(64, "\xaf");
  wrongMagic[1] = 'S';
  EXPECT_NE(loadBytes(wrongMagic).find("#2000|"), std::string::npos);
  EXPECT_NE(loadBytes(makeArchive(64, "\xaf", "003")).find("#2010|Kestrom 1.13"),
            std::string::npos);
  std::string cut = makeArchive(192, "\xaf").substr(0, 100);
  EXPECT_NE(loadBytes(cut).find("短かすぎます（100 < 192）"), std::string::npos);
  EXPECT_EQ(loadBytes(makeArchive(64,
                                  "\xaf"
                                  "x")),
            "Kestrom エラー #3000|" + bad + "338)");
  EXPECT_EQ(loadBytes(makeArchive(64, "\x42")), "Kestrom エラー #3000|" + bad + "242)");
  EXPECT_EQ(loadBytes(makeArchive(64, std::string("\xa2\x00\x42", 3))),
            "Kestrom エラー #3000|" + bad + "263)");
  // A version whose size difference is odd: 0 - 1 = -1.
  EXPECT_EQ(loadBytes(makeArchive(64, std::string("\xa2\x00\xa4\x00\x00\x00\x03\x00\xae\xaf", 10))),
            "Kestrom エラー #3000|" + bad + "425)");
  EXPECT_EQ(loadBytes(makeArchive(64, "\xa1\xf8")), "Kestrom エラー #3000|" + bad + "312)");
  EXPECT_EQ(loadBytes(makeArchive(64, std::string("\xa3\xf1\x00\x00\x00\x00", 6))),
            "Kestrom エラー #3000|" + bad + "309)");
  EXPECT_EQ(loadBytes(makeArchive(64, "\xa3")), "Kestrom エラー #3000|" + bad + "312)");
}

TEST_F(ArchiveTest, TreeSurvivesCommitAndReloadByteForByte) {
  LStr path = dir.file("tree.kst");
  archive->loadArchive(path.ptr, false, false);
  TFolder* docs = archive->root->addFolder("文書");
  docs->time = 1500000000;
  docs->addFolder("empty");
  TFolder* deep = docs->addFolder("a")->addFolder("b")->addFolder("表");
  addFile(deep, "深い.txt", 3, 100);
  addFile(archive->root, "readme.md", 1, 0);
  addFile(docs, "Big", 2, 5000);
  archive->root->addFolder("early")->time = -2000000000;
  commit(7);
  std::string first = TestReadFile(path.ptr);
  EXPECT_EQ(FGetI32(first.data() + 16), 7);

  archive->reloadArchive();
  TFolder* root = archive->root;
  ASSERT_EQ(root->childCount(), 3);
  const char* names[] = {"文書", "a", "b", "表", "深い.txt", nullptr};
  TRec* file = root->findPath(names);
  ASSERT_NE(file, nullptr);
  ASSERT_TRUE(file->isFile());
  TFile* deepFile = static_cast<TFile*>(file);
  ASSERT_EQ(deepFile->childCount(), 3);
  EXPECT_EQ(deepFile->version(2)->size, 102);
  EXPECT_EQ(deepFile->version(2)->checksum, 0x1236);
  EXPECT_EQ(deepFile->version(1)->time, 1600003600);
  EXPECT_EQ(deepFile->version(0)->flags, kVerStored);
  LStr shown;
  deepFile->displayPath(shown);
  EXPECT_STREQ(shown.ptr, "/文書/a/b/表/深い.txt");
  EXPECT_EQ(static_cast<TFolder*>(root->findChild("EARLY"))->time, -2000000000);
  EXPECT_EQ(static_cast<TFolder*>(root->findChild("文書"))->time, 1500000000);
  EXPECT_EQ(static_cast<TRecF*>(root->findChild("文書"))->findChild("empty")->childCount(), 0);

  // Written again from what was read, the file comes out the same.
  archive->treeDirty = 1;
  archive->closeArchive(false, true);
  archive->loadArchive(path.ptr, false, false);
  std::string second = TestReadFile(path.ptr);
  EXPECT_EQ(second.size(), first.size());
  EXPECT_EQ(second.substr(64), first.substr(64));
  EXPECT_EQ(FGetI32(second.data() + 16), 0);  // a commit without an add writes 0
}

TEST_F(ArchiveTest, FreedNeighboursMergeAndTheTailShrinksTheFile) {
  LStr path = dir.file("free.kst");
  archive->loadArchive(path.ptr, false, false);
  TFile* file = addFile(archive->root, "f", 4, 100);  // four blocks of 128 bytes
  commit();
  EXPECT_EQ(archive->treePos, 64 + 4 * 128);
  int64_t before = TestReadFile(path.ptr).size();

  // The first two blocks, side by side, become one hole.
  archive->beginUpdate();
  FReleaseBlock(*archive, file->version(0)->dataPos, false);
  FReleaseBlock(*archive, file->version(1)->dataPos, false);
  file->version(0)->unlinkAndDestroy();
  file->version(0)->unlinkAndDestroy();
  commit();
  ASSERT_EQ(archive->freeList.count, 2);
  EXPECT_EQ(archive->freeList[1]->pos, 64);
  EXPECT_EQ(archive->freeList[1]->size, 256);
  std::string bytes = TestReadFile(path.ptr);
  EXPECT_EQ(FGetI32(bytes.data() + 12), 64);   // freeHead
  EXPECT_EQ(FGetI32(bytes.data() + 64), 256);  // size of the one extent
  EXPECT_EQ(FGetI32(bytes.data() + 68), 0);    // and no next

  // Freeing the last block before the footer lowers treePos.
  archive->beginUpdate();
  FReleaseBlock(*archive, file->version(1)->dataPos, false);
  file->version(1)->unlinkAndDestroy();
  commit();
  EXPECT_EQ(archive->treePos, 64 + 3 * 128);
  EXPECT_LT(static_cast<int64_t>(TestReadFile(path.ptr).size()), before - 100);

  archive->reloadArchive();
  ASSERT_EQ(archive->freeList.count, 2);
  EXPECT_EQ(archive->freeList[1]->size, 256);
}

TEST_F(ArchiveTest, SegmentInAHoleLeavesTheRestInTheChain) {
  LStr path = dir.file("hole.kst");
  archive->loadArchive(path.ptr, false, false);
  TFile* file = addFile(archive->root, "f", 2, 1000);  // 1024 and 1088 bytes
  commit();
  archive->beginUpdate();
  FReleaseBlock(*archive, file->version(0)->dataPos, false);
  file->version(0)->unlinkAndDestroy();
  commit();
  ASSERT_EQ(archive->freeList.count, 2);
  EXPECT_EQ(archive->freeList[1]->size, 1024);

  TVer* ver = new TVer;
  file->addChild(ver);
  writeBlock(ver, 100, 'z');  // 8 + 4 + 100 bytes: two units of 64
  commit();
  EXPECT_EQ(ver->dataPos, 64);
  ASSERT_EQ(archive->freeList.count, 2);
  EXPECT_EQ(archive->freeList[1]->pos, 64 + 128);
  EXPECT_EQ(archive->freeList[1]->size, 1024 - 128);
  std::string bytes = TestReadFile(path.ptr);
  EXPECT_EQ(FGetI32(bytes.data() + 64), 112);  // length without the fill
  EXPECT_EQ(bytes.substr(64 + 112, 16), std::string(16, '\0'));

  // A block larger than the hole fills it and goes on at the tail.
  TVer* big = new TVer;
  file->addChild(big);
  writeBlock(big, 3000, 'y');
  commit();
  EXPECT_EQ(big->dataPos, 192);
  EXPECT_EQ(archive->freeList.count, 1);
  bytes = TestReadFile(path.ptr);
  int32_t next = FGetI32(bytes.data() + 192 + 4);
  EXPECT_GE(next, 1088 + 64);
  EXPECT_EQ(FGetI32(bytes.data() + 192), 896);  // the hole, full
}

TEST_F(ArchiveTest, RewrittenBlockKeepsItsPosition) {
  LStr path = dir.file("keep.kst");
  archive->loadArchive(path.ptr, false, false);
  TFile* file = addFile(archive->root, "f", 3, 50);
  commit();
  TVer* middle = file->version(1);
  int32_t pos = middle->dataPos;
  archive->beginUpdate();
  FReleaseBlock(*archive, pos, true);
  writeBlock(middle, 500, 'q', pos);  // larger: spills into further segments
  commit();
  EXPECT_EQ(middle->dataPos, pos);
  archive->reloadArchive();
  EXPECT_EQ(static_cast<TFile*>(archive->root->findChild("f"))->version(1)->dataPos, pos);
}

TEST_F(ArchiveTest, FailedCommandLeavesTheFileAndReloadRestoresTheTree) {
  LStr path = dir.file("fail.kst");
  archive->loadArchive(path.ptr, false, false);
  addFile(archive->root, "kept", 2, 300);
  commit();
  std::string before = TestReadFile(path.ptr);

  try {
    addFile(archive->root, "lost", 2, 300);
    archive->root->addFolder("lost too");
    FError(3000, "stopped in the middle");
  } catch (int) {
    archive->reloadArchive();
  }
  EXPECT_TRUE(TestReadFile(path.ptr) == before);
  EXPECT_EQ(archive->root->childCount(), 1);
  EXPECT_EQ(archive->update, nullptr);
  EXPECT_FALSE(FExists(dir.file("kst-#update.tmp").ptr));
}

TEST_F(ArchiveTest, ArchiveThatCannotBeWrittenFailsOnlyAtApply) {
  LStr path = dir.file("locked.kst");
  archive->loadArchive(path.ptr, false, false);
  addFile(archive->root, "f", 1, 10);
  commit();
  std::string before = TestReadFile(path.ptr);
  // Another writer holds the file: reading goes on, writing is refused.
  LIoFile other(path.ptr, 'a', true);
  ASSERT_TRUE(other.isOpen());
  archive->reloadArchive();
  ASSERT_EQ(archive->root->childCount(), 1);
  addFile(archive->root, "g", 1, 10);
  try {
    commit();
    FAIL() << "the apply went through";
  } catch (int code) {
    EXPECT_EQ(code, 2);
  }
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("書き込みモードで開けません"),
            std::string::npos);
  other.close();
  archive->discardUpdate();
  archive->reloadArchive();
  EXPECT_TRUE(TestReadFile(path.ptr) == before);
  EXPECT_EQ(archive->root->childCount(), 1);
}

TEST_F(ArchiveTest, NotAnArchiveFallsBackOnTheUntitledOne) {
  LStr path = dir.file("text.txt");
  TestWriteFile(path.ptr,
                "just some text that is not an archive at all, long enough to have a header");
  archive->loadArchive(path.ptr, true, false);
  EXPECT_TRUE(archive->isUntitled());
  EXPECT_NE(archive->root, nullptr);
  EXPECT_STREQ(host.removed.ptr, FFullPath(path.ptr).ptr);
  EXPECT_NE(std::string(recorder->boxes[0]->ptr).find("#2000|"), std::string::npos);
  EXPECT_EQ(TestReadFile(dir.file("無題").ptr).size(), 65u);
}

TEST_F(ArchiveTest, CrashWhileWritingTheUpdateLeavesTheArchive) {
  LStr path = dir.file("crash.kst");
  archive->loadArchive(path.ptr, false, false);
  addFile(archive->root, "f", 2, 4000);
  commit();
  std::string before = TestReadFile(path.ptr);
  // The child writes half a command's blocks and dies without cleaning up.
  EXPECT_EXIT(
      {
        addFile(archive->root, "g", 40, 4000);
        archive->update->stream().flush();
        SysExitProcess(9);
      },
      testing::ExitedWithCode(9), "");
  EXPECT_TRUE(TestReadFile(path.ptr) == before);
  archive->reloadArchive();
  EXPECT_EQ(archive->root->childCount(), 1);
}

TEST_F(ArchiveTest, PositionsPastTwoGigabytesAreRefusedBeforeAnythingIsWritten) {
  LStr path = dir.file("big.kst");
  archive->loadArchive(path.ptr, false, false);
  addFile(archive->root, "f", 1, 100);
  commit();
  std::string before = TestReadFile(path.ptr);
  // As if the archive had grown to the edge of what positions can hold.
  archive->freeList[0]->pos = 2147483584;
  TVer* ver = new TVer;
  archive->root->addChild(new TFile);
  static_cast<TFile*>(archive->root->children.last())->addChild(ver);
  EXPECT_THROW(writeBlock(ver, 100, 'x'), int);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("2 GB を超える"), std::string::npos);
  // A block of nearly 2 GiB into a small archive: its segment's length must
  // not wrap around before the test, and no byte of it is read.
  archive->reloadArchive();
  const char head[4] = {};
  EXPECT_THROW(
      FWriteSegments(*archive, archive->beginUpdate(), 0, head, 4, head, INT32_MAX - 8, nullptr),
      int);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("2 GB を超える"), std::string::npos);
  archive->reloadArchive();
  archive->freeList[0]->pos = 2147483584;  // the footer alone runs past the limit
  archive->root->addFolder(std::string(100, 'n').c_str());
  EXPECT_THROW(commit(), int);
  archive->reloadArchive();
  EXPECT_TRUE(TestReadFile(path.ptr) == before);
}
