#include "win/list_box.h"

#include "lib/lstr.h"

void LListBox::load() {
  SendMessageA(hwnd, WM_SETREDRAW, FALSE, 0);
  SendMessageA(hwnd, LB_RESETCONTENT, 0, 0);
  for (const LStr* item : items_)
    SendMessageA(hwnd, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item->ptr));
  SendMessageA(hwnd, LB_SETCURSEL, selected_, 0);
  SendMessageA(hwnd, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(hwnd, nullptr, TRUE);
}

bool LListBox::save() {
  LRESULT index = SendMessageA(hwnd, LB_GETCURSEL, 0, 0);
  selected_ = index == LB_ERR ? -1 : static_cast<int32_t>(index);
  return true;
}

int LListBox::onCommand(int code) {
  if (code != LBN_SELCHANGE) return 1;
  save();
  return onChange();
}
