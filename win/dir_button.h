// LDirButton: the browse button of a folder's edit box. A click opens the
// folder browser at the box's folder and puts the chosen one into the box;
// the box's own binding saves it.
#pragma once

#include "lib/lstr.h"
#include "win/button.h"

class LEditBox;

class LDirButton : public LButton {
 public:
  // The box must outlive the button.
  LDirButton(LDialog& dialog, int id, LEditBox& box, const char* title)
      : LButton(dialog, id), box_(box), title_(title) {}
  int onClick() override;

 private:
  LEditBox& box_;
  LStr title_;
};
