#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/sys.h"
#include "store/add_command.h"
#include "store/cond.h"
#include "store/extract_command.h"
#include "store/progress.h"
#include "store/ver_info.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

#ifndef _WIN32
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#endif

namespace {

class AddTest : public ArchiveTest {
 protected:
  AddTest() : src(dir.file("src")) {
    FNewWorkSet();
    archive->loadArchive(dir.file("a.kst").ptr, false, false);
    SysMakeFolder(src.ptr);
    options.userTag = "host/user";
  }
  ~AddTest() override { FDeleteWorkSet(); }

  LStr srcFile(const char* name) const {
    LStr path(src);
    path.append(SysPathSeparator());
    path.append(name);
    return path;
  }
  // Writes a source file with a given modification time.
  void put(const char* name, const std::string& bytes, int64_t time = 1600000000) {
    LStr path = srcFile(name);
    FMakeDirs(path.ptr);
    TestWriteFile(path.ptr, bytes);
    SysTime t = FUnixToFileTime(time);
    SysSetFileTimes(path.ptr, 0, t, t);
  }
  // Adds the given paths (default: the whole source folder) under the root.
  void add(std::initializer_list<const char*> names = {}, TCond* cond = nullptr) {
    LStrs paths;
    if (names.size() == 0) paths.add(new LStr(src));
    for (const char* name : names) paths.add(new LStr(srcFile(name)));
    TCond defaults;
    defaults.Parse();
    FCmdAdd(archive->root, paths, cond ? cond : &defaults, options);
    last = *FWorkSet();
    FNewWorkSet();
  }
  TFile* fileAt(const char* first, const char* second = nullptr) {
    const char* names[] = {first, second, nullptr};
    TRec* rec = archive->root->findPath(names);
    return rec && rec->isFile() ? static_cast<TFile*>(rec) : nullptr;
  }
  std::string extracted(const char* dest, const char* name) {
    LStr path(dest);
    path.append(SysPathSeparator());
    path.append(name);
    return TestReadFile(path.ptr);
  }

  struct Counts {
    int32_t seen = 0, done = 0, created = 0, skipped = 0;
    Counts& operator=(const TWorkSet& w) {
      seen = w.seen;
      done = w.done;
      created = w.created;
      skipped = w.skipped;
      return *this;
    }
  } last;
  LStr src;
  TAddOptions options;
};

}  // namespace

TEST_F(AddTest, FolderTwiceWithAChangeBecomesTwoVersions) {
  put("a.txt", "first text\n");
  put("sub/深い.bin", std::string(3000, 'x'));
  put("sub/empty", "");
  add();
  EXPECT_EQ(last.seen, 3);
  EXPECT_EQ(last.done, 3);
  EXPECT_EQ(last.created, 3);
  EXPECT_EQ(archive->lastStoreNo, 1);
  TFile* a = fileAt("src", "a.txt");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->version(0)->flags, kVerStored);

  put("a.txt", "second text, longer\n", 1600000100);
  add();
  EXPECT_EQ(last.done, 1);
  EXPECT_EQ(last.skipped, 2);  // same date and size
  ASSERT_EQ(a->childCount(), 2);
  TVerInfo* info = a->version(1)->Info();
  EXPECT_EQ(info->storeNo, 2);
  EXPECT_STREQ(FStrings().text(static_cast<uint32_t>(info->userId)), "host/user");

  archive->reloadArchive();
  a = fileAt("src", "a.txt");
  LStr out = dir.file("out");
  LArrOf<TRec*> records;
  records.add(a);
  TCond all;
  all.maxVersions = 0;
  all.Parse();
  FCmdExtract(records, out.ptr, &all, archive->root->findChild("src"));
  // Newest first: the oldest is written last and is what stays.
  EXPECT_EQ(extracted(out.ptr, "a.txt"), "first text\n");
  EXPECT_EQ(FWorkSet()->done, 2);
}

TEST_F(AddTest, UnchangedDateAndSizeIsSkippedWithoutReading) {
  put("a.txt", "original");
  add();
  // Other bytes of the same length and date: had the file been read, a new
  // version would have been stored.
  put("a.txt", "ORIGINAL");
  add();
  EXPECT_EQ(last.skipped, 1);
  EXPECT_EQ(last.done, 0);
  EXPECT_EQ(fileAt("src", "a.txt")->childCount(), 1);
}

TEST_F(AddTest, SameContentWithANewDateIsDroppedAndCountedSkipped) {
  // Long enough to be told equal: held forms of 4 to 8 bytes never are.
  put("a.txt", "content of the file");
  add();
  put("a.txt", "content of the file", 1700000000);
  add();
  EXPECT_EQ(last.seen, 1);
  EXPECT_EQ(last.skipped, 1);
  EXPECT_EQ(last.done, 0);
  EXPECT_EQ(fileAt("src", "a.txt")->childCount(), 1);

  // Without the content test the new date makes a version, and the older
  // one is marked as having the same bytes.
  options.skipEquF = 0;
  put("a.txt", "content of the file", 1700000500);
  add();
  TFile* a = fileAt("src", "a.txt");
  ASSERT_EQ(a->childCount(), 2);
  EXPECT_TRUE(a->version(0)->flags & kVerSame);
}

