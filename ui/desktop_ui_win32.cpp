#include "ui/desktop_ui_win32.h"

#include "app/column.h"
#include "app/column_text.h"
#include "app/config.h"
#include "app/worker.h"
#include "archive/record.h"
#include "lib/fail.h"
#include "lib/liblock.h"
#include "lib/sys.h"
#include "ui/main_win_win32.h"

TDesktopUi::TDesktopUi(TMainWin& win) : win_(win), mainThread_(GetCurrentThreadId()) {}

void TDesktopUi::post() {
  // Called under the library lock: one notice until the window has drawn.
  if (posted_) return;
  posted_ = true;
  PostMessageA(win_.hwnd, WM_USER, 0, 0);
}

void TDesktopUi::setStatus(const char* text) {
  if (GetCurrentThreadId() == mainThread_) {
    win_.setStatus(text);
    return;
  }
  FLibGuard guard;
  pendingText_ = text;
  post();
}

void TDesktopUi::showPercent(int32_t percent) {
  FLibGuard guard;
  pendingPercent_ = percent < 0 ? 0 : percent > 100 ? 100 : percent;
  post();
}

void TDesktopUi::showPending() {
  LStr text;
  int32_t percent;
  LArrOf<TSearchRow*, LDelete<TSearchRow*>> rows;
  {
    FLibGuard guard;
    text.swap(pendingText_);
    percent = pendingPercent_;
    pendingPercent_ = -1;
    posted_ = false;
    while (pendingRows_.count > 0) rows.add(pendingRows_.detach(0));
  }
  for (TSearchRow* row : rows) win_.list().addSearchRow(row->rec, row->textsById);
  if (!text.empty()) win_.setStatus(text.ptr);
  if (percent >= 0) win_.setPercent(percent);
}

void TDesktopUi::setStatus2(const char* text) { win_.setStatusPart(2, text); }
void TDesktopUi::beginProgress() { win_.showProgress(true); }
void TDesktopUi::endProgress() { win_.showProgress(false); }

bool TDesktopUi::askYesNo(const char* question) { return win_.ask(question, false) == kAnswerYes; }

void TDesktopUi::postCompletion() { PostMessageA(win_.hwnd, WM_COMMAND, kCmdWorkerDone, 0); }

// The texts are made here, on the worker, which owns the archive whose
// version headers they read; the main thread only puts them in the list.
void TDesktopUi::searchHit(TVer* ver) {
  TSearchRow* row = new TSearchRow{ver, {}};
  const TRec* base = FConfig()->searchBase;
  for (int32_t id = kColName; id <= kColFolder; id++)
    row->textsById.add(new LStr(FColumnText(ver, id, base)));
  FLibGuard guard;
  pendingRows_.add(row);
  post();
}

void TDesktopUi::commandFinished(TThread& thread) { win_.commandFinished(thread); }

void TDesktopMsg::output(int number, const char* position, const char* /*level*/,
                         const char* text) {
  if (number == 0 && position == nullptr) {
    // Plain messages are traces; the desktop has no console to show them.
    return;
  }
  // Neither the number nor the position shows in these boxes: only the
  // boxes of FError, FWarn and FInfo carry a number.
  char kind = number < kMsgWarning ? 'e' : number < 39999 ? 'w' : 'm';
  LStr title;
  title.format("%s %s", titleWord_.ptr, FBoxKindWord(kind));
  showBox(kind, title.ptr, text);
}

int TDesktopMsg::showBox(char kind, const char* title, const char* text) {
  UINT icon = kind == 'e' ? MB_ICONERROR : kind == 'w' ? MB_ICONWARNING : MB_ICONINFORMATION;
  return SysMessageBox(title, text, MB_OK | MB_TOPMOST | icon);
}
