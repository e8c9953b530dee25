// TAddDlg ("ADD_DLG"): the sources of an add, gathered from the folder
// browser, the open-file dialog and drops, with the comment the new
// versions get and the add conditions. What is enabled is TAddChoice's
// answer. Main thread only.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "ui/add_choice.h"
#include "ui/cond_button_win32.h"
#include "ui/help_page_win32.h"
#include "win/button.h"
#include "win/dialog.h"
#include "win/edit_box.h"
#include "win/list_box.h"
#include "win/text_box.h"

class TApp;
class TCond;
class TRec;

class TAddDlg : public THelpedDialog {
 public:
  // On OK paths holds the list's entries and cond the comment; the
  // folders of the browsers go to app's `fileDlgDir`.
  TAddDlg(TRec* target, LStrs& paths, TCond& cond, TApp& app);

  int onInit() override;
  int onOk() override;
  int onCommand(int id, int code) override;
  int onDropFiles(HDROP drop) override;

 private:
  void browseFolder();
  void browseFiles();
  void removeSelected();
  // The list from the choice, and the buttons it enables.
  void refresh();
  // Long paths can be scrolled to instead of being cut.
  void showWidestEntry();

  TRec* target_;
  LStrs& paths_;
  TCond& cond_;
  TApp& app_;
  TAddChoice choice_;
  LStr targetPath_;
  LStr comment_;
  int32_t selected_ = -1;
  LTextBox targetText_;
  LListBox list_;
  LButton folderButton_;
  LButton filesButton_;
  LButton removeButton_;
  TCondButton condButton_;
  LEditBox commentBox_;
  LButton okButton_;
};
