// TDelDlg ("DEL_DLG"): the question before a delete, with its conditions.
// Main thread only.
#pragma once

#include "lib/lstr.h"
#include "ui/cond_button_win32.h"
#include "ui/help_page_win32.h"
#include "ui/selection.h"
#include "win/dialog.h"
#include "win/text_box.h"

class TConfig;
class TCond;

class TDelDlg : public THelpedDialog {
 public:
  // records and cond must outlive the run.
  TDelDlg(const TRecList& records, TCond& cond, TConfig& config);

  int onInit() override;

 private:
  const TRecList& records_;
  LStr subject_;
  LTextBox subjectText_;
  TCondButton condButton_;
};
