#include "ui/main_logic.h"

#include <cstring>

#include "app/app.h"
#include "app/config.h"
#include "app/product.h"
#include "app/worker.h"
#include "archive/archive.h"
#include "archive/format.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/strfunc.h"
#include "lib/sys.h"
#include "store/add_command.h"
#include "store/extract_command.h"
#include "store/search_cmd.h"
#include "store/work_set.h"
#include "ui/command_table.h"
#include "ui/history.h"
#include "ui/main_view.h"

namespace {
const char* const kUntitledName = "無題";
// Between two new copies of the program, so that they do not race for
// their work folders.
const int32_t kStartGap = 50;

TArchive& archive() { return *FArchive(); }
}  // namespace

LStr FSaveAsPath(const char* chosen) {
  LStr path(chosen);
  LPathParts parts(chosen);
  if (path.length > parts.nameStart && path[path.length - 1] == '.') {
    path.truncate(path.length - 1);
    return path;
  }
  if (path[parts.nameStart] != '.' && !parts.hasExt()) path.append(".kst");
  return path;
}

int32_t FAnswerForward(const char* openFullPath, const char* asked) {
  if (openFullPath == nullptr || *openFullPath == 0) return 0;
  return FStrCmp(openFullPath, asked, /*ignoreCase=*/true) == 0 ? 1 : 0;
}

LStr FCommandReport(int32_t cmdId, const TWorkSet& work, int32_t searchRows) {
  switch (cmdId) {
    case kCmdAdd: {
      LStr text = FAddReport(work.done, work.seen, work.created, work.skipped);
      if (work.refused != 0) text.append(" ").append(FNotAddedReport(work.refused));
      return text;
    }
    case kCmdExtract:
      return FExtractReport(work.done - work.refused, work.refused);
    case kCmdSearch:
      return FSearchReport(searchRows);
    default:
      return LStr();
  }
}

bool FLooksLikeArchive(const char* path) {
  if (std::strcmp(FExtOf(path, /*withDot=*/false).ptr, "kst") != 0) return false;
  SysFile file = SysOpenFile(path, 'r');
  if (file == kSysNoFile) return false;
  char head[sizeof(kMagic)];
  int32_t done = 0;
  bool read = SysReadFile(file, head, sizeof(head), &done);
  SysCloseFile(file);
  return read && done == sizeof(head) && std::memcmp(head, kMagic, sizeof(head)) == 0;
}

bool TMainLogic::holdsEmptyUntitled() const {
  return archive().isUntitled() && (archive().root == nullptr || archive().root->childCount() == 0);
}

void TMainLogic::updateTitle() {
  TArchive& a = archive();
  LStr title(kProductName);
  title.append(" - ");
  title.append(a.isUntitled() ? kUntitledName : a.fullPath.ptr);
  view_.setTitle(title.ptr, FNameOf(a.path.ptr).ptr);
}

bool TMainLogic::fcClose(bool makeFresh) {
  TArchive& a = archive();
  bool untitled = a.isUntitled();
  if (untitled && a.root->childCount() == 0) return true;
  if (untitled) {
    TAnswer answer = view_.ask("アーカイブを保存しますか？", /*withCancel=*/true);
    if (answer == kAnswerCancel) return false;
    if (answer == kAnswerYes && !fcSaveAs()) return false;
  }
  LStr kept(a.path);
  bool keptUntitled = a.isUntitled();
  if (a.closeArchive(/*keepTree=*/false, /*commit=*/true) == 0) {
    if (view_.ask("変更を破棄して閉じますか？", false) != kAnswerYes) return false;
    a.closeArchive(false, false);
  }
  if (keptUntitled) SysDeleteFile(kept.ptr);
  if (makeFresh) a.loadArchive(nullptr, /*addToRecent=*/true, /*keepTree=*/false);
  updateTitle();
  view_.updateCommands();
  return true;
}

bool TMainLogic::closeWindow() {
  if (FThread() == nullptr) return fcClose(/*makeFresh=*/false);
  if (FRequestStop()) view_.postCommand(kCmdExit);
  return false;
}

