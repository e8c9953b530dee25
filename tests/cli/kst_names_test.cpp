// Names between the archive and the disk, through the kst program: every
// name a file system holds comes back as itself, and no name an archive
// holds writes anything but its own file inside the destination.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "archive/archive.h"
#include "archive/folder_host.h"
#include "file_tree.h"
#include "kst_process.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/sys.h"
#include "store/work_set.h"
#include "support/file_bytes.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

#ifndef _WIN32
#include <unistd.h>
#endif

namespace {

// A record's names from the root, and the name it is to have.
struct Rename {
  std::vector<const char*> path;
  const char* name;
};

class KstNamesTest : public testing::Test {
 protected:
  KstNamesTest()
      : archive(dir.file("a.kst")),
        src(dir.file("src")),
        box(dir.file("box")),
        dest(dir.file("box/dest")),
        settings(dir.file("none.ini")) {}

  KstResult kst(std::vector<std::string> words) {
    words.insert(words.begin() + 1, {"--settings", settings.ptr});
    return RunKst(words, dir.path());
  }
  // A source file below src, named in core text, with a time of its own.
  void put(const char* relative, const std::string& bytes, int64_t time = 1600000000) {
    LStr path(src);
    path.append('/').append(relative);
    TestWriteFile(path.ptr, bytes);
    SysSetFileTimes(path.ptr, 0, FUnixToFileTime(time), FUnixToFileTime(time));
  }
  KstResult addSource() { return kst({"add", archive.ptr, src.ptr}); }
  KstResult extract() {
    FMakeDirs(LStr(dest).append("/x").ptr);
    return kst({"extract", archive.ptr, "-d", dest.ptr});
  }
  // What the extract left in the destination, below the source's folder.
  TestTree extracted() const { return TestTreeOf(LStr(dest).append("/src").ptr); }
  // The box holds the destination and nothing else.
  void expectNothingBesideTheDestination() const {
    SysFolderScan scan(box.ptr);
    LStr name;
    SysFileInfo info;
    std::vector<std::string> names;
    while (scan.next(name, info)) names.push_back(name.ptr);
    EXPECT_EQ(names, std::vector<std::string>{"dest"});
  }

  // Gives records of the archive names that kst itself does not write, as
  // an archive from elsewhere may hold them.
  void rename(const std::vector<Rename>& renames) {
    FNewWorkSet();
    TFolderHost host(dir.path());
    TArchive* opened = new TArchive(&host);
    FSetArchive(opened);
    opened->setPath(archive.ptr);
    FLoadArchive(*opened);
    std::vector<TRecF*> records;
    for (const Rename& rename : renames) {
      std::vector<const char*> names(rename.path);
      names.push_back(nullptr);
      TRec* rec = opened->root->findPath(names.data());
      ASSERT_NE(rec, nullptr) << rename.path.back();
      records.push_back(static_cast<TRecF*>(rec));
    }
    for (size_t i = 0; i < renames.size(); i++) records[i]->setName(renames[i].name);
    opened->treeDirty = 1;
    FCommitTree(*opened);
    delete opened;
    FSetArchive(nullptr);
    FDeleteWorkSet();
  }

