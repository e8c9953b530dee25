#include "ui/status_line.h"

#include <gtest/gtest.h>

namespace {

TEST(StatusLine, HelpGoesOverTheReportAndItsEndBringsTheReportBack) {
  TStatusLine line;
  EXPECT_STREQ("フォルダ数：1  ファイル数：2  合計：3",
               line.report("フォルダ数：1  ファイル数：2  合計：3"));
  // A menu: one item after the other, then the menu closes.
  EXPECT_STREQ("アーカイブにファイルやフォルダを追加します",
               line.help("アーカイブにファイルやフォルダを追加します"));
  EXPECT_STREQ("実行中の処理を中止します", line.help("実行中の処理を中止します"));
  EXPECT_STREQ("フォルダ数：1  ファイル数：2  合計：3", line.help(nullptr));
  // The pointer leaves a toolbar button.
  line.help("オプションを設定します");
  EXPECT_STREQ("フォルダ数：1  ファイル数：2  合計：3", line.help(""));
}

TEST(StatusLine, AReportDuringHelpIsTheOneThatComesBack) {
  TStatusLine line;
  line.report("前の報告");
  line.help("検索します");
  EXPECT_STREQ("3 個のファイルを追加しました", line.report("3 個のファイルを追加しました"));
  EXPECT_STREQ("3 個のファイルを追加しました", line.help(nullptr));
  // A file selected in the tree empties the part: the help ends on nothing.
  EXPECT_STREQ("", line.report(""));
  line.help("検索します");
  EXPECT_STREQ("", line.help(nullptr));
}

}  // namespace
