// The kst program driven as a user drives it, on a real folder tree with
// Japanese names, a name with a character outside the code page, an empty
// file and binary content.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "file_tree.h"
#include "kst_process.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/io_file.h"
#include "lib/sys.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace {

// Names as the tree holds them: "表" has the trail byte of a backslash, and
// "é" lives in core text as its escape.
const char kReadme[] = "readme.txt";
const char kReport[] = "文書/報告書.txt";
const char kTable[] = "文書/データ/表.csv";
#ifdef _WIN32
// The A-functions name no character outside the code page; a name that holds
// an escape as text stands in for it.
const char kAccent[] = "caf{%u007B}%u00E9}.txt";
#else
const char kAccent[] = "caf{%u00E9}.txt";
#endif
const char kBlob[] = "bin/blob.bin";
const char kEmpty[] = "空.txt";

std::string binary(int seed, size_t size) {
  std::string bytes(size, '\0');
  uint32_t state = static_cast<uint32_t>(seed) * 2654435761u + 1;
  for (size_t i = 0; i < size; i++) {
    state = state * 1103515245u + 12345u;
    // Runs of zeros between the noise, as in real binaries.
    bytes[i] = (i / 512) % 3 == 0 ? '\0' : static_cast<char>(state >> 24);
  }
  return bytes;
}

class KstTest : public testing::Test {
 protected:
  KstTest() : archive(dir.file("a.kst")), src(dir.file("src")), settings(dir.file("none.ini")) {}

  // Runs kst with a settings file of its own, so that the user's does not
  // count.
  KstResult kst(std::vector<std::string> words) { return run(words, false); }
  // For kst cat: the bytes alone.
  KstResult kstBytes(std::vector<std::string> words) { return run(words, true); }
  KstResult run(std::vector<std::string> words, bool binaryOutput) {
    words.insert(words.begin() + 1, {"--settings", settings.ptr});
    return RunKst(words, dir.path(), binaryOutput);
  }
  KstResult kstBare(const std::vector<std::string>& words) { return RunKst(words, dir.path()); }

  LStr srcPath(const char* relative) const {
    LStr path(src);
    path.append('/');
    path.append(relative);
    return path;
  }
  // Writes a source file with its own modification time, so that the add
  // never skips a change for an equal date and size.
  void put(const char* relative, const std::string& bytes) {
    LStr path = srcPath(relative);
    FMakeDirs(path.ptr);
    {
      LIoFile file(path.ptr, 'w', true);
      file.write(bytes.data(), static_cast<int32_t>(bytes.size()));
    }
    SysTime time = FUnixToFileTime(1600000000 + 100 * ++writes);
    SysSetFileTimes(path.ptr, 0, time, time);
    history[relative].push_back(bytes);
  }
  void makeTree() {
    put(kReadme, "first readme\n");
    put(kReport, "報告書の本文です。\n");
    put(kTable, "列1,列2\n1,2\n");
    put(kAccent, "caf\xE9 au lait\n");
    put(kBlob, binary(1, 100000));
    put(kEmpty, "");
  }
  // The first add, then a change of two files and a second add with a
  // comment, then the readme once more: readme has three versions, the blob
  // two, every other file one.
  void addThreeTimes() {
    makeTree();
    ASSERT_EQ(kst({"add", archive.ptr, src.ptr}).status, 0);
    put(kReadme, "second readme, longer than the first\n");
    std::string blob = binary(1, 100000);
    blob.replace(50000, 5, "CHANGED");
    put(kBlob, blob);
    KstResult second = kst({"add", archive.ptr, src.ptr, "--comment", "二回目"});
    ASSERT_EQ(second.status, 0) << second.err;
    EXPECT_EQ(second.out, "2/6 個のファイルを追加しました (更新: 2, 不変のためスキップ: 4)\n");
    put(kReadme, "third readme\n");
    ASSERT_EQ(kst({"add", archive.ptr, src.ptr}).status, 0);
  }

  // The data rows of a table: the lines between the heading and a report.
  static std::vector<std::string> rowsOf(const std::string& out, bool report) {
    std::vector<std::string> lines = LinesOf(out);
    if (lines.empty()) return lines;
    lines.erase(lines.begin());
    if (report && !lines.empty()) lines.pop_back();
    return lines;
  }

  TestTempDir dir;
  RecorderScope recorder;
  LStr archive;
  LStr src;
  LStr settings;
  int writes = 0;
  std::map<std::string, std::vector<std::string>> history;
};

