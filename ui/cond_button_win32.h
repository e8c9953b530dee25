// TCondButton: "条件(&L)..." of the add, extract and delete dialogs. A click
// runs the conditions dialog on the command's TCond; afterwards the caption
// ends in "*" while a condition is set. Main thread only.
#pragma once

#include <cstdint>

#include "ui/selection.h"
#include "win/button.h"

class TCond;

class TCondButton : public LButton {
 public:
  // The conditions of add when expanded is null; otherwise the conditions
  // dialog over selection, expanded being the flag kept for the command.
  // cond, expanded and selection must outlive the dialog's run.
  TCondButton(LDialog& dialog, int id, TCond& cond, int32_t* expanded, const TRecList* selection)
      : LButton(dialog, id), cond_(cond), expanded_(expanded), selection_(selection) {}
  int onClick() override;

 private:
  TCond& cond_;
  int32_t* expanded_;
  const TRecList* selection_;
};
