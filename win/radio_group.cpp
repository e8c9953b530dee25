#include "win/radio_group.h"

#include "win/dialog.h"

void LRadioGroup::load() {
  int32_t chosen = value_ >= 0 && value_ < count_ ? value_ : 0;
  CheckRadioButton(dialog_.hwnd, id, id + count_ - 1, id + chosen);
}

bool LRadioGroup::save() {
  for (int32_t i = 0; i < count_; i++)
    if (IsDlgButtonChecked(dialog_.hwnd, id + i) == BST_CHECKED) value_ = i;
  return true;
}

void LRadioGroup::enable(bool on) {
  for (int32_t i = 0; i < count_; i++) EnableWindow(GetDlgItem(dialog_.hwnd, id + i), on);
}

void LRadioGroup::show(bool on) {
  for (int32_t i = 0; i < count_; i++)
    ShowWindow(GetDlgItem(dialog_.hwnd, id + i), on ? SW_SHOW : SW_HIDE);
}
