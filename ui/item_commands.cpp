// The commands on items that run on the main thread to their end, with no
// worker: paste, open with the default application and new folder.
#include <algorithm>

#include "app/app.h"
#include "app/worker.h"
#include "archive/archive.h"
#include "archive/record.h"
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
// folder none.
TVer* versionOf(TRec* rec) {
  if (rec->isVer()) return static_cast<TVer*>(rec);
  return rec->isFile() ? rec->latestVer() : nullptr;
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
  int32_t count = std::min(records.count, kOpenMax);
  for (int32_t i = 0; i < count; i++) {
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
      // The archive is taken back to its state on disk; the records of
      // the selection may have gone with the tree, so the rest waits for
      // the user to choose again.
      FResetWork();
      FArchive()->reloadArchive();
      view_.archiveReloaded();
      return;
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
