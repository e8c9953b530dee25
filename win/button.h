// LButton: a push button with no variable. A click goes to onClick; what a
// plain button does is left to its dialog's onCommand.
#pragma once

#include "win/ctrl.h"

class LButton : public LCtrl {
 public:
  using LCtrl::LCtrl;
  bool isButton() const override { return true; }
  int onCommand(int code) override { return code == BN_CLICKED ? onClick() : 1; }
  // 1 passes the click on to the dialog.
  virtual int onClick() { return 1; }
};
