// LSpinBox: an up-down control bound to an int32 within a range; its buddy
// edit box (the control before it in the template) shows the number.
#pragma once

#include <cstdint>

#include "win/ctrl.h"

class LSpinBox : public LCtrl {
 public:
  LSpinBox(LDialog& dialog, int id, int32_t& value, int32_t low, int32_t high)
      : LCtrl(dialog, id), value_(value), low_(low), high_(high) {}
  void load() override;
  bool save() override;

 private:
  int32_t& value_;
  int32_t low_;
  int32_t high_;
};
