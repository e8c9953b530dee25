// The commands on items that run on the main thread to their end, with no
// worker: paste, open with the default application and new folder.
#include "app/app.h"
#include "app/worker.h"
#include "archive/archive.h"
#include "archive/record.h"
#include "lib/alloc.h"
#include "lib/msg.h"
#include "lib/strfunc.h"
#include "lib/sys.h"
#include "store/extract_command.h"
#include "store/work_set.h"
#include "ui/main_logic.h"
#include "ui/main_view.h"

namespace {
// More applications than this at once would flood the desktop.
const int32_t kOpenMax = 10;
// The shell's answer when no application is registered for the extension.
const int32_t kNoAssociation = 31;

// Holds the clipboard open for the life of a paste, whatever ends it.
class ClipboardHold {
 public:
  explicit ClipboardHold(TMainView& view) : view_(view) { view_.openClipboard(); }
  ~ClipboardHold() { view_.closeClipboard(); }
  ClipboardHold(const ClipboardHold&) = delete;
  ClipboardHold& operator=(const ClipboardHold&) = delete;

 private:
  TMainView& view_;
};

// The version a selected record stands for: a file its newest one; a
// folder, or a record that is gone, none.
TVer* versionOf(TRec* rec) {
  if (rec == nullptr) return nullptr;
  if (rec->isVer()) return static_cast<TVer*>(rec);
  return rec->isFile() ? rec->latestVer() : nullptr;
}

// Where a record stands in the tree: its names from the root and, for a
// version, its index in its file. It finds the record again in a tree read
// anew from the archive, where the old pointers are gone.
class TRecPlace {
 public:
  KST_POOLED_NEW
  explicit TRecPlace(const TRec* rec)
      : verIndex_(rec->isVer() ? static_cast<const TVer*>(rec)->IndexInFile(false) : -1) {
    LArrOf<const char*> names;
    rec->pathNames(names);
    for (const char* name : names) names_.add(new LStr(name));
  }

  // The record at this place below root; null when there is none.
  TRec* find(TFolder* root) const {
    LArrOf<const char*> names;
    for (const LStr* name : names_) names.add(name->ptr);
    names.add(nullptr);
    TRec* rec = root->findPath(names.begin());
    if (rec == nullptr || verIndex_ < 0) return rec;
    if (!rec->isFile() || verIndex_ >= rec->childCount()) return nullptr;
    return static_cast<TFile*>(rec)->version(verIndex_);
  }

 private:
  LStrs names_;
  int32_t verIndex_;
};

// Takes the archive back to its state on disk after a failed copy. The new
// tree replaces the records of the selection: those from `from` on are
// looked up in it again, and those it no longer has (a rename that was not
// written, say) become null.
void reloadKeeping(TMainView& view, TRecList& records, int32_t from) {
  LArrOf<TRecPlace*, LDelete<TRecPlace*>> places;
  for (int32_t i = from; i < records.count; i++) places.add(new TRecPlace(records[i]));
  FResetWork();
  FArchive()->reloadArchive();
  view.archiveReloaded();
  for (int32_t i = from; i < records.count; i++)
    records[i] = places[i - from]->find(FArchive()->root);
}
}  // namespace

void TMainLogic::fcPaste() {
  ClipboardHold hold(view_);
  LStrs paths;
  if (!view_.clipboardFiles(paths) || paths.count == 0) {
    FMsg(0, "クリップボードに有効なデータがありません");
    return;
  }
  fcDropFiles(paths, /*noDialog=*/false);
}

void TMainLogic::fcOpenWithApp() {
  TRecList records;
  view_.selection(records);
  if (records.count > kOpenMax) records.removeRange(kOpenMax, records.count - kOpenMax);
  for (int32_t i = 0; i < records.count; i++) {
    TVer* ver = versionOf(records[i]);
    if (ver == nullptr) continue;
    TWorkSet& work = *FWorkSet();
    LStr path;
    if (const char* old = work.openedPath(ver)) {
      // The same version again: its copy is written anew at the same path.
      path = old;
      SysDeleteFile(path.ptr);
    } else {
      path = FVersionViewPath(ver, app_.workDir.ptr);
      if (path.empty()) continue;
      work.noteOpened(ver, new LStr(path));
    }
    work.stopState = kStopRun;
    for (int32_t& counter : work.counters) counter = 0;
    try {
      FExtractVer(ver, path.ptr);
    } catch (int) {
      // This record's copy is given up; the next ones go on.
      reloadKeeping(view_, records, i + 1);
      continue;
    }
    int32_t result = view_.openWithDefaultApp(path.ptr);
    if (result > 32) continue;
    const char* name = ver->ownerFile()->name();
    if (result == kNoAssociation)
      FMsg(kMsgWarning, "%s に関連付けられているアプリケーションがありません", name);
    else
      FMsg(kMsgWarning, "%s を開けません", name);
  }
}

TFolder* TMainLogic::fcNewFolder() {
  if (FBusy(1)) return nullptr;
  TRec* place = view_.treeSelected();
  if (place == nullptr || !place->isFolder()) return nullptr;
  TFolder* parent = static_cast<TFolder*>(place);
  LStr name("新しいフォルダ");
  for (int32_t i = 2; parent->findChild(name.ptr) != nullptr; i++) {
    name = "新しいフォルダ";
    name.format("(%d)", i);
  }
  TFolder* folder = parent->addFolder(name.ptr);
  FArchive()->treeDirty = 1;
  return folder;
}
