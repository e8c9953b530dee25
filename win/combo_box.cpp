#include "win/combo_box.h"

void LComboBox::load() {
  SendMessageA(hwnd, CB_RESETCONTENT, 0, 0);
  for (const LStr* choice : choices_)
    SendMessageA(hwnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice->ptr));
  setText(text_.ptr);
}

bool LComboBox::save() {
  text_ = text();
  return true;
}

// A change typed or chosen from the list is told to the dialog alike.
int LComboBox::onCommand(int code) {
  if (code != CBN_EDITCHANGE && code != CBN_SELCHANGE) return 1;
  return onChange();
}
