// TAboutDlg: the about box, four read-only lines and OK, centred on its
// owner. Main thread only.
#pragma once

#include "lib/larr.h"
#include "win/dialog.h"
#include "win/text_box.h"

class TAboutDlg : public LDialog {
 public:
  // lines: the four lines of FAboutLines; they must outlive the run.
  explicit TAboutDlg(const LStrs& lines);

 private:
  LTextBox name_;
  LTextBox path_;
  LTextBox rights_;
  LTextBox home_;
};
