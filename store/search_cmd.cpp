#include "store/search_cmd.h"

#include "store/work_set.h"

int32_t FCmdSearch(const LArrOf<TRec*>& records, const TCond& cond, FVerFound found,
                   void* context) {
  int32_t before = FWorkSet()->done;
  FWalkItems(records, cond, found, context);
  return FWorkSet()->done - before;
}

LStr FSearchReport(int32_t count) {
  if (count == 0) return LStr("見つかりませんでした");
  return LStr().format("%d 個のバージョンが見つかりました", count);
}
