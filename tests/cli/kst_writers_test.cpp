// Two kst processes that change one archive at the same moment: each one
// that reports success has its work in the archive afterwards, and the
// archive stays sound.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kst_process.h"
#include "lib/file_util.h"
#include "support/file_bytes.h"
#include "support/temp_dir.h"

namespace {

const int kRounds = 6;

class KstWritersTest : public testing::Test {
 protected:
  KstWritersTest() : archive(dir.file("w.kst")), settings(dir.file("none.ini")) {}

  std::vector<std::string> kstWords(std::vector<std::string> words) {
    words.insert(words.begin() + 1, {"--settings", settings.ptr});
    return words;
  }
  KstResult kst(const std::vector<std::string>& words) {
    return RunKst(kstWords(words), dir.path());
  }

  // A source folder of `files` files of `size` bytes each.
  LStr makeFolder(const std::string& name, int files, size_t size) {
    LStr folder = dir.file(name.c_str());
    for (int i = 0; i < files; i++) {
      LStr path(folder);
      path.append('/');
      path.append(std::to_string(i).c_str());
      path.append(".txt");
      FMakeDirs(path.ptr);
      std::string bytes(size, static_cast<char>('a' + i % 26));
      bytes += name;
      TestWriteFile(path.ptr, bytes);
    }
    return folder;
  }

  // The names in the root of the archive.
  std::vector<std::string> rootNames() {
    KstResult ls = kst({"ls", archive.ptr});
    EXPECT_EQ(ls.status, 0) << ls.err;
    std::vector<std::string> names;
    std::vector<std::string> lines = LinesOf(ls.out);
    for (size_t i = 1; i < lines.size(); i++)
      names.push_back(lines[i].substr(0, lines[i].find(' ')));
    return names;
  }

  static bool has(const std::vector<std::string>& names, const std::string& name) {
    for (const std::string& n : names)
      if (n == name) return true;
    return false;
  }

  TestTempDir dir;
  LStr archive;
  LStr settings;
};

TEST_F(KstWritersTest, NoWriterCommitsOverAnother) {
  std::vector<std::string> done;
  for (int round = 0; round < kRounds; round++) {
    // A large add beside a small one or a new folder; the first round also
    // races to create the archive.
    std::string big = "big" + std::to_string(round);
    std::string small = "small" + std::to_string(round);
    LStr bigFolder = makeFolder(big, 20, 200000);
    std::vector<std::string> second =
        round % 2 == 0 ? kstWords({"add", archive.ptr, makeFolder(small, 2, 100).ptr})
                       : kstWords({"mkdir", archive.ptr, "/" + small});
    std::vector<KstResult> results =
        RunKstTogether({kstWords({"add", archive.ptr, bigFolder.ptr}), second}, dir.path());
    const std::string names[2] = {big, small};
    for (int i = 0; i < 2; i++) {
      // A writer that found the archive busy waits, and says so.
      if (!results[i].err.empty()) {
        EXPECT_NE(results[i].err.find("終わるのを待っています"), std::string::npos)
            << results[i].err;
      }
      // Waiting, both get through.
      EXPECT_EQ(results[i].status, 0) << names[i] << ": " << results[i].err;
      if (results[i].status == 0) done.push_back(names[i]);
    }
    std::vector<std::string> present = rootNames();
    for (const std::string& name : done) EXPECT_TRUE(has(present, name)) << "lost: " << name;
  }
  KstResult check = kst({"check", archive.ptr});
  EXPECT_EQ(check.status, 0) << check.out << check.err;
  KstResult info = kst({"info", archive.ptr});
  EXPECT_NE(info.out.find("ファイル数: " + std::to_string(20 * kRounds + 2 * ((kRounds + 1) / 2))),
            std::string::npos)
      << info.out;
}

}  // namespace
