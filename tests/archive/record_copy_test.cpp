// The copy of the update file's records into an archive must leave the
// bytes, and the cursor that the apply cuts the archive at, as copying
// record by record does: runs that follow one another, a jump back, a
// record longer than the copy's block, an empty record, and an update file
// cut short inside a record or inside a position.
#include "archive/record_copy.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "lib/io_file.h"
#include "support/file_bytes.h"
#include "support/temp_dir.h"

namespace {

struct Record {
  int32_t pos;
  std::string bytes;
};

std::string Field(int32_t value) {
  std::string out(4, '\0');
  for (int i = 0; i < 4; i++) out[i] = static_cast<char>(static_cast<uint32_t>(value) >> (8 * i));
  return out;
}

std::string UpdateFile(const std::vector<Record>& records, int32_t end) {
  std::string out;
  for (const Record& r : records)
    out += Field(r.pos) + Field(static_cast<int32_t>(r.bytes.size())) + r.bytes;
  return out + Field(end);
}

// The archive as the record-by-record copy leaves it, cut at its cursor.
std::string Applied(std::string archive, const std::vector<Record>& records) {
  size_t cursor = archive.size();
  for (const Record& r : records) {
    if (archive.size() < r.pos + r.bytes.size()) archive.resize(r.pos + r.bytes.size());
    archive.replace(r.pos, r.bytes.size(), r.bytes);
    cursor = r.pos + r.bytes.size();
  }
  return archive.substr(0, cursor);
}

class RecordCopy : public testing::Test {
 protected:
  // Copies `update` into an archive holding `before`; returns the archive
  // cut at the cursor, and the position that ended the copy in *ended.
  std::string copy(const std::string& before, const std::string& update, int32_t* ended) {
    LStr updatePath = dir.file("update.tmp");
    LStr archivePath = dir.file("a.kst");
    TestWriteFile(updatePath.ptr, update);
    TestWriteFile(archivePath.ptr, before);
    {
      LIoFile source(updatePath.ptr, 'r', true);
      LIoFile target(archivePath.ptr, 'a', true);
      *ended = FCopyRecords(source, target, [this] { flushes++; });
      target.truncate(-1);
    }
    return TestReadFile(archivePath.ptr);
  }

  TestTempDir dir;
  int flushes = 0;
};

TEST_F(RecordCopy, LeavesTheBytesAndTheCursorOfACopyRecordByRecord) {
  std::mt19937 rng(9);
  auto bytes = [&rng](size_t n) {
    std::string s(n, '\0');
    for (char& c : s) c = static_cast<char>(rng());
    return s;
  };
  const std::string before = bytes(5000);
  std::vector<Record> records = {{64, bytes(100)}, {164, bytes(3000)},  {3164, bytes(10)},
                                 {128, bytes(20)}, {4000, bytes(0)},    {9000, bytes(1500000)},
                                 {6000, bytes(7)}, {1509000, bytes(64)}};
  int32_t ended = 0;
  EXPECT_EQ(Applied(before, records), copy(before, UpdateFile(records, -1), &ended));
  EXPECT_EQ(-1, ended);
  EXPECT_GT(flushes, 0);
  EXPECT_LT(flushes, static_cast<int>(records.size()));

  // A last record that is empty leaves the cursor at its position.
  records.push_back({2000, ""});
  EXPECT_EQ(Applied(before, records), copy(before, UpdateFile(records, -1), &ended));
  // Another negative position ends the copy all the same, and is told.
  EXPECT_EQ(Applied(before, records), copy(before, UpdateFile(records, -7), &ended));
  EXPECT_EQ(-7, ended);
}

TEST_F(RecordCopy, AShortUpdateFileEndsTheCopyWhereItEnds) {
  const std::string before(300, 'o');
  const std::vector<Record> records = {{10, "abcdef"}, {200, "0123456789"}};
  const std::string whole = UpdateFile(records, -1);
  int32_t ended = 0;
  // Cut inside the second record's bytes: what is there is copied.
  std::string cut = whole.substr(0, whole.size() - 4 - 6);
  EXPECT_EQ(Applied(before, {{10, "abcdef"}, {200, "0123"}}), copy(before, cut, &ended));
  EXPECT_EQ(-1, ended);
  // Cut inside the position after the records: it reads as -1.
  cut = whole.substr(0, whole.size() - 2);
  EXPECT_EQ(Applied(before, records), copy(before, cut, &ended));
  EXPECT_EQ(-1, ended);
  // Nothing at all: the archive keeps its bytes.
  EXPECT_EQ(before, copy(before, "", &ended));
}

}  // namespace
