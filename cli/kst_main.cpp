#include "cli/kst_main.h"

#include <cstring>

#include "app/worker_ui.h"
#include "cli/cli_args.h"
#include "cli/cli_console.h"
#include "cli/cli_msg.h"
#include "cli/cli_session.h"
#include "cli/cli_ui.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "lib/chartype.h"
#include "lib/convert.h"
#include "lib/msg.h"
#include "lib/sys_terminal.h"

namespace {

const int kExitDone = 0;
const int kExitError = 1;
const int kExitUsage = 2;

void declareCommon(TCliArgs& args, TCliRequest& request) {
  args.addText("settings", 0, &request.settings, /*list=*/false, "PATH",
               "設定ファイル (既定はユーザーの Kestrom.ini; 読むだけで書かない)");
  args.addSwitch("help", 'h', &request.help, 1, "この説明を表示する");
}

bool isHelpWord(const char* word) {
  return std::strcmp(word, "--help") == 0 || std::strcmp(word, "-h") == 0 ||
         std::strcmp(word, "help") == 0;
}

void usageHint(const char* command) {
  LStr hint("使い方は kst ");
  if (command != nullptr) hint.append(command).append(' ');
  hint.append("--help を参照してください");
  FMsgText("%s", hint.ptr);
}

int runCommand(const TCliCommand& command, TCliRequest& request) {
  TCliMsg& reporter = *static_cast<TCliMsg*>(FReporter());
  TCliUi& ui = *static_cast<TCliUi*>(FWorkerUi());
  int status = kExitError;
  int32_t errors = 0;
  try {
    TCliSession session(request.settings.ptr);
    // A damaged settings file has been reported and lost its bad keys; the
    // command's own errors count from here.
    errors = reporter.errorsSoFar();
    if (session.open(request.plain[0]->ptr, command.createsArchive, command.writesArchive)) {
      TCliContext context{session, ui.console(), ui, request};
      status = command.run(context);
    }
  } catch (int) {
    // The error was shown where it was raised.
    status = kExitError;
  }
  return status == kExitDone && reporter.errorsSoFar() > errors ? kExitError : status;
}

}  // namespace

bool FParseRequest(const TCliCommand& command, const LStrs& words, TCliRequest& request) {
  TCliArgs args;
  declareCommon(args, request);
  command.declare(args, request);
  if (!args.parse(words, 1, request.plain)) return false;
  if (request.help) return true;
  if (request.plain.count < command.minPlain) {
    FMsg(kMsgSyntax, "引数が足りません");
    return false;
  }
  if (command.maxPlain >= 0 && request.plain.count > command.maxPlain) {
    FMsg(kMsgSyntax, "引数が多すぎます : %s", request.plain[command.maxPlain]->ptr);
    return false;
  }
  int32_t items = command.itemWords < 0 ? request.plain.count - 1 : command.itemWords;
  for (int32_t i = 1; i <= items && i < request.plain.count; i++)
    if (!FIsItemPath(request.plain[i]->ptr)) return false;
  if (!request.to.empty() && !FIsItemPath(request.to.ptr)) return false;
  return request.condOptions.finish();
}

LStr FHelpText(const TCliCommand* command) {
  LStr text;
  if (command == nullptr) {
    text.append("使い方: kst <コマンド> ARCHIVE ... [オプション]\n\n");
    for (const TCliCommand* c = kCliCommands; c->name != nullptr; c++)
      text.format("  %-9s %s\n", c->name, c->summary);
    text.append(
        "\nアーカイブ内のパスは /a/b/c.txt の形で書きます。"
        "各コマンドの説明は kst <コマンド> --help で表示します。\n"
        "終了コード: 0 成功, 1 エラーまたは中止, 2 使い方の誤り");
    return text;
  }
  text.format("使い方: kst %s %s\n%s\n\n", command->name, command->usage, command->summary);
  TCliRequest request;
  TCliArgs args;
  declareCommon(args, request);
  command->declare(args, request);
  args.helpLines(text);
  // The console ends the text's last line.
  text.truncate(text.length - 1);
  return text;
}

int FKstRun(const LStrs& words) {
  TCliConsole& console = static_cast<TCliUi*>(FWorkerUi())->console();
  if (words.count == 0) {
    console.err(FHelpText(nullptr).ptr);
    return kExitUsage;
  }
  if (isHelpWord(words[0]->ptr)) {
    console.out(FHelpText(nullptr).ptr);
    return kExitDone;
  }
  const TCliCommand* command = FFindCommand(words[0]->ptr);
  if (command == nullptr) {
    FMsg(kMsgSyntax, "コマンドが正しくありません : %s", words[0]->ptr);
    usageHint(nullptr);
    return kExitUsage;
  }
  TCliRequest request;
  if (!FParseRequest(*command, words, request)) {
    usageHint(command->name);
    return kExitUsage;
  }
  if (request.help) {
    console.out(FHelpText(command).ptr);
    return kExitDone;
  }
  return runCommand(*command, request);
}

int FKstMain(int argc, char** argv) {
  TCliConsole console;
  FSetReporter(new TCliMsg(console));
  FSetLang('J');
  TCliUi ui(console);
  FSetWorkerUi(&ui);
  UStrs wide;
  SysProgramArgs(argc, argv, wide);
  LStrs words;
  for (const UStr* word : wide) {
    LStr* text = new LStr;
    // A word means what was typed: a "{%u" in it is text, not an escape.
    FToLStrExact(word->ptr, word->length, *text);
    words.add(text);
  }
  int status = FKstRun(words);
  FSetWorkerUi(nullptr);
  FSetReporter(nullptr);
  return status;
}
