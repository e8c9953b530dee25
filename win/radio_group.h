// LRadioGroup: radio buttons with consecutive numbers, bound to an int32
// that holds the index of the chosen one (0 for the first).
#pragma once

#include <cstdint>

#include "win/ctrl.h"

class LRadioGroup : public LCtrl {
 public:
  LRadioGroup(LDialog& dialog, int firstId, int32_t count, int32_t& value)
      : LCtrl(dialog, firstId), count_(count), value_(value) {}
  void load() override;
  bool save() override;
  void enable(bool on) override;
  void show(bool on) override;

 private:
  int32_t count_;
  int32_t& value_;
};