bool TMainLogic::fcSaveAs() {
  TArchive& a = archive();
  TFileChoice choice;
  choice.filterIdx = app_.arcDlgFilterIdx;
  bool untitled = a.isUntitled();
  if (!untitled) {
    choice.folder = a.folder;
    choice.name = FNameOf(a.path.ptr);
  } else {
    choice.folder = app_.arcDlgDir;
    if (a.root->childCount() > 0) {
      LStr addedFrom = FDirOf(a.firstAddPath.ptr, /*keepSep=*/false);
      if (!addedFrom.empty() && FExists(addedFrom.ptr) != kExistsNone) choice.folder = addedFrom;
      choice.name = FChangeExt(a.root->children[0]->name(), "kst");
    }
  }
  if (!view_.chooseArchiveToSave(choice) || choice.chosen.count == 0) return false;
  LStr path = FSaveAsPath(choice.chosen[0]->ptr);
  if (FStrCmp(FFullPath(path.ptr).ptr, a.fullPath.ptr, true) == 0) {
    FMsg(kMsgWarning, "同じアーカイブです");
    return false;
  }
  if (FExists(path.ptr) != kExistsNone) {
    LStr question;
    question.format("既存のファイル %s を上書きしますか？", path.ptr);
    if (view_.ask(question.ptr, false) != kAnswerYes) return false;
  }
  if (!SysCopyFile(a.path.ptr, path.ptr, /*failIfExists=*/false)) {
    LStr reason;
    SysErrorText(SysLastError(), reason);
    FMsg(kMsgWarning, "ファイルの書き込みに失敗しました\r\n%s", reason.ptr);
    return false;
  }
  LStr old(a.path);
  a.close();
  if (untitled) SysDeleteFile(old.ptr);
  a.setPath(path.ptr);
  a.reopen(a.path.ptr, 'r', /*mustExist=*/true);
  app_.arcDlgDir = a.folder;
  app_.arcDlgFilterIdx = choice.filterIdx;
  updateTitle();
  app_.addRecent(a.fullPath.ptr);
  view_.setStatus(LStr().format("%s として保存しました", a.fullPath.ptr).ptr);
  return true;
}

void TMainLogic::fcOpen() {
  TArchive& a = archive();
  TFileChoice choice;
  choice.filterIdx = app_.arcDlgFilterIdx;
  choice.folder = app_.arcDlgDir;
  if (choice.folder.empty()) {
    if (!a.isUntitled())
      choice.folder = a.folder;
    else if (!view_.documentsFolder(choice.folder))
      choice.folder = view_.programFolder();
  }
  if (!view_.chooseArchivesToOpen(choice) || choice.chosen.count == 0) return;
  app_.arcDlgDir = FDirOf(choice.chosen[0]->ptr, /*keepSep=*/false);
  app_.arcDlgFilterIdx = choice.filterIdx;
  openArchives(choice.chosen, /*inNewProcessOnly=*/false);
}

void TMainLogic::openRecent(int32_t index) {
  if (index < 0 || index >= app_.mru.count) return;
  LStr path(*app_.mru[index]);
  if (FExists(path.ptr) == kExistsNone) {
    LStr question;
    question.format("%s は存在しません。新しく作成しますか？", path.ptr);
    if (view_.ask(question.ptr, false) != kAnswerYes) {
      app_.removeRecent(path.ptr);
      return;
    }
  }
  LStrs one;
  one.add(new LStr(path));
  openArchives(one, false);
}

void FForwardToRunning(LStrs& paths, TRunningCopies& copies) {
  if (FConfig() == nullptr || FConfig()->otherInstance == 0) return;
  for (int32_t i = 0; i < paths.count;) {
    if (copies.bringForwardCopyWith(FFullPath(paths[i]->ptr).ptr))
      paths.removeRange(i, 1);
    else
      i++;
  }
}

