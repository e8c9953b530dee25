#include "store/delete_command.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "lib/file_time.h"
#include "lib/file_util.h"
#include "store/add_command.h"
#include "store/cond.h"
#include "store/ver_info.h"
#include "store/version_expand.h"
#include "store/version_io.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

namespace {

class DeleteTest : public ArchiveTest {
 protected:
  DeleteTest() {
    FNewWorkSet();
    archive->loadArchive(dir.file("d.kst").ptr, false, false);
  }
  ~DeleteTest() override { FDeleteWorkSet(); }

  // Adds `count` versions of one file, each a small edit of the one before,
  // so that every older version is stored against the next newer one.
  TFile* addChain(const char* name, int count, unsigned seed = 1) {
    std::mt19937 gen(seed);
    std::string bytes(20000, '\0');
    for (char& c : bytes) c = static_cast<char>('a' + gen() % 26);
    LStr source = dir.file(name);
    for (int i = 0; i < count; i++) {
      bytes.replace(gen() % 19000, 10, "version " + std::to_string(i));
      TestWriteFile(source.ptr, bytes);
      SysTime t = FUnixToFileTime(1600000000 + i * 60);
      SysSetFileTimes(source.ptr, 0, t, t);
      contents[name].push_back(bytes);
      add(source.ptr);
    }
    return static_cast<TFile*>(archive->root->findChild(name));
  }
  void add(const char* path) {
    LStrs paths;
    paths.add(new LStr(path));
    TCond cond;
    cond.Parse();
    FCmdAdd(archive->root, paths, &cond, TAddOptions());
    FNewWorkSet();
  }
  int32_t remove(std::initializer_list<TRec*> list) {
    LArrOf<TRec*> records;
    for (TRec* rec : list) records.add(rec);
    int32_t n = FCmdDelete(records);
    FNewWorkSet();
    return n;
  }
  TFile* file(const char* name) { return static_cast<TFile*>(archive->root->findChild(name)); }
  std::string rawOf(TVer* ver) {
    THeldBuf raw;
    FReadRaw(ver, raw);
    return std::string(reinterpret_cast<const char*>(raw.data()), raw.size());
  }
  // Every version of the file reads back as the listed contents (by index
  // into what was added), both now and after a fresh load.
  void expectVersions(const char* name, std::vector<int> kept) {
    for (int pass = 0; pass < 2; pass++) {
      TFile* f = file(name);
      ASSERT_NE(f, nullptr);
      ASSERT_EQ(f->childCount(), static_cast<int32_t>(kept.size()));
      for (size_t i = 0; i < kept.size(); i++)
        EXPECT_EQ(rawOf(f->version(static_cast<int32_t>(i))), contents[name][kept[i]])
            << name << " version " << i << " pass " << pass;
      FNewWorkSet();
      archive->reloadArchive();
    }
  }
  std::map<std::string, std::vector<std::string>> contents;
};

}  // namespace

TEST_F(DeleteTest, NewestVersion) {
  TFile* f = addChain("f", 3);
  int32_t olderPos = f->version(1)->dataPos;
  EXPECT_EQ(remove({f->version(2)}), 1);
  EXPECT_EQ(file("f")->version(1)->dataPos, olderPos);  // kept its place
  expectVersions("f", {0, 1});
  EXPECT_EQ(file("f")->version(1)->Info()->uniqueRatio, 100);  // now stored whole
}

TEST_F(DeleteTest, MiddleVersionReencodesTheOlderAgainstTheNewer) {
  TFile* f = addChain("f", 4);
  int32_t oldestPos = f->version(0)->dataPos;
  remove({f->version(2)});
  expectVersions("f", {0, 1, 3});
  EXPECT_EQ(file("f")->version(0)->dataPos, oldestPos);
  EXPECT_LT(file("f")->version(1)->Info()->uniqueRatio, 10);  // a delta again
}

TEST_F(DeleteTest, OldestVersionMovesNothing) {
  TFile* f = addChain("f", 3);
  remove({f->version(0)});
  expectVersions("f", {1, 2});
  EXPECT_EQ(FWorkSet()->evacuated.count, 0);
}

TEST_F(DeleteTest, TwoAdjacentVersions) {
  TFile* f = addChain("f", 5);
  remove({f->version(2), f->version(3)});
  expectVersions("f", {0, 1, 4});
}

TEST_F(DeleteTest, AllVersionsRemoveTheFileAndAFolderGoesWhole) {
  TFile* f = addChain("f", 3);
  addChain("g", 2, 7);
  remove({f->version(0), f->version(1), f->version(2)});
  EXPECT_EQ(file("f"), nullptr);
  expectVersions("g", {0, 1});

  LStr folder = dir.file("tree");
  FMakeDirs(LStr(folder).append("/sub/x").ptr);
  TestWriteFile(LStr(folder).append("/sub/a.txt").ptr, "some text in a file");
  TestWriteFile(LStr(folder).append("/b.txt").ptr, "other text in a file");
  add(folder.ptr);
  ASSERT_NE(archive->root->findChild("tree"), nullptr);
  remove({archive->root->findChild("tree")});
  EXPECT_EQ(archive->root->findChild("tree"), nullptr);
  expectVersions("g", {0, 1});
}

TEST_F(DeleteTest, SelectionWithItsOwnChildrenDestroysEachOnce) {
  TFile* f = addChain("f", 2);
  remove({f, f->version(0), f, f->version(1)});
  EXPECT_EQ(file("f"), nullptr);
}

TEST_F(DeleteTest, FreedSpaceIsReusedAndTheFileShrinks) {
  addChain("f", 2);
  TFile* g = addChain("g", 1, 5);
  int64_t before = FFileSize(archive->path.ptr);
  int32_t gPos = g->version(0)->dataPos;
  remove({g});  // the last block before the footer
  EXPECT_LT(FFileSize(archive->path.ptr), before - 10000);
  EXPECT_EQ(archive->treePos, gPos);
  remove({file("f")->version(0)});
  int32_t hole = archive->freeList.last()->pos;
  addChain("h", 1, 9);
  EXPECT_EQ(file("h")->version(0)->dataPos, hole);
  expectVersions("h", {0});
  expectVersions("f", {1});
}

TEST_F(DeleteTest, FailedDeleteLeavesArchiveAndNoEvacuationFiles) {
  TFile* f = addChain("f", 3);
  std::string before = TestReadFile(archive->path.ptr);
  // A folder in the way of the update file makes the commit fail after the
  // evacuation files were written.
  LStr update = dir.file("kst-#update.tmp");
  archive->discardUpdate();
  ASSERT_TRUE(SysMakeFolder(update.ptr));
  EXPECT_THROW(remove({f->version(2)}), int);
  SysRemoveFolder(update.ptr);
  EXPECT_EQ(FExists(FEvacPath(0).ptr), kExistsNone);
  FNewWorkSet();
  archive->reloadArchive();
  EXPECT_TRUE(TestReadFile(archive->path.ptr) == before);
  expectVersions("f", {0, 1, 2});
}
