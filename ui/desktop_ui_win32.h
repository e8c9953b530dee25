// The worker's user interface in the desktop program, and the reporter that
// shows messages as the system's boxes. What the worker thread reports (its
// item, its percentage) is kept here and posted to the main window, which
// draws it: the worker never waits for the main thread, which may itself
// be waiting for the worker to stop.
#pragma once

#include <windows.h>

#include "app/app_msg.h"
#include "app/product.h"
#include "app/worker_ui.h"
#include "lib/larr.h"
#include "lib/lstr.h"

class TMainWin;
class TRec;

// A version that the search found, with the texts of its row.
struct TSearchRow {
  TRec* rec;
  LStrs textsById;
};

class TDesktopUi : public TWorkerUi {
 public:
  explicit TDesktopUi(TMainWin& win);

  void setStatus(const char* text) override;
  void setStatus2(const char* text) override;
  void showPercent(int32_t percent) override;
  void beginProgress() override;
  void endProgress() override;
  bool askYesNo(const char* question) override;
  void postCompletion() override;
  void searchHit(TVer* ver) override;
  void commandFinished(TThread& thread) override;

  // On the main thread, at the window's notice: shows what the worker left.
  void showPending();

 private:
  void post();

  TMainWin& win_;
  DWORD mainThread_;
  LStr pendingText_;
  int32_t pendingPercent_ = -1;
  bool posted_ = false;
  LArrOf<TSearchRow*, LDelete<TSearchRow*>> pendingRows_;
};

class TDesktopMsg : public TMsg {
 public:
  // The first word of the titles of reported messages: the maker's name
  // until start-up has read its settings, then the program's.
  void setTitleWord(const char* word) { titleWord_ = word; }
  void output(int number, const char* position, const char* level, const char* text) override;
  int showBox(char kind, const char* title, const char* text) override;

 private:
  LStr titleWord_{kMakerName};
};
