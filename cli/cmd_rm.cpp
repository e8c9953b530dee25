// kst rm: deletes the named items, or one version of a file (-v N), or the
// versions that conditions select below the named items; on the worker.
#include "app/worker.h"
#include "archive/archive.h"
#include "cli/cli_console.h"
#include "cli/cli_session.h"
#include "cli/cli_ui.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "lib/msg.h"
#include "store/cond.h"
#include "store/cond_walk.h"
#include "store/delete_command.h"
#include "store/work_set.h"

namespace {

// Conditions select versions; without any, the items themselves go.
bool selectsVersions(const TCond& cond) {
  return cond.Level() > 0 || cond.maxVersions != 1 || cond.fromOldest != 0;
}

void collectHit(TVer* ver, void* context) { static_cast<LArrOf<TRec*>*>(context)->add(ver); }

}  // namespace

void FDeclareRm(TCliArgs& args, TCliRequest& request) {
  FDeclareCat(args, request);
  request.condOptions.declareVersions(args);
}

int FRunRm(TCliContext& context) {
  TFolder* root = context.session.archive().root;
  const LStrs& plain = context.request.plain;
  LArrOf<TRec*> items;
  for (int32_t i = 1; i < plain.count; i++) {
    TRec* rec = FFindItem(root, plain[i]->ptr);
    if (rec == nullptr) return 1;
    if (rec->isRoot()) {
      FMsg(kMsgSyntax, "ルートは削除できません");
      return 1;
    }
    items.add(rec);
  }
  LArrOf<TRec*> records;
  if (context.request.version != 0) {
    for (TRec* rec : items) {
      TFile* file = rec->isFile() ? static_cast<TFile*>(rec) : nullptr;
      if (file == nullptr) {
        FMsg(kMsgSyntax, "-v はファイルにだけ指定できます");
        return 2;
      }
      TVer* ver = FFindVersion(file, context.request.version);
      if (ver == nullptr) return 1;
      records.add(ver);
    }
  } else if (selectsVersions(context.request.cond)) {
    FWalkItems(items, context.request.cond, collectHit, &records);
    FWorkSet()->done = 0;
  } else {
    records.addAll(items);
  }
  if (records.count == 0) {
    context.ui.console().out(FDeleteReport(0).ptr);
    return 0;
  }
  TThread* thread = new TThread(kCmdDelete);
  thread->records.addAll(records);
  thread->cond = &context.request.cond;
  return FRunOnWorker(thread, context.ui);
}
