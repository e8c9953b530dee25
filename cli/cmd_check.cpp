// kst check: every version read back and the free space against the blocks.
#include "archive/archive.h"
#include "cli/cli_console.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "store/archive_check.h"

namespace {
void printFault(const char* text, void* console) { static_cast<TCliConsole*>(console)->out(text); }
}  // namespace

int FRunCheck(TCliContext& context) {
  TCheckTotals totals = FCheckArchive(context.session.archive(), printFault, &context.console);
  if (totals.faults > 0) {
    context.console.out(LStr().format("%d 個の問題が見つかりました", totals.faults).ptr);
    return 1;
  }
  context.console.out(
      LStr()
          .format("%d 個のファイル、%d 個のバージョン、%d 個の空き領域を検査しました。"
                  "問題はありません",
                  totals.files, totals.versions, totals.extents)
          .ptr);
  return 0;
}
