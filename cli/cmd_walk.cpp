// kst extract and kst find: the two walker commands on the worker, over the
// named records or the whole archive.
#include "app/worker.h"
#include "archive/archive.h"
#include "cli/cli_session.h"
#include "cli/cli_ui.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "cli/list_table.h"

namespace {

// The records of the plain words behind the archive, the root without any;
// false after a path was not found.
bool namedRecords(TCliContext& context, LArrOf<TRec*>& records) {
  const LStrs& plain = context.request.plain;
  TFolder* root = context.session.archive().root;
  if (plain.count < 2) records.add(root);
  for (int32_t i = 1; i < plain.count; i++) {
    TRec* rec = FFindItem(root, plain[i]->ptr);
    if (rec == nullptr) return false;
    records.add(rec);
  }
  return true;
}

}  // namespace

int FRunExtract(TCliContext& context) {
  LArrOf<TRec*> records;
  if (!namedRecords(context, records)) return 1;
  TThread* thread = new TThread(kCmdExtract);
  thread->records.addAll(records);
  // Paths below the destination run from the root, as in an archive listing.
  thread->base = nullptr;
  thread->destDir = context.request.dest.empty() ? LStr(".") : context.request.dest;
  thread->cond = &context.request.cond;
  return FRunOnWorker(thread, context.ui);
}

int FRunFind(TCliContext& context) {
  LArrOf<TRec*> records;
  if (!namedRecords(context, records)) return 1;
  LInts columns;
  FViewColumns(kViewSearch, context.request.all != 0, columns);
  TCliTable hits(columns, nullptr);
  context.ui.hits = &hits;
  TThread* thread = new TThread(kCmdSearch);
  thread->records.addAll(records);
  thread->cond = &context.request.cond;
  int status = FRunOnWorker(thread, context.ui);
  context.ui.hits = nullptr;
  return status;
}
