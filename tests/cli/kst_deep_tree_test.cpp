// Every command of kst on an archive whose tree is one chain of very many
// nested folders, the shape of a damaged or hostile file: each command must
// end with its report or a clear message, never with a crash or a hang.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "archive/archive.h"
#include "kst_process.h"
#include "support/archive_fixture.h"
#include "support/file_bytes.h"
#include "support/temp_dir.h"

namespace {

// The Windows build runs its tests under an emulator whose threads have
// smaller stacks and whose file calls are slower.
#ifdef _WIN32
const int kDepth = 100000;
#else
const int kDepth = 200000;
#endif

class KstDeepTreeTest : public testing::Test {
 protected:
  KstDeepTreeTest() : archive(dir.file("deep.kst")), settings(dir.file("none.ini")), host(dir) {}

  KstResult kst(std::vector<std::string> words, bool binaryOutput = false) {
    words.insert(words.begin() + 1, {"--settings", settings.ptr});
    return RunKst(words, dir.path(), binaryOutput);
  }

  // An archive by kst itself with "top.txt" at the root and "bottom.txt" at
  // the end of a chain of kDepth folders named "d", moved there by the
  // archive's own code in this process.
  void makeDeepArchive() {
    LStr top = dir.file("top.txt");
    LStr bottom = dir.file("bottom.txt");
    TestWriteFile(top.ptr, "top\n");
    TestWriteFile(bottom.ptr, "bottom\n");
    KstResult add = kst({"add", archive.ptr, top.ptr, bottom.ptr});
    ASSERT_EQ(add.status, 0) << add.err;

    TArchive* deep = new TArchive(&host);
    FSetArchive(deep);
    deep->setPath(archive.ptr);
    FLoadArchive(*deep);
    TRec* file = deep->root->findChild("bottom.txt");
    ASSERT_NE(file, nullptr);
    deep->root->removeChild(file);
    TFolder* folder = deep->root;
    for (int i = 0; i < kDepth; i++) folder = folder->addFolder("d");
    folder->addChild(file);
    FCommitTree(*deep);
    delete deep;
    FSetArchive(nullptr);
  }

  TestTempDir dir;
  RecorderScope recorder;
  LStr archive;
  LStr settings;
  TestArchiveHost host;
};

TEST_F(KstDeepTreeTest, EveryCommandEndsCleanly) {
  makeDeepArchive();

  KstResult ls = kst({"ls", archive.ptr});
  ASSERT_EQ(ls.status, 0) << ls.err;
  std::vector<std::string> rows = LinesOf(ls.out);
  ASSERT_EQ(rows.size(), 3u) << ls.out;
  EXPECT_EQ(rows[1].substr(0, 1), "d");
  EXPECT_EQ(rows[2].substr(0, 7), "top.txt");

  KstResult log = kst({"log", archive.ptr, "/top.txt"});
  EXPECT_EQ(log.status, 0) << log.err;
  EXPECT_EQ(kst({"cat", archive.ptr, "/top.txt"}, true).rawOut, "top\n");

  KstResult info = kst({"info", archive.ptr});
  ASSERT_EQ(info.status, 0) << info.err;
  EXPECT_NE(info.out.find("フォルダ数: " + std::to_string(kDepth)), std::string::npos) << info.out;
  EXPECT_NE(info.out.find("ファイル数: 2"), std::string::npos) << info.out;

  KstResult check = kst({"check", archive.ptr});
  EXPECT_EQ(check.status, 0) << check.out << check.err;
  EXPECT_NE(check.out.find("2 個のファイル、2 個のバージョン"), std::string::npos) << check.out;

  // The search walks the whole chain and shows the bottom file's folder.
  KstResult find = kst({"find", archive.ptr, "--name", "bottom.txt"});
  ASSERT_EQ(find.status, 0) << find.err;
  std::string chain;
  for (int i = 0; i < kDepth; i++) chain += "/d";
  EXPECT_NE(find.out.find("bottom.txt"), std::string::npos);
  EXPECT_NE(find.out.find(chain.substr(1)), std::string::npos);

  // No system makes a folder that deep: the top file comes out, the bottom
  // one fails with a message.
  LStr out = dir.file("out");
  KstResult extract = kst({"extract", archive.ptr, "-d", out.ptr});
  EXPECT_EQ(extract.status, 1);
  std::string refused = std::string("ファイル「") + out.ptr;
  EXPECT_NE(extract.err.find(refused), std::string::npos) << extract.err.substr(0, 300);
  EXPECT_EQ(TestReadFile(dir.file("out/top.txt").ptr), "top\n");

  // Commands that write keep the chain and can take it apart.
  EXPECT_EQ(kst({"mkdir", archive.ptr, "/d/new"}).status, 0);
  EXPECT_EQ(kst({"mv", archive.ptr, "/d", "chain"}).status, 0);
  LStr more = dir.file("more.txt");
  TestWriteFile(more.ptr, "more\n");
  EXPECT_EQ(kst({"add", archive.ptr, more.ptr}).status, 0);
  KstResult rm = kst({"rm", archive.ptr, "/chain"});
  ASSERT_EQ(rm.status, 0) << rm.err;
  KstResult after = kst({"info", archive.ptr});
  EXPECT_NE(after.out.find("フォルダ数: 0"), std::string::npos) << after.out;
  EXPECT_NE(after.out.find("ファイル数: 2"), std::string::npos) << after.out;
  EXPECT_EQ(kst({"check", archive.ptr}).status, 0);
}

}  // namespace
