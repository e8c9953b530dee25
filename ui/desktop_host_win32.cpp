#include "ui/desktop_host_win32.h"

#include "archive/archive.h"
#include "lib/path_parts.h"
#include "ui/main_win_win32.h"

void TDesktopHost::treeLoaded(TFolder* root) {
  TMainWin* win = FMainWin();
  if (win == nullptr) return;
  TArchive& archive = *FArchive();
  win->tree().loadRoot(root, FNameOf(archive.path.ptr).ptr, archive.isUntitled());
}

void TDesktopHost::treeClosing() {
  TMainWin* win = FMainWin();
  if (win == nullptr) return;
  win->list().clear();
  win->tree().clear();
}