TEST_F(AddTest, TwoInputsOfOneNameBecomeTwoVersions) {
  put("one/x.txt", "from one");
  put("two/x.txt", "from two, different", 1600000500);
  add({"one/x.txt", "two/x.txt"});
  TFile* x = fileAt("x.txt");
  ASSERT_NE(x, nullptr);
  ASSERT_EQ(x->childCount(), 2);
  EXPECT_EQ(last.created, 1);
  EXPECT_EQ(last.done, 2);
  archive->reloadArchive();
  x = fileAt("x.txt");
  LStr out = dir.file("out");
  TCond all;
  all.maxVersions = 0;
  all.fromOldest = 1;
  all.Parse();
  LArrOf<TRec*> records;
  records.add(x->version(0));
  FCmdExtract(records, out.ptr, &all, nullptr);
  EXPECT_EQ(extracted(out.ptr, "x.txt"), "from one");
}

TEST_F(AddTest, ExcludedFilesLeaveNoFolderBehind) {
  put("keep/a.txt", "a");
  put("drop/b.bin", "b");
  put("drop/deeper/c.bin", "c");
  TCond cond;
  cond.nameText = "*.txt";
  cond.Parse();
  add({}, &cond);
  EXPECT_EQ(last.seen, 3);
  EXPECT_EQ(last.done, 1);
  const char* dropped[] = {"src", "drop", nullptr};
  EXPECT_EQ(archive->root->findPath(dropped), nullptr);
  const char* kept[] = {"src", "keep", "a.txt", nullptr};
  EXPECT_NE(archive->root->findPath(kept), nullptr);
}

TEST_F(AddTest, ExtractRestoresBytesAndTimes) {
  put("empty", "", 1500000000);
  put("data.bin", std::string(100000, '\x01') + "tail", 1600000123);
  add();
  LStr out = dir.file("out");
  // An equal file at the destination is overwritten all the same.
  FMakeDirs(LStr(out).append("/x").ptr);
  TestWriteFile(LStr(out).append(SysPathSeparator()).append("data.bin").ptr, "stale");
  LArrOf<TRec*> records;
  records.add(archive->root->findChild("src"));
  TCond cond;
  cond.Parse();
  FCmdExtract(records, out.ptr, &cond, archive->root->findChild("src"));
  EXPECT_EQ(extracted(out.ptr, "empty"), "");
  EXPECT_EQ(extracted(out.ptr, "data.bin"), std::string(100000, '\x01') + "tail");
  SysFileInfo info;
  ASSERT_TRUE(SysStat(LStr(out).append(SysPathSeparator()).append("data.bin").ptr, &info));
  EXPECT_EQ(FToUnixTime(info.modified), 1600000123);
}

TEST_F(AddTest, EmptyDestinationUsesTheFirstAddedPath) {
  put("f.txt", "text");
  add();
  EXPECT_STREQ(archive->firstAddPath.ptr, src.ptr);
  LArrOf<TRec*> records;
  records.add(fileAt("src", "f.txt"));
  TCond cond;
  cond.Parse();
  SysDeleteFile(srcFile("f.txt").ptr);
  FCmdExtract(records, "", &cond, archive->root->findChild("src"));
  EXPECT_EQ(TestReadFile(srcFile("f.txt").ptr), "text");
}

TEST_F(AddTest, FailuresAndStopsLeaveTheArchiveAsItWas) {
  put("a.txt", "a");
  add();
  std::string before = TestReadFile(archive->path.ptr);
  put("b.txt", "b");
  EXPECT_THROW(add({"b.txt", "missing.txt"}), int);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("missing.txt」が見つかりません"),
            std::string::npos);
  archive->reloadArchive();
  EXPECT_TRUE(TestReadFile(archive->path.ptr) == before);

  // The threads encode the files of a walk while it goes on: a walk that
  // fails after hundreds of them in a new folder leaves nothing either.
  for (int i = 0; i < 300; i++)
    put(("many/f" + std::to_string(i) + ".txt").c_str(), std::string(2000 + i, 'm'));
  EXPECT_THROW(add({"many", "missing.txt"}), int);
  FNewWorkSet();
  archive->reloadArchive();
  EXPECT_TRUE(TestReadFile(archive->path.ptr) == before);
  EXPECT_EQ(fileAt("many", "f0.txt"), nullptr);

  FWorkSet()->stopState = kStopNow;
  LStrs paths;
  paths.add(new LStr(src));
  TCond cond;
  cond.Parse();
  try {
    FCmdAdd(archive->root, paths, &cond, options);
    FAIL() << "the add was not stopped";
  } catch (int code) {
    EXPECT_EQ(code, 1);
  }
  FNewWorkSet();
  archive->reloadArchive();
  EXPECT_TRUE(TestReadFile(archive->path.ptr) == before);
  EXPECT_EQ(fileAt("src", "b.txt"), nullptr);
}

