// kst mkdir and kst mv: a new folder and a new name, under the name rules of
// the panes, committed at once.
#include "archive/archive.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "lib/msg.h"

namespace {

// Writes the changed tree into the archive; a failure throws.
int commitTree(TArchive& archive) {
  archive.treeDirty = 1;
  FCommitTree(archive);
  return 0;
}

}  // namespace

int FRunMkdir(TCliContext& context) {
  TArchive& archive = context.session.archive();
  const char* path = context.request.plain[1]->ptr;
  LStrs names;
  FItemNames(path, names);
  if (names.count == 0) {
    FMsg(kMsgGeneral, "項目 '%s' はすでに存在します", path);
    return 1;
  }
  // The folder part of the path: all names but the last.
  LStr parentPath("/");
  for (int32_t i = 0; i + 1 < names.count; i++) parentPath.append(*names[i]).append('/');
  TRec* parent = FFindItem(archive.root, parentPath.ptr);
  if (parent == nullptr) return 1;
  if (!parent->isFolder()) {
    FMsg(kMsgGeneral, "「%s」はフォルダではありません", parentPath.ptr);
    return 1;
  }
  TFolder* folder = static_cast<TFolder*>(parent);
  const char* name = names[names.count - 1]->ptr;
  if (!FCheckNewName(folder, name, nullptr)) return 1;
  folder->addFolder(name);
  return commitTree(archive);
}

int FRunMv(TCliContext& context) {
  TArchive& archive = context.session.archive();
  TRec* rec = FFindItem(archive.root, context.request.plain[1]->ptr);
  if (rec == nullptr) return 1;
  if (rec->isRoot()) {
    FMsg(kMsgGeneral, "ルート フォルダの名前は変更できません");
    return 1;
  }
  const char* name = context.request.plain[2]->ptr;
  TRecF* named = static_cast<TRecF*>(rec);
  // An empty name is dropped by the rules without a message; here it is an
  // error, since nothing would be done.
  if (*name == 0) {
    FMsg(kMsgGeneral, "新しい名前がありません");
    return 1;
  }
  if (!FCheckNewName(static_cast<TRecF*>(rec->parent), name, rec)) return 1;
  named->setName(name);
  return commitTree(archive);
}
