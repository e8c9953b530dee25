// TExtDlg ("EXT_DLG"): where an extract writes, typed or chosen from the
// history of destinations, and its conditions. Yes with no destination
// keeps the dialog open. Main thread only.
#pragma once

#include "lib/lstr.h"
#include "ui/cond_button_win32.h"
#include "ui/help_page_win32.h"
#include "ui/selection.h"
#include "win/combo_box.h"
#include "win/dialog.h"
#include "win/dir_button.h"
#include "win/text_box.h"

class TApp;
class TConfig;
class TCond;

class TExtDlg : public THelpedDialog {
 public:
  // destination, records and cond must outlive the run; on Yes
  // destination holds the box's text.
  TExtDlg(LStr& destination, const TRecList& records, TCond& cond, TApp& app, TConfig& config);

  int onInit() override;
  int onOk() override;
  int onDropFiles(HDROP drop) override;

 private:
  LStr& destination_;
  const TRecList& records_;
  LStr subject_;
  LComboBox destBox_;
  LDirButton browse_;
  LTextBox subjectText_;
  TCondButton condButton_;
};
