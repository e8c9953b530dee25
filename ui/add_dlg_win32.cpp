#include "ui/add_dlg_win32.h"

#include "app/app.h"
#include "archive/record.h"
#include "lib/path_parts.h"
#include "store/cond.h"
#include "ui/help_page_win32.h"
#include "ui/resource_ids.h"
#include "win/file_list.h"
#include "win/folder_browser.h"

TAddDlg::TAddDlg(TRec* target, LStrs& paths, TCond& cond, TApp& app)
    : THelpedDialog("ADD_DLG", "add"),
      target_(target),
      paths_(paths),
      cond_(cond),
      app_(app),
      choice_(target->isFile() != 0, paths),
      targetText_(*this, IDC_ADD_TARGET, targetPath_),
      list_(*this, IDC_ADD_LIST, choice_.entries(), selected_),
      folderButton_(*this, IDC_ADD_FOLDER),
      filesButton_(*this, IDC_ADD_FILES),
      removeButton_(*this, IDC_ADD_REMOVE),
      condButton_(*this, IDC_COND, cond, nullptr, nullptr),
      commentBox_(*this, IDC_ADD_COMMENT, comment_),
      okButton_(*this, IDOK) {
  target->displayPath(targetPath_);
  // A new dialog starts with no comment, whatever the conditions held.
  cond_.addComment.clear();
  filesButton_.takesFocus = target->isFile() != 0;
  acceptsFiles = true;
  centredOnOwner = true;
}

int TAddDlg::onInit() {
  refresh();
  return 1;
}

int TAddDlg::onOk() {
  cond_.addComment = comment_;
  paths_.clear();
  for (const LStr* entry : choice_.entries()) paths_.add(new LStr(*entry));
  return 1;
}

int TAddDlg::onCommand(int id, int code) {
  switch (id) {
    case IDC_ADD_LIST:
      if (code == LBN_SELCHANGE) refresh();
      return 1;
    case IDC_ADD_FOLDER:
      browseFolder();
      return 0;
    case IDC_ADD_FILES:
      browseFiles();
      return 0;
    case IDC_ADD_REMOVE:
      removeSelected();
      return 0;
    default:
      return 1;
  }
}

int TAddDlg::onDropFiles(HDROP drop) {
  LStrs paths;
  FReadFileList(drop, paths);
  DragFinish(drop);
  for (const LStr* path : paths) choice_.addExisting(path->ptr);
  refresh();
  return 0;
}

void TAddDlg::browseFolder() {
  LStr folder = app_.fileDlgDir;
  if (!FBrowseForFolder(hwnd, "追加するフォルダ", folder)) return;
  app_.fileDlgDir = folder;
  choice_.add(folder.ptr, /*isFolder=*/true);
  refresh();
}

void TAddDlg::browseFiles() {
  LOpenFiles request;
  request.title = "ファイルを追加";
  request.filter = "すべてのファイル (*.*)\0*.*\0";
  request.filterIdx = 1;
  request.folder = app_.fileDlgDir;
  request.several = choice_.picksSeveral();
  if (target_->isFile()) request.name = target_->name();
  if (!FChooseFilesToOpen(hwnd, request)) return;
  app_.fileDlgDir = FDirOf(request.chosen[0]->ptr, /*keepSep=*/false);
  for (const LStr* path : request.chosen) choice_.add(path->ptr, /*isFolder=*/false);
  refresh();
}

void TAddDlg::removeSelected() {
  selected_ = choice_.remove(selected_);
  refresh();
  SetFocus(list_.hwnd);
}

void TAddDlg::showWidestEntry() {
  HDC dc = GetDC(list_.hwnd);
  if (dc == nullptr) return;
  HGDIOBJ old =
      SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(list_.hwnd, WM_GETFONT, 0, 0)));
  LONG widest = 0;
  for (const LStr* entry : choice_.entries()) {
    SIZE size = {};
    if (GetTextExtentPoint32A(dc, entry->ptr, entry->length, &size) && size.cx > widest)
      widest = size.cx;
  }
  SelectObject(dc, old);
  ReleaseDC(list_.hwnd, dc);
  // A little room after the text, as the box draws it.
  SendMessageA(list_.hwnd, LB_SETHORIZONTALEXTENT, widest + 8, 0);
}

void TAddDlg::refresh() {
  if (selected_ >= choice_.entries().count) selected_ = choice_.entries().count - 1;
  list_.load();
  showWidestEntry();
  okButton_.enable(choice_.okEnabled());
  removeButton_.enable(choice_.removeEnabled(selected_));
  filesButton_.enable(choice_.fileBrowseEnabled());
  folderButton_.enable(choice_.folderBrowseEnabled());
  // A button that the user just pressed may have been disabled under the
  // focus; the keyboard would be lost.
  HWND focus = GetFocus();
  if (focus != nullptr && !IsWindowEnabled(focus)) SendMessageA(hwnd, WM_NEXTDLGCTL, 0, FALSE);
}
