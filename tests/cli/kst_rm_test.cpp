// kst rm as a user drives it: one version, the versions conditions select,
// whole items; after each, the archive checks clean and what is left reads
// back byte for byte.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kst_process.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/io_file.h"
#include "lib/sys.h"
#include "support/file_bytes.h"
#include "support/temp_dir.h"

namespace {

class KstRmTest : public testing::Test {
 protected:
  KstRmTest() : archive(dir.file("r.kst")), src(dir.file("src")), settings(dir.file("none.ini")) {
    for (int v = 0; v < 4; v++) {
      std::string text;
      for (int l = 0; l < 200; l++)
        text += "line " + std::to_string(l) + (l == 50 * v ? " changed\n" : "\n");
      versions.push_back(text);
      put("d/f.txt", text, v);
      put("d/other.txt", "other " + std::to_string(v / 2) + " stays the same for a while\n", v / 2);
      EXPECT_EQ(kst({"add", archive.ptr, src.ptr}).status, 0);
    }
  }

  void put(const char* relative, const std::string& bytes, int v) {
    LStr path(src);
    path.append('/').append(relative);
    FMakeDirs(path.ptr);
    {
      LIoFile file(path.ptr, 'w', true);
      file.write(bytes.data(), static_cast<int32_t>(bytes.size()));
    }
    SysTime t = FUnixToFileTime(1600000000 + 86400 * v);
    SysSetFileTimes(path.ptr, 0, t, t);
  }
  KstResult kst(std::vector<std::string> words) {
    words.insert(words.begin() + 1, {"--settings", settings.ptr});
    return RunKst(words, dir.path(), words[0] == "cat");
  }
  // The contents of the file's versions, oldest first, and a clean check.
  std::vector<std::string> left() {
    EXPECT_EQ(kst({"check", archive.ptr}).status, 0);
    std::vector<std::string> out;
    for (int v = 1;; v++) {
      KstResult cat = kst({"cat", archive.ptr, "/src/d/f.txt", "-v", std::to_string(v)});
      if (cat.status != 0) break;
      out.push_back(cat.rawOut);
    }
    return out;
  }

  TestTempDir dir;
  LStr archive, src, settings;
  std::vector<std::string> versions;
};

}  // namespace

TEST_F(KstRmTest, OneVersionThenTheSelectedOnesThenTheItem) {
  KstResult one = kst({"rm", archive.ptr, "/src/d/f.txt", "-v", "2"});
  EXPECT_EQ(one.status, 0) << one.err;
  EXPECT_NE(one.out.find("1 個のバージョンを削除しました"), std::string::npos);
  EXPECT_EQ(left(), (std::vector<std::string>{versions[0], versions[2], versions[3]}));

  // The versions of a date range: the middle day goes, the rest stays.
  KstResult dated = kst({"rm", archive.ptr, "/src/d/f.txt", "--versions", "0", "--date",
                         "2020/09/15.00:00:00-2020/09/15.23:59:59"});
  EXPECT_EQ(dated.status, 0) << dated.err;
  EXPECT_EQ(left(), (std::vector<std::string>{versions[0], versions[3]}));

  EXPECT_EQ(kst({"rm", archive.ptr, "/src/d"}).status, 0);
  KstResult listing = kst({"ls", archive.ptr, "/src"});
  ASSERT_EQ(listing.status, 0);
  for (const std::string& line : LinesOf(listing.out))
    EXPECT_NE(line.substr(0, line.find(' ')), "d");
  EXPECT_EQ(kst({"check", archive.ptr}).status, 0);
}

TEST_F(KstRmTest, BadRequestsChangeNothing) {
  std::string before = TestReadFile(archive.ptr);
  EXPECT_EQ(kst({"rm", archive.ptr, "/src/missing"}).status, 1);
  EXPECT_EQ(kst({"rm", archive.ptr, "/src/d", "-v", "1"}).status, 2);
  EXPECT_EQ(kst({"rm", archive.ptr, "/src/d/f.txt", "-v", "9"}).status, 1);
  EXPECT_EQ(kst({"rm", archive.ptr, "/"}).status, 1);
  EXPECT_TRUE(TestReadFile(archive.ptr) == before);
}
