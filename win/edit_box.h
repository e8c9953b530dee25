// LEditBox: a box of free text bound to a string, which must outlive the
// dialog's run.
#pragma once

#include "lib/lstr.h"
#include "win/ctrl.h"

class LEditBox : public LCtrl {
 public:
  LEditBox(LDialog& dialog, int id, LStr& text) : LCtrl(dialog, id), text_(text) {}
  void load() override { setText(text_.ptr); }
  bool save() override;

 private:
  LStr& text_;
};
