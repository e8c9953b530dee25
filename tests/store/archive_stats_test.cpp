#include "store/archive_stats.h"

#include <gtest/gtest.h>

#include "added_archive.h"

namespace {

class StatsTest : public AddedArchiveTest {
 protected:
  // Two adds: a.txt gets a second version with a comment.
  void fill() {
    put("a.txt", "one", 1600000000);
    put("deep/er/b.txt", "bb", 1600000500);
    put("deep/c.bin", std::string(5000, 'c'), 1600001000);
    add();
    put("a.txt", "one more", 1600002000);
    add("second");
  }
};

TEST_F(StatsTest, TreeLevelCountsAndRanges) {
  fill();
  FScanStats(*archive, 1);
  const TStats& stats = archive->stats;
  EXPECT_EQ(stats.level, 1);
  EXPECT_EQ(stats.folders, 3);  // src, deep, er; not the root
  EXPECT_EQ(stats.files, 3);
  EXPECT_EQ(stats.versions, 4);
  EXPECT_EQ(stats.maxVersions, 2);
  EXPECT_EQ(stats.sizeMin, 2);
  EXPECT_EQ(stats.sizeMax, 5000);
  EXPECT_EQ(stats.timeMax - stats.timeMin, 2000);
  EXPECT_EQ(stats.names.elementCount, 3);
  // The version details wait for level 2.
  EXPECT_EQ(stats.storeMin, INT32_MAX);
  EXPECT_EQ(stats.users.elementCount, 0);
}

TEST_F(StatsTest, DetailLevelReadsTheHeaders) {
  fill();
  FScanStats(*archive, 2);
  const TStats& stats = archive->stats;
  EXPECT_EQ(stats.storeMin, 1);
  EXPECT_EQ(stats.storeMax, 2);
  EXPECT_EQ(stats.comments.elementCount, 1);  // the empty comment is no candidate
  EXPECT_EQ(stats.users.elementCount, 1);
  EXPECT_EQ(stats.checkouts.elementCount, 0);
  // A lower level asked later keeps what the scan found.
  FScanStats(*archive, 1);
  EXPECT_EQ(stats.level, 2);
  EXPECT_EQ(stats.storeMax, 2);
}

TEST_F(StatsTest, AnAddMakesTheNextScanCountAgain) {
  fill();
  FScanStats(*archive, 1);
  EXPECT_EQ(archive->stats.versions, 4);
  put("new.txt", "fresh", 1600003000);
  add();
  FScanStats(*archive, 1);
  EXPECT_EQ(archive->stats.versions, 5);
  EXPECT_EQ(archive->stats.files, 4);
}

TEST_F(StatsTest, AnEmptyArchiveHasNoRanges) {
  FScanStats(*archive, 2);
  const TStats& stats = archive->stats;
  EXPECT_EQ(stats.files, 0);
  EXPECT_GT(stats.timeMin, stats.timeMax);
  EXPECT_GT(stats.sizeMin, stats.sizeMax);
}

}  // namespace
