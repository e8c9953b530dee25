#include "ui/ext_dlg_win32.h"

#include "app/app.h"
#include "app/config.h"
#include "lib/file_util.h"
#include "ui/command_dialog_texts.h"
#include "ui/help_page_win32.h"
#include "ui/resource_ids.h"
#include "win/file_list.h"

TExtDlg::TExtDlg(LStr& destination, const TRecList& records, TCond& cond, TApp& app,
                 TConfig& config)
    : THelpedDialog("EXT_DLG", "extract"),
      destination_(destination),
      records_(records),
      destBox_(*this, IDC_EXT_DEST, destination, app.extDirs),
      browse_(*this, IDC_EXT_BROWSE, destBox_, "展開先"),
      subjectText_(*this, IDC_EXT_SUBJECT, subject_),
      condButton_(*this, IDC_COND, cond, &config.extractExpanded, &records) {
  subject_.format("%sを上の場所に展開します。", FSubjectText(records).ptr);
  acceptsFiles = true;
  centredOnOwner = true;
}

int TExtDlg::onInit() {
  condButton_.enable(FSelectionHasVersionsToChoose(records_));
  return 1;
}

int TExtDlg::onOk() {
  if (FExtractDestGiven(destination_.ptr)) return 1;
  SetFocus(destBox_.hwnd);
  return 0;
}

int TExtDlg::onDropFiles(HDROP drop) {
  LStrs paths;
  FReadFileList(drop, paths);
  DragFinish(drop);
  if (paths.count == 1 && FExists(paths[0]->ptr) == kExistsFolder) destBox_.setText(paths[0]->ptr);
  return 0;
}