TEST_F(AddTest, FolderSuffixAndTargetRules) {
  put("dir/f.txt", "f");
  add({"dir <folder>"});
  EXPECT_NE(fileAt("dir", "f.txt"), nullptr);
  // A folder cannot go into a file, and a file name cannot become a folder.
  LStrs paths;
  paths.add(new LStr(srcFile("dir")));
  TCond cond;
  cond.Parse();
  EXPECT_THROW(FCmdAdd(fileAt("dir", "f.txt"), paths, &cond, options), int);
  EXPECT_NE(
      std::string(recorder->boxes.last()->ptr).find("フォルダをファイルに追加することはできません"),
      std::string::npos);
}

TEST_F(AddTest, NamesThatWouldLeaveTheDestinationAreRefused) {
  put("ok.txt", "fine");
  put("evil.txt", "escape attempt");
  add();
  // An archive made elsewhere may hold such names.
  const char* names[] = {"src", "evil.txt", nullptr};
  static_cast<TRecF*>(archive->root->findPath(names))->setName("../../evil.txt");
  LStr out = dir.file("out");
  LArrOf<TRec*> records;
  records.add(archive->root->findChild("src"));
  TCond cond;
  cond.Parse();
  FCmdExtract(records, out.ptr, &cond, archive->root->findChild("src"));
  EXPECT_EQ(extracted(out.ptr, "ok.txt"), "fine");
  EXPECT_EQ(FExists(dir.file("evil.txt").ptr), kExistsNone);
  EXPECT_TRUE(recorder->has(20000));
  const char* renamed[] = {"src", "../../evil.txt", nullptr};
  TFile* evil = static_cast<TFile*>(archive->root->findPath(renamed));
  EXPECT_TRUE(FVersionViewPath(evil->version(0), LStr(dir.path()).append('/').ptr).empty());
  EXPECT_STREQ(FVersionViewPath(fileAt("src", "ok.txt")->version(0), "W/").ptr, "W/ok-V1.txt");
}

TEST_F(AddTest, ExtractOfManyFoldersChecksEachFolderAndWritesEveryFile) {
  // More files than one batch of the writer takes, in folders of several
  // levels, one of which gets a name no system takes.
  const char* folders[] = {"a", "a/deep/er", "bad", "b", "lonely"};
  for (const char* folder : folders)
    for (int i = 0; i < 40; i++)
      put((std::string(folder) + "/f" + std::to_string(i) + ".txt").c_str(),
          std::string(folder) + " file " + std::to_string(i));
  add();
  static_cast<TRecF*>(
      archive->root->findPath(std::vector<const char*>{"src", "bad", nullptr}.data()))
      ->setName("ba/d");
  // A folder whose only files are refused is not made.
  TRecF* lonely = static_cast<TRecF*>(
      archive->root->findPath(std::vector<const char*>{"src", "lonely", nullptr}.data()));
  for (TRec* child : lonely->children) static_cast<TRecF*>(child)->setName("x/y");
  LStr out = dir.file("out");
  LArrOf<TRec*> records;
  records.add(archive->root->findChild("src"));
  TCond cond;
  cond.Parse();
  FCmdExtract(records, out.ptr, &cond, archive->root->findChild("src"));
  for (const char* folder : {"a", "a/deep/er", "b"})
    for (int i = 0; i < 40; i++)
      EXPECT_EQ(
          extracted(out.ptr, (std::string(folder) + "/f" + std::to_string(i) + ".txt").c_str()),
          std::string(folder) + " file " + std::to_string(i));
  // Each file below the refused folder, and each refused file, is counted.
  EXPECT_EQ(FWorkSet()->refused, 80);
  EXPECT_EQ(FExists(LStr(out).append("/ba").ptr), kExistsNone);
  EXPECT_EQ(FExists(LStr(out).append("/lonely").ptr), kExistsNone);
  SysFileInfo info;
  ASSERT_TRUE(SysStat(LStr(out).append("/a/deep/er/f7.txt").ptr, &info));
  EXPECT_EQ(FToUnixTime(info.modified), 1600000000);
}

