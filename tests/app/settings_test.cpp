#include <gtest/gtest.h>

#include <string>

#include "app/app.h"
#include "support/file_bytes.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

TEST(Settings, MissingFileKeepsTheDefaults) {
  TestTempDir dir;
  TApp app;
  FLoadSettings(app, dir.file("none.ini").ptr);
  EXPECT_EQ(app.rcMain.left, 100);
  EXPECT_EQ(app.rcMain.height, 671);
  EXPECT_EQ(app.leftWidth, 199);
  ASSERT_EQ(app.fcols.count, 6);
  EXPECT_EQ(app.fcols[1]->id, 3);
  EXPECT_EQ(app.fcols[1]->width, 46);
  EXPECT_EQ(app.fcols[1]->align(), 'r');
  EXPECT_EQ(app.fcols[0]->sortKind(), 's');
  EXPECT_EQ(app.scolsAll.count, 13);
  EXPECT_EQ(app.lvMode, 3040);
  EXPECT_EQ(app.memItemNum, 20);
  EXPECT_EQ(app.skipEquDtF, 1);
}

TEST(Settings, SavedFileHasEveryKeyInOrderAndReadsBackEqual) {
  TestTempDir dir;
  LStr path = dir.file("sub/dir/Kestrom.ini");
  TApp app;
  app.rcMain = {5, 6, 700, 500};
  app.lmCmts.add(new LStr("コメント(1), !注意!\r\n\tend"));
  app.lmCmts.add(new LStr(""));
  app.mru.add(new LStr("C:\\文書\\a.kst"));
  app.tmpSubdir = "kst_tmp\\";
  app.vcols.add(new TColumn{16, 250, 2});
  app.skipEquF = 0;
  FSaveSettings(app, path.ptr);

  std::string text = TestReadFile(path.ptr);
  EXPECT_EQ(text.rfind("; Kestrom 1.14 設定ファイル\r\n", 0), 0u);
  const char* keys[] = {"rcMain",    "leftWidth",  "fcols",           "vcols",      "scols",
                        "fcolsAll",  "vcolsAll",   "scolsAll",        "lvMode",     "checkInF",
                        "checkOutF", "extDirs",    "lmFNames",        "lmDts",      "lmStnos",
                        "lmCmts",    "lmSizes",    "lmPaths",         "lmVers",     "lmUsers",
                        "lmCous",    "memItemNum", "userName",        "userId",     "userPwd",
                        "mru",       "arcDlgDir",  "arcDlgFilterIdx", "fileDlgDir", "skipEquDtF",
                        "skipEquF",  "ovwMode",    "tmpDirBase",      "tmpSubdir"};
  size_t at = 0;
  for (const char* key : keys) {
    size_t found = text.find("\r\n" + std::string(key) + "=", at);
    ASSERT_NE(found, std::string::npos) << key;
    at = found + 1;
  }
  EXPECT_NE(text.find("rcMain=(5,6,700,500)\r\n"), std::string::npos);
  EXPECT_NE(text.find("fcols=((1,164,0),(3,46,0),"), std::string::npos);

  TApp back;
  FLoadSettings(back, path.ptr);
  EXPECT_EQ(back.rcMain.width, 700);
  ASSERT_EQ(back.lmCmts.count, 2);
  EXPECT_STREQ(back.lmCmts[0]->ptr, "コメント(1), !注意!\r\n\tend");
  EXPECT_STREQ(back.lmCmts[1]->ptr, "");
  EXPECT_STREQ(back.mru[0]->ptr, "C:\\文書\\a.kst");
  EXPECT_STREQ(back.tmpSubdir.ptr, "kst_tmp\\");
  ASSERT_EQ(back.vcols.count, 9);
  EXPECT_EQ(back.vcols[8]->state, 2);
  EXPECT_EQ(back.skipEquF, 0);
}

TEST(Settings, BadLinesCostOnlyTheirKey) {
  TestTempDir dir;
  LStr path = dir.file("bad.ini");
  TestWriteFile(path.ptr,
                "; comment\r\nleftWidth=250\r\nnoSuchKey=1\r\n; between\r\nfcols=()\r\n"
                "rcMain=(5000,10,800,600)\r\nmemItemNum=7\r\n");
  RecorderScope rec;
  TApp app;
  FLoadSettings(app, path.ptr);
  EXPECT_TRUE(rec->has(15001));
  EXPECT_STREQ(rec->entries[0]->text.ptr, "unknown name 'noSuchKey'");
  EXPECT_EQ(app.leftWidth, 250);
  EXPECT_EQ(app.memItemNum, 7);
  EXPECT_EQ(app.fcols.count, 0);
  EXPECT_EQ(app.rcMain.left, 5000);
  app.fixSettings(1920, 1080);
  EXPECT_EQ(app.fcols.count, 6);    // refilled
  EXPECT_EQ(app.rcMain.left, 100);  // saved on a larger screen
  EXPECT_EQ(app.rcMain.width, 920);
}

TEST(Settings, FixRaisesWidthsAndKeepsAFittingWindow) {
  TApp app;
  app.rcMain = {1900, 1060, 300, 200};
  app.leftWidth = 3;
  app.vcols[0]->width = 2;
  app.fixSettings(1920, 1080);
  EXPECT_EQ(app.rcMain.left, 1900);
  EXPECT_EQ(app.leftWidth, 10);
  EXPECT_EQ(app.vcols[0]->width, 10);
  app.rcMain.height = 9;
  app.fixSettings(1920, 1080);
  EXPECT_EQ(app.rcMain.height, 671);
}

TEST(Settings, RecentListKeepsTenAndMovesReopenedToTheTop) {
  TApp app;
  for (int i = 0; i < 12; i++) app.addRecent(LStr().format("C:\\a%d.kst", i).ptr);
  ASSERT_EQ(app.mru.count, 10);
  EXPECT_STREQ(app.mru[0]->ptr, "C:\\a11.kst");
  EXPECT_STREQ(app.mru[9]->ptr, "C:\\a2.kst");
  app.addRecent("c:\\A5.KST");
  EXPECT_EQ(app.mru.count, 10);
  EXPECT_STREQ(app.mru[0]->ptr, "c:\\A5.KST");
  EXPECT_STREQ(app.mru[8]->ptr, "C:\\a3.kst");
  app.removeRecent("C:\\A3.kst");
  EXPECT_EQ(app.mru.count, 9);
  app.removeRecent("not there");
  EXPECT_EQ(app.mru.count, 9);
}

TEST(Columns, HeadingsAndNewWidths) {
  EXPECT_STREQ(FColumnHeading(kColName), "名前");
  EXPECT_STREQ(FColumnHeading(kColStoreNo), "格納#");
  EXPECT_STREQ(FColumnHeading(99), "");
  EXPECT_EQ(FNewColumnWidth(kColFolder), 164);
  EXPECT_EQ(FNewColumnWidth(kColCheckout), 100);
  EXPECT_EQ(FNewColumnWidth(kColPath), 250);
  EXPECT_EQ(FNewColumnWidth(42), 10);
}
