#include <gtest/gtest.h>

#include "ui/command_table.h"

namespace {

TEST(CommandText, MenuEntriesCarryMnemonicEllipsisAndKeys) {
  EXPECT_STREQ("アーカイブを開く(&O)...\tCtrl+O", FMenuText(kCmdOpen, true).ptr);
  EXPECT_STREQ("削除(&D)\tDel", FMenuText(kCmdDelete, true).ptr);
  EXPECT_STREQ("フォルダを新規作成(&F)", FMenuText(kCmdNewFolder, true).ptr);
  EXPECT_STREQ("中止(&S)\tEsc", FMenuText(kCmdStop, true).ptr);
}

TEST(CommandText, ContextEntriesHaveNoMnemonic) {
  EXPECT_STREQ("アーカイブを開く...\tCtrl+O", FMenuText(kCmdOpen, false).ptr);
  EXPECT_STREQ("オプション...", FMenuText(kCmdOptions, false).ptr);
}

TEST(CommandText, ToolTipsPutKeysInBracketsBeforeTheEllipsis) {
  EXPECT_STREQ("検索(Ctrl+F)...", FToolTipText(kCmdSearch).ptr);
  EXPECT_STREQ("フォルダを新規作成", FToolTipText(kCmdNewFolder).ptr);
  EXPECT_STREQ("オプション...", FToolTipText(kCmdOptions).ptr);
  EXPECT_STREQ("", FToolTipText(1234).ptr);
}

TEST(CommandText, RecentEntriesAreNumberedFromOne) {
  LStrs recent;
  recent.add(new LStr("C:\\a.kst"));
  recent.add(new LStr("C:\\b.kst"));
  EXPECT_STREQ("&1 C:\\a.kst", FRecentMenuText(0, recent[0]->ptr).ptr);
  EXPECT_STREQ("C:\\b.kst を開きます", FHelpText(kCmdRecentFirst + 1, recent).ptr);
  EXPECT_STREQ("", FHelpText(kCmdRecentFirst + 2, recent).ptr);
  EXPECT_STREQ("実行中の処理を中止します", FHelpText(kCmdStop, recent).ptr);
}

TEST(CommandText, FileMenuPutsTheRecentListBetweenSeparators) {
  LInts ids;
  FFileMenu(0, ids);
  ASSERT_EQ(5, ids.count);
  EXPECT_EQ(kSeparator, ids[3]);
  EXPECT_EQ(kCmdExit, ids[4]);
  FFileMenu(12, ids);  // more entries than ids: ten at most
  ASSERT_EQ(3 + 1 + 10 + 1 + 1, ids.count);
  EXPECT_EQ(kCmdRecentFirst, ids[4]);
  EXPECT_EQ(kCmdRecentLast, ids[13]);
  EXPECT_EQ(kSeparator, ids[14]);
}

TEST(CommandText, EveryMenuAndButtonIdHasARow) {
  int32_t popups = 0;
  const TMenuDef* bar = FMenuBar(&popups);
  for (int32_t p = 0; p < popups; p++)
    for (int32_t i = 0; i < bar[p].count; i++)
      if (bar[p].ids[i] != kSeparator) {
        EXPECT_NE(nullptr, FCommandRow(bar[p].ids[i])) << bar[p].ids[i];
      }
  int32_t buttons = 0;
  const int32_t* ids = FToolbarButtons(&buttons);
  for (int32_t i = 0; i < buttons; i++)
    if (ids[i] != kSeparator) {
      EXPECT_NE(nullptr, FCommandRow(ids[i])) << ids[i];
    }
}

}  // namespace
