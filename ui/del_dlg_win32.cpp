#include "ui/del_dlg_win32.h"

#include "app/config.h"
#include "ui/command_dialog_texts.h"
#include "ui/help_page_win32.h"
#include "ui/resource_ids.h"

TDelDlg::TDelDlg(const TRecList& records, TCond& cond, TConfig& config)
    : THelpedDialog("DEL_DLG", "delete"),
      records_(records),
      subjectText_(*this, IDC_DEL_SUBJECT, subject_),
      condButton_(*this, IDC_COND, cond, &config.deleteExpanded, &records) {
  subject_.format("%sを削除します。", FSubjectText(records).ptr);
  centredOnOwner = true;
}

int TDelDlg::onInit() {
  condButton_.enable(FSelectionHasVersionsToChoose(records_));
  return 1;
}
