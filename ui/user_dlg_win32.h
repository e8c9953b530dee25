// TUserDlg ("USER_DLG"): the user's registration, three texts that the
// settings keep. Nothing checks them; the dialog says so. Main thread only.
#pragma once

#include "lib/lstr.h"
#include "ui/help_page_win32.h"
#include "win/dialog.h"
#include "win/edit_box.h"

class TApp;

class TUserDlg : public THelpedDialog {
 public:
  // The boxes start with app's values; OK stores them there.
  explicit TUserDlg(TApp& app);

  int onOk() override;

 private:
  TApp& app_;
  LStr name_;
  LStr id_;
  LStr password_;
  LEditBox nameBox_;
  LEditBox idBox_;
  LEditBox passwordBox_;
};
