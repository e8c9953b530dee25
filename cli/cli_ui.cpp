#include "cli/cli_ui.h"

#include "app/worker.h"
#include "archive/record.h"
#include "cli/cli_console.h"
#include "cli/list_table.h"
#include "cli/text_width.h"
#include "lib/sys_terminal.h"
#include "store/add_command.h"
#include "store/delete_command.h"
#include "store/extract_command.h"
#include "store/search_cmd.h"
#include "store/work_set.h"

namespace {
// The progress line is drawn at most this often: 100 ms in file-time ticks.
const SysTime kDrawInterval = 1000000;
// How often the main thread looks for a break while the worker runs.
const int32_t kBreakPoll = 100;
// The width of the progress line, which must fit the narrowest terminal.
const int32_t kLineWidth = 79;
const int32_t kBarWidth = 20;
}  // namespace

TCliUi::TCliUi(TCliConsole& console) : console_(console), mainThread_(SysCurrentThreadId()) {}

void TCliUi::setStatus(const char* text) {
  if (SysCurrentThreadId() == mainThread_) {
    if (*text != 0) console_.err(text);
    return;
  }
  item_ = text;
  draw();
}

void TCliUi::setStatus2(const char* text) { label_ = text; }

void TCliUi::showPercent(int32_t percent) {
  // The formula of the progress frames may run past 100.
  percent_ = percent < 0 ? 0 : percent > 100 ? 100 : percent;
  draw();
}

void TCliUi::beginProgress() {
  percent_ = 0;
  item_.clear();
  lastDraw_ = 0;
  started_ = SysNow();
}

void TCliUi::endProgress() { console_.status(""); }

bool TCliUi::askYesNo(const char* question) { return console_.ask(question); }

void TCliUi::draw() {
  if (!console_.showsStatus()) return;
  SysTime now = SysNow();
  if (now - lastDraw_ < kDrawInterval) return;
  lastDraw_ = now;
  LStr line("[");
  int32_t filled = percent_ * kBarWidth / 100;
  for (int32_t i = 0; i < kBarWidth; i++) line.append(i < filled ? '#' : '.');
  line.format("] %3d%% ", percent_);
  // The time left, from the pace so far, once there is a pace to go by.
  if (percent_ > 0 && percent_ < 100) {
    const int64_t seconds =
        static_cast<int64_t>((now - started_) / 10000000) * (100 - percent_) / percent_;
    line.format("残り %d:%02d ", static_cast<int32_t>(seconds / 60),
                static_cast<int32_t>(seconds % 60));
  }
  line.format("%s ", label_.ptr);
  TEscapeForm escapes = console_.errEscapes();
  line.append(FFitTail(item_.ptr, kLineWidth - FTextWidth(line.ptr, escapes), escapes));
  console_.status(line.ptr);
}

void TCliUi::searchHit(TVer* ver) {
  if (hits) hits->addRow(ver);
}

void TCliUi::commandFinished(TThread& thread) {
  const TWorkSet& work = *FWorkSet();
  switch (thread.cmdId) {
    case kCmdAdd:
      console_.out(FAddReport(work.done, work.seen, work.created, work.skipped).ptr);
      if (work.refused != 0) console_.out(FNotAddedReport(work.refused).ptr);
      return;
    case kCmdExtract:
      console_.out(FExtractReport(work.done - work.refused, work.refused).ptr);
      return;
    case kCmdDelete:
      console_.out(FDeleteReport(work.done).ptr);
      return;
    case kCmdSearch:
      if (hits == nullptr) return;
      hits->print(console_);
      console_.out(FSearchReport(hits->rowCount()).ptr);
      return;
    default:
      return;
  }
}

int FRunOnWorker(TThread* thread, TCliUi& ui) {
  SysCatchBreak();
  FStartCommand(thread);
  // LEvent::wait gives 1 on time-out.
  while (ui.completion.wait(kBreakPoll) != 0) {
    if (SysTakeBreak()) FRequestStop();
  }
  // An entry that was not stored or not extracted fails the command, though
  // the rest of it went on.
  int status = thread->error != 0 || FWorkSet()->refused != 0 ? 1 : 0;
  FCompleteCommand();
  return status;
}
