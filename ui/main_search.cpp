#include "app/config.h"
#include "app/worker.h"
#include "archive/record.h"
#include "ui/main_logic.h"
#include "ui/main_view.h"

LStr FSearchTitle(const TRecList& records) {
  LStr title("検索");
  if (records.count == 1) {
    LStr path;
    records[0]->displayPath(path);
    title.format(" - %s", path.ptr);
  } else if (records.count > 1) {
    title.format(" - %d 個のファイル/フォルダ", records.count);
  }
  return title;
}

void TMainLogic::fcSearch() {
  TRecList records;
  view_.selection(records);
  if (records.count == 0) return;
  TConfig& config = *FConfig();
  TCond& cond = config.searchCond();
  if (!view_.runSearchDialog(FSearchTitle(records).ptr, cond, records)) return;
  if (FBusy(1)) return;
  view_.clearSearchRows();
  config.searchBase = view_.treeSelected();
  TThread* thread = new TThread(kCmdSearch);
  thread->records.addAll(records);
  thread->cond = &cond;
  view_.startCommand(thread);
}