TEST_F(KstTest, EveryVersionComesBackByteForByte) {
  addThreeTimes();
  ASSERT_EQ(history[kReadme].size(), 3u);
  ASSERT_EQ(history[kBlob].size(), 2u);
  for (const auto& entry : history) {
    std::string item = "/src/" + entry.first;
    for (size_t v = 0; v < entry.second.size(); v++) {
      KstResult cat = kstBytes({"cat", archive.ptr, item, "-v", std::to_string(v + 1)});
      ASSERT_EQ(cat.status, 0) << item << " V" << v + 1 << ": " << cat.err;
      EXPECT_EQ(cat.rawOut, entry.second[v]) << item << " V" << v + 1;
    }
    // Without -v: the newest.
    EXPECT_EQ(kstBytes({"cat", archive.ptr, item}).rawOut, entry.second.back()) << item;
  }
  KstResult beyond = kst({"cat", archive.ptr, "/src/readme.txt", "-v", "4"});
  EXPECT_EQ(beyond.status, 1);
  EXPECT_NE(beyond.err.find("バージョン 4 はありません (1～3)"), std::string::npos) << beyond.err;
}

TEST_F(KstTest, ExtractGivesBackTheTree) {
  addThreeTimes();
  LStr out = dir.file("out");
  KstResult extract = kst({"extract", archive.ptr, "-d", out.ptr});
  ASSERT_EQ(extract.status, 0) << extract.err;
  EXPECT_EQ(extract.out, "6 個のファイルを展開しました\n");
  LStr extracted(out);
  extracted.append("/src");
  EXPECT_EQ(TestTreeOf(extracted.ptr), TestTreeOf(src.ptr));

  // One folder of the archive alone, below its path from the root.
  LStr part = dir.file("part");
  ASSERT_EQ(kst({"extract", archive.ptr, "/src/文書", "-d", part.ptr}).status, 0);
  TestTree partTree = TestTreeOf(part.ptr);
  ASSERT_EQ(partTree.size(), 2u);
  EXPECT_EQ(partTree[std::string("src/") + kTable], history[kTable].back());

  // Conditions choose the versions: the oldest readme.
  LStr old = dir.file("old");
  ASSERT_EQ(kst({"extract", archive.ptr, "/src/readme.txt", "-d", old.ptr, "--oldest"}).status, 0);
  EXPECT_EQ(TestTreeOf(old.ptr)["src/readme.txt"], history[kReadme].front());
}