  TestTempDir dir;
  RecorderScope recorder;
  LStr archive;
  LStr src;
  LStr box;
  LStr dest;
  LStr settings;
};

TEST_F(KstNamesTest, EveryNameOfTheDiskComesBackAsItself) {
  // A literal escape beside the name it would stand for, with the same
  // size; a folder that would read as ".."; a backslash and a colon, which
  // Linux names may hold, and a byte that is no UTF-8.
  TestTree tree = {
      {"A.txt", "aaa"},
      {"{%u007B}%u0041}.txt", "bbb"},
      {"{%u007B}%u002E}{%u007B}%u002E}/g.txt", "inside"},
  };
#ifndef _WIN32
  tree["caf{%u00E9}.txt"] = "accent";
  tree["back{%u005C}slash.txt"] = "backslash";
  tree["a:b.txt"] = "colon";
  tree["x:/in.txt"] = "in a folder whose name ends in a colon";
  tree["bad{%uDCFF}.txt"] = "not utf-8";
#endif
  for (const auto& file : tree) put(file.first.c_str(), file.second);
  ASSERT_EQ(TestTreeOf(src.ptr), tree);
  KstResult add = addSource();
  EXPECT_EQ(add.status, 0) << add.err;
  EXPECT_EQ(add.out, std::to_string(tree.size()) + " 個のファイルを追加しました\n");
  KstResult out = extract();
  EXPECT_EQ(out.status, 0) << out.err;
  EXPECT_EQ(out.out, std::to_string(tree.size()) + " 個のファイルを展開しました\n");
  EXPECT_EQ(extracted(), tree);

  // The name typed on the command line is the name itself, escapes and all.
  LStr one = dir.file("one.txt");
  TestWriteFile(one.ptr, "typed");
  ASSERT_EQ(kst({"add", archive.ptr, one.ptr, "--to", "/{%u007B}%u002E}{%u007B}%u002E}"}).status,
            0);
  TestRemoveTree(box.ptr);
  ASSERT_EQ(extract().status, 0);
  EXPECT_EQ(TestReadFile(LStr(dest).append("/{%u007B}%u002E}{%u007B}%u002E}/one.txt").ptr),
            "typed");
  expectNothingBesideTheDestination();
}

TEST_F(KstNamesTest, NamesThatLeaveTheDestinationAreRefused) {
  put("ok.txt", "fine");
  put("dots/f.txt", "dots");
  put("short.txt", "short");
  put("zero.txt", "zero");
  put("abs.txt", "absolute");
  put("lead/x.txt", "lead byte");
  put("raw.txt", "raw");
  ASSERT_EQ(addSource().status, 0);
  LStr outside = dir.file("outside.txt");
  std::string climb;
  for (int i = 0; i < 30; i++) climb += "{%u002E}{%u002E}{%u002F}";
  // The absolute path of a file beside the box, its separators escaped.
  std::string absolute = climb;
  for (const char* p = outside.ptr; *p != 0; p++) {
    if (*p == '/' || *p == '\\')
      absolute += "{%u002F}";
    else
      absolute += *p;
  }
  rename({
      {{"src", "dots"}, "{%u002E}{%u002E}"},
      {{"src", "short.txt"}, "{%u2e}{%u2e}"},
      {{"src", "zero.txt"}, "x{%u0000}.txt"},
      {{"src", "abs.txt"}, absolute.c_str()},
      {{"src", "lead"}, "..\x81"},
      {{"src", "raw.txt"}, "../../raw.txt"},
  });
  KstResult out = extract();
  EXPECT_EQ(out.status, 1);
  EXPECT_EQ(out.out, "1 個のファイルを展開しました (展開しなかったファイル: 6)\n");
  EXPECT_NE(out.err.find("名前の表記が正しくないため展開しません"), std::string::npos) << out.err;
  EXPECT_NE(out.err.find("名前に使えない文字を含むため展開しません"), std::string::npos);
  EXPECT_EQ(extracted(), (TestTree{{"ok.txt", "fine"}}));
  expectNothingBesideTheDestination();
  EXPECT_EQ(FExists(outside.ptr), kExistsNone);
  EXPECT_EQ(FExists(dir.file("f.txt").ptr), kExistsNone);
  EXPECT_EQ(FExists(dir.file("raw.txt").ptr), kExistsNone);
}

#ifndef _WIN32
TEST_F(KstNamesTest, CasePairsAreNeverMerged) {
  // Same size and time: the second must not pass as unchanged either.
  put("xt_connmark.h", "lower");
  put("xt_CONNMARK.h", "UPPER");
  put("other.h", "other");
  for (int round = 0; round < 2; round++) {
    KstResult add = addSource();
    EXPECT_EQ(add.status, 1);
    std::vector<std::string> lines = LinesOf(add.out);
    ASSERT_EQ(lines.size(), 2u) << add.out;
    // The second time both kept files are unchanged.
    EXPECT_EQ(lines[0].substr(0, 4), round == 0 ? "2 個" : "0/2 ") << lines[0];
    EXPECT_EQ(lines[1], "追加しなかった項目: 1");
    LStr lower = LStr(src).append("/xt_connmark.h");
    LStr upper = LStr(src).append("/xt_CONNMARK.h");
    EXPECT_NE(add.err.find(std::string("「") + lower.ptr + "」は「" + upper.ptr +
                           "」と大文字と小文字だけが違う名前なので追加しません"),
              std::string::npos)
        << add.err;
  }
  EXPECT_EQ(LinesOf(kst({"log", archive.ptr, "/src/xt_CONNMARK.h"}).out).size(), 2u);
  ASSERT_EQ(extract().status, 0);
  EXPECT_EQ(extracted(), (TestTree{{"other.h", "other"}, {"xt_CONNMARK.h", "UPPER"}}));
}

TEST_F(KstNamesTest, LinksThatLeadNowhereAreLeftOut) {
  put("real.txt", "real");
  LStr dangling = LStr(src).append("/dangling.txt");
  ASSERT_EQ(symlink("gone.txt", dangling.ptr), 0);
  KstResult add = addSource();
  EXPECT_EQ(add.status, 1);
  EXPECT_EQ(add.out, "1 個のファイルを追加しました\n追加しなかった項目: 1\n");
  EXPECT_NE(add.err.find(std::string("「") + dangling.ptr + "」はリンク先のないリンクなので"),
            std::string::npos)
      << add.err;
  ASSERT_EQ(extract().status, 0);
  EXPECT_EQ(extracted(), (TestTree{{"real.txt", "real"}}));
}
#endif

// Names that Windows would send to a device, shorten or fold onto another
// file are refused there; on Linux each is a file of its own.
TEST_F(KstNamesTest, DevicesAndLookAlikesOnWindows) {
  const char* devices[] = {"COM1", "COM1.txt", "AUX", "PRN", "LPT1", "lpt1.log", "NUL", "NUL.txt"};
  std::vector<std::string> sources;
  std::vector<Rename> renames;
  TestTree expected;
  for (int i = 0; i < 8; i++) {
    sources.push_back("d" + std::to_string(i) + ".txt");
    put(sources.back().c_str(), "device " + std::to_string(i));
    expected[devices[i]] = "device " + std::to_string(i);
  }
  put("sub/s.c", "sub");
  expected["sub/aux.c"] = "sub";
  // Pairs that one Windows file would hold: the second of each is renamed.
  const char* pairs[][2] = {
      {"x.txt", "x.txt."}, {"y.txt", "y.txt "}, {"Same.txt", "same.txt"}, {"F", "F."}};
  for (int i = 0; i < 3; i++) {
    put(pairs[i][0], std::string("first ") + pairs[i][0]);
    put((std::string("p") + std::to_string(i)).c_str(), std::string("second ") + pairs[i][0]);
    expected[pairs[i][0]] = std::string("first ") + pairs[i][0];
    expected[pairs[i][1]] = std::string("second ") + pairs[i][0];
  }
  put("F/a.txt", "first F");
  put("G/a.txt", "second F");
  expected["F/a.txt"] = "first F";
  expected["F./a.txt"] = "second F";
  put("ok.txt", "ok");
  expected["ok.txt"] = "ok";
  ASSERT_EQ(addSource().status, 0);
  for (int i = 0; i < 8; i++) renames.push_back({{"src", sources[i].c_str()}, devices[i]});
  renames.push_back({{"src", "sub", "s.c"}, "aux.c"});
  renames.push_back({{"src", "p0"}, pairs[0][1]});
  renames.push_back({{"src", "p1"}, pairs[1][1]});
  renames.push_back({{"src", "p2"}, pairs[2][1]});
  renames.push_back({{"src", "G"}, pairs[3][1]});
  rename(renames);
  KstResult out = extract();
  expectNothingBesideTheDestination();
#ifdef _WIN32
  EXPECT_EQ(out.status, 1);
  EXPECT_EQ(out.out, "5 個のファイルを展開しました (展開しなかったファイル: 13)\n");
  EXPECT_NE(out.err.find("「/src/COM1.txt」はデバイスの名前なので展開しません"), std::string::npos)
      << out.err;
  EXPECT_NE(out.err.find("「/src/sub/aux.c」はデバイスの名前なので"), std::string::npos);
  EXPECT_NE(out.err.find("「/src/x.txt.」は名前が点か空白で終わるため"), std::string::npos);
  // The add took "p2" before "Same.txt", so the renamed record comes first.
  EXPECT_NE(out.err.find("「/src/Same.txt」は「/src/same.txt」と同じ場所に展開されるため"),
            std::string::npos);
  EXPECT_EQ(extracted(), (TestTree{{"F/a.txt", "first F"},
                                   {"same.txt", "second Same.txt"},
                                   {"ok.txt", "ok"},
                                   {"x.txt", "first x.txt"},
                                   {"y.txt", "first y.txt"}}));
#else
  EXPECT_EQ(out.status, 0) << out.err;
  EXPECT_EQ(out.out, "18 個のファイルを展開しました\n");
  EXPECT_EQ(extracted(), expected);
#endif
}

}  // namespace
