#include "store/archive_check.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "added_archive.h"
#include "archive/format.h"
#include "lib/fixed_coding.h"

namespace {

class CheckTest : public AddedArchiveTest {
 protected:
  // Three versions of a text, so that the older ones are stored as
  // differences and their first blocks are freed: the archive has holes.
  void fill() {
    std::string text;
    for (int i = 0; i < 400; i++) text += "line " + std::to_string(i) + " of the text\n";
    put("t.txt", text, 1600000000);
    // Noise, so that the stored form is as long as the file.
    std::string noise(3000, '\0');
    uint32_t state = 7;
    for (char& c : noise) c = static_cast<char>((state = state * 1103515245u + 12345u) >> 24);
    put("other.bin", noise, 1600000000);
    add();
    for (int round = 1; round <= 2; round++) {
      text.replace(100 * round, 4, "EDIT");
      text += "appended " + std::to_string(round) + "\n";
      put("t.txt", text, 1600000000 + round * 100);
      add();
    }
  }
  TCheckTotals check() {
    faults.clear();
    return FCheckArchive(
        *archive,
        [](const char* text, void* context) {
          static_cast<std::vector<std::string>*>(context)->push_back(text);
        },
        &faults);
  }
  // Changes bytes of the archive file and reads it again; records taken
  // before are gone then.
  void patch(std::initializer_list<std::pair<int32_t, std::string>> edits) {
    std::string all = TestReadFile(archive->path.ptr);
    for (const auto& edit : edits) all.replace(edit.first, edit.second.size(), edit.second);
    archive->close();
    TestWriteFile(archive->path.ptr, all);
    archive->reloadArchive();
  }
  static std::string i32(int32_t value) {
    char bytes[4];
    FPutI32(bytes, value);
    return std::string(bytes, 4);
  }
  int32_t readI32(int32_t pos) { return FGetI32(TestReadFile(archive->path.ptr).data() + pos); }
  TVer* version(const char* name, int32_t index) {
    const char* names[] = {"src", name, nullptr};
    return static_cast<TFile*>(archive->root->findPath(names))->version(index);
  }

  std::vector<std::string> faults;
};

TEST_F(CheckTest, AHealthyArchivePasses) {
  fill();
  TCheckTotals totals = check();
  EXPECT_EQ(totals.faults, 0) << (faults.empty() ? "" : faults[0]);
  EXPECT_EQ(totals.files, 2);
  EXPECT_EQ(totals.versions, 4);
  EXPECT_TRUE(faults.empty());
}

TEST_F(CheckTest, AFreeExtentOverAStoredBlockIsFound) {
  fill();
  // The first 64 bytes of the newest block become a free extent as well,
  // at the head of the chain.
  int32_t blockPos = version("t.txt", 2)->dataPos;
  int32_t freeHead = readI32(kOffsetFreeHead);
  ASSERT_LT(freeHead, blockPos);  // the chain runs downwards
  patch({{kOffsetFreeHead, i32(blockPos)}, {blockPos, i32(kAlignment) + i32(freeHead)}});
  ASSERT_FALSE(archive->isUntitled());
  TCheckTotals totals = check();
  EXPECT_GT(totals.faults, 0);
  bool overlap = false;
  for (const std::string& fault : faults)
    overlap = overlap || fault.find("が重なっています") != std::string::npos;
  EXPECT_TRUE(overlap) << faults[0];
}

TEST_F(CheckTest, DamagedContentIsFoundAndTheCheckGoesOn) {
  fill();
  // A byte in the middle of the stored form.
  int32_t pos = version("other.bin", 0)->dataPos + 1000;
  std::string all = TestReadFile(archive->path.ptr);
  patch({{pos, std::string(1, static_cast<char>(all[pos] ^ 0x5A))}});
  TCheckTotals totals = check();
  EXPECT_GT(totals.faults, 0);
  EXPECT_EQ(totals.versions, 4);  // every version was still looked at
  ASSERT_FALSE(faults.empty());
  EXPECT_NE(faults[0].find("/src/other.bin V1"), std::string::npos) << faults[0];
}

TEST_F(CheckTest, AChecksumThatDoesNotMatchIsFound) {
  fill();
  TVer* other = version("other.bin", 0);
  other->checksum ^= 1;
  TCheckTotals totals = check();
  EXPECT_EQ(totals.faults, 1);
  ASSERT_EQ(faults.size(), 1u);
  EXPECT_NE(faults[0].find("チェックサムが一致しません"), std::string::npos);
}

}  // namespace
