// LTriCheckBox: a three-state check box bound to an int32: -1 for the grey
// state (either way), 0 for clear, 1 for checked.
#pragma once

#include <cstdint>

#include "win/ctrl.h"

class LTriCheckBox : public LCtrl {
 public:
  LTriCheckBox(LDialog& dialog, int id, int32_t& value) : LCtrl(dialog, id), value_(value) {}
  void load() override;
  bool save() override;

 private:
  int32_t& value_;
};
