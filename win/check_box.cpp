#include "win/check_box.h"

void LCheckBox::load() {
  SendMessageA(hwnd, BM_SETCHECK, value_ != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool LCheckBox::save() {
  value_ = SendMessageA(hwnd, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
  return true;
}
