// kst info: the figures of the statistics scan, the file and its free space.
#include "app/column_text.h"
#include "archive/archive.h"
#include "cli/cli_console.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "store/archive_stats.h"

namespace {

// "low - high", or "-" for a range that no version widened.
LStr range(int32_t low, int32_t high, LStr (*show)(int64_t)) {
  if (low > high) return LStr("-");
  return show(low).append(" - ").append(show(high));
}

LStr number(int64_t value) { return LStr().format("%lld", static_cast<long long>(value)); }

}  // namespace

int FRunInfo(TCliContext& context) {
  TArchive& archive = context.session.archive();
  FScanStats(archive, /*level=*/2);
  const TStats& stats = archive.stats;
  int64_t freeBytes = 0;
  int32_t holes = 0;
  for (const TExtent* extent : archive.freeList) {
    if (extent->isTail()) continue;
    freeBytes += extent->size;
    holes++;
  }
  TCliConsole& out = context.console;
  out.out(LStr().format("アーカイブ: %s", archive.fullPath.ptr).ptr);
  out.out(LStr()
              .format("ファイルサイズ: %s バイト", FGroupDigits(FFileSize(archive.path.ptr)).ptr)
              .ptr);
  out.out(LStr().format("フォルダ数: %d", stats.folders).ptr);
  out.out(LStr().format("ファイル数: %d", stats.files).ptr);
  out.out(LStr().format("バージョン数: %d", stats.versions).ptr);
  out.out(LStr().format("最大バージョン数: %d", stats.maxVersions).ptr);
  out.out(LStr().format("更新日時: %s", range(stats.timeMin, stats.timeMax, FFormatTime).ptr).ptr);
  out.out(LStr().format("サイズ: %s", range(stats.sizeMin, stats.sizeMax, FGroupDigits).ptr).ptr);
  out.out(LStr().format("格納番号: %s", range(stats.storeMin, stats.storeMax, number).ptr).ptr);
  out.out(LStr().format("ファイル名の種類: %d", stats.names.elementCount).ptr);
  out.out(LStr().format("コメントの種類: %d", stats.comments.elementCount).ptr);
  out.out(LStr().format("ユーザー名の種類: %d", stats.users.elementCount).ptr);
  out.out(LStr().format("チェックアウトの種類: %d", stats.checkouts.elementCount).ptr);
  out.out(LStr().format("空き領域: %s バイト (%d 個)", FGroupDigits(freeBytes).ptr, holes).ptr);
  return 0;
}
