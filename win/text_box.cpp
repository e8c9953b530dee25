#include "win/text_box.h"

#include "win/lwin.h"

void LTextBox::load() {
  if (!SetWindowTextA(hwnd, text_.ptr)) FWinFail("SetWindowText()");
}
