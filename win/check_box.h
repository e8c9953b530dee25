// LCheckBox: a check box bound to an int32 that holds 0 or 1; any other
// value loads as checked.
#pragma once

#include <cstdint>

#include "win/ctrl.h"

class LCheckBox : public LCtrl {
 public:
  LCheckBox(LDialog& dialog, int id, int32_t& value) : LCtrl(dialog, id), value_(value) {}
  void load() override;
  bool save() override;

 private:
  int32_t& value_;
};
