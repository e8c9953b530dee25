#include "store/cond_walk.h"

#include <cstdint>

#include "archive/record.h"
#include "lib/lstr.h"
#include "store/cond.h"
#include "store/cond_match.h"
#include "store/ver_info.h"
#include "store/work_set.h"

namespace {
const int32_t kNoLimit = INT32_MAX;

// The path is built only when a path condition is set.
bool pathFits(const TRec* record, const TCond& cond) {
  if (cond.paths == nullptr && cond.pathRex == nullptr) return true;
  LStr path;
  record->pathOf(path, nullptr, '/');
  return FPathCondTest(path.ptr, cond);
}

// The first test that fails decides, so a version's header is read only
// for a version that is still in the running and a condition that needs it.
bool meetsAll(TVer* ver, const TCond& cond) {
  if (!FNameTest(ver->name(), cond) || !FDateTest(ver->time, cond) || !FStoreNoTest(ver, cond))
    return false;
  bool commentFits =
      cond.commentRex != nullptr ? FCommentRexTest(ver, cond) : FCommentTest(ver, cond);
  if (!commentFits || !FSizeTest(ver->size, cond) || !pathFits(ver, cond)) return false;
  if (!FVerNoTest(ver, cond) || !FUserTest(ver, cond) || !FCheckoutTest(ver, cond)) return false;
  return cond.attrActive == 0 || FAttrTest(ver->Info()->attrs, cond);
}

void testRecord(TRec* record, const TCond& cond, FVerFound found, void* context) {
  if (record->isVer()) {
    FVerTest(static_cast<TVer*>(record), cond, found, context);
  } else if (record->isFile()) {
    TFile* file = static_cast<TFile*>(record);
    if (FFileTest(file, cond)) FWalkVersions(file, cond, found, context);
  }
}

// Folders wait on a list rather than in recursion, so that a deep tree costs
// no stack; children are pushed in reverse to be met in tree order.
void walkRecord(TRec* record, const TCond& cond, FVerFound found, void* context) {
  LArrOf<TRec*> pending;
  pending.add(record);
  while (pending.count > 0) {
    TRec* rec = pending.pop();
    if (!rec->isFolder()) {
      testRecord(rec, cond, found, context);
      continue;
    }
    const LArrOf<TRec*>& children = static_cast<TRecF*>(rec)->children;
    for (int32_t i = children.count - 1; i >= 0; i--) pending.add(children[i]);
  }
}
}  // namespace

void FWalkItems(const LArrOf<TRec*>& records, const TCond& cond, FVerFound found, void* context) {
  for (TRec* record : records) walkRecord(record, cond, found, context);
}

void FWalkVersions(TFile* file, const TCond& cond, FVerFound found, void* context) {
  int32_t limit = cond.maxVersions > 0 ? cond.maxVersions : kNoLimit;
  int32_t count = file->children.count;
  int32_t step = cond.fromOldest != 0 ? 1 : -1;
  int32_t hits = 0;
  for (int32_t i = cond.fromOldest != 0 ? 0 : count - 1; i >= 0 && i < count && hits < limit;
       i += step) {
    if (FVerTest(file->version(i), cond, found, context)) hits++;
  }
}

bool FFileTest(const TFile* file, const TCond& cond) {
  return FNameTest(file->name(), cond) && pathFits(file, cond);
}

bool FVerTest(TVer* ver, const TCond& cond, FVerFound found, void* context) {
  if (!meetsAll(ver, cond)) return false;
  found(ver, context);
  FWorkSet()->done++;
  return true;
}
