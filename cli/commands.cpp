#include "cli/commands.h"

#include <cstring>

#include "cli/cli_args.h"

// Usage lines and summaries are what "kst --help" and "kst <command> --help"
// show; the options add their own lines.
const TCliCommand kCliCommands[] = {
    {"add", "ARCHIVE PATH... [--to /FOLDER] [--comment TEXT] [条件]",
     "ファイルやフォルダをアーカイブに追加する (アーカイブがなければ作成する)", 2, -1, 0, true,
     true, FDeclareAdd, FRunAdd},
    {"ls", "ARCHIVE [/FOLDER] [--all]", "フォルダの内容を表示する", 1, 2, -1, false, false,
     FDeclareList, FRunLs},
    {"log", "ARCHIVE /FILE [--all]", "ファイルのバージョンを新しい順に表示する", 2, 2, -1, false,
     false, FDeclareList, FRunLog},
    {"cat", "ARCHIVE /FILE [-v N]", "バージョンの内容を標準出力に書き出す", 2, 2, -1, false, false,
     FDeclareCat, FRunCat},
    {"extract", "ARCHIVE [/ITEM...] [-d DEST] [条件]", "ファイルを展開する", 1, -1, -1, false,
     false, FDeclareExtract, FRunExtract},
    {"find", "ARCHIVE [/ITEM...] [条件] [--all]", "条件に合うバージョンを検索する", 1, -1, -1,
     false, false, FDeclareFind, FRunFind},
    {"rm", "ARCHIVE /ITEM... [-v N] [条件]",
     "項目を削除する (-v でファイルの 1 バージョン、条件で選ばれたバージョン)", 2, -1, -1, false,
     true, FDeclareRm, FRunRm},
    {"mkdir", "ARCHIVE /FOLDER/NEW", "フォルダを作成する", 2, 2, -1, false, true, FDeclareNothing,
     FRunMkdir},
    {"mv", "ARCHIVE /ITEM NEWNAME", "ファイルやフォルダの名前を変更する", 3, 3, 1, false, true,
     FDeclareNothing, FRunMv},
    {"info", "ARCHIVE", "アーカイブの統計を表示する", 1, 1, 0, false, false, FDeclareNothing,
     FRunInfo},
    {"check", "ARCHIVE", "すべてのバージョンと空き領域を検査する", 1, 1, 0, false, false,
     FDeclareNothing, FRunCheck},
    {nullptr, nullptr, nullptr, 0, 0, 0, false, false, nullptr, nullptr},
};

const TCliCommand* FFindCommand(const char* name) {
  for (const TCliCommand* command = kCliCommands; command->name != nullptr; command++)
    if (std::strcmp(command->name, name) == 0) return command;
  return nullptr;
}

void FDeclareNothing(TCliArgs&, TCliRequest&) {}

void FDeclareAdd(TCliArgs& args, TCliRequest& request) {
  args.addText("to", 0, &request.to, /*list=*/false, "/FOLDER",
               "追加先のフォルダ (なければ作成する) かファイル; 既定はルート");
  args.addText("comment", 0, &request.cond.addComment, /*list=*/false, "TEXT",
               "新しいバージョンのコメント");
  args.addNumber("threads", 0, &request.threads, 1, "N",
                 "ファイルを符号化するスレッドの数 (既定はプロセッサの数)");
  request.condOptions.declareAdd(args);
}

void FDeclareList(TCliArgs& args, TCliRequest& request) {
  args.addSwitch("all", 0, &request.all, 1, "すべての列を表示する");
}

void FDeclareCat(TCliArgs& args, TCliRequest& request) {
  args.addNumber("version", 'v', &request.version, 1, "N",
                 "バージョン番号 (1 が最も古い; 既定は最新)");
}

void FDeclareExtract(TCliArgs& args, TCliRequest& request) {
  args.addText("dest", 'd', &request.dest, /*list=*/false, "DEST",
               "展開先のフォルダ (既定は現在のフォルダ)");
  request.condOptions.declareVersions(args);
}

void FDeclareFind(TCliArgs& args, TCliRequest& request) {
  FDeclareList(args, request);
  request.condOptions.declareVersions(args);
}