TEST_F(KstTest, ListingsShowThePanesRows) {
  addThreeTimes();
  KstResult ls = kst({"ls", archive.ptr, "/src"});
  ASSERT_EQ(ls.status, 0) << ls.err;
  std::vector<std::string> lines = LinesOf(ls.out);
  ASSERT_EQ(lines.size(), 6u) << ls.out;
  EXPECT_EQ(lines[0].substr(0, 4), "名前");
  // Folders first, then files, each by name with case folded.
  const char* expected[] = {"bin", "文書", kAccent, "readme.txt", "空.txt"};
  for (int i = 0; i < 5; i++)
    EXPECT_EQ(lines[i + 1].substr(0, std::string(expected[i]).size()), expected[i]) << lines[i + 1];
  EXPECT_NE(lines[4].find("  3  "), std::string::npos) << "readme has 3 versions: " << lines[4];

  KstResult log = kst({"log", archive.ptr, "/src/readme.txt"});
  ASSERT_EQ(log.status, 0) << log.err;
  std::vector<std::string> rows = rowsOf(log.out, false);
  ASSERT_EQ(rows.size(), 3u);
  // Newest first; the second add's comment stands on version 2 alone.
  EXPECT_EQ(rows[0].substr(0, 1), "3");
  EXPECT_EQ(rows[2].substr(0, 1), "1");
  EXPECT_NE(rows[1].find("二回目"), std::string::npos) << rows[1];
  EXPECT_EQ(rows[0].find("二回目"), std::string::npos) << rows[0];

  KstResult deep = kst({"ls", archive.ptr, "/src/文書/データ", "--all"});
  ASSERT_EQ(deep.status, 0) << deep.err;
  EXPECT_NE(deep.out.find("表.csv"), std::string::npos) << deep.out;
  EXPECT_NE(deep.out.find("src/文書/データ/表.csv"), std::string::npos) << deep.out;

  KstResult missing = kst({"log", archive.ptr, "/src/nothing.txt"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("「/src/nothing.txt」が見つかりません"), std::string::npos);
  EXPECT_EQ(kst({"log", archive.ptr, "/src/文書"}).status, 1);
}

TEST_F(KstTest, FindAppliesTheConditions) {
  addThreeTimes();
  struct Case {
    std::vector<std::string> conditions;
    size_t hits;
  } cases[] = {
      {{}, 6},
      {{"--name", "*.txt"}, 4},
      {{"--name", "*.txt", "--versions", "0"}, 6},
      {{"--not-name", "*.txt"}, 2},
      {{"--name", "*.csv", "--name", "*.bin"}, 2},
      {{"--comment", "二回目", "--versions", "0"}, 2},
      {{"--size", "0"}, 1},
      {{"--ver", "1", "--versions", "0", "--path", "文書", "--path-mode", "partial"}, 2},
      {{"--store", "2"}, 2},
      {{"--store", "3", "--ver-from-newest", "--ver", "1"}, 1},
      {{"--attr", "r+"}, 0},
  };
  for (const Case& c : cases) {
    std::vector<std::string> words = {"find", archive.ptr};
    words.insert(words.end(), c.conditions.begin(), c.conditions.end());
    KstResult find = kst(words);
    ASSERT_EQ(find.status, 0) << find.err;
    EXPECT_EQ(rowsOf(find.out, true).size(), c.hits) << find.out;
    std::string report = c.hits == 0 ? "見つかりませんでした"
                                     : std::to_string(c.hits) + " 個のバージョンが見つかりました";
    EXPECT_EQ(LinesOf(find.out).back(), report);
  }
  KstResult below = kst({"find", archive.ptr, "/src/文書"});
  EXPECT_EQ(rowsOf(below.out, true).size(), 2u) << below.out;
}

TEST_F(KstTest, TreeEditsFollowTheNameRules) {
  addThreeTimes();
  EXPECT_EQ(kst({"mkdir", archive.ptr, "/src/新しいフォルダ"}).status, 0);
  EXPECT_NE(kst({"ls", archive.ptr, "/src"}).out.find("新しいフォルダ"), std::string::npos);

  KstResult colon = kst({"mkdir", archive.ptr, "/src/a:b"});
  EXPECT_EQ(colon.status, 1);
  EXPECT_NE(colon.err.find("文字 ':' は使用できません"), std::string::npos) << colon.err;
  KstResult twice = kst({"mkdir", archive.ptr, "/src/新しいフォルダ"});
  EXPECT_EQ(twice.status, 1);
  EXPECT_NE(twice.err.find("はすでに存在します"), std::string::npos) << twice.err;
  EXPECT_EQ(kst({"mkdir", archive.ptr, "/nowhere/new"}).status, 1);

  KstResult semicolon = kst({"mv", archive.ptr, "/src/readme.txt", "x;y"});
  EXPECT_EQ(semicolon.status, 1);
  EXPECT_NE(semicolon.err.find("文字 ';' は使用できません"), std::string::npos) << semicolon.err;
  EXPECT_EQ(kst({"mv", archive.ptr, "/src/readme.txt", "空.txt"}).status, 1);
  ASSERT_EQ(kst({"mv", archive.ptr, "/src/readme.txt", "README.md"}).status, 0);
  EXPECT_EQ(kst({"cat", archive.ptr, "/src/README.md", "-v", "2"}).rawOut, history[kReadme][1]);
  EXPECT_EQ(kst({"cat", archive.ptr, "/src/readme.txt"}).status, 1);
  EXPECT_EQ(kst({"mv", archive.ptr, "/", "root"}).status, 1);
  EXPECT_EQ(kst({"check", archive.ptr}).status, 0);
}

TEST_F(KstTest, AddIntoAFolderAndOntoAFile) {
  makeTree();
  KstResult into = kst({"add", archive.ptr, srcPath(kReport).ptr, "--to", "/docs/2024"});
  ASSERT_EQ(into.status, 0) << into.err;
  EXPECT_EQ(kst({"cat", archive.ptr, "/docs/2024/報告書.txt"}).rawOut, history[kReport].back());
  // A file as the target takes one more version from a source of any name.
  KstResult onto = kst({"add", archive.ptr, srcPath(kReadme).ptr, "--to", "/docs/2024/報告書.txt"});
  ASSERT_EQ(onto.status, 0) << onto.err;
  EXPECT_EQ(kst({"cat", archive.ptr, "/docs/2024/報告書.txt"}).rawOut, history[kReadme].back());
  KstResult two = kst({"add", archive.ptr, srcPath(kReadme).ptr, srcPath(kEmpty).ptr, "--to",
                       "/docs/2024/報告書.txt"});
  EXPECT_EQ(two.status, 1);
  EXPECT_NE(two.err.find("複数の項目をファイルに追加することはできません"), std::string::npos);
  // Only the files that pass the conditions.
  ASSERT_EQ(kst({"add", archive.ptr, src.ptr, "--name", "*.csv"}).status, 0);
  KstResult found = kst({"find", archive.ptr, "/src"});
  EXPECT_EQ(rowsOf(found.out, true).size(), 1u) << found.out;
  KstResult missing = kst({"add", archive.ptr, dir.file("nothing").ptr});
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find("が見つかりません"), std::string::npos) << missing.err;
}

