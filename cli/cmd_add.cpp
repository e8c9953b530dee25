// kst add: the add command on the worker, into the root, a folder (made when
// missing) or a file.
#include "app/worker.h"
#include "archive/archive.h"
#include "cli/cli_session.h"
#include "cli/cli_ui.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "store/add_command.h"

namespace {

// The record of --to: each missing folder on the way is made under the name
// rules; a file ends the way and takes the versions itself. The new folders
// reach the file with the add's commit, or go with the reload after a
// failure.
TRec* addTarget(TArchive& archive, const char* path) {
  LStrs names;
  FItemNames(path, names);
  TRec* rec = archive.root;
  for (const LStr* name : names) {
    if (!rec->isFolder()) {
      FMsg(kMsgGeneral, "「%s」はフォルダではありません", path);
      return nullptr;
    }
    TFolder* folder = static_cast<TFolder*>(rec);
    rec = folder->findChild(name->ptr);
    if (rec != nullptr) continue;
    if (!FCheckNewName(folder, name->ptr, nullptr)) return nullptr;
    rec = folder->addFolder(name->ptr);
  }
  return rec;
}

// A file as the target takes one file, with a question when its name is
// not the target's.
bool targetTakes(TRec* target, const LStrs& paths, TCliUi& ui) {
  LStr question;
  if (!FAddTargetTakes(target, paths, question)) return false;
  return question.empty() || ui.askYesNo(question.ptr);
}

}  // namespace

int FRunAdd(TCliContext& context) {
  TArchive& archive = context.session.archive();
  TCliRequest& request = context.request;
  TRec* target = request.to.empty() ? archive.root : addTarget(archive, request.to.ptr);
  if (target == nullptr) return 1;
  LStrs paths;
  // Full paths, so that "." and ".." name the folder they stand for.
  for (int32_t i = 1; i < request.plain.count; i++)
    paths.add(new LStr(FFullPath(request.plain[i]->ptr)));
  if (!targetTakes(target, paths, context.ui)) return 1;
  TThread* thread = new TThread(kCmdAdd);
  thread->target = target;
  for (const LStr* path : paths) thread->paths.add(new LStr(*path));
  thread->cond = &request.cond;
  thread->threads = request.threads;
  return FRunOnWorker(thread, context.ui);
}
