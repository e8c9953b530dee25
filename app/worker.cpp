#include "app/worker.h"

#include "app/app.h"
#include "app/worker_ui.h"
#include "archive/archive.h"
#include "lib/fail.h"
#include "lib/liblock.h"
#include "lib/msg.h"
#include "lib/sys.h"
#include "store/add_command.h"
#include "store/codec_scratch.h"
#include "store/cond.h"
#include "store/delete_command.h"
#include "store/extract_command.h"
#include "store/search_cmd.h"
#include "store/work_set.h"

namespace {

TThread* gThread = nullptr;
TWorkerUi* gUi = nullptr;

struct TCommandDef {
  int32_t id;
  const char* label;
};

const TCommandDef kCommands[] = {
    {kCmdAdd, "追加中"},
    {kCmdExtract, "展開中"},
    {kCmdDelete, "削除中"},
    {kCmdSearch, "検索中"},
};

// How long FRequestStop waits for a stopped command: 200 polls of 100 ms.
const int kStopPolls = 200;
const int32_t kStopPoll = 100;

}  // namespace

TWorkerUi* FWorkerUi() { return gUi; }
void FSetWorkerUi(TWorkerUi* ui) { gUi = ui; }

void FSetStatus(const char* text) {
  FLibGuard guard;
  if (gUi) gUi->setStatus(text);
}

void TWorkerUi::showItem(const char* text) { FSetStatus(text); }

const char* FCommandLabel(int32_t cmdId) {
  for (const TCommandDef& def : kCommands)
    if (def.id == cmdId) return def.label;
  return nullptr;
}

TThread::TThread(int32_t id) : cmdId(id) {
  const char* label = FCommandLabel(id);
  if (label == nullptr) FInternalBox(1780);
  TWorkSet* work = FWorkSet();
  work->stopState = kStopRun;
  for (int32_t& counter : work->counters) counter = 0;
  if (gUi) {
    gUi->beginProgress();
    gUi->setStatus2(label);
  }
  FSetProgressSink(gUi);
}

TThread::~TThread() {
  // The thread posts its completion as the last thing it does for the
  // command, and uses its object until it sets its end event: wait for that
  // (at once when it has ended) rather than a fixed pause, which every
  // command paid in full. A second at most, as the base's stop would wait;
  // a thread that never started sets none, so that wait is short.
  endEvent.wait(threadHandle != -1 ? 1000 : 50);
  FSetProgressSink(nullptr);
  if (gUi) {
    gUi->endProgress();
    gUi->setStatus2("");
  }
  FSetStatus("");
  if (error == 0) {
    if (gUi) gUi->commandFinished(*this);
    FResetWork();
  } else {
    if (stopRequested) FSetStatus("中止しました");
    FArchive()->reloadArchive();
  }
}

void TThread::run() {
  try {
    runCommand();
  } catch (int thrown) {
    error = thrown;
  }
  FFreeCodecScratch();
  if (gUi) gUi->postCompletion();
}

namespace {
void showHit(TVer* ver, void*) {
  if (gUi) gUi->searchHit(ver);
}
}  // namespace

void TThread::runCommand() {
  switch (cmdId) {
    case kCmdAdd: {
      const TApp& app = *FApp();
      TAddOptions options;
      options.skipEquDtF = app.skipEquDtF;
      options.skipEquF = app.skipEquF;
      options.userTag = app.userTag;
      options.threads = threads;
      FCmdAdd(target, paths, cond, options);
      return;
    }
    case kCmdExtract:
      FCmdExtract(records, destDir.ptr, cond, base);
      return;
    case kCmdSearch:
      FCmdSearch(records, *cond, showHit, nullptr);
      return;
    case kCmdDelete:
      FCmdDelete(records);
      return;
    default:
      FInternalBox(1786);
  }
}

TThread* FThread() { return gThread; }

void FStartCommand(TThread* thread) {
  gThread = thread;
  thread->start(/*selfDelete=*/false);
}

void FCompleteCommand() {
  if (gThread == nullptr) {
    try {
      FInternalBox(941);
    } catch (int) {
      // Shown; nothing is running, so there is nothing to close.
    }
    return;
  }
  TThread* thread = gThread;
  gThread = nullptr;
  delete thread;
}

int FRequestStop() {
  if (gThread == nullptr) return 1;
  TWorkSet* work = FWorkSet();
  work->stopState = kStopHold;
  if (!gUi || !gUi->askYesNo("処理を中止してよろしいですか？")) {
    work->stopState = kStopRun;
    return 0;
  }
  work->stopState = kStopNow;
  gThread->stopRequested = 1;
  FSetStatus("処理を中止しています...");
  for (int i = 0; i < kStopPolls; i++) {
    SysSleep(kStopPoll);
    if (gThread->threadHandle == -1) return 1;
  }
  FSetStatus("処理を中止できませんでした");
  return 0;
}

int FBusy(int mode) {
  if (gThread == nullptr) return 0;
  if (mode == 1) {
    FMsg(kMsgWarning, "処理を実行中です");
    return 1;
  }
  if (mode == 0) return 1;
  FInternalBox(1815);
}

LStr FAddReport(int32_t done, int32_t seen, int32_t created, int32_t skipped) {
  LStr text;
  if (done == seen) {
    text.format("%d 個のファイルを追加しました", done);
    return text;
  }
  text.format("%d/%d 個のファイルを追加しました (", done, seen);
  const char* separator = "";
  auto part = [&](const char* label, int32_t count) {
    if (count == 0) return;
    text.format("%s%s: %d", separator, label, count);
    separator = ", ";
  };
  part("新規", created);
  part("更新", done - created);
  part("条件で除外", seen - skipped - done);
  part("不変のためスキップ", skipped);
  text.append(')');
  return text;
}
