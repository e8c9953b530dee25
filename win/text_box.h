// LTextBox: a read-only label of a dialog showing a string, which must
// outlive the dialog's run.
#pragma once

#include "lib/lstr.h"
#include "win/ctrl.h"

class LTextBox : public LCtrl {
 public:
  LTextBox(LDialog& dialog, int id, const LStr& text) : LCtrl(dialog, id), text_(text) {}
  void load() override;

 private:
  const LStr& text_;
};
