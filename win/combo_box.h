// LComboBox: an editable combo box bound to a string, with a list to choose
// from (a history, shown in its own order); both must outlive the dialog's
// run. The string is the box's text, typed or chosen.
#pragma once

#include "lib/larr.h"
#include "lib/lstr.h"
#include "win/ctrl.h"

class LComboBox : public LCtrl {
 public:
  LComboBox(LDialog& dialog, int id, LStr& text, const LStrs& choices)
      : LCtrl(dialog, id), text_(text), choices_(choices) {}
  // Fills the list again from the choices and shows the string.
  void load() override;
  bool save() override;
  int onCommand(int code) override;

 private:
  LStr& text_;
  const LStrs& choices_;
};
