// A record of the update file is its archive position, its length and its
// bytes, whether the length was known when the record began or patched in
// at its end, also when the record is longer than the stream's buffer and
// the patch must seek back.
#include "archive/update_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/file_bytes.h"
#include "support/temp_dir.h"

namespace {

std::string Field(int32_t value) {
  std::string out(4, '\0');
  for (int i = 0; i < 4; i++) out[i] = static_cast<char>(static_cast<uint32_t>(value) >> (8 * i));
  return out;
}

TEST(UpdateFile, RecordsHoldTheirPositionLengthAndBytesHoweverTheLengthCame) {
  TestTempDir dir;
  LStr path = dir.file("update.tmp");
  const std::string small(10, 's');
  std::string large(5000, '\0');
  for (size_t i = 0; i < large.size(); i++) large[i] = static_cast<char>(i * 7);
  {
    TUpdateFile update(path.ptr);
    EXPECT_EQ(8, update.beginRecord(64, static_cast<int32_t>(large.size())));
    update.write(large.data(), static_cast<int32_t>(large.size()));
    update.endRecord();
    update.beginRecord(8192);
    update.write(large.data(), static_cast<int32_t>(large.size()));
    update.endRecord();
    update.beginRecord(128, static_cast<int32_t>(small.size()));
    update.write(small.data(), static_cast<int32_t>(small.size()));
    update.endRecord();
    update.beginRecord(256);
    update.write(small.data(), static_cast<int32_t>(small.size()));
    update.endRecord();
    update.writeEnd();
    update.close();
  }
  const std::string expected = Field(64) + Field(5000) + large + Field(8192) + Field(5000) + large +
                               Field(128) + Field(10) + small + Field(256) + Field(10) + small +
                               Field(-1);
  EXPECT_TRUE(TestReadFile(path.ptr) == expected);
}

}  // namespace
