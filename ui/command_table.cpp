#include "ui/command_table.h"

namespace {

const TCommandRow kRows[] = {
    {kCmdNew, 'N', false, "Ctrl+N", "アーカイブの新規作成",
     "新しいアーカイブ ファイルを作成します"},
    {kCmdOpen, 'O', true, "Ctrl+O", "アーカイブを開く", "既存のアーカイブ ファイルを開きます"},
    {kCmdClose, 'C', false, "Ctrl+W", "アーカイブを閉じる", "現在のアーカイブ ファイルを閉じます"},
    {kCmdSaveAs, 'A', true, "Ctrl+S", "アーカイブに名前を付けて保存",
     "現在のアーカイブ ファイルを新しい名前で保存します"},
    {kCmdExit, 'X', false, "Alt+F4", "Kestrom の終了", "Kestrom アプリケーションを終了します"},
    {kCmdAdd, 'I', true, "Ctrl+I", "追加", "アーカイブにファイルやフォルダを追加します"},
    {kCmdExtract, 'E', true, "Ctrl+E", "展開", "選択されているファイルやフォルダを復元します"},
    {kCmdDelete, 'D', false, "Del", "削除", "選択されているファイルやフォルダを削除します"},
    {kCmdCut, 'T', false, "Ctrl+X", "切り取り",
     "選択されているファイルやフォルダをクリップボードに移動します"},
    {kCmdCopy, 'C', false, "Ctrl+C", "コピー",
     "選択されているファイルやフォルダをクリップボードにコピーします"},
    {kCmdPaste, 'P', false, "Ctrl+V", "貼り付け",
     "クリップボードにコピーされているファイルやフォルダをアーカイブに追加します"},
    {kCmdSelectAll, 'A', false, "Ctrl+A", "すべて選択",
     "右ペインに表示されているすべてのファイル/フォルダを選択します"},
    {kCmdStop, 'S', false, "Esc", "中止", "実行中の処理を中止します"},
    {kCmdRename, 'R', false, "F2", "名前の変更",
     "選択されているファイルやフォルダの名前を変更します"},
    {kCmdNewFolder, 'F', false, nullptr, "フォルダを新規作成",
     "選択されている場所に新しいフォルダを作成します"},
    {kCmdOpenWithApp, 'O', false, "Ctrl+D", "アプリケーションで開く",
     "選択されているファイルを既定のアプリケーションで開きます"},
    {kCmdSearch, 'F', true, "Ctrl+F", "検索", "条件を指定して、アーカイブ内のファイルを検索します"},
    {kCmdProperties, 'P', true, nullptr, "プロパティ",
     "選択されているファイル/フォルダの情報を表示します"},
    {kCmdOptions, 'O', true, nullptr, "オプション", "オプションを設定します"},
    {kCmdLargeIcons, 'G', false, nullptr, "大きいアイコン", "右側のリスト表示の形式を変更します"},
    {kCmdSmallIcons, 'M', false, nullptr, "小さいアイコン", "右側のリスト表示の形式を変更します"},
    {kCmdListMode, 'L', false, nullptr, "一覧", "右側のリスト表示の形式を変更します"},
    {kCmdDetails, 'D', false, nullptr, "詳細", "右側のリスト表示の形式を変更します"},
    {kCmdAllColumns, 'A', false, nullptr, "全列表示", "右側のリスト表示の形式を変更します"},
    {kCmdHelp, 'C', false, "F1", "ヘルプ", "オンライン ヘルプを表示します"},
    {kCmdHomePage, 'H', false, nullptr, "ホームページ",
     "インターネット上のホームページを表示します"},
    {kCmdAbout, 'A', true, nullptr, "バージョン情報",
     "このアプリケーションのバージョンを表示します"},
    {kCmdRegister, 'U', true, nullptr, "ユーザー登録", "ユーザー登録情報を設定または確認します"},
};

const int32_t kEditIds[] = {kCmdAdd,    kCmdExtract, kCmdDelete,    kSeparator, kCmdPaste,
                            kSeparator, kCmdRename,  kCmdNewFolder, kSeparator, kCmdStop};
const int32_t kViewIds[] = {kCmdOpenWithApp, kCmdSearch,     kSeparator,     kCmdOptions,
                            kSeparator,      kCmdLargeIcons, kCmdSmallIcons, kCmdListMode,
                            kCmdDetails,     kCmdAllColumns};
const int32_t kHelpIds[] = {kCmdHelp, kCmdHomePage, kCmdAbout};

const TMenuDef kMenuBar[] = {
    {"ファイル(&F)", nullptr, 0},
    {"編集(&E)", kEditIds, sizeof(kEditIds) / sizeof(kEditIds[0])},
    {"表示(&V)", kViewIds, sizeof(kViewIds) / sizeof(kViewIds[0])},
    {"ヘルプ(&H)", kHelpIds, sizeof(kHelpIds) / sizeof(kHelpIds[0])},
};

const int32_t kToolbar[] = {kSeparator, kCmdNew,     kCmdOpen,   kSeparator,
                            kCmdAdd,    kCmdExtract, kCmdDelete, kCmdNewFolder,
                            kCmdStop,   kSeparator,  kCmdSearch, kCmdOptions};

}  // namespace

const TCommandRow* FCommandRow(int32_t id) {
  for (const TCommandRow& row : kRows)
    if (row.id == id) return &row;
  return nullptr;
}

LStr FMenuText(int32_t id, bool withMnemonic) {
  LStr text;
  const TCommandRow* row = FCommandRow(id);
  if (row == nullptr) return text;
  text.append(row->text);
  if (withMnemonic) text.format("(&%c)", row->mnemonic);
  if (row->ellipsis) text.append("...");
  if (row->keys != nullptr) text.format("\t%s", row->keys);
  return text;
}

LStr FToolTipText(int32_t id) {
  LStr text;
  const TCommandRow* row = FCommandRow(id);
  if (row == nullptr) return text;
  text.append(row->text);
  if (row->keys != nullptr) text.format("(%s)", row->keys);
  if (row->ellipsis) text.append("...");
  return text;
}

LStr FHelpText(int32_t id, const LStrs& recent) {
  if (id >= kCmdRecentFirst && id <= kCmdRecentLast) {
    int32_t index = id - kCmdRecentFirst;
    if (index >= recent.count) return LStr();
    return LStr().format("%s を開きます", recent[index]->ptr);
  }
  const TCommandRow* row = FCommandRow(id);
  return LStr(row != nullptr ? row->help : "");
}

LStr FRecentMenuText(int32_t index, const char* path) {
  return LStr().format("&%d %s", index + 1, path);
}

const TMenuDef* FMenuBar(int32_t* count) {
  *count = sizeof(kMenuBar) / sizeof(kMenuBar[0]);
  return kMenuBar;
}

void FFileMenu(int32_t recentCount, LInts& out) {
  out.clear();
  out.add(kCmdNew);
  out.add(kCmdOpen);
  out.add(kCmdSaveAs);
  out.add(kSeparator);
  for (int32_t i = 0; i < recentCount && i <= kCmdRecentLast - kCmdRecentFirst; i++)
    out.add(kCmdRecentFirst + i);
  if (recentCount > 0) out.add(kSeparator);
  out.add(kCmdExit);
}

const int32_t* FToolbarButtons(int32_t* count) {
  *count = sizeof(kToolbar) / sizeof(kToolbar[0]);
  return kToolbar;
}
