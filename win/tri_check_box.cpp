#include "win/tri_check_box.h"

void LTriCheckBox::load() {
  WPARAM state = value_ < 0 ? BST_INDETERMINATE : value_ == 0 ? BST_UNCHECKED : BST_CHECKED;
  SendMessageA(hwnd, BM_SETCHECK, state, 0);
}

bool LTriCheckBox::save() {
  LRESULT state = SendMessageA(hwnd, BM_GETCHECK, 0, 0);
  value_ = state == BST_INDETERMINATE ? -1 : state == BST_CHECKED ? 1 : 0;
  return true;
}