TEST_F(AddTest, VersionsOfOneFileReachTheirPathInTheWalksOrderAcrossBatches) {
  // 63 files first, so that the versions of the last one straddle the end
  // of a batch of the writer.
  for (int i = 0; i < 63; i++) put(("f" + std::to_string(100 + i) + ".txt").c_str(), "x");
  for (int v = 1; v <= 3; v++) {
    put("z.txt", "version " + std::to_string(v), 1600000000 + v * 100);
    add();
  }
  ASSERT_EQ(fileAt("src", "z.txt")->childCount(), 3);
  LStr out = dir.file("out");
  LArrOf<TRec*> records;
  records.add(archive->root->findChild("src"));
  TCond cond;
  cond.maxVersions = 0;
  cond.fromOldest = 1;
  cond.Parse();
  FCmdExtract(records, out.ptr, &cond, archive->root->findChild("src"));
  EXPECT_EQ(FWorkSet()->refused, 0);
  EXPECT_EQ(extracted(out.ptr, "z.txt"), "version 3");
  EXPECT_EQ(extracted(out.ptr, "f162.txt"), "x");
  cond.fromOldest = 0;
  cond.Parse();
  FCmdExtract(records, out.ptr, &cond, archive->root->findChild("src"));
  EXPECT_EQ(extracted(out.ptr, "z.txt"), "version 1");
}

#ifndef _WIN32
TEST_F(AddTest, SourceOfTwoGigabytesIsRefused) {
  put("small.txt", "small");
  LStr big = srcFile("big.bin");
  TestWriteFile(big.ptr, "");
  ASSERT_EQ(truncate(big.ptr, 2147483648LL), 0);  // sparse: no disk space needed
  EXPECT_THROW(add(), int);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("big.bin のサイズが大きすぎます"),
            std::string::npos);
  // With a size condition it is a warning, and the rest goes on.
  FNewWorkSet();
  archive->reloadArchive();
  TCond cond;
  cond.sizeText = "0-1000";
  cond.Parse();
  add({}, &cond);
  EXPECT_TRUE(recorder->has(20000));
  EXPECT_NE(fileAt("src", "small.txt"), nullptr);
  EXPECT_EQ(fileAt("src", "big.bin"), nullptr);
}

TEST_F(AddTest, LinksAndSpecialFiles) {
  put("real.txt", "real");
  SysMakeFolder(srcFile("folder").ptr);
  put("folder/inner.txt", "inner");
  ASSERT_EQ(symlink("real.txt", srcFile("link.txt").ptr), 0);
  ASSERT_EQ(symlink("folder", srcFile("folderlink").ptr), 0);
  int sock = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un addr{};
  addr.sun_family = AF_UNIX;
  LStr socketPath = srcFile("sock");
  std::snprintf(addr.sun_path, sizeof addr.sun_path, "%s", socketPath.ptr);
  ASSERT_EQ(bind(sock, reinterpret_cast<sockaddr*>(&addr), sizeof addr), 0);
  add();
  close(sock);
  EXPECT_NE(fileAt("src", "link.txt"), nullptr);  // read as the file it points to
  const char* folderLink[] = {"src", "folderlink", nullptr};
  EXPECT_EQ(archive->root->findPath(folderLink), nullptr);
  EXPECT_EQ(fileAt("src", "sock"), nullptr);
  int warnings = 0;
  for (auto* entry : recorder->entries)
    if (entry->number == 20000) warnings++;
  EXPECT_EQ(warnings, 2);
}
#endif

namespace {

// Keeps every percentage the command sends.
class PercentLog : public TProgressSink {
 public:
  void showPercent(int32_t percent) override { sent.push_back(percent); }
  void showItem(const char*) override {}
  std::vector<int32_t> sent;
};

// One bar for the whole command: it never goes back when the next file
// begins, and it ends full.
void expectOneBar(const std::vector<int32_t>& sent) {
  ASSERT_FALSE(sent.empty());
  for (size_t i = 1; i < sent.size(); i++) EXPECT_GE(sent[i], sent[i - 1]) << "at " << i;
  EXPECT_EQ(sent.back(), 100);
}

}  // namespace

TEST_F(AddTest, AddAndExtractEachShowOneBarForTheWholeCommand) {
  for (int i = 0; i < 6; i++)
    put(("f" + std::to_string(i) + ".bin").c_str(), std::string(20000 * (6 - i), 'a' + i));
  PercentLog adding;
  FSetProgressSink(&adding);
  add();
  FSetProgressSink(nullptr);
  expectOneBar(adding.sent);

  PercentLog extracting;
  LArrOf<TRec*> records;
  records.add(archive->root);
  TCond all;
  all.Parse();
  FSetProgressSink(&extracting);
  FCmdExtract(records, dir.file("out").ptr, &all, nullptr);
  FSetProgressSink(nullptr);
  expectOneBar(extracting.sent);
  EXPECT_GE(extracting.sent.size(), 6u);
  EXPECT_EQ(extracted(dir.file("out/src").ptr, "f0.bin"), std::string(120000, 'a'));
}
