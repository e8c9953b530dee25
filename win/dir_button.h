// LDirButton: the browse button of a folder's box (an edit box or an
// editable combo). A click opens the folder browser at the box's folder and
// puts the chosen one into the box; the box's own binding saves it.
#pragma once

#include "lib/lstr.h"
#include "win/button.h"

class LDirButton : public LButton {
 public:
  // The box must outlive the button.
  LDirButton(LDialog& dialog, int id, LCtrl& box, const char* title)
      : LButton(dialog, id), box_(box), title_(title) {}
  int onClick() override;

 private:
  LCtrl& box_;
  LStr title_;
};
