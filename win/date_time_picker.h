// The system's date and time pickers bound to the fields of an LDateTime:
// LDatePicker to year, month and day, LTimePicker to hour, minute and
// second, with its check box (the template's DTS_SHOWNONE) bound to an
// int32 that holds 0 or 1.
#pragma once

#include <cstdint>

#include "lib/calendar.h"
#include "win/ctrl.h"

class LDatePicker : public LCtrl {
 public:
  LDatePicker(LDialog& dialog, int id, LDateTime& at) : LCtrl(dialog, id), at_(at) {}
  void load() override;
  bool save() override;

 private:
  LDateTime& at_;
};

class LTimePicker : public LCtrl {
 public:
  LTimePicker(LDialog& dialog, int id, LDateTime& at, int32_t& checked)
      : LCtrl(dialog, id), at_(at), checked_(checked) {}
  void load() override;
  bool save() override;

 private:
  LDateTime& at_;
  int32_t& checked_;
};
