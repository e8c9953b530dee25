#include "win/spin_box.h"

#include <commctrl.h>

void LSpinBox::load() {
  SendMessageA(hwnd, UDM_SETRANGE32, low_, high_);
  SendMessageA(hwnd, UDM_SETPOS32, 0, value_);
}

bool LSpinBox::save() {
  BOOL failed = FALSE;
  LRESULT position = SendMessageA(hwnd, UDM_GETPOS32, 0, reinterpret_cast<LPARAM>(&failed));
  // A text in the buddy that is out of range or no number keeps the value.
  if (!failed) value_ = static_cast<int32_t>(position);
  return true;
}