void TMainLogic::openArchives(const LStrs& paths, bool inNewProcessOnly) {
  LStrs left;
  for (const LStr* path : paths) left.add(new LStr(*path));
  FForwardToRunning(left, view_);
  int32_t first = 0;
  if (left.count > 0 && FThread() == nullptr && holdsEmptyUntitled() && !inNewProcessOnly) {
    if (fcClose(/*makeFresh=*/false)) {
      archive().loadArchive(left[0]->ptr, /*addToRecent=*/true, /*keepTree=*/false);
      updateTitle();
      view_.updateCommands();
      first = 1;
    }
  }
  for (int32_t i = first; i < left.count; i++) {
    if (i > first) view_.pause(kStartGap);
    app_.addRecent(FFullPath(left[i]->ptr).ptr);
    view_.startCopy(left[i]->ptr);
  }
}

void TMainLogic::fcDropFiles(const LStrs& paths, bool noDialog) {
  if (paths.count == 0) return;
  bool allArchives = holdsEmptyUntitled();
  for (int32_t i = 0; allArchives && i < paths.count; i++)
    allArchives = FLooksLikeArchive(paths[i]->ptr);
  if (allArchives)
    openArchives(paths, false);
  else
    fcAdd(paths, noDialog);
}

bool TMainLogic::checkAddTarget(TRec* target, const LStrs& paths, bool confirm) {
  LStr question;
  if (!FAddTargetTakes(target, paths, question)) return false;
  return !confirm || question.empty() || view_.ask(question.ptr, false) == kAnswerYes;
}

void TMainLogic::fcAdd(const LStrs& paths, bool noDialog) {
  if (FBusy(1)) return;
  TRecList selected;
  view_.selection(selected);
  if (selected.count > 1) {
    FMsg(kMsgWarning, "複数の項目が選択されています");
    return;
  }
  TRec* target = selected.count == 1 ? selected[0] : archive().root;
  if (target->isVer()) target = target->parent;
  if (!checkAddTarget(target, paths, false)) return;
  LStrs sources;
  for (const LStr* path : paths) sources.add(new LStr(FFullPath(path->ptr)));
  TCond& cond = FConfig()->freshAddCond();
  if (!noDialog && !view_.runAddDialog(target, sources, cond)) return;
  if (sources.count == 0 || !checkAddTarget(target, sources, true)) return;
  TThread* thread = new TThread(kCmdAdd);
  thread->target = target;
  for (LStr* path : sources) thread->paths.add(new LStr(*path));
  thread->cond = &cond;
  view_.startCommand(thread);
}

void TMainLogic::fcExt() {
  if (FBusy(1)) return;
  TArchive& a = archive();
  TRecList records;
  view_.selection(records);
  if (records.count == 0) records.add(a.root);
  LStr dest;
  if (a.isUntitled())
    SysFullPath(".", dest);
  else
    dest = a.folder;
  TRec* treeRec = view_.treeSelected();
  TRec* base = treeRec;
  if (base != nullptr) {
    if (view_.treeHasFocus() ? !base->isRoot() : base->isFile()) base = base->parent;
  }
  // The destination mirrors the place in the archive the user looks at.
  if (treeRec != nullptr) {
    LStr inside;
    treeRec->pathOf(inside, nullptr, '/');
    if (!inside.empty()) {
      FAddSep(dest);
      dest.append(inside);
    }
  }
  // A root ("/", "C:\\") keeps its separator: without it, it is no root.
  bool isRoot = dest.length == 1 || (dest.length == 3 && dest[1] == ':');
  if (!isRoot) FDropSep(dest);
  LStr initial(dest);
  TCond& cond = FConfig()->freshExtractCond();
  if (!view_.runExtractDialog(dest, records, cond)) return;
  if (!dest.equals(initial.ptr, false)) FRememberFolder(app_.extDirs, dest.ptr, app_.memItemNum);
  TThread* thread = new TThread(kCmdExtract);
  thread->records.addAll(records);
  thread->destDir = dest;
  thread->base = base;
  thread->cond = &cond;
  view_.startCommand(thread);
}

void TMainLogic::fcDel() {
  if (FBusy(1)) return;
  TRecList records;
  view_.selection(records);
  if (records.count == 0) return;
  TCond& cond = FConfig()->freshDeleteCond();
  if (!view_.runDeleteDialog(records, cond)) return;
  archive().removedRecords.clear();
  TThread* thread = new TThread(kCmdDelete);
  thread->records.addAll(records);
  thread->cond = &cond;
  view_.startCommand(thread);
}