TEST_F(KstTest, UsageErrorsExitWithTwo) {
  makeTree();
  ASSERT_EQ(kst({"add", archive.ptr, src.ptr}).status, 0);
  struct Case {
    std::vector<std::string> words;
    const char* message;
  } cases[] = {
      // One of each kind; the parser's tests hold the rest.
      {{"frobnicate", archive.ptr}, "コマンドが正しくありません : frobnicate"},
      {{"extract", archive.ptr, "-d"}, "オプション -d には値が必要です"},
      {{"ls", archive.ptr, "src"}, "アーカイブ内のパスは「/」で始めてください : src"},
      {{"find", archive.ptr, "--date", "zz"}, "日時文字列 'zz' の形式が正しくありません"},
      {{"add", archive.ptr, src.ptr, "--ver", "1"}, "オプションが正しくありません : --ver"},
  };
  for (const Case& c : cases) {
    KstResult result = kst(c.words);
    EXPECT_EQ(result.status, 2) << c.message;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "") << c.message;
  }
  KstResult nothing = kstBare({});
  EXPECT_EQ(nothing.status, 2);
  EXPECT_NE(nothing.err.find("使い方"), std::string::npos);
  for (const char* command :
       {"add", "ls", "log", "cat", "extract", "find", "mkdir", "mv", "info", "check"}) {
    KstResult help = kstBare({command, "--help"});
    EXPECT_EQ(help.status, 0) << command;
    EXPECT_EQ(help.out.find(std::string("使い方: kst ") + command), 0u) << help.out;
  }
  EXPECT_EQ(kstBare({"--help"}).status, 0);
}

TEST_F(KstTest, BrokenArchivesExitWithOne) {
  makeTree();
  ASSERT_EQ(kst({"add", archive.ptr, src.ptr}).status, 0);
  // The footer's last byte ends the root's children: without it the tree
  // has a tag it cannot read.
  std::string bytes;
  {
    LIoFile file(archive.ptr, 'r', true);
    LStr all;
    file.readAll(all);
    bytes.assign(all.ptr, all.length);
  }
  bytes.back() = '\0';
  LStr broken = dir.file("broken.kst");
  {
    LIoFile file(broken.ptr, 'w', true);
    file.write(bytes.data(), static_cast<int32_t>(bytes.size()));
  }
  for (const char* command : {"ls", "info", "check"}) {
    KstResult result = kst({command, broken.ptr});
    EXPECT_EQ(result.status, 1) << command;
    EXPECT_NE(result.err.find("アーカイブ ファイルの形式が正しくありません (識別番号=242)"),
              std::string::npos)
        << result.err;
  }
  KstResult notArchive = kst({"ls", srcPath(kReadme).ptr});
  EXPECT_EQ(notArchive.status, 1);
  EXPECT_NE(notArchive.err.find("は Kestrom のアーカイブ ファイルではありません"),
            std::string::npos);
  // Only add makes an archive that is not there.
  LStr absent = dir.file("absent.kst");
  EXPECT_EQ(kst({"ls", absent.ptr}).status, 1);
  EXPECT_EQ(FExists(absent.ptr), kExistsNone);
}

TEST_F(KstTest, SettingsAreReadAndNeverWritten) {
  // With skipEquF off, a file that only got a new date becomes a version;
  // a damaged key is reported and costs nothing else.
  const std::string text = "; settings\r\nbogus=1\r\nskipEquF=0\r\n";
  {
    LIoFile file(settings.ptr, 'w', true);
    file.write(text.data(), static_cast<int32_t>(text.size()));
  }
  makeTree();
  KstResult first = kst({"add", archive.ptr, src.ptr});
  ASSERT_EQ(first.status, 0) << first.err;
  EXPECT_NE(first.err.find("unknown name 'bogus'"), std::string::npos) << first.err;
  put(kReadme, history[kReadme].back());
  KstResult second = kst({"add", archive.ptr, src.ptr});
  EXPECT_EQ(second.out, "1/6 個のファイルを追加しました (更新: 1, 不変のためスキップ: 5)\n");
  LIoFile file(settings.ptr, 'r', true);
  LStr after;
  file.readAll(after);
  EXPECT_EQ(std::string(after.ptr, after.length), text);
}

TEST_F(KstTest, InfoAndCheckReportTheWholeArchive) {
  addThreeTimes();
  KstResult info = kst({"info", archive.ptr});
  ASSERT_EQ(info.status, 0) << info.err;
  for (const char* line :
       {"フォルダ数: 4", "ファイル数: 6", "バージョン数: 9", "最大バージョン数: 3",
        "格納番号: 1 - 3", "コメントの種類: 1", "ユーザー名の種類: 1", "サイズ: 0 - 100,002"})
    EXPECT_NE(info.out.find(line), std::string::npos) << line << "\n" << info.out;
  KstResult check = kst({"check", archive.ptr});
  EXPECT_EQ(check.status, 0) << check.out << check.err;
  EXPECT_NE(check.out.find("6 個のファイル、9 個のバージョン"), std::string::npos) << check.out;
}

}  // namespace
