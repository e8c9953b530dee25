#include "app/column_text.h"

#include <gtest/gtest.h>

#include "app/column.h"
#include "lib/file_time.h"
#include "store/ver_info.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

namespace {

// A tree in memory: /docs/sub, and /docs/報告.txt with two versions whose
// side records the test fills, as a header read would.
class ColumnTextTest : public ArchiveTest {
 protected:
  ColumnTextTest() {
    archive->loadArchive(dir.file("c.kst").ptr, false, false);
    FNewWorkSet();
    docs = archive->root->addFolder("docs");
    sub = docs->addFolder("sub");
    file = new TFile;
    file->setName("報告.txt");
    docs->addChild(file);
    for (int i = 0; i < 2; i++) {
      TVer* ver = new TVer;
      ver->time = 1700000000 + i;
      ver->size = i == 0 ? 999 : 1234567;
      file->addChild(ver);
      TVerInfo* info = FWorkSet()->NewInfo(ver);
      info->storeNo = 7 + i;
      info->uniqueRatio = static_cast<uint8_t>(40 + i);
      info->compRatio = 100;
      info->attrs = i == 0 ? 0 : kAttrReadOnly | kAttrHidden;
      info->commentId = i == 0 ? 0 : static_cast<int32_t>(FStrings().lookupOrAdd("修正"));
      info->userId = static_cast<int32_t>(FStrings().lookupOrAdd("pc/me"));
      info->createTime = 1600000000;
      info->accessTime = 1650000000;
      info->storeTime = 1700000100;
    }
  }
  ~ColumnTextTest() override { FDeleteWorkSet(); }

  std::string text(TRec* rec, int32_t id, const TRec* base = nullptr) {
    return FColumnText(rec, id, base).ptr;
  }

  TFolder* docs;
  TFolder* sub;
  TFile* file;
};

TEST_F(ColumnTextTest, AFolderRowHasANameAndTwoPaths) {
  EXPECT_EQ(text(sub, kColName), "sub");
  EXPECT_EQ(text(sub, kColPath), "docs/sub");
  EXPECT_EQ(text(sub, kColFolder), "docs");
  EXPECT_EQ(text(docs, kColFolder), "");
  for (int32_t id = kColName; id <= kColFolder; id++) {
    if (id == kColName || id == kColPath || id == kColFolder) continue;
    EXPECT_EQ(text(sub, id), "") << "column " << id;
  }
}

TEST_F(ColumnTextTest, AFileRowShowsItsNewestVersion) {
  EXPECT_EQ(text(file, kColName), "報告.txt");
  EXPECT_EQ(text(file, kColVersion), "2");
  EXPECT_EQ(text(file, kColSize), "1,234,567");
  EXPECT_EQ(text(file, kColModified), FFormatTime(1700000001).ptr);
  EXPECT_EQ(text(file, kColAttributes), "r-h-");
  EXPECT_EQ(text(file, kColUniqueRatio), "41%");
  EXPECT_EQ(text(file, kColCompressed), "100%");
  EXPECT_EQ(text(file, kColComment), "修正");
  EXPECT_EQ(text(file, kColStoreNo), "8");
  EXPECT_EQ(text(file, kColUser), "pc/me");
  EXPECT_EQ(text(file, kColCheckout), "");
  EXPECT_EQ(text(file, kColCreated), FFormatTime(1600000000).ptr);
  EXPECT_EQ(text(file, kColAccessed), FFormatTime(1650000000).ptr);
  EXPECT_EQ(text(file, kColStored), FFormatTime(1700000100).ptr);
#ifdef _WIN32
  EXPECT_FALSE(text(file, kColType).empty());  // the shell's own words
#else
  // Without a registry of types: the words Windows has for an unknown one.
  EXPECT_EQ(text(file, kColType), "TXT ファイル");
  file->setName("Makefile");
  EXPECT_EQ(text(file, kColType), "ファイル");
#endif
}

TEST_F(ColumnTextTest, AVersionRowShowsItself) {
  TVer* oldest = file->version(0);
  EXPECT_EQ(text(oldest, kColName), "報告.txt");
  EXPECT_EQ(text(oldest, kColVersion), "1");
  EXPECT_EQ(text(oldest, kColSize), "999");
  EXPECT_EQ(text(oldest, kColAttributes), "----");
  EXPECT_EQ(text(oldest, kColComment), "");  // string id 0
  EXPECT_EQ(text(oldest, kColStoreNo), "7");
}

TEST_F(ColumnTextTest, PathColumnsRunFromTheBase) {
  EXPECT_EQ(text(file, kColPath), "docs/報告.txt");
  EXPECT_EQ(text(file, kColFolder), "docs");
  EXPECT_EQ(text(file->version(0), kColPath, docs), "報告.txt");
  EXPECT_EQ(text(file->version(0), kColFolder, docs), "");
}

TEST_F(ColumnTextTest, AFileWithoutVersionsHasOnlyItsName) {
  TFile* bare = new TFile;
  bare->setName("bare");
  docs->addChild(bare);
  EXPECT_EQ(text(bare, kColName), "bare");
  EXPECT_EQ(text(bare, kColSize), "");
  EXPECT_EQ(text(bare, kColVersion), "");
}

TEST(ColumnTextFormsTest, DigitGroups) {
  struct Case {
    int64_t value;
    const char* text;
  } cases[] = {{0, "0"},
               {999, "999"},
               {1000, "1,000"},
               {-1, "-1"},
               {-1000, "-1,000"},
               {2147483647, "2,147,483,647"},
               {INT64_MIN, "-9,223,372,036,854,775,808"}};
  for (const Case& c : cases) EXPECT_STREQ(FGroupDigits(c.value).ptr, c.text) << c.value;
}

TEST(ColumnTextFormsTest, AttributeLetters) {
  EXPECT_STREQ(FAttrLetters(0).ptr, "----");
  EXPECT_STREQ(FAttrLetters(kAttrReadOnly | kAttrArchive | kAttrHidden | kAttrSystem).ptr, "rahs");
  EXPECT_STREQ(FAttrLetters(kAttrArchive | kAttrSystem).ptr, "-a-s");
}

}  // namespace
