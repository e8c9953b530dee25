#include "ui/pane_logic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/app.h"
#include "app/column_text.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

namespace {

class PaneTest : public ArchiveTest {
 protected:
  PaneTest() {
    FNewWorkSet();
    archive->loadArchive(dir.file("a.kst").ptr, false, false);
    TFolder* root = archive->root;
    small = addFile(root, "b.txt", 1, 900);
    big = addFile(root, "a.txt", 3, 1200);
    sub = root->addFolder("z資料");
    root->addFolder("Ｂフォルダ");
    empty = new TFile;
    empty->setName("空.txt");
    root->addChild(empty);
    commit();
  }
  ~PaneTest() override { FDeleteWorkSet(); }

  // Sorts rows as the list pane does, by a column's cell texts.
  std::vector<std::string> sorted(int32_t column, char kind, char dir) {
    TRecList rows;
    FFolderRows(archive->root, rows);
    std::vector<TRec*> v(rows.begin(), rows.end());
    std::stable_sort(v.begin(), v.end(), [&](TRec* a, TRec* b) {
      return FCompareRows(a, b, FColumnText(a, column, nullptr).ptr,
                          FColumnText(b, column, nullptr).ptr, column, kind, dir) < 0;
    });
    std::vector<std::string> names;
    for (TRec* r : v) names.push_back(r->name());
    return names;
  }

  TFile* small;
  TFile* big;
  TFolder* sub;
  TFile* empty;
};

TEST_F(PaneTest, FolderRowsPutFoldersFirstAndSkipFilesWithoutVersions) {
  TRecList rows;
  FFolderRows(archive->root, rows);
  ASSERT_EQ(4, rows.count);
  EXPECT_TRUE(rows[0]->isFolder());
  EXPECT_TRUE(rows[1]->isFolder());
  EXPECT_STREQ("a.txt", rows[2]->name());
  EXPECT_STREQ("b.txt", rows[3]->name());
  EXPECT_STREQ("フォルダ数：2  ファイル数：3  合計：5", FFolderStatus(archive->root).ptr);
}

TEST_F(PaneTest, TreeNodesKeepFilesWithoutVersionsAndFollowARename) {
  TRecList nodes;
  FTreeChildren(archive->root, nodes);
  std::vector<std::string> names;
  for (TRec* r : nodes) names.push_back(r->name());
  EXPECT_EQ((std::vector<std::string>{"z資料", "Ｂフォルダ", "a.txt", "b.txt", "空.txt"}), names);
  // The order comes from the names of now: a renamed file moves on the
  // next expand.
  ASSERT_TRUE(FRenameRecord(small, "0.txt"));
  FTreeChildren(archive->root, nodes);
  EXPECT_EQ(small, nodes[2]);
}

TEST_F(PaneTest, AVersionAmongAFoldersChildrenIsAnInternalFailure) {
  sub->addChild(new TVer);
  TRecList nodes;
  EXPECT_THROW(FTreeChildren(sub, nodes), int);
  ASSERT_EQ(1, recorder->boxes.count);
  EXPECT_STREQ("Kestrom エラー #3000|Internal Error #1269", recorder->boxes[0]->ptr);
}

TEST_F(PaneTest, VersionRowsStartWithTheNewest) {
  TRecList rows;
  FVersionRows(big, rows);
  ASSERT_EQ(3, rows.count);
  EXPECT_EQ(big->version(2), rows[0]);
  EXPECT_STREQ("3", FColumnText(rows[0], kColVersion, nullptr).ptr);
  EXPECT_STREQ("1", FColumnText(rows[2], kColVersion, nullptr).ptr);
}

TEST_F(PaneTest, NameDescendingPutsFilesBeforeFoldersAndKeepsThemGrouped) {
  using V = std::vector<std::string>;
  EXPECT_EQ((V{"z資料", "Ｂフォルダ", "a.txt", "b.txt"}), sorted(kColName, 's', 'A'));
  EXPECT_EQ((V{"b.txt", "a.txt", "Ｂフォルダ", "z資料"}), sorted(kColName, 's', 'D'));
}

TEST_F(PaneTest, SizesWithCommasSortByValue) {
  // "1,202" before "900" as text; by value it comes after.
  EXPECT_STREQ("1,202", FColumnText(big, kColSize, nullptr).ptr);
  std::vector<std::string> up = sorted(kColSize, 'i', 'A');
  EXPECT_EQ("b.txt", up[2]);
  EXPECT_EQ("a.txt", up[3]);
  std::vector<std::string> down = sorted(kColSize, 'i', 'D');
  EXPECT_EQ("a.txt", down[0]);
  EXPECT_EQ("b.txt", down[1]);
}

TEST_F(PaneTest, RenameRefusals) {
  EXPECT_FALSE(FRenameRecord(small, ""));
  EXPECT_EQ(0, recorder->entries.count);
  EXPECT_FALSE(FRenameRecord(small, "b.txt"));  // its own name
  EXPECT_FALSE(FRenameRecord(small, "A.TXT"));  // a sibling, in other letters
  EXPECT_FALSE(FRenameRecord(small, "x;y"));
  EXPECT_FALSE(FRenameRecord(small, "x,y"));
  EXPECT_FALSE(FRenameRecord(small, "x?y"));
  // Refused input is a warning to the user, not an error that ends a command.
  EXPECT_EQ(0, recorder->boxes.count);
  ASSERT_EQ(5, recorder->entries.count);
  for (TestRecorder::Entry* refusal : recorder->entries) EXPECT_EQ(kMsgWarning, refusal->number);
  EXPECT_STREQ("項目 'b.txt' はすでに存在します", recorder->entries[0]->text.ptr);
  EXPECT_STREQ("文字 ';' は使用できません", recorder->entries[2]->text.ptr);
  EXPECT_FALSE(FRenameRecord(big->version(0), "v.txt"));
  EXPECT_FALSE(FRenameRecord(archive->root, "root"));
  EXPECT_EQ(0, archive->treeDirty);
  // The trail byte of "ソ" is the byte of "\": a double-byte character is one unit.
  EXPECT_TRUE(FRenameRecord(small, "ソフト.txt"));
  EXPECT_STREQ("ソフト.txt", small->name());
  EXPECT_EQ(1, archive->treeDirty);
  EXPECT_TRUE(FListRenameAllowed(kColName));
  EXPECT_FALSE(FListRenameAllowed(kColVersion));
}

TEST(ViewColumns, ShortAndFullSetsOfEachView) {
  TApp app;
  EXPECT_EQ(&app.fcols, &FViewColumns(app, kViewFolder, false));
  EXPECT_EQ(&app.vcolsAll, &FViewColumns(app, kViewVersions, true));
  EXPECT_EQ(&app.scols, &FViewColumns(app, kViewSearch, false));
  EXPECT_EQ(kColVersion, FViewColumns(app, kViewVersions, false)[0]->id);
  EXPECT_TRUE(FIsListMode(3045));
  EXPECT_FALSE(FIsListMode(3050));
}

}  // namespace
